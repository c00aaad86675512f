#include "settings/notice.h"

namespace kx {

Shown_Text notice_text;

void Show_Notice(const std::string& text) { notice_text.Set(text); }

void Reset_Notice_State() { notice_text = {}; }

}  // namespace kx
