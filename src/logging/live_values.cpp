#include <algorithm>

#include "logging/live_log.h"
#include "logging/log_array.h"
#include "logging/log_settings.h"
#include "logging/log_signals.h"
#include "settings/numbers.h"
#include "settings/text_encoding.h"

namespace kx {

std::array<Live_Value, live_value_count> live_values = {{{"txt_Live_1", {}},
                                                         {"txt_Live_2", {}},
                                                         {"txt_Live_3", {}},
                                                         {"txt_Live_4", {}},
                                                         {"txt_Live_5", {}},
                                                         {"txt_Live_6", {}},
                                                         {"txt_Live_7", {}},
                                                         {"txt_Live_8", {}}}};

namespace {

/// The signals of the read-outs, in their order.
constexpr std::array<Log_Signal, live_value_count> shown = {
    Log_Signal::RPM,    Log_Signal::AN1_In,   Log_Signal::AN2_In,  Log_Signal::AN3_In,
    Log_Signal::AN4_In, Log_Signal::IGNITION, Log_Signal::IN_Fuel, Log_Signal::TOT_Fuel};

std::string Value_Text(Log_Signal signal, int row) {
  const int slot = Slot_Of(signal);
  if (slot > log_slot_count || !LogArray.Has(row, slot)) return {};
  const double value = LogArray(row, slot);
  if (signal == Log_Signal::RPM) return Format(Round_Whole(value), "0") + " rpm";
  return Format(value, "0.00") + " " + From_Windows_1252(Signal_Unit(slot - 1));
}

void Show_Values() {
  if (live_log_hooks.show_values) live_log_hooks.show_values();
}

}  // namespace

void cmd_Show_Current_Data_Click() {
  const int row = std::min(Log_Row_Count, log_capacity);
  for (std::size_t i = 0; i < shown.size(); ++i) {
    live_values.at(i).text = row < 1 ? std::string() : Value_Text(shown.at(i), row);
  }
  Show_Values();
}

void cmd_Show_Current_Data_Clear() {
  for (Live_Value& value : live_values) value.text.clear();
  Show_Values();
}

}  // namespace kx
