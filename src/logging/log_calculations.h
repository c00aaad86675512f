#pragma once

#include <optional>
#include <span>

#include "logging/fuel_filter.h"
#include "logging/log_array.h"

/// Power, torque, speed, acceleration and duty cycles of a log, computed from its rpm and injection times.
///
/// A column holds one signal, element 0 being row 1 of the log; NaN is an empty cell, which counts as 0 where
/// it is read. A result that cannot be computed leaves its cell as it was. Columns of one log have one
/// length.
namespace kx {

/// One signal of a log; empty for a signal that the log has no slot for.
using Log_Column = std::span<double>;

/// What the user chose for the calculations, as plain numbers.
struct Calculation_Inputs {
  double speed_divisor = 3.6;      ///< a speed in the chosen unit by this is
                                   ///< m/s: 3.6, 3.6/1.609344 or 1
  double gearing = 0;              ///< speed in the chosen unit at 1000 rpm
  double mass = 1000;              ///< of the car, kg
  double max_hp = 500;             ///< largest power shown, hp
  double min_hp = 20;              ///< smallest, hp; a coasting car shows this
  double drag = 0;                 ///< half of Cw x area x air density, kg/m
  double torque_divisor = 1;       ///< 1 for Nm, 1.35582 for ft-lbs
  int rpm_smoothing = 0;           ///< rows to each side
  int power_smoothing = 0;         ///< rows before
  std::optional<double> in_gain;   ///< gain of the sensor of "IN Fuel DC"; nothing without a sensor
  std::optional<double> tot_gain;  ///< the same for "TOT Fuel DC"
  bool fuel_filter = false;
  int boost_sensor = 9;  ///< analog input of the boost, 0 to 3; 9, no_dataset, filters nothing
  Fuel_Filter_Limits fuel_limits;
};

/// The signals that the calculations read and write, all over the same rows.
struct Calculation_Columns {
  Log_Column rpm;           ///< rpm; without its stairs and smoothed afterwards
  Log_Column rpm2;          ///< rpm, smoothed
  Log_Column in_fuel;       ///< ms; the filter writes it
  Log_Column tot_fuel;      ///< ms; the filter writes it
  Log_Column power;         ///< hp
  Log_Column torque;        ///< Nm or ft-lbs
  Log_Column speed;         ///< in the chosen unit
  Log_Column acceleration;  ///< m/s^2 in every unit of speed
  Log_Column in_duty;       ///< percent by the gain of its sensor
  Log_Column tot_duty;      ///< likewise
  Log_Column boost;         ///< raw copy of the boost sensor's input; empty when the
                            ///< sensor is unknown
  Log_Column minuend;       ///< slot 19
  Log_Column subtrahend;    ///< slot 18
  Log_Column difference;    ///< slot 34
};

/// The box measures rpm less often than it sends rows, so values repeat: draws straight lines over the steps
/// of @p rpm into @p rpm2, to 2 decimals, and copies them back.
void RPM2_Filter1(Log_Column rpm, Log_Column rpm2);

/// Centred moving average over @p n rows to each side, to 2 decimals; the ends take the nearest average. Does
/// nothing to a log of 2n + 1 rows or fewer. @p source and @p target may be one column.
void RPM2_Filter3(int n, Log_Column source, Log_Column target);

/// Trailing moving average over a row and the @p n before it, ends and rounding as in RPM2_Filter3. Does
/// nothing to a log of n + 1 rows or fewer.
void RPM2_Filter4(int n, Log_Column source, Log_Column target);

/// The whole run in its order, RPM2_Filter1 included.
void Calculate_Columns(const Calculation_Columns& columns, const Calculation_Inputs& inputs);

/// The same over rows 1 to @p rows of @p log, by the slots of the log's layout. Called by KX_Log_Data_Read.
void Calculate_Signals(Log_Array& log, int rows, const Calculation_Inputs& inputs);

}  // namespace kx
