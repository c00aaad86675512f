#pragma once

#include "logging/log_calculations.h"
#include "logging/log_settings.h"

namespace kx {

/// What @p settings mean for the calculations. Texts that are no numbers count as 0; the boost sensor stays
/// unknown.
[[nodiscard]] Calculation_Inputs Inputs_Of(const Log_Settings& settings);

/// The same of the log in hand, with its boost sensor, which counts as input 0 while @p default_file (the
/// default log settings) is being opened. Called by KX_Log_Data_Read.
[[nodiscard]] Calculation_Inputs Inputs_Of_Log(bool default_file);

}  // namespace kx
