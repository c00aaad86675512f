#pragma once

#include <functional>
#include <string>
#include <utility>

namespace kx {

/// What the lower subsystems ask of the views. The hooks are set by the workspace when the program starts (or
/// by a test) and stay for the run; an unset hook does nothing.
struct Refresh_Hooks {
  std::function<void()> update_all;
  std::function<void()> update_tabs;
  std::function<void()> show_right_tabs;
  std::function<void()> show_title;
  std::function<void(bool)> show_wait_pointer;
  std::function<void()> show_reference;
};
extern Refresh_Hooks refresh_hooks;

/// True while the controls are being filled from the image: handlers that the filling raises refresh their
/// texts only, and no history is captured. Written by Undo_Busy_Scope alone.
extern bool Undo_Busy;

/// Undo_Busy as long as it lives; then what was before holds again, however the scope was left.
class Undo_Busy_Scope {
 public:
  Undo_Busy_Scope() : before_(std::exchange(Undo_Busy, true)) {}
  ~Undo_Busy_Scope() { Undo_Busy = before_; }
  Undo_Busy_Scope(const Undo_Busy_Scope&) = delete;
  Undo_Busy_Scope& operator=(const Undo_Busy_Scope&) = delete;

 private:
  bool before_;
};

/// True once the program has begun to unload; ends every wait at once.
extern bool Closing;

/// Fills every value from the image. Called after any change that alters a table's values or meaning.
void Update_All();

/// Lays out axes, units, sizes and frames; keeps values. The result does not depend on the order of the two.
void Update_Tabs();

/// Keeps the table tools in step with the tab on show.
void Show_Right_Tabs();

/// Shows the differences from the reference (reference_tune.h), which is another one; values stay.
void Show_Reference();

/// After the whole image was replaced: Update_All, then Update_Tabs.
void Refresh_Whole_Image();

/// Shows @p text after the brand's prefix as the main form's title.
void Set_Title(const std::string& text);

/// Makes the pointer over the main form say wait, or no longer.
void Show_Wait_Pointer(bool wait);

/// What stands after the prefix in the main form's title.
[[nodiscard]] const std::string& Title_Text();

void Reset_Refresh_State();

}  // namespace kx
