#include "logging/live_row.h"

#include "logging/log_reception.h"
#include "logging/log_rows.h"
#include "logging/log_settings.h"
#include "sensors/log_sensors.h"

namespace kx {
namespace {

/// Takes the last line off @p lines, which end in a line feed; without its line end.
std::string_view Take_Last_Line(std::string_view& lines) {
  if (lines.empty()) return {};
  std::string_view text = lines.substr(0, lines.size() - 1);
  const std::size_t before = text.rfind('\n');
  const std::size_t first = before == std::string_view::npos ? 0 : before + 1;
  lines = lines.substr(0, first);
  text.remove_prefix(first);
  if (text.ends_with('\r')) text.remove_suffix(1);
  return text;
}

}  // namespace

std::optional<double> Live_Row::Rpm() const {
  const Log_Sensor* sensor = Find_Log_Sensor(Signal_Row(0).sensor);
  return sensor == nullptr ? std::nullopt : Rpm_Sensor_Value(*sensor, Rpm_Field_Of(row_));
}

std::optional<double> Live_Row::Counts(Log_Signal signal) const {
  const bool old = Is_Short_Row(Field_Count_Of(row_));
  return Counts_Field_Of(row_, Slot_Of(signal, old ? Log_Layout::old : Log_Layout::current));
}

std::optional<Live_Row> Newest_Row(std::string_view stream) {
  std::string_view lines = Whole_Lines(stream);
  const std::string_view row = Take_Last_Line(lines);
  const std::string_view before = Take_Last_Line(lines);
  if (row.empty() || row.size() != before.size() || Is_Header_Or_Remark(row)) return {};
  return Live_Row(std::string(row));
}

}  // namespace kx
