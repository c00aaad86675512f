#include "boxlink/comm_port.h"

#include <algorithm>
#include <utility>

#include "boxlink/line_log.h"
#include "boxlink/port_map.h"
#include "platform/seams.h"
#include "settings/failure.h"

namespace kx {

using platform::Line_Event;
using platform::seams;

Comm_Port MSComm1;

void Comm_Port::Set_CommPort(int com_number) { com_number_ = com_number; }

platform::Port_Error Comm_Port::Set_PortOpen(bool open) {
  if (open) return Open();
  Close();
  return {};
}

bool Comm_Port::PortOpen() const {
  return !lost_ && seams.serial_port != nullptr && seams.serial_port->Is_Open();
}

platform::Port_Error Comm_Port::Open() {
  if (PortOpen()) return {};
  Close();
  if (settings_ != line_settings) return {port_error::unsupported, "No such line settings: " + settings_};
  device_ = Device_Path(com_number_);
  if (device_.empty()) return {port_error::not_found, "No such device"};
  seams.serial_port->on_event = [this](Line_Event event) { Report(event); };
  platform::Port_Error error = seams.serial_port->Open(device_);
  if (error.Ok()) Log_Line(Line_Direction::opened, device_);
  return error;
}

void Comm_Port::Close() {
  if (PortOpen()) Log_Line(Line_Direction::closed);
  if (seams.serial_port != nullptr) seams.serial_port->Close();
  waiting_.clear();
  fresh_ = false;
  lost_ = false;
  RThreshold = 0;
  InputLen = 0;
}

void Comm_Port::Reset() {
  Close();
  com_number_ = 1;
  settings_ = line_settings;
  device_.clear();
  event_ = 0;
}

void Comm_Port::Output(std::string_view text) {
  Fail_If_Lost();
  if (!PortOpen()) return;
  Log_Line(Line_Direction::sent, text);
  if (seams.serial_port->Write(text)) return;
  Note_Loss();
  Fail_If_Lost();
}

std::string Comm_Port::Input() {
  Take_Arrived();
  if (waiting_.empty()) Fail_If_Lost();
  const std::size_t count =
      InputLen > 0 ? std::min(waiting_.size(), static_cast<std::size_t>(InputLen)) : waiting_.size();
  std::string taken = waiting_.substr(0, count);
  waiting_.erase(0, count);
  return taken;
}

int Comm_Port::InBufferCount() {
  Take_Arrived();
  if (waiting_.empty()) Fail_If_Lost();
  return static_cast<int>(waiting_.size());
}

void Comm_Port::Take_Arrived() {
  if (!PortOpen()) return;
  if (Keep(seams.serial_port->Read())) fresh_ = true;
}

/// True when something has @p arrived.
bool Comm_Port::Keep(const std::string& arrived) {
  if (arrived.empty()) return false;
  Log_Line(Line_Direction::received, arrived);
  waiting_.append(arrived, 0, input_buffer_size - waiting_.size());
  return true;
}

void Comm_Port::Fail_If_Lost() const {
  if (lost_) throw Failure(lost_connection);
}

/// What the device had delivered before it went stays in reach.
void Comm_Port::Note_Loss() {
  (void)Keep(seams.serial_port->Read());
  Log_Line(Line_Direction::lost);
  seams.serial_port->Close();
  lost_ = true;
}

void Comm_Port::Report(Line_Event event) {
  switch (event) {
    case Line_Event::received:
      Take_Arrived();
      Report_Enough();
      if (OnArrival) OnArrival();
      return;
    case Line_Event::break_signal:
      return Raise(comm_event::break_signal);
    case Line_Event::framing:
      return Raise(comm_event::framing);
    case Line_Event::overrun:
      return Raise(comm_event::overrun);
    case Line_Event::parity:
      return Raise(comm_event::parity);
    case Line_Event::lost:
      return Note_Loss();
  }
}

void Comm_Port::Report_Enough() {
  if (RThreshold <= 0 || waiting_.size() < static_cast<std::size_t>(RThreshold)) return;
  if (std::exchange(fresh_, false)) Raise(comm_event::receive);
}

void Comm_Port::Raise(int code) {
  event_ = code;
  if (OnComm) OnComm();
}

}  // namespace kx
