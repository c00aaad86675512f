#include "logging/load_source.h"

#include <cmath>

#include "logging/log_settings.h"
#include "sensors/log_sensors.h"

namespace kx {
namespace {

/// Where the counts of a signal stand in the log.
struct Raw_Place {
  int slot = no_slot;
  const Log_Sensor* sensor = nullptr;  ///< null: the slot holds the counts themselves
};

/// Slots 2 to 4 have raw copies, in the rows of old boxes, too.
Raw_Place Place_Of(Log_Signal signal) {
  const int slot = Slot_Of(signal);
  if (slot > log_slot_count) return {};
  if (const int copy = Raw_Copy_Slot(slot); copy != no_slot) return {copy};
  const Log_Sensor* sensor = Find_Log_Sensor(Signal_Row(slot - 1).sensor);
  return sensor == nullptr ? Raw_Place{} : Raw_Place{slot, sensor};
}

std::optional<double> Counts_At(const Log_Array& log, const Raw_Place& place, int row) {
  if (place.slot == no_slot || !log.Has(row, place.slot)) return {};
  const double value = log(row, place.slot);
  return place.sensor == nullptr ? value : Raw_Of_Log_Value(*place.sensor, value);
}

}  // namespace

std::vector<double> Load_Column(const Log_Array& log, const Load_Source& source, int first, int last) {
  const Raw_Place input = Place_Of(source.input);
  const Raw_Place less = source.subtracted ? Place_Of(*source.subtracted) : Raw_Place{};
  std::vector<double> column;
  for (int row = first; row <= last; ++row) {
    const auto load = Load_Counts(source, [&](Log_Signal signal) {
      return Counts_At(log, signal == source.input ? input : less, row);
    });
    column.push_back(load.value_or(Log_Array::empty));
  }
  return column;
}

}  // namespace kx
