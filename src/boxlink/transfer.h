#pragma once

#include <functional>
#include <optional>
#include <string_view>
#include <vector>

#include "settings/image.h"

/// The operation that has the line to the box: one at a time, from its click to its one end.
///
/// An operation is a row of steps. A step is a click or a tick; it may wait, and any handler may run in its
/// waits. The synchronous engine does all in its first step, the timer-driven one goes on in ticks. However
/// an operation ends, with its work done, by the user's or the program's closing, by a failure or by an
/// error, it goes out by the same way: no tick is left to come, the box is brought out of an open run, its
/// kind says why it ended early, the modes are unset, and the line is free.
namespace kx {

/// Unwinds a step of an operation that is to end before its time. Every step catches it.
struct Transfer_Ended {
  std::string_view word =
      {};  ///< what has failed, for the status; empty when the user or the program ended it
};

/// What sets one kind of operation apart at its end; each may be empty.
struct Transfer_Kind {
  /// Tells that it ended before its time, by a failure with the word for it, or without one.
  std::function<void(std::string_view word)> end_early = {};

  /// True while a tick is to come. Without this the first step is the last.
  bool (*goes_on)() = nullptr;

  /// Lets no tick come any more.
  void (*rest)() = nullptr;
};

/// What the running operation knows.
struct Transfer {
  Transfer_Kind kind = {};
  int port = 0;  ///< COM number that it began with
  Byte_Image image =
      {};  ///< the tune as it compares and sends it, whatever the user does to the tune meanwhile

  /// The box may stand in a run, in which it takes all that comes for data, up to "$". Set with the word that
  /// begins a run, cleared when the box confirms the run's end.
  bool run_open = false;

  std::optional<int> confirmed = {};  ///< bytes that the box has confirmed; unset when it sends none
  bool end_asked = false;
  bool inside_step = false;
};

/// Runs @p step as the first of an operation; nothing happens while another operation has the line. It keeps
/// to the COM number that is chosen now; an open port of another number is closed. What @p step throws but
/// for Transfer_Ended is passed on behind the end of the operation.
void Run_Transfer(Transfer_Kind kind, const std::function<void()>& step);

/// Runs a further step, for a tick; nothing without an operation or inside another step.
void Step_Transfer(const std::function<void()>& step);

/// Ends the operation: at once, or, when one of its steps waits, at that wait. An open run is ended before,
/// so that the caller may close the port.
void End_Transfer();

/// The running operation. Throws Failure when there is none.
[[nodiscard]] Transfer& Current_Transfer();

/// True while an operation has the line to itself.
[[nodiscard]] bool Transfer_Running();

/// Makes the operation one that sends: stamps the tune and keeps a copy of it as what is sent.
void Begin_Sending();

/// The bytes, rising, that "Write" would send to a master that holds @p box: those of the compared ones that
/// differ once the tune is stamped. What a slave lacks comes on top.
[[nodiscard]] std::vector<int> Bytes_To_Write(const Byte_Image& box, const Byte_Image& tune);

/// Lets waiting events run. Any handler may run in here. Throws Transfer_Ended when the operation is to end.
void Yield();

/// True when the program is closing or the running operation is to end.
[[nodiscard]] bool Transfer_Ending();

/// Throws Transfer_Ended when Transfer_Ending; to be called behind every box.
void Fail_If_Ended();

/// Called whenever Transfer_Running changes, for the controls that start a transfer; must not throw.
extern std::function<void()> on_transfer_change;

}  // namespace kx
