#pragma once

/// The transfers behind "Read settings old", "Verify old" and "Write settings old". A click starts one and
/// returns; two timers of 10 ms, never both at once, bring it to its end, which the status line tells. The
/// line is taken from the click on until then, so that a click that comes meanwhile is not entered.
///
/// On every way out the timers are off, the modes unset and the port closed, but for a write whose box has
/// another dataset. A lost device ends the transfer as a communication error and
/// throws Failure; closing the port or the program ends it at once.
namespace kx {

/// "Read settings old": loads the tune from the box.
void Com_knapp5_Click();

/// "Verify old": compares bytes 0 to 249 of the tune with the box.
void Com_knapp4_Click();

/// "Write settings old": sends byte 1 and the bytes that differ, reads back, and then repairs the slave.
void Com_knapp3_Click();

/// Forgets the engine's state and gives the timers back; no transfer may run.
void Reset_Timer_Engine();

}  // namespace kx
