#include "boxlink/box_info.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "boxlink/comm_port.h"
#include "boxlink/hex_text.h"
#include "boxlink/link_state.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "boxlink/transfer.h"
#include "settings/failure.h"
#include "settings/message.h"
#include "settings/text_encoding.h"
#include "settings/wait.h"

namespace kx {

std::string Box_Firmware;
std::int32_t Box_Serial = 0;
std::string Box_SC_ID;
std::string Box_Status;
bool Slave_Present = false;
bool Card_Present = false;
std::string Box_Info_Text;

namespace {

constexpr double info_time = 0.05;  // seconds
constexpr int last_tested_port = 40;

bool Holds(std::string_view answer, std::string_view label) {
  return answer.find(label) != std::string_view::npos;
}

/// Everything from @p distance characters behind the start of @p label; empty without the label.
std::string_view From(std::string_view answer, std::string_view label, std::size_t distance) {
  const std::size_t at = answer.find(label);
  if (at == std::string_view::npos || answer.size() < at + distance) return {};
  return answer.substr(at + distance);
}

std::int32_t Serial_Value(std::string_view text) {
  if (text.size() == 5 && text[4] == 'h')
    return 256 * Hex_Pair_Value(text.substr(0, 2)) + Hex_Pair_Value(text.substr(2, 2));
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  std::int32_t value = 0;
  std::from_chars(text.data(), text.data() + text.size(), value);
  return value;
}

void Keep(const Box_Info& info) {
  Box_Firmware = info.firmware;
  Box_Serial = info.serial;
  Box_SC_ID = info.sc_id;
  Box_Status = info.status;
  Slave_Present = info.slave_present;
  Card_Present = info.card_present;
}

std::string Listen(double seconds) {
  std::string received;
  const Wait_Limit limit(seconds);
  do {
    Yield();
    if (MSComm1.PortOpen() || MSComm1.Lost()) received += MSComm1.Input();
  } while (!limit.Passed());
  return received;
}

/// Puts the port back to closed when it was found so, on every way out.
class Port_As_Found {
 public:
  Port_As_Found() = default;
  ~Port_As_Found() {
    if (!was_open_) MSComm1.Set_PortOpen(false);
  }
  Port_As_Found(const Port_As_Found&) = delete;
  Port_As_Found& operator=(const Port_As_Found&) = delete;

 private:
  bool was_open_ = MSComm1.PortOpen();
};

/// True when the box has answered.
bool Query() {
  const Port_As_Found port;
  rs232_text.Set(words::asking_info);
  Debug_txt.Set("");
  if (!Open_For_Transfer()) return false;
  Drop_Input();
  Get_Box_Info();
  return Box_Info_OK;
}

bool Query_Connected_Box() {
  const auto end_early = [](std::string_view failed) {
    if (!failed.empty()) rs232_text.Set(words::no_responce);
  };
  bool answered = false;
  Run_Transfer({.end_early = end_early}, [&] { answered = Query(); });
  return answered;
}

std::string Test_Line(int com_number, const platform::Port_Error& error) {
  const std::string port = "Com port " + std::to_string(com_number);
  if (error.Ok()) return port + " ok" + Crlf();
  return port + " not ok   " + std::to_string(error.number) + " - " + error.text + Crlf();
}

void Test_Ports() {
  Text1.Set("");
  for (int n = 1; n <= last_tested_port; ++n) {
    MSComm1.Set_CommPort(n);
    if (!MSComm1.PortOpen()) Text1.Append(Test_Line(n, MSComm1.Set_PortOpen(true)));
    MSComm1.Set_PortOpen(false);
  }
}

}  // namespace

bool Info_Complete(const std::string& answer) { return answer.ends_with('\n') && Holds(answer, "mode"); }

Box_Info Parse_Box_Info(const std::string& answer) {
  const std::string_view firmware = From(answer, "TORNVIK KX", 11);
  Box_Info info;
  info.firmware = From_Latin_1(firmware.substr(0, firmware.find("\r\n")));
  info.serial = Serial_Value(From(answer, "Serial", 9).substr(0, 5));
  info.sc_id = From_Latin_1(From(answer, "SC ID", 6).substr(0, 3));
  info.status = From_Latin_1(From(answer, "Status", 7).substr(0, 3));
  info.master_mode = Holds(answer, "Master");
  info.slave_present = Holds(answer, "Slave present");
  info.card_present = Holds(answer, "Smartcard present");
  return info;
}

std::string Describe(const Box_Info& info) {
  std::string text = "TORNVIK KX " + info.firmware + Crlf();
  text += "Serial KX" + std::to_string(info.serial) + Crlf();
  text += "SC ID " + info.sc_id + Crlf();
  text += (info.master_mode ? "Master mode" : "Slave mode") + Crlf();
  if (info.card_present) text += "Smartcard Present " + Crlf();
  if (info.slave_present) text += "Slave Present " + Crlf();
  return text;
}

void Get_Box_Info() {
  Box_Info_OK = false;
  MSComm1.Output("v");
  const std::string received = Listen(info_time);
  Box_Info_OK = Info_Complete(received);
  rs232_text.Set(Box_Info_OK ? words::info_received : words::no_responce);
  if (Box_Info_OK) {
    const Box_Info info = Parse_Box_Info(received);
    Keep(info);
    Box_Info_Text = Describe(info);
    Note_Box_Answer();
  } else {
    Box_Info_Text = words::no_responce_sentence;
  }
  uncoded.Set(Box_Info_Text);
}

void Connect_Info_Click() {
  if (Query_Connected_Box()) Tell(Box_Info_Text, platform::Icon::information, "Connected box info");
}

void Refresh_Box_Info_Quietly() {
  try {
    (void)Query_Connected_Box();
  } catch (const Failure&) {
    // The device went away; the report goes on with what is known.
  }
}

void Command3_Click() { Run_Transfer({}, Test_Ports); }

void Reset_Box_Info() {
  Keep({});
  Box_Info_Text.clear();
}

}  // namespace kx
