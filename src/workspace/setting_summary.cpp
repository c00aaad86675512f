#include "workspace/setting_summary.h"

#include <array>
#include <limits>

#include "boxlink/box_info.h"
#include "platform/seams.h"
#include "sensors/conversion.h"
#include "sensors/sensor_store.h"
#include "settings/build_profile.h"
#include "settings/image.h"
#include "settings/numbers.h"
#include "settings/session.h"
#include "settings/text_encoding.h"
#include "workspace/choice_controls.h"
#include "workspace/scalar_controls.h"
#include "workspace/tables.h"

namespace kx {

std::string Readable_Settings;
Shown_Text txt_SettingSummary;

namespace {

constexpr int inputs = 4;

std::string Line(std::string_view field, std::string_view value = {}) {
  return std::string(field) + std::string(value) + Crlf();
}

std::string Chosen(std::string_view control) { return std::string(Choice_Text(Choice_Row_Of(control))); }

/// Label of a list, TABs, the text that is chosen in it.
std::string Choice_Line(std::string_view control) {
  return Line(std::string(Choice_Row_Of(control).label) + "\t\t", Chosen(control));
}

std::string Scalar_Line(std::string_view control) {
  const Scalar_Row& row = Scalar_Row_Of(control);
  return Line(std::string(row.label) + ": ", Scalar_Summary(row));
}

std::string First_Text(std::string_view control) {
  const Scalar_Row& row = Scalar_Row_Of(control);
  return Scalar_Text(row, row.texts[0], Scalar_Position(row));
}

std::string Version() {
  return std::to_string(build::version_major) + "." + std::to_string(build::version_minor) + "." +
         std::to_string(build::version_revision);
}

std::string Box_Lines() {
  return Line("KXBench version: ", Version()) +
         Line("Operating system: ", platform::seams.desktop->System_Name()) +
         Line("KX-box firmware: ", Box_Firmware) + Line("KX-box SC ID: ", Box_SC_ID) +
         Line("KX-box Serial: ", "KX" + std::to_string(Box_Serial));
}

/// Inputs and outputs of the box by list index of io_combo. The modes not in use have none.
struct Pins {
  int mode;
  std::array<std::string_view, 3> lines;
};
constexpr std::array pin_lists{
    Pins{
        0,
        {"4 fuel in / out, FuelA-FuelD pin 15-22",
         "2 ignition channels in / out, IgnitionA- IgnitionB pin 11-14", "boost control out, PWM_OUT pin 5"}},
    Pins{2,
         {"5 fuel in / out, FuelA-FuelE pin 15-22 & 11-12", "1 ignition channel in / ut, IgnitionA pin 13,14",
          "boost control out, PWM_OUT pin 5"}},
    Pins{4,
         {"4 fuel in / out, FuelA-FuelD pin 15-22", "1 ignition channel in / out, IgnitionA pin 13,14",
          "boost control in / out, PWM_OUT/IN pin 11,12"}}};

std::string Io_Lines() {
  std::string text = Line(Chosen("io_combo"));
  for (const Pins& pins : pin_lists) {
    if (pins.mode != Choice_Index(Choice_Row_Of("io_combo"))) continue;
    for (const std::string_view line : pins.lines) text += Line(line);
  }
  return text;
}

std::string Maf_Lines() {
  if (!Maf_Simulation_On()) return Line("Enable MAFSIM: ", "Disabled");
  return Line("Enable MAFSIM: ", "Enabled") + Choice_Line("mafsim_out_combo") + Choice_Line("mafsim_combo") +
         Choice_Line("mafsim_limit_combo");
}

std::string Synchronised_Inputs() {
  std::string text;
  for (int input = 0; input < inputs; ++input) {
    if (Get_Field(map::Analog_Sync(input)) == 1) text += "Analog" + std::to_string(input + 1) + ", ";
  }
  return text;
}

std::string Configuration_Lines() {
  std::string text =
      Line("Ignition table setting: ", Chosen("igtable_mode_combo") + ": " + Chosen("ignrpm_tblprec_combo"));
  text += Io_Lines();
  for (const char* control : {"ignrpm_tblprec_combo", "ig_mode_combo", "ig_mode_slave_combo",
                              "boost_enable_combo", "ae_combo", "ae_combo2"}) {
    text += Choice_Line(control);
  }
  text +=
      Maf_Lines() + Line("Fuel RPM Resolution: ", Get_Field(map::fuel_rpm_250) == 0 ? "500 rpm" : "250 rpm");
  text += Line("Pulses per cycle on master: ", First_Text("rpm_calc_scroll"));
  text += Line("Pulses per cycle on slave: ", First_Text("rpm_calc_scroll_s"));
  text += Line("Analog syncronisation: ", Synchronised_Inputs());
  for (const char* control : {"boost_limit_scroll", "An2_func_Scroll", "inboostlevel"})
    text += Scalar_Line(control);
  return text + Line("KX mode: ", Chosen("master"));
}

std::string Interface_Name() {
  if (Default_Interface == "SC_Reader") return "Chipdrive";
  if (Default_Interface == "KX_MapCard") return "KX as MapCard writer";
  if (Default_Interface == "TodosII_Reader") return "TodosII_Reader";
  return {};
}

/// What the sensor reads at the end of its range that @p raw lies beyond.
std::string End_Of_Range(int sensor, double raw) {
  return Format(Forward_Sensor_Calc(sensor, raw), Sensor_Format(sensor));
}

std::string Input_Range(int sensor) {
  constexpr double beyond = std::numeric_limits<std::int16_t>::max();
  const std::string least = End_Of_Range(sensor, -beyond);
  if (least.empty()) return " - ";
  return least + " - " + End_Of_Range(sensor, beyond) + " " + Sensor_Unit(sensor);
}

std::string Preference_Lines() {
  std::string definitions;
  std::string ranges;
  for (int input = 1; input <= inputs; ++input) {
    const int sensor = Sensor_On_Input(input);
    const std::string name = "Analog" + std::to_string(input);
    definitions += Line(name + " sensor definition: ", Sensor_Name(sensor));
    ranges += Line(name + ": ", Input_Range(sensor));
  }
  return Line("--------Preferences--------") + Line("Interface: ", Interface_Name()) + definitions +
         Line("Analog input settings ") + ranges;
}

}  // namespace

void Update_Readable_Setting_Window() {
  Refresh_Box_Info_Quietly();
  Readable_Settings =
      Line("[readable_settings]") + Line("--------Box Configurations--------") + Box_Lines() +
      Configuration_Lines() + Preference_Lines() +
      Line(std::string(Scalar_Row_Of("HScroll3").label) + "\t\t", First_Text("HScroll3") + "rpm") +
      Show_Tabels_Alt2() + Line("[end readable_settings]");
  txt_SettingSummary.Set(Readable_Settings);
}

void Reset_Setting_Summary() {
  Readable_Settings.clear();
  txt_SettingSummary.Set("");
}

}  // namespace kx
