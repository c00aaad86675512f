#pragma once

#include <optional>

namespace kx {

/// When the injection time counts as misread. Kept in the settings of a log; the defaults are the program's.
struct Fuel_Filter_Limits {
  double min_rpm = 3000;    ///< rpm above which the ratio may be learned
  double min_boost = 100;   ///< raw boost above which it may be learned, 0 to 255
  double min_fuel = 5;      ///< injection time above which it may be learned, ms
  double ratio = 0.7;       ///< part of the learned ratio below which a reading is false
  double boost_drop = -10;  ///< raw boost change a row; a larger drop explains falling fuel
};

/// Milliseconds of one injection period at one rpm: one injection each two turns.
inline constexpr double period_ms_rpm = 120000;

/// Duty cycle in percent of @p injection_ms at @p rpm, in steps of 1; NaN when it is beyond all numbers.
[[nodiscard]] double Duty_Cycle(double rpm, double injection_ms);

/// What one row gives to the filter.
struct Fuel_Row {
  double boost = 0;     ///< raw, 0 to 255
  double rpm = 0;       ///< rpm
  double in_fuel = 0;   ///< ms
  double tot_fuel = 0;  ///< ms
};

/// True above the least rpm, boost and injection time of @p limits: there the filter learns, and other views
/// of a log take it for load, too.
[[nodiscard]] bool High_Load(const Fuel_Row& row, const Fuel_Filter_Limits& limits);

/// What the filter makes of it. Nothing means: leave the slot as it is.
struct Filtered_Fuel {
  std::optional<double> in_fuel;   ///< ms
  std::optional<double> tot_fuel;  ///< ms
  double in_duty = 0;              ///< percent, before the gain of its sensor
  double tot_duty = 0;             ///< likewise
};

/// Replaces an injection time that collapses at full load by that of an injector which stays open.
///
/// When the injectors are saturated, the box's reading of the injection time can collapse although the engine
/// is at full load. The filter learns the ratio of injection time to boost, knows a reading far below it for
/// false, and then reports the injector as fully open. It must see the rows in their order.
class Fuel_Filter {
 public:
  explicit Fuel_Filter(const Fuel_Filter_Limits& limits) : limits_(limits) {}

  /// Takes the next row.
  [[nodiscard]] Filtered_Fuel Take(const Fuel_Row& row);

 private:
  [[nodiscard]] bool Too_Low(std::optional<double> ratio) const;
  [[nodiscard]] bool Is_Full(const Fuel_Row& row, std::optional<double> ratio);
  [[nodiscard]] bool Stays_Full(const Fuel_Row& row, std::optional<double> ratio);
  [[nodiscard]] bool Becomes_Full(const Fuel_Row& row, std::optional<double> ratio);
  void Learn(std::optional<double> ratio);

  Fuel_Filter_Limits limits_;
  double Fuel_Ratio = 0;  // ms a raw count; 0 is not yet set
  bool Fuel_Hold = false;
  double Fuel_Prev = 0;  // ms, as the row before stands after the filter
  int Boost_Prev = 0;    // raw
};

}  // namespace kx
