#include "workspace/table_axes.h"

#include <algorithm>
#include <array>

#include "settings/failure.h"

namespace kx {
namespace {

constexpr double counts_a_curve_entry = 16;  ///< of "Analog2 in", between two entries of the Analog 2 curve

/// The second inputs in the order of their lists; the first list entry, "0", is nothing.
constexpr std::array second_inputs{Log_Signal::AN1_Out, Log_Signal::AN2_Out, Log_Signal::AN2_In};

bool Is_Rpm(Axis axis) { return axis == Axis::rpm || axis == Axis::fuel_rpm; }

}  // namespace

Log_Signal Analog_Input(int input) {
  constexpr std::array inputs{Log_Signal::AN1_In, Log_Signal::AN2_In, Log_Signal::AN3_In, Log_Signal::AN4_In};
  return inputs.at(static_cast<std::size_t>(input));
}

Load_Source Load_Source_Of(Table table, const Byte_Image& image) {
  const Table_Row& row = Row_Of(table);
  Load_Source source{Analog_Input(Field_Of(image, row.load_input.value()))};
  const int second = row.load_second ? Field_Of(image, *row.load_second) : 0;
  if (second > 0) source.subtracted = second_inputs.at(static_cast<std::size_t>(second - 1));
  return source;
}

std::optional<Table_Axis> Table_Axis_Of(Table table, const Byte_Image& image) {
  const int entries = Entries_Of(table, image);
  switch (Row_Of(table).axis) {
    case Axis::load:
      return Table_Axis{{entries, counts_a_load_entry}, Load_Source_Of(table, image)};
    case Axis::rpm:
      return Table_Axis{{entries, rpm_step}, {}};
    case Axis::fuel_rpm:
      return Table_Axis{{entries, Res500(image) ? rpm_step : fine_rpm_step}, {}};
    case Axis::rpm_or_volts:
      if (!Analog2_Is_Curve(image)) return Table_Axis{{entries, rpm_step}, {}};
      return Table_Axis{{entries, counts_a_curve_entry}, Load_Source{Log_Signal::AN2_In}};
    case Axis::rpm_times_map:
      break;
  }
  return {};
}

Table Rpm_Table_Beside(Table load_table) {
  const auto* const found = std::find_if(table_rows.begin(), table_rows.end(), [&](const Table_Row& row) {
    return row.tab == Row_Of(load_table).tab && Is_Rpm(row.axis);
  });
  if (found == table_rows.end()) Fail_Subscript();
  return found->table;
}

}  // namespace kx
