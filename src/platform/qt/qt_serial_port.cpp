#include "platform/qt/qt_serial_port.h"

#include <QFileInfo>
#include <QSocketNotifier>
#include <utility>

#include "platform/qt/device_queues.h"
#include "settings/message.h"

namespace kx::platform {

Qt_Serial_Port::Qt_Serial_Port() {
  port_.setBaudRate(QSerialPort::Baud115200);
  port_.setDataBits(QSerialPort::Data8);
  port_.setParity(QSerialPort::NoParity);
  port_.setStopBits(QSerialPort::OneStop);
  port_.setFlowControl(QSerialPort::NoFlowControl);
  QObject::connect(&port_, &QSerialPort::errorOccurred, &port_, [this](auto error) { On_Error(error); });
  QObject::connect(&port_, &QSerialPort::readyRead, &port_, [this] {
    if (!std::exchange(told_soon_, true)) Queue(&Qt_Serial_Port::Tell_Received);
  });
}

Qt_Serial_Port::~Qt_Serial_Port() { Close(); }

Port_Error Qt_Serial_Port::Open(const std::string& path) {
  Close();
  port_.setPortName(QString::fromStdString(path));
  if (!port_.open(QIODevice::ReadWrite)) return Open_Error(path);
  port_.clearError();
  counters_ = Read_Line_Counters(static_cast<int>(port_.handle()));
  return {};
}

/// The system's refusal and the lock of another program give the same number in Qt; only the rights on the
/// file tell them apart.
Port_Error Qt_Serial_Port::Open_Error(const std::string& path) const {
  const QFileInfo file(QString::fromStdString(path));
  if (!file.exists()) return {QSerialPort::DeviceNotFoundError, "No such device"};
  if (port_.error() == QSerialPort::PermissionError && file.isReadable() && file.isWritable())
    return {QSerialPort::OpenError, "Device is in use"};
  const int number = port_.error() == QSerialPort::NoError ? QSerialPort::UnknownError : port_.error();
  return {number, port_.errorString().toStdString()};
}

/// The end of a run may be on its way still; the device is set back to other speeds as it is closed.
void Qt_Serial_Port::Close() {
  ++opening_;
  told_soon_ = false;
  const bool gone = std::exchange(lost_, false);
  left_over_.clear();
  if (!port_.isOpen()) return;
  if (!gone) Let_Out(static_cast<int>(port_.handle()));
  port_.close();
}

bool Qt_Serial_Port::Write(std::string_view text) {
  if (!port_.isOpen() || lost_) return false;
  if (port_.write(text.data(), static_cast<qint64>(text.size())) < 0) return false;
  port_.flush();
  return !lost_;
}

std::string Qt_Serial_Port::Read() {
  Take_From_Device();
  const QByteArray arrived =
      std::exchange(left_over_, {}) + (port_.isOpen() ? port_.readAll() : QByteArray());
  return arrived.toStdString();
}

/// A look at the device from here takes away what a notification that is on its way already is going to read,
/// and an empty read counts as an error in Qt. So the notification is called off for as long.
void Qt_Serial_Port::Take_From_Device() {
  if (!port_.isOpen() || lost_ || Waiting_In_Device(static_cast<int>(port_.handle())) == 0) return;
  auto notifiers = port_.findChildren<QSocketNotifier*>();
  erase_if(notifiers, [](const QSocketNotifier* one) { return one->type() != QSocketNotifier::Read; });
  for (QSocketNotifier* notifier : notifiers) notifier->setEnabled(false);
  (void)port_.waitForReadyRead(0);
  for (QSocketNotifier* notifier : notifiers) notifier->setEnabled(!lost_);
}

void Qt_Serial_Port::On_Error(QSerialPort::SerialPortError error) {
  const bool gone = error == QSerialPort::ResourceError || error == QSerialPort::ReadError ||
                    error == QSerialPort::WriteError;
  if (!gone || !port_.isOpen()) return;
  if (!std::exchange(lost_, true)) Queue(&Qt_Serial_Port::Tell_Lost);
}

void Qt_Serial_Port::Queue(void (Qt_Serial_Port::*step)()) {
  QMetaObject::invokeMethod(
      &port_,
      [this, step, opening = opening_] {
        if (opening == opening_) (this->*step)();
      },
      Qt::QueuedConnection);
}

void Qt_Serial_Port::Tell_Received() {
  told_soon_ = false;
  const Line_Counters before = std::exchange(counters_, Read_Line_Counters(static_cast<int>(port_.handle())));
  const int opening = opening_;
  for (const Line_Event error : Line_Errors(before, counters_))
    if (opening == opening_) Tell(error);
  if (opening == opening_) Tell(Line_Event::received);
}

void Qt_Serial_Port::Tell_Lost() {
  QByteArray arrived = port_.readAll();
  Close();
  left_over_ = std::move(arrived);
  Tell(Line_Event::lost);
}

void Qt_Serial_Port::Tell(Line_Event event) {
  const auto handler = on_event;  // it may be replaced while it runs
  if (handler) Guarded([&] { handler(event); });
}

}  // namespace kx::platform
