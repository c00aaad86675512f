#include "boxlink/protocol.h"

#include "boxlink/comm_port.h"
#include "boxlink/link_state.h"
#include "boxlink/link_texts.h"
#include "boxlink/port_map.h"
#include "boxlink/transfer.h"
#include "settings/message.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "settings/wait.h"

namespace kx {

bool Box_Info_OK = false;
bool Quiet_Close = false;

namespace {

bool communication_box_open = false;

/// COM number of the open port, else of the one to open.
int Port_Number() {
  if (MSComm1.PortOpen() || MSComm1.Lost()) return MSComm1.CommPort();
  return Transfer_Running() ? Current_Transfer().port : Com_Port_Number;
}

void Report_Port(std::string_view end) {
  rs232_text.Set(std::string(words::port_word) + std::to_string(Port_Number()) + std::string(end));
}

/// Opens the closed port, or tells why it cannot.
bool Open_Port() {
  const int number = Port_Number();
  MSComm1.Set_CommPort(number);
  MSComm1.Set_Settings(line_settings);
  const platform::Port_Error error = MSComm1.Set_PortOpen(true);
  rs232_tool_tip.Set(Open_Help(error, number, MSComm1.Device()));
  if (error.Ok()) return true;
  Box_Info_OK = false;
  rs232_text.Set(std::string(words::failed_to_open) + std::to_string(number) + " >");
  return false;
}

}  // namespace

void Leave_Other_Port() {
  if (!Transfer_Running() && MSComm1.CommPort() != Com_Port_Number) MSComm1.Set_PortOpen(false);
}

/// The "!" CR LF of a box that stood in a run must not count as part of an answer.
void End_Run_Left_Open() {
  if (!Run_Left_Open) return;
  std::string answer;
  (void)Send_Wait_Rec("$", 0.1, 3, answer);
  Run_Left_Open = false;
}

/// The port may have been opened by hand since the run was left.
bool Open_For_Transfer() {
  if (Transfer_Ending()) return false;
  if (!MSComm1.PortOpen() && !Open_Port()) return false;
  if (Transfer_Running()) End_Run_Left_Open();
  return true;
}

void Open_Box_Port() {
  Leave_Other_Port();
  Report_Port(words::port_open_end);
  (void)Open_For_Transfer();
}

void Close_Box_Port() {
  if (!Quiet_Close) Report_Port(words::port_closed_end);
  if (!MSComm1.PortOpen() && !MSComm1.Lost()) return;
  MSComm1.Set_PortOpen(false);
  Quiet_Close = false;
}

void Com_knapp2_Click() {
  End_Transfer();
  Close_Box_Port();
}

void MSComm1_OnComm() {
  if (MSComm1.CommEvent() == comm_event::receive || communication_box_open) return;
  struct Box_Open {
    Box_Open() { communication_box_open = true; }
    ~Box_Open() { communication_box_open = false; }
  } const open;
  Tell("Communication error. Check connection and power.", platform::Icon::critical);
}

void Drop_Input() { (void)MSComm1.Input(); }

bool Send_Wait_Rec(std::string_view command, double limit, int wanted, std::string& received) {
  if (!MSComm1.PortOpen() && !MSComm1.Lost()) {
    Tell("Port not open");
    return false;
  }
  received = MSComm1.Input();
  MSComm1.Output(command);
  const Wait_Limit wait(limit);
  bool passed = false;
  while (!passed) {
    Yield();
    passed = wait.Passed();  // before the last look at the port: what came in time counts
    received += MSComm1.Input();
    if (received.size() < static_cast<std::size_t>(wanted)) continue;
    Yield();
    return true;
  }
  return false;
}

}  // namespace kx
