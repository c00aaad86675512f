#include "boxlink/link_texts.h"

#include "platform/seams.h"
#include "settings/text_encoding.h"

namespace kx {

Shown_Text rs232_text;
Shown_Text rs232_tool_tip;
Shown_Text Debug_txt;
Shown_Text Text1;
Shown_Text uncoded;

std::string With_Time(std::string_view word, std::string_view end) {
  return std::string(word) + platform::seams.clock->Time_Text() + std::string(end);
}

void Add_To_Journal(std::string_view line) { Debug_txt.Append(std::string(line) + Crlf()); }

void Report_Step(std::string_view word) {
  const std::string text = With_Time(word);
  Add_To_Journal(text);
  rs232_text.Set(text);
}

void Report_First_Step(std::string_view word) {
  Debug_txt.Set("");
  Report_Step(word);
}

}  // namespace kx
