#pragma once

#include <optional>
#include <vector>

#include "logging/log_array.h"
#include "logging/log_signals.h"

namespace kx {

/// Greatest raw count of an analog signal.
inline constexpr double most_counts = 255;

/// What the box takes for the load of a table: an analog input and what it subtracts from that.
struct Load_Source {
  Log_Signal input = Log_Signal::AN1_In;
  std::optional<Log_Signal> subtracted = {};

  friend bool operator==(const Load_Source&, const Load_Source&) = default;
};

/// Load of one moment in counts, 0 to 255; a difference beyond an end is held there. @p raw gives the counts
/// of a signal or nothing; without one of the counts there is no load.
template <typename Raw>
[[nodiscard]] std::optional<double> Load_Counts(const Load_Source& source, Raw raw) {
  const std::optional<double> input = raw(source.input);
  if (!input || !source.subtracted) return input;
  const std::optional<double> less = raw(*source.subtracted);
  if (!less) return {};
  const double load = *input - *less;
  return load < 0 ? 0 : load > most_counts ? most_counts : load;
}

/// The same for rows @p first to @p last of @p log, NaN where a row has none. Counts come from the raw copies
/// where the log has them, else back from the value by the signal's sensor.
[[nodiscard]] std::vector<double> Load_Column(const Log_Array& log, const Load_Source& source, int first,
                                              int last);

}  // namespace kx
