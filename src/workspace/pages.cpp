#include "workspace/pages.h"

#include <algorithm>

#include "settings/failure.h"

namespace kx {
namespace {

struct Captioned {
  Page page;
  std::string_view caption;
};

constexpr std::array captions{Captioned{Page_Of(Table::ignition_load), "Ignition Load"},
                              Captioned{Page_Of(Table::ignition_rpm), "Ignition RPM"},
                              Captioned{Page_Of(Table::fuel_load), "Fuel Load"},
                              Captioned{Page_Of(Table::fuel_rpm), "Fuel RPM"},
                              Captioned{page::fuel_options, "Fuel options"},
                              Captioned{page::air_temperature, "IAT Fuel"},
                              Captioned{Page_Of(Table::pwm_load), "PWM Load"},
                              Captioned{Page_Of(Table::pwm_rpm), "PWM RPM"},
                              Captioned{page::boost_control, "Boost control"},
                              Captioned{Page_Of(Table::analog1), "Analog1 out"},
                              Captioned{Page_Of(Table::analog2), "Analog2 out"},
                              Captioned{Page_Of(Table::maf_output), "MAF-Sim"},
                              Captioned{Page_Of(Table::maf_limit), "MAF-Sim limit"},
                              Captioned{page::box_settings, "Box settings"}};

constexpr std::array<std::string_view, 5> main_captions{"General", "Ignition", "Fuel", "PWM/Boost", "Analog"};

constexpr Page ignition_load = Page_Of(Table::ignition_load);
constexpr Page analog2 = Page_Of(Table::analog2);

constexpr std::array places{
    Control_Place{"ig_pos_combo", ignition_load},
    Control_Place{"ig_neg_combo", ignition_load, "Base ignition load on, minus"},
    Control_Place{"HScroll1", ignition_load},
    Control_Place{"max_ret", ignition_load},
    Control_Place{"AR_Enable", ignition_load},
    Control_Place{"fuel_pos_combo", Page_Of(Table::fuel_load)},
    Control_Place{"fuel_neg_combo", Page_Of(Table::fuel_load), "Base fuel load on, minus"},
    Control_Place{"Ext_stock", page::fuel_options},
    Control_Place{"inj_cal_factor_scroll", page::fuel_options},
    Control_Place{"afe_thr_scroll", page::fuel_options},
    Control_Place{"afe_gain_scroll", page::fuel_options},
    Control_Place{"afe_sus_scroll", page::fuel_options},
    Control_Place{"rpm_limit_scroll", page::fuel_options},
    Control_Place{"rpm_openinj_scroll", page::fuel_options},
    Control_Place{"volt_openinj_scroll", page::fuel_options},
    Control_Place{"pulse_openinj_scroll", page::fuel_options, "Fuel Pulse [ms] of forced injection"},
    Control_Place{"Ind_Trim_Option(0)", page::fuel_options},
    Control_Place{"scroll(36)", page::fuel_options, "Injector pulse offset, master, Inj A"},
    Control_Place{"scroll(37)", page::fuel_options, "Injector pulse offset, master, Inj B"},
    Control_Place{"scroll(38)", page::fuel_options, "Injector pulse offset, master, Inj C"},
    Control_Place{"scroll(39)", page::fuel_options, "Injector pulse offset, master, Inj D"},
    Control_Place{"scroll(24)", page::fuel_options, "Injector pulse offset, master, Inj E"},
    Control_Place{"scroll(25)", page::fuel_options, "Injector pulse offset, slave, Inj A"},
    Control_Place{"scroll(26)", page::fuel_options, "Injector pulse offset, slave, Inj B"},
    Control_Place{"scroll(27)", page::fuel_options, "Injector pulse offset, slave, Inj C"},
    Control_Place{"scroll(28)", page::fuel_options, "Injector pulse offset, slave, Inj D"},
    Control_Place{"scroll(29)", page::fuel_options, "Injector pulse offset, slave, Inj E"},
    Control_Place{"scroll(7)", page::air_temperature},
    Control_Place{"scroll(8)", page::air_temperature},
    Control_Place{"scroll(9)", page::air_temperature},
    Control_Place{"scroll(10)", page::air_temperature},
    Control_Place{"pwm_combo", Page_Of(Table::pwm_load)},
    Control_Place{"BoostControlPICheck", page::boost_control, "Boost control PID closed loop"},
    Control_Place{"pwm1_check", page::boost_control, "PWM as on/off switch"},
    Control_Place{"scroll(40)", page::boost_control},
    Control_Place{"scroll(41)", page::boost_control},
    Control_Place{"scroll(42)", page::boost_control},
    Control_Place{"scroll(43)", page::boost_control},
    Control_Place{"an2_combo", analog2},
    Control_Place{"Boost_activ_level_AN2_scroll", analog2},
    Control_Place{"AN2_level_scroll", analog2},
    Control_Place{"an_gain", analog2},
    Control_Place{"an_offset", analog2},
    Control_Place{"HScroll3", page::box_settings},
    Control_Place{"rpm_calc_scroll", page::box_settings, "Ignition pulses every cycle (2 revs)"},
    Control_Place{"rpm_calc_scroll_s", page::box_settings, "Ignition pulses every cycle, slave KX"},
    Control_Place{"inboostlevel", page::box_settings},
    Control_Place{"boost_limit_scroll", page::box_settings},
    Control_Place{"An2_func_Scroll", page::box_settings},
    Control_Place{"mafsim_combo", page::box_settings},
    Control_Place{"mafsim_out_combo", page::box_settings},
    Control_Place{"mafsim_limit_combo", page::box_settings},
    Control_Place{"MAFSIM_enable", page::box_settings},
    Control_Place{"boost_enable_combo", page::box_settings},
    Control_Place{"ignrpm_tblprec_combo", page::box_settings},
    Control_Place{"ae_combo", page::box_settings},
    Control_Place{"ae_combo2", page::box_settings},
    Control_Place{"IAT_in_combo", page::box_settings},
    Control_Place{"an_sync_check(0)", page::box_settings},
    Control_Place{"an_sync_check(1)", page::box_settings},
    Control_Place{"an_sync_check(2)", page::box_settings},
    Control_Place{"an_sync_check(3)", page::box_settings},
    Control_Place{"master", page::box_settings},
    Control_Place{"ig_mode_combo", page::box_settings},
    Control_Place{"ig_mode_slave_combo", page::box_settings},
    Control_Place{"igtable_mode_combo", page::box_settings},
    Control_Place{"io_combo", page::box_settings},
    Control_Place{"boost_combo", page::box_settings},
    Control_Place{"Res_500", page::box_settings},
    Control_Place{"Sequential_Fuel_opt", page::box_settings},
};

}  // namespace

std::string_view Caption_Of(Page page) {
  const auto* found = std::ranges::find(captions, page, &Captioned::page);
  return found == captions.end() ? std::string_view() : found->caption;
}

std::string_view Main_Caption_Of(int tab) { return main_captions.at(static_cast<std::size_t>(tab)); }

const Control_Place& Place_Of(std::string_view control) {
  const auto* found = std::ranges::find(places, control, &Control_Place::control);
  if (found == places.end()) Fail_Subscript();
  return *found;
}

}  // namespace kx
