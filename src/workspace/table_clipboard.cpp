#include "workspace/table_clipboard.h"

#include <algorithm>

#include "platform/seams.h"
#include "settings/message.h"
#include "settings/numbers.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr int most_columns = 3;  ///< a load table has two axis columns
constexpr std::size_t longest_number = 40;
constexpr std::size_t longest_quote = 20;

std::string Count_Of(int count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// The lines of @p text without line ends, one after the other.
class Lines {
 public:
  explicit Lines(std::string_view text) : rest_(text) {}

  [[nodiscard]] bool More() const { return !rest_.empty(); }
  std::string_view Next() {
    const std::size_t end = std::min(rest_.find_first_of("\r\n"), rest_.size());
    const std::string_view line = rest_.substr(0, end);
    const std::size_t length = rest_.substr(end).starts_with("\r\n") ? 2 : 1;
    rest_.remove_prefix(std::min(end + length, rest_.size()));
    return line;
  }

 private:
  std::string_view rest_;
};

std::string_view Without_Lines_At_The_End(std::string_view text) {
  return text.substr(0, text.find_last_not_of("\r\n") + 1);
}

std::string Without_Blanks(std::string_view text) {
  const std::size_t first = std::min(text.find_first_not_of(' '), text.size());
  return std::string(text.substr(first, text.find_last_not_of(' ') + 1 - first));
}

/// At most longest_quote characters of @p text without control characters; none is cut in two.
std::string Quote(std::string_view text) {
  std::string quote;
  std::size_t characters = 0;
  for (const char c : text) {
    const bool begins_one = (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
    if (begins_one && ++characters > longest_quote) return quote + "...";
    if (static_cast<unsigned char>(c) >= ' ') quote += c;
  }
  return quote;
}

std::string Bad_Columns(int line, int columns, int wanted) {
  const std::string has = "Line " + std::to_string(line) + " has " + Count_Of(columns, "column");
  if (columns > most_columns)
    return has + ": a table takes one column of values, or its axis and the values.";
  return has + " where line 1 has " + std::to_string(wanted) + ".";
}

std::string Too_Long(int room) {
  return "Line " + std::to_string(room + 1) + " is one too many: the table has " + Count_Of(room, "row") +
         " from the current one to its end.";
}

/// "1,234": one and a fraction where "," is the decimal sign, twelve hundred and more where it parts the
/// thousands.
bool Can_Be_Thousands(std::string_view number) {
  number.remove_prefix(number.starts_with('-') || number.starts_with('+') ? 1 : 0);
  const std::size_t comma = number.find(',');
  constexpr std::size_t digits_of_a_group = 3;
  const auto group = number.substr(std::min(comma, number.size() - 1) + 1);
  return comma >= 1 && comma <= digits_of_a_group && !number.starts_with('0') &&
         group.size() == digits_of_a_group && group.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Takes one line into @p pasted; false and a refusal when it cannot be taken.
bool Take_Line(Pasted& pasted, std::string_view line, int number) {
  const int columns = static_cast<int>(std::ranges::count(line, '\t')) + 1;
  if (number == 1) pasted.columns = columns;
  const std::string_view value = line.substr(line.rfind('\t') + 1);
  if (line.empty()) {
    pasted.refusal = "Line " + std::to_string(number) + " is empty.";
  } else if (columns > most_columns || columns != pasted.columns) {
    pasted.refusal = Bad_Columns(number, columns, pasted.columns);
  } else if (value.size() > longest_number || !Whole_Number_Text(value)) {
    pasted.refusal = Line_And_Text(number, value) + "is not a number.";
  } else {
    pasted.numbers.push_back(Without_Blanks(value));
  }
  return pasted.refusal.empty();
}

}  // namespace

std::string Line_And_Text(int line, std::string_view text) {
  return "Line " + std::to_string(line) + ", \"" + Quote(text) + "\", ";
}

std::string Selection_Text(const Grid& grid) {
  std::string text;
  Each_Selected(grid, 1, [&](int row, int) {
    for (int column = 0; column < grid.Columns(); ++column) {
      text += (column == 0 ? "" : "\t") + grid.Text(row, column);
    }
    text += Crlf();
  });
  return text;
}

Pasted Read_Pasted(std::string_view text, int room) {
  Pasted pasted;
  Lines lines(Without_Lines_At_The_End(text));
  if (!lines.More()) pasted.refusal = "The clipboard holds no text.";
  for (int number = 1; lines.More(); ++number) {
    const std::string_view line = lines.Next();
    if (number > room) {
      pasted.refusal = Too_Long(room);
      break;
    }
    if (!Take_Line(pasted, line, number)) break;
  }
  if (pasted.refusal.empty()) return pasted;
  return {{}, pasted.columns, pasted.refusal + nothing_pasted};
}

bool Shows_Already(const std::string& shown, const std::string& number) {
  const auto value = Whole_Number_Text(shown);
  return value && value == Whole_Number_Text(number);
}

std::optional<int> Doubtful_Line(const Pasted& pasted) {
  const auto has_comma = [](const std::string& number) { return number.find(',') != std::string::npos; };
  const auto sure = [&](const std::string& number) { return has_comma(number) && !Can_Be_Thousands(number); };
  const auto doubtful = std::ranges::find_if(pasted.numbers, Can_Be_Thousands);
  if (doubtful == pasted.numbers.end() || std::ranges::any_of(pasted.numbers, sure)) return {};
  return static_cast<int>(doubtful - pasted.numbers.begin()) + 1;
}

void Copy_Selection(const Grid& grid) { platform::seams.desktop->Set_Clipboard_Text(Selection_Text(grid)); }

std::optional<Pasted> Pasted_For(const Grid& grid) {
  Pasted pasted = Read_Pasted(platform::seams.desktop->Clipboard_Text(), grid.Rows() - grid.Row());
  if (pasted.refusal.empty()) return pasted;
  Tell(pasted.refusal);
  return {};
}

std::string Paste_Report(const Pasted& pasted, int first_row, int limited) {
  const int count = static_cast<int>(pasted.numbers.size());
  std::string text = "Pasted " + Count_Of(count, "value");
  text += count == 1 ? " into row " : " into rows ";
  text += std::to_string(first_row);
  if (count > 1) text += " to " + std::to_string(first_row + count - 1);
  if (pasted.columns > 1) text += ", the last of " + std::to_string(pasted.columns) + " columns";
  text += ".";
  if (limited > 0) text += " " + std::to_string(limited) + " beyond the range became the limit.";
  return text;
}

}  // namespace kx
