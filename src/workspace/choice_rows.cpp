#include "settings/refresh.h"
#include "workspace/choice_rules.h"

namespace kx {
namespace {

using enum Choice_Kind;
using Items = std::span<const std::string_view>;

constexpr std::array<std::string_view, 4> inputs{"Analog1 in", "Analog2 in", "Analog3 in", "Analog4 in"};
constexpr std::array<std::string_view, 4> subtracted{"0", "Analog1 out", "Analog2 out", "Analog2 in"};
constexpr std::array<std::string_view, 2> table_units{"Degrees in Load table, Percent in RPM table",
                                                      "Degrees in RPM table, Percent in Load table"};
constexpr std::array<std::string_view, 2> resolutions{"500 RPM, (default)",
                                                      "250 RPM, (also disables AN2 out function)"};
constexpr std::array<std::string_view, 2> ignition_modes{"Ignition retard only",
                                                         "Ignition advance and retard"};
constexpr std::array<std::string_view, 2> precisions{"Low, Default (+-25 deg or +-200%)",
                                                     "High, (+-13 deg or +-100%)"};
constexpr std::array<std::string_view, 2> strategies{"Enrichment every fuel pulse",
                                                     "Enrichment only for >4ms pulses"};
constexpr std::array<std::string_view, 2> enrichments{"Adding fuel pulse width",
                                                      "Increase simulated MAF signal"};
constexpr std::array<std::string_view, 2> maf_outputs{"Analog1 out", "Analog2 out"};
constexpr std::array<std::string_view, 2> maf_limits{"No MAF SIM limit",
                                                     "MAF SIM limit (disables Ignition RPM table)"};
constexpr std::array<std::string_view, 5> io_modes{"Mode1, 4 fuel, 2 ign, PWM on pin 5", "Mode2, not in use",
                                                   "Mode3, 5 fuel, 1 ign. IgnB as fuelE", "Mode4, not in use",
                                                   "Mode5, 4 fuel, 1 ign. PWM on IgnB"};
constexpr std::array<std::string_view, 2> fuel_pulses{"1 fuel pulse per cycle (default)",
                                                      "2 fuel pulses per cycle "};
constexpr std::array<std::string_view, 2> box_roles{"Master", "Slave"};
constexpr std::array<std::string_view, 4> an2_modes{
    "Mode1, Analog2 limit (default)", "Mode2, Function of Analog2 in", "Mode3, Analog2 limit trim",
    "Mode4, Boost sensor activated output"};
constexpr std::array<std::string_view, 3> fuel_methods{"Extended stock pulse", "Synchronized pulse",
                                                       "100 Hz PWM controlled extra injectors"};
constexpr std::array<std::string_view, 2> trims{"Trim same", "Trim individual"};

constexpr std::string_view sync_tip =
    "Update analog value once every engine cyclet (otherwise 600 times/sec)";

constexpr Choice_Row List(std::string_view name, std::string_view label, Items items, map::Field field,
                          void (*afterwards)(), const Choice_Rules& rules = choice::plain) {
  return {{name}, list, label, items, field, &rules, afterwards};
}

constexpr Choice_Row Check(std::string_view name, std::string_view caption, map::Field field,
                           void (*afterwards)() = nullptr, const Choice_Rules& rules = choice::plain) {
  return {{name}, check, caption, {}, field, &rules, afterwards};
}

constexpr Choice_Row Sync(std::string_view name, std::string_view caption, int input) {
  Choice_Row row = Check(name, caption, map::Analog_Sync(input));
  row.tip = sync_tip;
  return row;
}

constexpr Choice_Row Options(std::array<std::string_view, 3> names, std::string_view label, Items items,
                             map::Field field, void (*afterwards)() = nullptr,
                             const Choice_Rules& rules = choice::plain) {
  return {names, options, label, items, field, &rules, afterwards};
}

constexpr Choice_Row Undoable(Choice_Row row) {
  row.captures = true;
  return row;
}

constexpr Choice_Row Spread(Choice_Row row, map::Field more_bits) {
  row.more_bits = more_bits;
  return row;
}

/// In the order in which the views are filled: a sensor's list before what is shown through it.
constexpr std::array rows{
    Undoable(List("an2_combo", "Analog 2 mode", an2_modes, map::an2_mode, choice::Update_Meaning)),
    List("mafsim_combo", "MAF SIM MAP signal", inputs, map::maf_sim_input, choice::Update_Meaning),
    List("mafsim_out_combo", "MAF SIM analog out", maf_outputs, map::maf_sim_output, choice::Update_Meaning,
         choice::inverted),
    List("mafsim_limit_combo", "MAF SIM limit", maf_limits, map::maf_sim_limit, choice::Update_Meaning),
    Check("MAFSIM_enable", "Enable MAF-Sim (disables normal An1 out)", map::maf_sim_enable,
          choice::Update_Meaning, choice::by_mirror),
    List("boost_enable_combo", "Fuel Enrichment Strategy", strategies, map::fuel_enrichment_strategy,
         Update_Tabs),
    List("ignrpm_tblprec_combo", "Ign RPM Table Precision", precisions, map::ignition_rpm_fine,
         choice::Update_Ignition),
    List("ae_combo", "Base Acc Enrichment on", inputs, map::ae_input, choice::Update_Meaning),
    List("ae_combo2", "Acc Enrichment by", enrichments, map::ae_by_maf_signal, Update_Tabs),
    List("IAT_in_combo", "Intake Air Temp analog in", inputs, map::air_temperature_input,
         choice::Update_Meaning),
    Sync("an_sync_check(0)", "An1 sync", 0),
    Sync("an_sync_check(1)", "An2 sync", 1),
    Sync("an_sync_check(2)", "An3 sync", 2),
    Sync("an_sync_check(3)", "An4 sync", 3),
    Options({"master", "slave"}, "KX mode", box_roles, map::slave_mode),
    List("ig_mode_combo", "Ignition mode (master)", ignition_modes, map::ignition_mode_master,
         choice::Update_Ignition, choice::two_modes),
    List("ig_mode_slave_combo", "Ignition mode (slave) ", ignition_modes, map::ignition_mode_slave,
         choice::Update_Ignition, choice::two_modes),
    List("igtable_mode_combo", "Degres or [%] in Ignition tables", table_units, map::ignition_load_in_percent,
         choice::Update_Ignition, choice::table_units),
    Undoable(Spread(Options({"Ext_stock", "Sync_stock", "PWM_nostock"}, "Boost fuel enrichment method",
                            fuel_methods, map::fuel_not_extended, choice::Update_Meaning, choice::fuel_mode),
                    map::fuel_by_pwm)),
    // The bit of the first is the resolution of the fuel RPM table as well, and the second clears it.
    Check("max_ret", "Enable max ignition retard.", map::max_retard_enable, Update_Tabs),
    Check("AR_Enable", "Also retard on AE", map::retard_on_ae, Update_Tabs, choice::never_clears),
    Check("pwm1_check", "Run PWM as on/off switch. More than 50% duty cycle activates PWM output. ",
          map::pwm_on_off),
    Check("BoostControlPICheck",
          "Activate Boost control PID closed loop control. Boost sensor is selected in Box settings.",
          map::boost_pid, choice::Update_Boost_Control),
    Undoable(List("ig_neg_combo", "minus", subtracted, map::ignition_load_second, Update_Tabs)),
    Undoable(List("ig_pos_combo", "Base ignition load on:", inputs, map::ignition_load_input, Update_Tabs)),
    Undoable(List("fuel_neg_combo", "minus", subtracted, map::fuel_load_second, Update_Tabs)),
    Undoable(List("fuel_pos_combo", "Base fuel load on:", inputs, map::fuel_load_input, Update_Tabs)),
    List("pwm_combo", "Base PWM load on:", inputs, map::pwm_load_input, Update_Tabs),
    Spread(List("io_combo", "KX Digital I/O mode", io_modes, map::io_mode, Update_Tabs, choice::io_mode),
           map::io_mode_4),
    List("boost_combo", "Boost sensor", inputs, map::boost_input, choice::Update_Meaning),
    Undoable(Options({"Ind_Trim_Option(0)", "Ind_Trim_Option(1)"}, "Injector trim", trims,
                     map::individual_trim, Update_All, choice::trim)),
    Options({"Res_500", "Res_250"}, "Fuel RPM table resolution", resolutions, map::fuel_rpm_250,
            choice::Update_Resolution),
    Options({"Sequential_Fuel_opt", "Semi_Sequential_Fuel_opt"}, "Sequential fuel or not", fuel_pulses,
            map::semi_sequential_fuel),
};

}  // namespace

std::span<const Choice_Row> Choice_Rows() { return rows; }

}  // namespace kx
