#include "sensors/sensor_store.h"
#include "settings/image.h"
#include "workspace/analog2.h"
#include "workspace/box_settings.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

constexpr const char* an1_limit_help =
    "Values in table sets maximum voltage on Analog 1 out depending on RPM.      When Analog 1 in is below "
    "the "
    "limit voltage,  out voltage = in voltage.";
constexpr const char* an1_disabled_help = "AN1 is disabled because of MAF-simulation";
constexpr const char* an2_limit_help =
    "Values in table sets maximum voltage on Analog 2 out depending on RPM.      When Analog 2 in is below "
    "the "
    "limit voltage,  out voltage = in voltage.";
constexpr const char* an2_trim_help =
    "Same as Analog 2 limit, but the Analog 2 out value also depends on PWM in. See manual for more "
    "information";
constexpr const char* boost_target_help =
    "Set Value in table to desired boost level. This setting is also controlled by the PWM Load tab.";
constexpr const char* select_boost_sensor_help = "Select boost sensor in 'Box Settings'";
constexpr const char* pwm_percent_help =
    "Set desired PWM signal in percent, based on engine RPM. This setting is also controlled by the PWM Load "
    "tab";

void Fill_Help_Texts(View_State& view) {
  const bool load_percent = Get_Field(map::ignition_load_in_percent) == 1;
  view.Label41 = load_percent ? "Set percentage of spark timing change, based on manifold pressure."
                              : "Set spark timing change, in degrees, based on manifold pressure.";
  view.Label_IG_RPM = load_percent ? "Set spark timing change, in degrees, based on engine RPM."
                                   : "Set percentage of spark timing change, based on engine RPM.";
  view.Label_AN1 = Maf_Simulation_On() ? an1_disabled_help : an1_limit_help;
  if (Get_Field(map::an2_mode) == an2_mode::limit) view.Label_AN2_limitexplain = an2_limit_help;
  if (Get_Field(map::an2_mode) == an2_mode::limit_trim) view.Label_AN2_limitexplain = an2_trim_help;
}

/// The table panel has nothing to work on where no table is on show.
bool Table_Panel_Of_Use(const View_State& view) {
  const auto table = Active_Table();
  if (table != Table::analog2) return table.has_value();
  return view.An2out_frame && Analog2_Frames_Shown().an2_out_grid;
}

void Fill_Frames(View_State& view) {
  view.analog1_tab = !Maf_Simulation_On();
  view.maf_output_tab = Maf_Simulation_On();
  view.maf_limit_tab = Maf_Limit_Active();
  view.An2out_frame = Config_Of_Tune().An2_Available && Res500();
  view.Frame_IG_RPM_MAFSIM = Maf_Limit_Active();
  view.tblctrl = Table_Panel_Of_Use(view);
}

void Fill_Pwm_Notification(View_State& view) {
  if (!Boost_Closed_Loop()) {
    view.Frame_PWMRPM_Notification = "Normal PWM out";
    view.txt_PWMRPM_Notification = pwm_percent_help;
    return;
  }
  const int sensor = Boost_Sensor();
  view.Frame_PWMRPM_Notification = "PWM PID Control activated. Analog" +
                                   std::to_string(Get_Field(map::boost_input) + 1) + " - " +
                                   Sensor_Name(sensor);
  view.txt_PWMRPM_Notification = boost_target_help;
  if (sensor < 1) view.txt_PWMRPM_Notification += select_boost_sensor_help;
}

}  // namespace

View_State View_Of_Tune() {
  View_State view;
  Fill_Help_Texts(view);
  Fill_Frames(view);
  Fill_Pwm_Notification(view);
  return view;
}

}  // namespace kx
