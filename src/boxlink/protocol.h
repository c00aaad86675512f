#pragma once

#include <string>
#include <string_view>

/// The conversation with the box: printable text both ways, no frame, no checksum. A command is a short text
/// without an end, its answer is whatever arrives afterwards.
namespace kx {

/// The last query gave a complete answer. Written by Get_Box_Info, cleared by an opening that fails.
extern bool Box_Info_OK;

/// Closing the port shows no status word; cleared by that.
extern bool Quiet_Close;

/// Closes a port that is open, or lost, under another number than the chosen one; nothing while an operation
/// runs.
void Leave_Other_Port();

/// Ends the run in which the operation before may have left the box. For an operation that opens the port by
/// itself; Open_For_Transfer has it done.
void End_Run_Left_Open();

/// Opens the port when it is closed. When that fails the status says so, its tool tip what helps, and the
/// operation of the caller ends; it ends without a word when it was asked to.
[[nodiscard]] bool Open_For_Transfer();

/// Reports the port as open and opens it when it is closed.
void Open_Box_Port();

/// Closes an open port and reports it, unless Quiet_Close is set.
void Close_Box_Port();

/// "Close port": the same, behind the end of the transfer that runs.
void Com_knapp2_Click();

/// Receive event of the port: tells of line errors, one box at a time; errors meanwhile are dropped.
void MSComm1_OnComm();

/// Takes away what waits in the port, so that it does not count as part of the next answer.
void Drop_Input();

/// Sends @p command and collects what arrives until @p received has @p wanted characters, within @p limit
/// seconds. Yields to the event loop all the while: any handler may run in here.
///
/// What was waiting before stays at the head of @p received and counts; who must not see it takes it away
/// first. On a time-out @p received keeps what came. With the port closed a box says so and @p received stays
/// as it is.
/// @return true when the wanted length was reached.
/// Throws Failure when the device is lost, Transfer_Ended as soon as the operation is to end.
bool Send_Wait_Rec(std::string_view command, double limit, int wanted, std::string& received);

}  // namespace kx
