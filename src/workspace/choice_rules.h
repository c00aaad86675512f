#pragma once

#include "workspace/choice_controls.h"

/// The ways in which the controls of choice_controls.h read and write their bits.
namespace kx::choice {

extern const Choice_Rules plain;         ///< the index is the field's number
extern const Choice_Rules inverted;      ///< the field holds 1 minus the index
extern const Choice_Rules two_modes;     ///< the field may hold more than the list shows: shown as 1
extern const Choice_Rules never_clears;  ///< AR_Enable: sets its bit only, and clears the resolution bit
extern const Choice_Rules by_mirror;     ///< MAFSIM_enable: written into the mirror byte, copied from there
extern const Choice_Rules fuel_mode;     ///< two bits for three ways of fuel enrichment
extern const Choice_Rules io_mode;       ///< five modes over two bytes, two of them not in use
extern const Choice_Rules table_units;   ///< a change falls back to the coarse precision
extern const Choice_Rules trim;          ///< also brings the mirror byte in step

/// What runs after a choice, besides Update_Tabs and Update_All alone.
void Update_Meaning();        ///< Update_Tabs, then Update_All
void Update_Ignition();       ///< Update_Meaning, then the limits of the ignition table on show
void Update_Boost_Control();  ///< Update_All, Update_Tabs, then the limits of the PWM RPM table
void Update_Resolution();     ///< Update_Meaning, then the table tools

/// List index of io_combo with which the PWM output stands on IgnB.
constexpr int io_pwm_on_ignb = 4;

}  // namespace kx::choice
