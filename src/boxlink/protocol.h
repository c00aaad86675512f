#pragma once

#include <functional>
#include <string>
#include <string_view>

/// The conversation with the box: printable text both ways, no frame, no checksum. A command is a short text
/// without an end, its answer is whatever arrives afterwards.
namespace kx {

/// The last query gave a complete answer. Written by Get_Box_Info, cleared by an opening that fails.
extern bool Box_Info_OK;

/// Closing the port shows no status word; cleared by that.
extern bool Quiet_Close;

/// Opens the port when it is closed. When that fails the status says so, its tool tip what helps, and the
/// operation of the caller ends; it ends without a word when it was asked to.
[[nodiscard]] bool Open_For_Transfer();

/// Reports the port as open and opens it when it is closed.
void Open_Box_Port();

/// Closes an open port and reports it, unless Quiet_Close is set.
void Close_Box_Port();

/// "Close port": the same, and the end of the transfer that runs.
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

/// Unwinds an operation that is to end before its time: the program is closing, or its user has closed the
/// port. Each operation catches its own.
struct Transfer_Ended {};

/// Asks the operation that has the line to end at its next wait.
void End_Transfer();

/// To be called after every box and turn of the event loop: throws Transfer_Ended when the operation is to
/// end.
void Fail_If_Ended();

/// True while an operation has the line to itself.
[[nodiscard]] bool Transfer_Running();

/// Called whenever Transfer_Running changes, for the controls that start a transfer; must not throw.
extern std::function<void()> on_transfer_change;

/// Takes the line for an operation that goes on after its handler. False when another has it already. The
/// operation keeps to the COM number that is chosen now; an open port of another number is closed.
[[nodiscard]] bool Take_Line();

/// Ends what Take_Line began.
void Free_Line();

/// Holds the line for one operation. A second operation that is started inside a wait of the first is not
/// entered and leaves quietly.
class Transfer_Guard {
 public:
  Transfer_Guard();
  ~Transfer_Guard();
  Transfer_Guard(const Transfer_Guard&) = delete;
  Transfer_Guard& operator=(const Transfer_Guard&) = delete;
  [[nodiscard]] bool Entered() const { return entered_; }

 private:
  bool entered_;
};

}  // namespace kx
