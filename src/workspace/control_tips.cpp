#include "workspace/control_tips.h"

#include <algorithm>

namespace kx {
namespace {

struct Control_Tip {
  std::string_view control;
  std::string_view text;
};

/// Beside the tips that stand in the rows of the controls. What a control changes elsewhere is said here.
constexpr std::array tips{
    Control_Tip{"HScroll3", "Engine speed at which Led 2 lights"},
    Control_Tip{"rpm_calc_scroll", "Ignition pulses that the box gets in two revolutions of the engine"},
    Control_Tip{"rpm_calc_scroll_s", "The same pulses for the slave"},
    Control_Tip{"HScroll1", "Most that all retards together may take from the spark advance"},
    Control_Tip{"inboostlevel", "Voltage of the boost sensor from which the engine counts as in boost"},
    Control_Tip{"boost_limit_scroll", "Highest boost that the box allows, as voltage of the boost sensor"},
    Control_Tip{"An2_func_Scroll", "Limit of the Analog 2 function, as voltage"},
    Control_Tip{"rpm_openinj_scroll", "Engine speed from which forced injection is allowed"},
    Control_Tip{"volt_openinj_scroll", "Boost voltage from which injection is forced"},
    Control_Tip{"pulse_openinj_scroll", "Length of the forced fuel pulse"},
    Control_Tip{"afe_thr_scroll", "Change of the load signal in one sample that starts the enrichment"},
    Control_Tip{"afe_gain_scroll", "Fuel that the enrichment adds; with the sustain it also sets how long"},
    Control_Tip{"afe_sus_scroll", "How slowly the enrichment fades"},
    Control_Tip{"rpm_limit_scroll", "Engine speed above which fuel is cut"},
    Control_Tip{"Boost_activ_level_AN2_scroll", "Boost at which Analog 2 out is switched"},
    Control_Tip{"AN2_level_scroll", "Voltage on Analog 2 out while it is switched"},
    Control_Tip{"scroll(7)", "Fuel correction at and below the low air temperature"},
    Control_Tip{"scroll(8)", "Air temperature below which the low correction holds in full"},
    Control_Tip{"scroll(9)", "Fuel correction at and above the high air temperature"},
    Control_Tip{"scroll(10)", "Air temperature above which the high correction holds in full"},
    Control_Tip{"an2_combo",
                "What the Analog 2 table means: a limit over RPM or a curve over the input. The "
                "bytes stay, their meaning changes"},
    Control_Tip{"mafsim_combo", "Input of the manifold pressure for the simulated MAF signal"},
    Control_Tip{"mafsim_out_combo", "Output that carries the simulated MAF signal"},
    Control_Tip{"mafsim_limit_combo",
                "Limits the simulated MAF signal by RPM; the limit takes the bytes of the "
                "Ignition RPM table, which shrinks to one value"},
    Control_Tip{"MAFSIM_enable",
                "Makes a MAF signal from RPM and pressure; its table takes the bytes of "
                "Analog 1 out"},
    Control_Tip{"boost_enable_combo", "Which fuel pulses are enriched"},
    Control_Tip{"ignrpm_tblprec_combo",
                "Step and range of the Ignition RPM table. The bytes stay, so the "
                "values shown halve or double"},
    Control_Tip{"ae_combo", "Input whose rise starts acceleration enrichment"},
    Control_Tip{"ae_combo2", "How acceleration enrichment is added"},
    Control_Tip{"IAT_in_combo", "Input of the intake air temperature sensor"},
    Control_Tip{"master", "A slave takes its tune from a master. Choose Slave for the slave box only"},
    Control_Tip{"ig_mode_combo", "Whether the master may advance the spark or only retard it"},
    Control_Tip{"ig_mode_slave_combo", "Whether the slave may advance the spark or only retard it"},
    Control_Tip{
        "igtable_mode_combo",
        "Units of the two ignition tables. The bytes stay, their meaning changes; the precision of the "
        "Ignition RPM table goes to low"},
    Control_Tip{"Ext_stock", "How fuel is added in boost; also sets the unit of the Fuel Load table"},
    Control_Tip{"max_ret",
                "Clips the retard at the slider's value. The same bit chooses the resolution of the "
                "Fuel RPM table: a tick means 250 RPM and turns Analog 2 out off"},
    Control_Tip{"AR_Enable",
                "Retards the spark during acceleration enrichment. Once set it stays; either way "
                "the bit of max ignition retard and 250 RPM resolution is cleared"},
    Control_Tip{"pwm1_check", "The PWM output is on or off and nothing between"},
    Control_Tip{"BoostControlPICheck",
                "Regulates boost by its sensor; the PWM RPM table then holds the "
                "desired boost"},
    Control_Tip{"ig_neg_combo", "Signal that is subtracted from the load of the ignition table"},
    Control_Tip{"ig_pos_combo", "Load input of the ignition table. Changes the axis, not the values"},
    Control_Tip{"fuel_neg_combo", "Signal that is subtracted from the load of the fuel table"},
    Control_Tip{"fuel_pos_combo", "Load input of the fuel table. Changes the axis, not the values"},
    Control_Tip{"pwm_combo", "Load input of the PWM table. Changes the axis, not the values"},
    Control_Tip{"io_combo", "What the pins of the box do"},
    Control_Tip{"boost_combo", "Input of the boost sensor"},
    Control_Tip{"Ind_Trim_Option(0)", "One offset for all injectors, or one for each"},
    Control_Tip{"Res_500",
                "Steps of the Fuel RPM table. The same bit enables max ignition retard: 250 RPM "
                "ticks it and turns Analog 2 out off"},
    Control_Tip{"Sequential_Fuel_opt", "Fuel pulses of each injector in one engine cycle"},
};

/// The row's own tip, else the one of this table, else the label.
std::string What(std::string_view control, std::string_view own, std::string_view label) {
  if (!own.empty()) return std::string(own);
  const auto* found = std::ranges::find(tips, control, &Control_Tip::control);
  return std::string(found != tips.end() ? found->text : label);
}

}  // namespace

std::string Tip_Of(const Scalar_Row& row) {
  std::string tip = What(row.name, row.tip, row.label);
  const std::string low = Scalar_Text(row, row.texts[0], 0);
  const std::string high = Scalar_Text(row, row.texts[0], row.max);
  if (!low.empty())
    tip += " (" + low + " to " + high + (row.unit.empty() ? "" : " ") + std::string(row.unit) + ")";
  return tip;
}

std::string Tip_Of(const Choice_Row& row) { return What(row.Name(), row.tip, row.label); }

}  // namespace kx
