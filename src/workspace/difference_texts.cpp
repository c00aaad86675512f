#include "workspace/difference_texts.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "settings/numbers.h"
#include "workspace/pages.h"
#include "workspace/table_values.h"

namespace kx {
namespace {

/// A heading such as "limit [V]" says its unit in brackets.
std::string Bare_Unit(const std::string& heading) {
  const std::size_t open = heading.find('[');
  const std::size_t close = heading.find(']');
  return open < close && close != std::string::npos ? heading.substr(open + 1, close - open - 1) : heading;
}

std::string With_Unit(const std::string& value, const std::string& unit) {
  return unit.empty() ? value : value + " " + unit;
}

std::string Raw_Text(std::uint8_t raw) { return "raw " + std::to_string(raw); }

std::string Value_In(Table table, std::uint8_t raw, const Byte_Image& image) {
  const Table_Meaning meaning = Meaning_Of(table, image);
  const std::string value = Shown_Text_Of(meaning, raw);
  return value.empty() ? Raw_Text(raw) : With_Unit(value, Bare_Unit(Unit_Of(meaning)));
}

bool Shows(Table table, int byte, const Byte_Image& image) {
  const int row = byte - Row_Of(table).first_byte + 1;
  return In_Use(table, image) && row >= Row_Of(table).first_row && row <= Entries_Of(table, image);
}

/// A label as a name: without what leads over to the control.
std::string Name_Of_Label(std::string_view label) {
  return std::string(label.substr(0, label.find_last_not_of(" :.") + 1));
}

std::string Unit_Beside(const Scalar_Row& row, int position, const Byte_Image& image) {
  if (!row.unit.empty()) return std::string(row.unit);
  const auto texts = Texts_Of(row);
  const auto label = std::ranges::find_if(
      texts, [](const Scalar_Text_Row& text) { return text.control.ends_with("_unit_label"); });
  return label == texts.end() ? std::string() : Scalar_Text(row, *label, position, image);
}

struct Number_And_Rest {
  double number;
  int decimals;
  std::string rest;
};

std::optional<Number_And_Rest> Apart(const std::string& text) {
  const std::size_t end = std::min(text.find_first_not_of("-0123456789."), text.size());
  const auto number = Whole_Number_Text(text.substr(0, end));
  if (!number) return {};
  const std::size_t point = std::min(text.find('.'), end);
  const int decimals = point == end ? 0 : static_cast<int>(end - point - 1);
  return Number_And_Rest{*number, decimals, text.substr(end)};
}

std::string Signed(double change, const std::string& size) { return (change < 0 ? "-" : "+") + size; }

}  // namespace

std::string Entry_Place(Table table, int row, const Byte_Image& image) {
  const auto headings = Axis_Headings(table, image);
  const auto texts = Axis_Texts(table, row, image);
  // Without a sensor the last column of a load axis is empty; the voltage before it is always there.
  const std::size_t column = texts.back().empty() ? 0 : texts.size() - 1;
  return With_Unit(texts[column], Bare_Unit(headings[column]));
}

std::string Entry_Name(Table table, int row, const Byte_Image& image) {
  return std::string(Caption_Of(Page_Of(table))) + ", " + Entry_Place(table, row, image);
}

std::string Control_Name(std::string_view control, std::string_view label) {
  const Control_Place& place = Place_Of(control);
  const std::string name = place.name.empty() ? Name_Of_Label(label) : std::string(place.name);
  return std::string(Caption_Of(place.page)) + ", " + name;
}

std::string Entry_Value(Table table, int row, const Byte_Image& image) {
  const int byte = Edited_Byte(table, row);
  if (Shows(table, byte, image)) return Value_In(table, image[byte], image);
  const auto* const other =
      std::ranges::find_if(table_rows, [&](const Table_Row& any) { return Shows(any.table, byte, image); });
  if (other == table_rows.end()) return Raw_Text(image[byte]);
  return std::string(Caption_Of(Page_Of(other->table))) + " " + Value_In(other->table, image[byte], image);
}

std::string Control_Value(const Scalar_Row& row, const Byte_Image& image) {
  const int position = Scalar_Position(row, image);
  const std::string value = Scalar_Text(row, row.texts[0], position, image);
  if (value.empty()) return Raw_Text(image[row.byte]);
  return With_Unit(value, Unit_Beside(row, position, image));
}

std::string Control_Value(const Choice_Row& row, const Byte_Image& image) {
  if (row.kind == Choice_Kind::check) return Choice_Index(row, image) == 1 ? "on" : "off";
  return Name_Of_Label(Choice_Text(row, image));
}

std::string Change_Text(const std::string& from, const std::string& to, int counts) {
  const auto before = Apart(from);
  const auto after = Apart(to);
  if (!before || !after || before->rest != after->rest) return {};
  const double change = after->number - before->number;
  const std::string size = Format(std::abs(change), Decimals_Mask(after->decimals));
  if (Val_Any(size) > 0) return Signed(change, size);
  return Signed(counts, std::to_string(std::abs(counts))) + (std::abs(counts) == 1 ? " count" : " counts");
}

}  // namespace kx
