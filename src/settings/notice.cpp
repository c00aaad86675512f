#include "settings/notice.h"

namespace kx {

Shown_Text notice_text;

void Show_Notice(const std::string& text) { notice_text.Set(text); }

void Add_Notice(const std::string& text) {
  const std::string& shown = notice_text.Text();
  Show_Notice(shown.empty() ? text : shown + "\n" + text);
}

void Reset_Notice_State() { notice_text = {}; }

}  // namespace kx
