#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "logging/log_signals.h"

namespace kx {

/// The newest row of a live log, as the box has sent it. Only what is asked for is decoded, so that a row can
/// be looked at as often as the box sends one.
class Live_Row {
 public:
  /// @p row without its line end.
  explicit Live_Row(std::string row) : row_(std::move(row)) {}

  /// Engine speed, rpm, by the sensor that the log gives to it. Nothing without one.
  [[nodiscard]] std::optional<double> Rpm() const;

  /// Raw counts of a signal, 0 to 255. Nothing for one that the row does not carry or has no number for.
  [[nodiscard]] std::optional<double> Counts(Log_Signal signal) const;

  friend bool operator==(const Live_Row&, const Live_Row&) = default;

 private:
  std::string row_;
};

/// Characters at the end of a stream in which its newest row is looked for.
inline constexpr std::size_t newest_row_reach = 600;

/// The last whole row of @p stream; nothing unless the line before it is as long, since what a fault on the
/// line has made of a row is of another length.
[[nodiscard]] std::optional<Live_Row> Newest_Row(std::string_view stream);

}  // namespace kx
