#pragma once

#include <array>
#include <string_view>

/// The named signals of a log and where the rows of the box carry them.
namespace kx {

constexpr int signal_rows = 40;  ///< rows of the log setup; row r is slot r + 1 of LogArray

enum class Log_Signal {
  RPM,
  AN1_In,
  AN2_In,
  AN3_In,
  AN4_In,
  IGNITION,
  IN_Fuel,
  TOT_Fuel,
  ADD_Fuel,
  PWM_In_Time,
  AN1_Out,
  AN2_Out,
  PWM_Out,
  IAT_Fuel,
  Time_Sec,
  Time_Hundreds,
  AN1_Slave,
  AN2_Slave,
  AN3_Slave,
  AN4_Slave,
  RPM2,  ///< RPM without its stairs, smoothed
  POWER,
  TORQUE,
  SPEED,
  ACCELERATION,
  IN_Fuel_DC,
  TOT_Fuel_DC,
  AD1_BIN,  ///< raw copy of AN1_In
  AD2_BIN,
  AD3_BIN,
  Spare,  ///< the first free slot behind all named ones
  count
};

/// Slot of a signal that the rows of an old box do not carry: skip it.
constexpr int no_slot = 99;

/// Slots that are the same in every layout.
constexpr int first_raw_copy_slot = 31;  ///< AD1_BIN; the next two are AD2_BIN and AD3_BIN
constexpr int difference_minuend_slot = 19;
constexpr int difference_subtrahend_slot = 18;
constexpr int difference_slot = 34;

/// Slot of the raw copy of @p slot, which the first three analog inputs have in every layout; no_slot for any
/// other.
[[nodiscard]] constexpr int Raw_Copy_Slot(int slot) {
  constexpr int first_copied = 2;
  constexpr int last_copied = 4;
  return slot >= first_copied && slot <= last_copied ? first_raw_copy_slot + slot - first_copied : no_slot;
}

/// Rows of the box: the present one with 14 fields or more, and the short one of old boxes.
enum class Log_Layout { current, old };

/// Fields of the shortest row of the present box.
constexpr int new_format_fields = 14;

/// True for the number of fields of an old box's row. 0, a log without rows, counts as the present box.
[[nodiscard]] constexpr bool Is_Short_Row(int field_count) {
  return field_count > 0 && field_count < new_format_fields;
}

/// Layout of the log in LogArray. Written by Load_Default_Signal_Names and
/// Load_Old_Signal_Positions_InLogDataArray.
extern Log_Layout log_layout;

/// Slot variable of a signal: 1 to 40, or no_slot.
[[nodiscard]] int Slot_Of(Log_Signal signal, Log_Layout layout);

/// The same in the layout of the log in LogArray.
[[nodiscard]] int Slot_Of(Log_Signal signal);

/// Name of setup row @p row, 0 to 39, in @p layout, as label_SignalName shows it.
[[nodiscard]] std::string_view Default_Signal_Name(int row, Log_Layout layout);
[[nodiscard]] std::string_view Default_Signal_Name(int row);

/// Number of rows that the layout names: 40, or 20 for the old one.
[[nodiscard]] int Signal_Count();

/// Slots and names of the present row.
void Load_Default_Signal_Names();

/// Slots and names of the short row; the signals that it does not carry get no_slot.
void Load_Old_Signal_Positions_InLogDataArray();

}  // namespace kx
