#include "workspace/table_values.h"

#include <cmath>

#include "sensors/axis_spacing.h"
#include "sensors/load_axes.h"
#include "sensors/sensor_store.h"
#include "settings/image.h"
#include "settings/numbers.h"
#include "workspace/table_axes.h"
#include "workspace/table_meaning.h"

namespace kx {
namespace {

/// Volts at the box's input for entry @p row of a table in steps of 8 counts;
/// @p full_scale counts are 5 V.
std::string Input_Volts(int row, int full_scale) {
  return Format((row - 1) * counts_a_load_entry * 5.0 / full_scale, "0.00");
}

/// Row of the load axes for the input that a load table is based on.
int Axis_Row(Table table, const Byte_Image& image) {
  return Sensor_On_Input(Field_Of(image, Row_Of(table).load_input.value()) + 1);
}

}  // namespace

std::string Shown_Text_Of(Table table, std::uint8_t raw) { return Shown_Text_Of(Meaning_Of(table), raw); }

std::string Value_Heading(Table table) { return Unit_Of(Meaning_Of(table)); }

std::vector<std::string> Axis_Headings(Table table, const Byte_Image& image) {
  switch (Row_Of(table).axis) {
    case Axis::load:
      return {"Volt", Load_Axis_Unit(Axis_Row(table, image))};
    case Axis::rpm:
    case Axis::fuel_rpm:
      return {"RPM"};
    case Axis::rpm_or_volts:
      return {Analog2_Is_Curve(image) ? "in [V]" : "RPM"};
    case Axis::rpm_times_map:
      return {"RPM*MAP"};
  }
  return {};
}

/// Break points of the load axes come rounded to the decimals of their row.
Axis_Points Axis_Of(Table table, const std::vector<int>& rows) {
  Axis_Points axis;
  for (const int row : rows) axis.positions.push_back(Val_Any(Axis_Texts(table, row).back()));
  const std::string text = Axis_Texts(table, 1).back();
  const std::size_t point = text.find('.');
  const auto decimals = point == std::string::npos ? 0 : text.size() - point - 1;
  if (Row_Of(table).axis == Axis::load) axis.rounding = std::pow(10.0, -static_cast<double>(decimals));
  return axis;
}

std::vector<std::string> Axis_Texts(Table table, int row, const Byte_Image& image) {
  const auto rpm = [row](double step) { return Format((row - 1) * step, "000"); };
  switch (Row_Of(table).axis) {
    case Axis::load:
      return {Input_Volts(row, 256), Load_Axis_Text(Axis_Row(table, image), row)};
    case Axis::rpm:
      return {rpm(rpm_step)};
    case Axis::fuel_rpm:
      return {rpm(Res500(image) ? rpm_step : fine_rpm_step)};
    case Axis::rpm_or_volts:
      return {Analog2_Is_Curve(image) ? Input_Volts(row, 128) : rpm(rpm_step)};
    case Axis::rpm_times_map:
      return {Number_Text(MAF_Sim_Tab[static_cast<std::size_t>(row - 1)][0])};
  }
  return {};
}

}  // namespace kx
