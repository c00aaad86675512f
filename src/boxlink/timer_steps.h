#pragma once

#include <cstdint>
#include <string_view>

#include "boxlink/link_texts.h"

/// What the clicks and ticks of the timer-driven engine are made of, for use inside one of them.
namespace kx::timer {

/// Empty ticks that a read, or one run of a write, gets in all; data does not give them back.
inline constexpr std::int16_t idle_ticks = 10;

/// Empty ticks in a row behind which a word goes out again. An adapter that gathers what it delivers for
/// 16 ms is not taken for a silent box.
inline constexpr std::int16_t silent_ticks = 5;

/// The next tick is Timer_TX's.
void Talk();

/// The next tick is Timer_RX's.
void Listen();

/// Both timers off. Whatever waits inside a click or tick does so first: no tick runs inside another.
void Rest();

/// Sends @p text and begins to wait for what comes from now on. What waited before is looked through for
/// bytes that the box confirms.
void Send(std::string_view text);

/// Sends the word that begins a run of the write in progress.
void Send_Word();

/// Counts the bytes that @p received, taken in a write, confirms.
void Count_Confirmed(std::string_view received);

/// Closes the port and leaves the status as it is.
void Close_Quietly();

/// Ends the transfer with @p word, by Transfer_Ended.
[[noreturn]] void Fail(std::string_view word = words::communication_error);

/// Opens the port, asks who is there and for the image of the master, or in a slave pass for the slave's.
void Start_Read();

/// One tick each.
void Transmit();
void Receive();

}  // namespace kx::timer
