#include "logging/hit_map.h"

#include <algorithm>
#include <cmath>

#include "logging/calculation_inputs.h"
#include "logging/fuel_filter.h"
#include "settings/failure.h"

namespace kx {
namespace {

std::size_t Index_In(const Hit_Map& map, int load_entry, int rpm_entry) {
  return static_cast<std::size_t>(load_entry - 1) * static_cast<std::size_t>(map.rpm.entries) +
         static_cast<std::size_t>(rpm_entry - 1);
}

/// Adds @p value; the mean holds the sum until all rows are in.
void Take(Hit_Cell& cell, double value) {
  cell.smallest = cell.rows == 0 ? value : std::min(cell.smallest, value);
  cell.largest = cell.rows == 0 ? value : std::max(cell.largest, value);
  cell.mean += value;
  ++cell.rows;
}

/// The stretch of the log that a choice asks for, column by column.
class Stretch {
 public:
  Stretch(const Log_Array& log, const Hit_Choice& choice)
      : log_(log), first_(std::max(1, choice.first_row)), last_(std::min(log_capacity, choice.last_row)) {}

  [[nodiscard]] std::size_t Size() const { return static_cast<std::size_t>(std::max(0, last_ - first_ + 1)); }
  [[nodiscard]] std::span<const double> Column(int slot) const {
    return log_.Column(slot).subspan(static_cast<std::size_t>(first_), Size());
  }
  [[nodiscard]] std::vector<double> Load(const Load_Source& source) const {
    return Load_Column(log_, source, first_, last_);
  }

 private:
  const Log_Array& log_;
  int first_;
  int last_;
};

void Leave_Out_Of_Range(const Signal_Range& range, const Stretch& stretch, std::vector<char>& taken) {
  if (range.slot == 0) return;
  const auto column = stretch.Column(range.slot);
  for (std::size_t i = 0; i < taken.size(); ++i) {
    if (!(column[i] >= range.low && column[i] <= range.high)) taken[i] = 0;
  }
}

void Leave_Out_Low_Load(const Hit_Columns& columns, const Stretch& stretch, std::vector<char>& taken) {
  const Fuel_Filter_Limits limits = Inputs_Of(log_settings).fuel_limits;
  const auto fuel = stretch.Column(Slot_Of(Log_Signal::IN_Fuel));
  for (std::size_t i = 0; i < taken.size(); ++i) {
    if (!High_Load({.boost = columns.load[i], .rpm = columns.rpm[i], .in_fuel = fuel[i]}, limits)) {
      taken[i] = 0;
    }
  }
}

}  // namespace

const Hit_Cell& Hit_Map::At(int load_entry, int rpm_entry) const {
  const bool inside =
      load_entry >= 1 && load_entry <= load.entries && rpm_entry >= 1 && rpm_entry <= rpm.entries;
  if (!inside) Fail_Subscript();
  return cells.at(Index_In(*this, load_entry, rpm_entry));
}

Hit_Map Hit_Map_Of(const Hit_Columns& columns, std::span<const char> taken, const Axis_Spacing& load,
                   const Axis_Spacing& rpm) {
  Hit_Map map{load, rpm, {}, 0};
  map.cells.resize(static_cast<std::size_t>(load.entries) * static_cast<std::size_t>(rpm.entries));
  for (std::size_t i = 0; i < taken.size(); ++i) {
    const double value = columns.value[i];
    if (taken[i] == 0 || std::isnan(columns.rpm[i]) || std::isnan(columns.load[i]) || std::isnan(value)) {
      continue;
    }
    Take(map.cells[Index_In(map, load.Nearest(columns.load[i]), rpm.Nearest(columns.rpm[i]))], value);
    ++map.rows;
  }
  for (Hit_Cell& cell : map.cells) cell.mean = cell.rows == 0 ? 0 : cell.mean / cell.rows;
  return map;
}

Hit_Map Hit_Map_Of_Log(const Log_Array& log, const Hit_Choice& choice) {
  const Stretch stretch(log, choice);
  const std::vector<double> load = stretch.Load(choice.source);
  const Hit_Columns columns{stretch.Column(Slot_Of(Log_Signal::RPM)), load,
                            stretch.Column(choice.value_slot)};
  std::vector<char> taken(stretch.Size(), 1);
  for (const Signal_Range& range : choice.ranges) Leave_Out_Of_Range(range, stretch, taken);
  if (choice.high_load) Leave_Out_Low_Load(columns, stretch, taken);
  return Hit_Map_Of(columns, taken, choice.load, choice.rpm);
}

std::optional<double> Measure_Of(const Hit_Cell& cell, Hit_Measure measure) {
  if (cell.rows == 0) return {};
  switch (measure) {
    case Hit_Measure::rows:
      return cell.rows;
    case Hit_Measure::mean:
      return cell.mean;
    case Hit_Measure::smallest:
      return cell.smallest;
    case Hit_Measure::largest:
      return cell.largest;
  }
  Fail_Subscript();
}

}  // namespace kx
