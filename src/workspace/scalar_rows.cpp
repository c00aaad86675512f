#include "sensors/conversion.h"
#include "sensors/sensor_store.h"
#include "settings/image.h"
#include "settings/numbers.h"
#include "workspace/scalar_controls.h"
#include "workspace/table_meaning.h"
#include "workspace/temperature_chart.h"

namespace kx {
namespace {

constexpr double volts_full_scale = 5;
constexpr double most_fuel_ms = 5.76;  ///< fuel that the full enrichment gain adds

std::string Volts(int, int position, const Byte_Image&) {
  return Format(position * volts_full_scale / 255, "0.00");
}

std::string Volts_With_Unit(int byte, int position, const Byte_Image& image) {
  return Volts(byte, position, image) + " V";
}

std::string Rpm(int, int position, const Byte_Image&) { return Number_Text(position * rpm_a_count); }

std::string Plain(int, int position, const Byte_Image&) { return Number_Text(position); }

std::string Tenths(int, int position, const Byte_Image&) { return Number_Text(position / 10.0); }

std::string Pulse_Milliseconds(int, int position, const Byte_Image&) { return Format(position * 0.1, "0.0"); }

/// By the three tables that hold how a byte of the slider array is shown.
std::string By_Byte_Def(int byte, int position, const Byte_Image&) {
  const auto index = static_cast<std::size_t>(byte);
  return Format((position - Byte_Offset[index]) * Byte_Factor[index], Byte_Format[index]);
}

std::string Boost_Percent(int, int position, const Byte_Image&) {
  return Number_Text(Round_To(position / 255.0 * 200, 1)) + "%";
}

std::string Sensor_Value(int sensor, int position, std::string_view mask) {
  double raw = position;
  return Format(Forward_Sensor_Calc(sensor, raw), mask);
}

/// A temperature limit is shown by the air temperature sensor; only the format is the byte's own.
std::string Air_Temperature(int byte, int position, const Byte_Image& image) {
  return Sensor_Value(Air_Temperature_Sensor(image), position, Byte_Format[static_cast<std::size_t>(byte)]);
}

std::string Air_Temperature_Unit(int, int, const Byte_Image& image) {
  return Sensor_Unit(Air_Temperature_Sensor(image));
}

std::string Boost_Level(int, int position, const Byte_Image& image) {
  return Sensor_Value(Boost_Sensor(image), position, "0.00");
}

std::string Boost_Unit(int, int, const Byte_Image& image) { return Sensor_Unit(Boost_Sensor(image)); }

std::string Ae_Percent(int, int position, const Byte_Image&) { return Format(position / 2.55, "0.0") + " %"; }

std::string Ae_Threshold(int, int position, const Byte_Image& image) {
  const int sensor = Sensor_On_Input(Field_Of(image, map::ae_input) + 1);
  const std::string value = Sensor_Value(sensor, position, "0.0");
  return value.empty() ? value : value + " " + Sensor_Unit(sensor) + "/samp";
}

std::string Ae_Fuel(int, int position, const Byte_Image&) {
  return Format(position / 2.55 * most_fuel_ms / 100, "0.00") + " ms";
}

std::string Ae_Sustain_Percent(int, int position, const Byte_Image&) {
  return Format(position / 2.56, "0.0") + " %";
}

std::string Ae_Time(int gain, int sustain) { return Format(Max_Ae_Time(gain, sustain), "0.00") + " s"; }

std::string Ae_Time_By_Gain(int, int position, const Byte_Image& image) {
  return Ae_Time(position, image[map::ae_sustain]);
}

std::string Ae_Time_By_Sustain(int, int position, const Byte_Image& image) {
  return Ae_Time(image[map::ae_gain], position);
}

using Texts = std::array<Scalar_Text_Row, 3>;

constexpr Texts One(std::string_view control, std::string (*text)(int, int, const Byte_Image&)) {
  return {{{control, text}}};
}

/// An element of the slider array that the tables of Set_Byte_Def describe.
constexpr Scalar_Row Element(std::string_view name, std::string_view text, int byte, int large_step,
                             std::string_view label, std::string_view unit = {}, std::string_view tip = {}) {
  return {.name = name,
          .byte = byte,
          .large_step = large_step,
          .label = label,
          .texts = One(text, By_Byte_Def),
          .unit = unit,
          .tip = tip,
          .captures = 1,
          .afterwards = Update_Temp_Chart};
}

constexpr Scalar_Row Temperature(std::string_view name, std::string_view text, std::string_view unit_label,
                                 int byte, std::string_view label) {
  return {.name = name,
          .byte = byte,
          .large_step = 1,
          .label = label,
          .texts = {{{text, Air_Temperature}, {unit_label, Air_Temperature_Unit}}},
          .reversed = true,
          .captures = 1,
          .afterwards = Update_Temp_Chart};
}

constexpr Scalar_Row Boost_Init(std::string_view name, std::string_view text) {
  return {.name = name,
          .byte = map::boost_init,
          .large_step = 1,
          .label = "Boost control init value",
          .texts = One(text, Boost_Percent),
          .tip = "Init boost and PWM value",
          .captures = 1,
          .afterwards = Update_Temp_Chart};
}

/// A slider that stores its position and does nothing else. @p captures as in the row.
constexpr Scalar_Row Simple(std::string_view name, int byte, std::string_view label, Texts texts,
                            std::string_view unit, int captures, int large_step = 16) {
  return {.name = name,
          .byte = byte,
          .large_step = large_step,
          .label = label,
          .texts = texts,
          .unit = unit,
          .captures = captures};
}

constexpr std::array rows{
    Scalar_Row{.name = "HScroll3",
               .byte = map::rpm_indicator,
               .large_step = 16,
               .label = "RPM Indicator (Led 2)",
               .texts = One("gear_shift", Rpm),
               .unit = "RPM",
               .max = 160},
    Simple("rpm_calc_scroll", map::rpm_calc, "pulses every cycle (2 revs)", One("rpm_calc_text", Plain), "",
           0),
    Simple("rpm_calc_scroll_s", map::rpm_calc_slave, "pulses every cycle, slave KX",
           One("rpm_calc_text_s", Plain), "", 0),
    Simple("HScroll1", map::max_total_retard, "Max total Retard clip", One("Max_Tot_Ret", Tenths), "Deg", 0),
    Simple("inboostlevel", map::in_boost_level, "in boost level", One("inboostlevel_text", Volts), "V", 0),
    Simple("boost_limit_scroll", map::boost_limit, "Boost Limit", One("boost_limit_text", Volts), "V", 0),
    Simple("An2_func_Scroll", map::an2_function_limit, "An2 function limit", One("An2_func_text", Volts), "V",
           0),
    Simple("rpm_openinj_scroll", map::rpm_open_injectors, "RPM to allow open injectors",
           One("rpm_openinj_text", Rpm), "RPM", 1),
    Simple("volt_openinj_scroll", map::volt_open_injectors, "Boost level to open injectors   [Volt]",
           One("volt_openinj_text", Volts), "", 1),
    Simple("pulse_openinj_scroll", map::pulse_open_injectors, "Fuel Pulse [ms]",
           One("pulse_openinj_text", Pulse_Milliseconds), "", 1),
    Scalar_Row{.name = "inj_cal_factor_scroll",
               .byte = map::injector_calibration,
               .large_step = 10,
               .label = "Base fuel calibration",
               .texts = One("inj_cal_factor_text", Plain),
               .unit = "%",
               .tip = "Set percentage of original injector pulse to be used.",
               .max = 199,
               .captures = 1,
               .counts_a_step = counts_a_percent},
    Simple("afe_thr_scroll", map::ae_threshold, "Acceleration enrichment threshold",
           {{{"afe_thr_text", Ae_Percent}, {"afe_thr_text2", Ae_Threshold}}}, "", 1, 10),
    Simple("afe_gain_scroll", map::ae_gain, "Acceleration enrichment gain",
           {{{"afe_gain_text", Ae_Percent}, {"afe_gain_text2", Ae_Fuel}, {"afe_sus_text2", Ae_Time_By_Gain}}},
           "", 1, 10),
    Simple("afe_sus_scroll", map::ae_sustain, "Acceleration enrichment sustain",
           {{{"afe_sus_text", Ae_Sustain_Percent}, {"afe_sus_text2", Ae_Time_By_Sustain}}}, "", 1, 10),
    // The move and the change of the text that follows it are two edits to the history.
    Simple("rpm_limit_scroll", map::rpm_limit, "Fuel cut RPM", One("rpm_limit_text", Rpm), "RPM", 2),
    Simple("Boost_activ_level_AN2_scroll", map::an2_boost_activation, "Boost activation level",
           {{{"Boost_activ_level_AN2_txt", Boost_Level}, {"Boost_activ_level_AN2_unit_label", Boost_Unit}}},
           "", 0),
    Simple("AN2_level_scroll", map::an2_activation_level, "AN2 out level at activation",
           One("AN2_level_txt", Volts_With_Unit), "", 0),
    Element("scroll(7)", "scroll_text(7)", map::low_air_correction, 1, "Low air temp fuel correction", "%"),
    Temperature("scroll(8)", "scroll_text(8)", "low_air_limit_unit_label", map::low_air_limit,
                "Low air temperature limit"),
    Element("scroll(9)", "scroll_text(9)", map::high_air_correction, 1, "High air temp fuel correction", "%"),
    Temperature("scroll(10)", "scroll_text(10)", "high_air_limit_unit_label", map::high_air_limit,
                "High air temperature limit"),
    Element("scroll(24)", "scroll_text(24)", map::injector_offset_master_e, 8, "Inj E", "ms"),
    Element("scroll(25)", "scroll_text(25)", map::injector_offset_slave_a, 8, "Inj A", "ms"),
    Element("scroll(26)", "scroll_text(26)", map::injector_offset_slave_a + 1, 8, "Inj B", "ms"),
    Element("scroll(27)", "scroll_text(27)", map::injector_offset_slave_a + 2, 8, "Inj C", "ms"),
    Element("scroll(28)", "scroll_text(28)", map::injector_offset_slave_a + 3, 8, "Inj D", "ms"),
    Element("scroll(29)", "scroll_text(29)", map::injector_offset_slave_e, 8, "Inj E", "ms"),
    Element("scroll(36)", "scroll_text(36)", map::injector_offset_master_a, 8, "Inj A", "ms"),
    Element("scroll(37)", "scroll_text(37)", map::injector_offset_master_a + 1, 8, "Inj B", "ms"),
    Element("scroll(38)", "scroll_text(38)", map::injector_offset_master_a + 2, 8, "Inj C", "ms"),
    Element("scroll(39)", "scroll_text(39)", map::injector_offset_master_d, 8, "Inj D", "ms"),
    Boost_Init("scroll(40)", "scroll_text(40)"),
    Element("scroll(41)", "scroll_text(41)", map::boost_p, 1, "P (Proportional)", "",
            "Compensates for error in boost level"),
    Element("scroll(42)", "scroll_text(42)", map::boost_i, 1, "I (Sum)", "",
            "Compensates for long time error in boost level"),
    Element("scroll(43)", "scroll_text(43)", map::boost_d, 1, "D (Difference)", "",
            "Compensates for sudden changes in boost level"),
};

}  // namespace

std::span<const Scalar_Row> Scalar_Rows() { return rows; }

}  // namespace kx
