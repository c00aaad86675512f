#pragma once

#include "settings/shown_text.h"

namespace kx {

/// Limits of the table that a limits routine has prepared last, in its shown unit, and its inverse form:
/// raw = shown x Table_Gain + Table_Offset1 + Table_Offset2. A routine that does not need gain or offsets
/// leaves those of the routine before.
extern double Table_Max;
extern double Table_Min;
extern double Table_Gain;
extern double Table_Offset1;
extern double Table_Offset2;

/// The limits as the table panel shows them.
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
