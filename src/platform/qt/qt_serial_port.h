#pragma once

#include <QSerialPort>

#include "platform/qt/line_counters.h"
#include "platform/serial_port.h"

namespace kx::platform {

/// A serial device through QSerialPort, whose error numbers it reports. All events come from the event loop,
/// never from inside a call, and nothing that their handler throws reaches Qt.
///
/// A device that goes away makes QSerialPort raise its error without end, so the first one closes the port.
class Qt_Serial_Port : public Serial_Port {
 public:
  Qt_Serial_Port();
  ~Qt_Serial_Port() override;
  Qt_Serial_Port(const Qt_Serial_Port&) = delete;
  Qt_Serial_Port& operator=(const Qt_Serial_Port&) = delete;

  /// @p path is a device or a link to one. A device that another program holds gives OpenError.
  Port_Error Open(const std::string& path) override;
  void Close() override;
  [[nodiscard]] bool Is_Open() const override { return port_.isOpen(); }
  bool Write(std::string_view text) override;

  /// What the event loop has delivered and what the device holds at this moment. After a loss this still
  /// takes what the device had delivered before it went.
  std::string Read() override;

 private:
  [[nodiscard]] Port_Error Open_Error(const std::string& path) const;
  void Take_From_Device();
  void On_Error(QSerialPort::SerialPortError error);
  void Queue(void (Qt_Serial_Port::*step)());
  void Tell_Received();
  void Tell_Lost();
  void Tell(Line_Event event);

  QSerialPort port_;
  QByteArray left_over_;
  Line_Counters counters_;
  bool told_soon_ = false;  // a received event is queued
  bool lost_ = false;
  int opening_ = 0;  // counts Open and Close, so that what was queued before is dropped
};

}  // namespace kx::platform
