#pragma once

#include <array>
#include <string>
#include <string_view>

#include "sensors/sensor_store.h"

/// New and changed tune sensors: from the editor's texts to lines of the ini file.
namespace kx {

/// A definition in the making, as it stands in the editor's boxes. Numbers may have "." or ",".
struct Sensor_Draft {
  bool linear = true;  ///< "Linear", else "Tab"
  std::string name;
  std::string gain;     ///< units a count; this and the next three of a "Linear" only
  std::string offset;   ///< units at raw 0
  std::string minimum;  ///< least raw value
  std::string maximum;  ///< greatest raw value
  std::array<std::string, table_points> values;  ///< at raw 0, 8 to 256; of a "Tab" only
  std::string unit;
  std::string decimals;  ///< 0 to 4
  std::string input_unit;
};

constexpr int longest_sensor_name = 60;  ///< characters
constexpr int longest_sensor_unit = 20;

/// The editor's texts of a sensor that is there.
[[nodiscard]] Sensor_Draft Draft_Of(const Sensor& sensor, const Table_Columns& table);

/// The definition line, fields parted by TAB.
[[nodiscard]] std::string Definition_Line(const Sensor_Draft& draft);

/// Why @p draft cannot be a sensor, as a text for the user; empty when it can.
[[nodiscard]] std::string Fault_Of(const Sensor_Draft& draft);

/// Text @p bytes of an ini file with the sensor of definition line @p line: in place of the one of that name,
/// else behind the last one. Its load axis goes along as the "map_lst" line of the same number, together with
/// those that sensors before it lack; a line in place is rewritten only if it is what the old definition
/// gave.
[[nodiscard]] std::string With_Sensor(const std::string& bytes, const std::string& line);

/// Keeps the sensor in the ini file, see With_Sensor. Then the lists are read again, all views are filled,
/// and the status line says so. A draft with a fault is told of; one that is there already to the letter
/// changes nothing; a sensor that is there under another name than @p opened, the tune sensor that the draft
/// was made from (empty for none), is replaced only when the user agrees. False when nothing is stored for
/// one of these reasons.
bool Store_As_Sensor_Definition(const Sensor_Draft& draft, const std::string& opened = "");

}  // namespace kx
