#include "logging/log_signals.h"

#include "settings/failure.h"

namespace kx {
namespace {

struct Signal_Slots {
  Log_Signal signal;
  int current;
  int old;
};

constexpr std::array<Signal_Slots, static_cast<std::size_t>(Log_Signal::count)> signal_slots{{
    {Log_Signal::RPM, 1, 1},
    {Log_Signal::AN1_In, 2, 2},
    {Log_Signal::AN2_In, 3, 3},
    {Log_Signal::AN3_In, 4, 4},
    {Log_Signal::AN4_In, 5, no_slot},
    {Log_Signal::IGNITION, 6, 5},
    {Log_Signal::IN_Fuel, 7, 6},
    {Log_Signal::TOT_Fuel, 8, 7},
    {Log_Signal::ADD_Fuel, 9, 8},
    {Log_Signal::PWM_In_Time, 10, 9},
    {Log_Signal::AN1_Out, 11, no_slot},
    {Log_Signal::AN2_Out, 12, no_slot},
    {Log_Signal::PWM_Out, 13, no_slot},
    {Log_Signal::IAT_Fuel, 14, no_slot},
    {Log_Signal::Time_Sec, 15, no_slot},
    {Log_Signal::Time_Hundreds, 16, no_slot},
    {Log_Signal::AN1_Slave, 17, 10},
    {Log_Signal::AN2_Slave, 18, 11},
    {Log_Signal::AN3_Slave, 19, 12},
    {Log_Signal::AN4_Slave, 20, 13},
    {Log_Signal::RPM2, 21, 21},
    {Log_Signal::POWER, 22, 22},
    {Log_Signal::TORQUE, 23, 23},
    {Log_Signal::SPEED, 24, 24},
    {Log_Signal::ACCELERATION, 25, 25},
    {Log_Signal::IN_Fuel_DC, 26, 26},
    {Log_Signal::TOT_Fuel_DC, 27, 27},
    {Log_Signal::AD1_BIN, 31, 31},
    {Log_Signal::AD2_BIN, 32, 32},
    {Log_Signal::AD3_BIN, 33, 33},
    {Log_Signal::Spare, 35, 35},
}};

constexpr bool In_Order() {
  for (std::size_t i = 0; i < signal_slots.size(); ++i) {
    if (signal_slots[i].signal != static_cast<Log_Signal>(i)) return false;
  }
  return true;
}
static_assert(In_Order());

constexpr std::array<std::string_view, signal_rows> current_names{
    "RPM",       "AN1 In",         "AN2 In",      "AN3 In",       "AN4 In",      "IGNITION",    "IN Fuel",
    "TOT Fuel",  "ADD Fuel",       "PWM In Time", "AN1 Out",      "AN2 Out",     "PWM Out",     "IAT Fuel",
    "Time, sec", "Time, hundreds", "AN1 (slave)", "AN2 (slave)",  "AN3 (slave)", "AN4 (slave)", "Option",
    "POWER",     "TORQUE",         "SPEED",       "ACCELERATION", "IN Fuel DC",  "TOT Fuel DC", "Option",
    "Option",    "Option",         "AD1_BIN",     "AD2_BIN",      "AD3_BIN",     "Option",      "Option",
    "Option",    "Option",         "Option",      "Option",       "Option"};

/// The old layout names the rows of its own fields; behind them it is as the present one.
constexpr std::array<std::string_view, 20> old_names{
    "RPM",      "AN1 In",      "AN2 In",      "AN3 In",      "IGNITION",    "IN Fuel",     "TOT Fuel",
    "ADD FUEL", "PWM In Time", "AN1 (slave)", "AN2 (slave)", "AN3 (slave)", "AN4 (slave)", "Option",
    "Option",   "Option",      "Option",      "Option",      "Option",      "Option"};

}  // namespace

Log_Layout log_layout = Log_Layout::current;

int Slot_Of(Log_Signal signal, Log_Layout layout) {
  const auto index = static_cast<std::size_t>(signal);
  if (index >= signal_slots.size()) Fail_Subscript();
  return layout == Log_Layout::old ? signal_slots[index].old : signal_slots[index].current;
}

int Slot_Of(Log_Signal signal) { return Slot_Of(signal, log_layout); }

std::string_view Default_Signal_Name(int row, Log_Layout layout) {
  if (row < 0 || row >= signal_rows) Fail_Subscript();
  const auto index = static_cast<std::size_t>(row);
  return layout == Log_Layout::old && index < old_names.size() ? old_names[index] : current_names[index];
}

std::string_view Default_Signal_Name(int row) { return Default_Signal_Name(row, log_layout); }

int Signal_Count() {
  return static_cast<int>(log_layout == Log_Layout::old ? old_names.size() : current_names.size());
}

void Load_Default_Signal_Names() { log_layout = Log_Layout::current; }

void Load_Old_Signal_Positions_InLogDataArray() { log_layout = Log_Layout::old; }

}  // namespace kx
