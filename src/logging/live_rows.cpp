#include <algorithm>
#include <string>
#include <string_view>

#include "logging/live_log.h"
#include "logging/live_log_owner.h"
#include "logging/log_array.h"
#include "logging/log_rows.h"
#include "logging/log_signals.h"
#include "logging/log_state.h"

namespace kx {

int Log_Row_Count = 0;

namespace {

constexpr std::string_view header_mark = "RPM AN1 AN2 AN3";

/// Position behind the line that @p at lies in.
std::size_t Behind_Line(std::string_view text, std::size_t at) {
  const std::size_t feed = text.find('\n', at);
  return feed == std::string_view::npos ? text.size() : feed + 1;
}

/// Where rows begin: behind the header line, else behind the start line, else at once.
std::string_view Rows_In(std::string_view text) {
  std::size_t mark = text.find(header_mark);
  if (mark == std::string_view::npos) mark = text.rfind('a');
  return mark == std::string_view::npos ? text : text.substr(Behind_Line(text, mark));
}

void Note_Format(std::string_view row) {
  Log_Field_Count = Field_Count_Of(row);
  Log_New_Format = Log_Field_Count >= new_format_fields;
  if (!Log_New_Format && log_layout != Log_Layout::old) Load_Old_Signal_Positions_InLogDataArray();
  if (Log_New_Format && log_layout == Log_Layout::old) Load_Default_Signal_Names();
}

/// Rows of one length only: what a fault on the line has made of a row is dropped without a word.
bool Decode_Whole_Rows(std::string_view rows) {
  const std::size_t length = rows.find('\r');
  if (length == std::string_view::npos) return false;
  Note_Format(rows.substr(0, length));
  Row_Decoder decoder(LogArray, Log_Field_Count);
  while (!rows.empty()) {
    const std::string_view row = Next_Line(rows);
    if (row.size() != length) continue;
    decoder.Decode(row, ++Log_Row_Count);
    if (Log_Row_Count > log_split_rows) return true;
  }
  return false;
}

}  // namespace

bool KX_Log_Row_Data_Read(std::string& rx) {
  const std::string work(Whole_Lines(rx));
  rx.erase(0, work.size());
  return Decode_Whole_Rows(Rows_In(work));
}

}  // namespace kx
