#include <string>

#include "boxlink/comm_port.h"
#include "boxlink/link_state.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "boxlink/sync_steps.h"
#include "boxlink/transfer.h"
#include "settings/message.h"
#include "settings/text_encoding.h"
#include "settings/wait.h"

namespace kx::sync {
namespace {

/// What went wrong, and what did not, for the journal's end.
struct Write_Log {
  std::string text;
  bool failed = false;
  void Add(const std::string& line) { text += line + Crlf(); }
};

bool Slave_Mode_Accepted() {
  if (Get_Field(map::slave_mode) == 0) return true;
  return Ask_Yes_No("This will force KX-system to enter slave mode. Do you really want to continue?");
}

std::string Answer_To(std::string_view command, double limit, int wanted) {
  std::string answer;
  (void)Send_Wait_Rec(command, limit, wanted, answer);
  return answer;
}

bool Marked(int i) { return i >= 0 && Diff_Flags[i] == 255; }

/// Begins a run at byte @p i. No character that waits before "bw" can be of use, and one that is left from
/// the run before would count as part of every answer in this one.
void Begin_Run(int i) {
  Note_Master_Run();
  Drop_Input();
  Current_Transfer().run_open = true;
  Answer_To("bw", 0.2, 3);
  const std::string offset = dec2hex(i, 2);
  Answer_To(offset.substr(0, 1), 0.1, 1);
  Answer_To(offset.substr(1), 0.1, 1);
}

/// True when the box has confirmed byte @p i.
bool Send_Byte(int i) {
  const std::string digits = dec2hex(Current_Transfer().image[i], 2);
  Answer_To(digits.substr(0, 1), 0.2, 1);
  return Answer_To(digits.substr(1), 0.3, 2).find('w') == 1;
}

/// Two characters are waited for; a box that goes on to end its line must have done so before the next
/// command, whose answer would begin with that end.
std::string Answer_To_End() {
  std::string answer = Answer_To("$", 0.1, 2);
  const Wait_Limit limit(0.1);
  while (answer.find("!\r\n") == std::string::npos && !limit.Passed()) {
    Yield();
    answer += MSComm1.Input();
  }
  return answer;
}

/// Whatever comes next would be data to a box that stands in its run. A "$" that is lost is sent once more;
/// when not one character of the run's end comes to that either, nothing may follow.
void End_Run() {
  bool& open = Current_Transfer().run_open;
  std::string answers;
  for (int attempt = 0; open && attempt < 2; ++attempt) {
    answers += Answer_To_End();
    open = answers.find('!') == std::string::npos;
  }
  if (answers.find_first_of("!\r\n") == std::string::npos) throw Transfer_Ended{words::communication_error};
}

void Report_Write_Error(int i, Write_Log& log) {
  log.Add("Byte: " + std::to_string(i) + "  WRITE ERROR ");
  log.failed = true;
  End_Run();
}

void Send_Marked_Bytes(Write_Log& log) {
  for (int i = 0; i <= map::last_compared; ++i) {
    if (!Marked(i)) continue;
    if (!Marked(i - 1)) Begin_Run(i);
    if (!Send_Byte(i)) return Report_Write_Error(i, log);
    ++*Current_Transfer().confirmed;
    if (!Marked(i + 1)) End_Run();
    Yield();
  }
}

/// Closing command number @p number. Each overwrites the verdict of what came before; the last one's stands.
/// What waits is not its answer.
void Send_End(int number, Write_Log& log) {
  Drop_Input();
  const std::string answer = Answer_To("ue", 1.5, 3);
  const std::string name = "UE" + std::to_string(number);
  log.failed = !answer.starts_with("ue*");
  log.Add(log.failed ? name + " error " + From_Latin_1(answer) : name + " OK ");
}

void Read_Back() {
  Write_Mode = false;
  Write_Verify = true;
  (void)Verify();
  Write_Verify = false;
}

void Report_End(const Write_Log& log) {
  const std::string verdict = With_Time(log.failed ? words::write_aborted : words::write_finished);
  Debug_txt.Append(log.text + Crlf() + verdict);
  rs232_text.Set(verdict);
}

void Send_All() {
  Write_Log log;
  Send_Marked_Bytes(log);
  Send_End(1, log);
  Send_End(2, log);
  Read_Back();
  Fail_If_Ended();
  MSComm1.Set_PortOpen(true);
  Send_End(3, log);
  MSComm1.Set_PortOpen(false);
  Report_End(log);
}

}  // namespace

void Write() {
  Report_First_Step(words::write_started);
  Write_Mode = true;
  if (!Slave_Mode_Accepted()) return Report_Step(words::write_aborted);
  Fail_If_Ended();
  Begin_Sending();
  if (!Verify()) return Report_Step(words::write_aborted);
  Fail_If_Ended();
  if (!Dataset_Accepted(Current_Transfer().image[map::dataset], "write anyway?"))
    return Report_Step(words::write_aborted);
  rs232_text.Set(words::writing);
  Yield();
  if (!Open_For_Transfer()) {
    Add_To_Journal(rs232_text.Text());
    return Report_Step(words::write_aborted);
  }
  Send_All();
}

}  // namespace kx::sync
