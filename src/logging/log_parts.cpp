#include "logging/log_parts.h"

#include <algorithm>

#include "logging/log_array.h"
#include "logging/log_rows.h"
#include "logging/log_sections.h"
#include "settings/numbers.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr int wanted_rows = 5900;  // of a part, as of those that a running log is split into
constexpr std::size_t digits = 3;
constexpr std::string_view closing_line = "[end log_data]";

std::string More_Than_Held(int rows) {
  return "The log has " + std::to_string(rows) + " rows, more than the " + std::to_string(log_capacity) +
         " that a file holds.";
}

/// Behind the last "/" and before the extension.
std::string_view Stem_Of(std::string_view name) {
  const std::size_t bare = name.rfind('/') + 1;
  const std::size_t point = name.rfind('.');
  return name.substr(bare, point == std::string_view::npos || point < bare ? point : point - bare);
}

bool Ends_In_Number(std::string_view stem) {
  if (stem.size() <= digits || stem[stem.size() - digits - 1] != '_') return false;
  const std::string_view number = stem.substr(stem.size() - digits);
  return std::all_of(number.begin(), number.end(), [](char c) { return c >= '0' && c <= '9'; });
}

/// Positions in @p rows at which a part ends.
std::vector<std::size_t> Ends_Of_Parts(std::string_view rows) {
  const std::size_t length = First_Data_Row(rows).size();
  std::vector<std::size_t> ends;
  int count = 0;
  for (std::string_view rest = rows; !rest.empty();) {
    const std::size_t at = rows.size() - rest.size();
    const std::string_view row = Next_Line(rest);
    if (!Is_Sound_Row(row, length)) continue;
    if (count == log_capacity || (count >= wanted_rows && row.size() == length)) {
      ends.push_back(at);
      count = 0;
    }
    ++count;
  }
  ends.push_back(rows.size());
  return ends;
}

}  // namespace

int Row_Count_Of(std::string_view data_section) {
  std::string_view rows = Row_Text(data_section);
  const std::size_t length = First_Data_Row(rows).size();
  int count = 0;
  while (length != 0 && !rows.empty()) count += Is_Sound_Row(Next_Line(rows), length) ? 1 : 0;
  return count;
}

std::vector<std::string> Parts_Of_Log(std::string_view data_section) {
  if (Row_Count_Of(data_section) <= log_capacity) return {std::string(data_section)};
  const std::string_view rows = Row_Text(data_section);
  const std::string head(data_section.substr(0, static_cast<std::size_t>(rows.data() - data_section.data())));
  std::vector<std::string> parts;
  std::size_t from = 0;
  for (const std::size_t end : Ends_Of_Parts(rows)) {
    parts.push_back(head + std::string(rows.substr(from, end - from)) + std::string(closing_line) + Crlf());
    from = end;
  }
  return parts;
}

std::string Next_Part_Name(std::string_view name) {
  const std::string_view stem = Stem_Of(name);
  const auto end = static_cast<std::size_t>(stem.data() - name.data()) + stem.size();
  std::string base(name.substr(0, end));
  int number = 1;
  if (Ends_In_Number(stem)) {
    number = std::stoi(base.substr(end - digits));
    base.resize(end - digits - 1);
  }
  return base + "_" + Format(number + 1, "000") + std::string(name.substr(end));
}

std::string Long_Log_Text(int rows) {
  return More_Than_Held(rows) + " Saved, it becomes several files that show all.";
}

std::string Saved_In_Parts_Text(int rows, const std::vector<std::string>& names) {
  std::string text = More_Than_Held(rows) + " It was saved in these files, the first of which is on show:";
  for (const std::string& name : names) text += Crlf() + name;
  return text;
}

}  // namespace kx
