#pragma once

#include "settings/shown_text.h"

namespace kx {

/// The limits of the table that a limits routine has prepared last, in its shown unit, as the table panel
/// shows them. Only a text for the user: every edit takes its limits from the table's meaning.
extern Shown_Text minText;
extern Shown_Text maxText;

void Get_igmap_maxmin();
void Get_igrpm_maxmin();
void Get_fuelmap_maxmin();
void Get_fuelrpm_maxmin();

/// Does its work on the PWM RPM table only; elsewhere the limits stay.
void Get_pwm_maxmin();
void Get_an_maxmin();

/// Runs the limits routine of the table on show, if one is.
void Get_Shown_Table_Maxmin();

void Reset_Table_Limits();

}  // namespace kx
