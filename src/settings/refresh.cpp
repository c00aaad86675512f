#include "settings/refresh.h"

namespace kx {

Refresh_Hooks refresh_hooks;
bool Undo_Busy = false;
bool Closing = false;

namespace {

std::string title_text;

void Run(const std::function<void()>& hook) {
  if (hook) hook();
}

}  // namespace

void Update_All() { Run(refresh_hooks.update_all); }

void Update_Tabs() { Run(refresh_hooks.update_tabs); }

void Show_Right_Tabs() { Run(refresh_hooks.show_right_tabs); }

void Show_Reference() { Run(refresh_hooks.show_reference); }

void Refresh_Whole_Image() {
  Update_All();
  Update_Tabs();
}

void Set_Title(const std::string& text) {
  title_text = text;
  Run(refresh_hooks.show_title);
}

void Show_Wait_Pointer(bool wait) {
  if (refresh_hooks.show_wait_pointer) refresh_hooks.show_wait_pointer(wait);
}

const std::string& Title_Text() { return title_text; }

void Reset_Refresh_State() {
  refresh_hooks = {};
  Undo_Busy = false;
  Closing = false;
  title_text.clear();
}

}  // namespace kx
