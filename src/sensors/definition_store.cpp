#include "sensors/definition_store.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

#include "sensors/definition_file.h"
#include "sensors/load_axes.h"
#include "settings/brand.h"
#include "settings/ini_file_adm.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/numbers.h"
#include "settings/refresh.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr const char* sensor_key = "Sens_Def";
constexpr const char* axis_key = "map_lst";
constexpr double greatest_number = 1e9;  ///< anything beyond is a slip of the hand
constexpr double greatest_raw = 32767;
constexpr double most_decimals = 4;

/// A number's text for the file.
std::string File_Number(std::string_view text) {
  const auto number = Whole_Number_Text(text);
  return number ? Number_Text(*number) : std::string(text);
}

std::size_t Characters(std::string_view utf8) {
  return static_cast<std::size_t>(
      std::ranges::count_if(utf8, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

/// Why @p text, called @p what, cannot stand in a definition line.
std::string Text_Fault(const std::string& what, const std::string& text, std::size_t longest) {
  if (Characters(text) > longest) return what + " has more than " + std::to_string(longest) + " characters.";
  const auto forbidden = [](char c) { return static_cast<unsigned char>(c) < ' ' || c == ';'; };
  if (std::ranges::any_of(text, forbidden)) {
    return what + " has a TAB, a line end or a semicolon in it, which part the fields of the file.";
  }
  if (From_Windows_1252(To_Windows_1252(text)) != text) {
    return what + " has a character that the settings file cannot hold.";
  }
  return {};
}

std::string Number_Fault(const std::string& what, std::string_view text, double greatest = greatest_number) {
  const auto number = Whole_Number_Text(text);
  if (!number) return what + " is not a number.";
  return std::fabs(*number) <= greatest ? "" : what + " is too large.";
}

std::string Decimals_Fault(std::string_view text) {
  const auto number = Whole_Number_Text(text);
  const bool fits = number && *number >= 0 && *number <= most_decimals && *number == Round_Whole(*number);
  return fits ? "" : "Decimals are a whole number from 0 to 4.";
}

std::string Linear_Fault(const Sensor_Draft& draft) {
  for (const auto& [what, text] : {std::pair("Sensor gain", draft.gain), {"Sensor offset", draft.offset}}) {
    if (std::string fault = Number_Fault(what, text); !fault.empty()) return fault;
  }
  for (const auto& [what, text] :
       {std::pair("Sensor in min", draft.minimum), {"Sensor in max", draft.maximum}}) {
    if (std::string fault = Number_Fault(what, text, greatest_raw); !fault.empty()) return fault;
  }
  if (Val_Any(draft.gain) == 0) return "A sensor gain of 0 gives one value for every input.";
  if (Val_Any(draft.minimum) >= Val_Any(draft.maximum)) return "Sensor in min is not below Sensor in max.";
  return {};
}

std::string Table_Fault(const Sensor_Draft& draft) {
  for (std::size_t i = 0; i < draft.values.size(); ++i) {
    std::string fault = Number_Fault("Value " + std::to_string(i + 1), draft.values[i]);
    if (!fault.empty()) return fault;
  }
  return {};
}

std::string Name_Fault(const std::string& name) {
  if (name.find_first_not_of(' ') == std::string::npos) return "The sensor has no name.";
  if (name == Sens_Def[0].name) return "\"" + name + "\" is no name for a sensor.";
  return Text_Fault("The name", name, longest_sensor_name);
}

/// Row of the sensor of that name; behind the last when there is none.
std::size_t Row_For(const std::string& name) {
  const auto same = std::ranges::find(Sens_Def.begin() + 1, Sens_Def.end(), name, &Sensor::name);
  return static_cast<std::size_t>(same - Sens_Def.begin());
}

/// "map_lst" lines that are in use: an empty one ends the list.
std::vector<Ini_Value> Axes_In_Use(std::string_view bytes) {
  auto lines = Values_Of_Key(bytes, axis_key);
  lines.erase(std::ranges::find(lines, "", &Ini_Value::text), lines.end());
  return lines;
}

std::string Axis_Of_Definition(std::string_view line) {
  const Sensor_Row row = Row_Of_Line(line);
  return Axis_Line(row.sensor, row.columns);
}

/// @p row counts from 1. An axis that was made by hand stays.
std::string With_Definition_Replaced(const std::string& bytes, std::size_t row, std::string_view line) {
  const Sensor_Row old = Row_Of_Line(Values_Of_Key(bytes, sensor_key)[row - 1].text);
  const auto axes = Axes_In_Use(bytes);
  std::string changed = With_List_Line(bytes, sensor_key, row, line);
  if (row > axes.size() || !Is_Computed_Axis(axes[row - 1].text, old.sensor, old.columns)) return changed;
  return With_List_Line(changed, axis_key, row, Axis_Of_Definition(line));
}

/// The axes that earlier sensors lack come before the new one's. Axes behind the last sensor, which belong to
/// none, move on.
std::string With_Definition_Added(const std::string& bytes, std::string_view line) {
  const std::size_t row = Values_Of_Key(bytes, sensor_key).size() + 1;
  std::string changed = With_New_List_Line(bytes, sensor_key, row, line);
  const auto sensors = Values_Of_Key(changed, sensor_key);
  for (std::size_t n = std::min(Axes_In_Use(bytes).size() + 1, row); n <= row; ++n) {
    changed = With_New_List_Line(changed, axis_key, n, Axis_Of_Definition(sensors[n - 1].text));
  }
  return changed;
}

bool Name_Is_Not_Unique(const std::string& name) {
  return std::ranges::count(Sens_Def.begin() + 1, Sens_Def.end(), name, &Sensor::name) > 1;
}

bool Is_There_To_The_Letter(std::size_t row, const std::string& line) {
  return row < Sens_Def.size() && Definition_Line(Draft_Of(Sens_Def[row], Sens_Tab[row])) == line;
}

/// What the status line says once the file has the sensor.
std::string Stored_Text(const std::string& name) {
  const auto row = Row_For(name);
  const auto axes = Read_Keys(axis_key);
  const bool by_hand =
      row <= axes.size() && !Is_Computed_Axis(axes[row - 1].text, Sens_Def[row], Sens_Tab[row]);
  return "Stored the sensor \"" + name + "\" in " + Ini_File_Name + "." +
         (by_hand ? " Its load axis was made by hand and stays as it is." : "");
}

}  // namespace

Sensor_Draft Draft_Of(const Sensor& sensor, const Table_Columns& table) {
  Sensor_Draft draft;
  draft.linear = sensor.kind != "Tab";
  draft.name = sensor.name;
  draft.gain = Number_Text(sensor.gain);
  draft.offset = Number_Text(sensor.offset);
  draft.minimum = Number_Text(sensor.minimum);
  draft.maximum = Number_Text(sensor.maximum);
  for (std::size_t i = 0; i < draft.values.size(); ++i) draft.values[i] = Number_Text(table[i + 1]);
  draft.unit = sensor.unit;
  draft.decimals = Number_Text(table[0]);
  draft.input_unit = sensor.input_unit;
  return draft;
}

std::string Definition_Line(const Sensor_Draft& draft) {
  const std::array linear{draft.gain, draft.offset, draft.minimum, draft.maximum};
  const std::span<const std::string> numbers =
      draft.linear ? std::span<const std::string>(linear) : std::span<const std::string>(draft.values);
  std::string line = draft.name + "\t" + (draft.linear ? "Linear" : "Tab") + "\t";
  for (const std::string& number : numbers) line += File_Number(number) + "\t";
  return line + draft.unit + "\t" + File_Number(draft.decimals) + "\t" + draft.input_unit;
}

std::string Fault_Of(const Sensor_Draft& draft) {
  for (std::string fault : {Name_Fault(draft.name), draft.linear ? Linear_Fault(draft) : Table_Fault(draft),
                            Text_Fault("The unit", draft.unit, longest_sensor_unit),
                            Text_Fault("The unit of the input", draft.input_unit, longest_sensor_unit),
                            Decimals_Fault(draft.decimals)}) {
    if (!fault.empty()) return fault;
  }
  return {};
}

std::string With_Sensor(const std::string& bytes, const std::string& line) {
  const std::string name = Row_Of_Line(line).sensor.name;
  const auto sensors = Values_Of_Key(bytes, sensor_key);
  const auto same = std::ranges::find(
      sensors, name, [](const Ini_Value& sensor) { return Row_Of_Line(sensor.text).sensor.name; });
  if (same == sensors.end()) return With_Definition_Added(bytes, line);
  return With_Definition_Replaced(bytes, static_cast<std::size_t>(same - sensors.begin()) + 1, line);
}

bool Store_As_Sensor_Definition(const Sensor_Draft& draft, const std::string& opened) {
  const std::string line = Definition_Line(draft);
  const std::size_t row = Row_For(draft.name);
  if (Is_There_To_The_Letter(row, line)) return true;
  std::string fault = Fault_Of(draft);
  if (fault.empty() && Name_Is_Not_Unique(draft.name)) {
    fault = "There is more than one sensor \"" + draft.name + "\". Choose another name.";
  }
  if (!fault.empty()) {
    Tell(fault, platform::Icon::warning);
    return false;
  }
  if (row < Sens_Def.size() && draft.name != opened &&
      !Ask_Yes_No("There is a sensor \"" + draft.name + "\" already. Replace it?", "Sensor settings")) {
    return false;
  }
  const bool kept = Change_Ini([line](const std::string& bytes) { return With_Sensor(bytes, line); });
  Read_Definitions();
  Update_Tabs();
  Update_All();
  if (kept) Show_Notice(Stored_Text(draft.name));
  return true;
}

}  // namespace kx
