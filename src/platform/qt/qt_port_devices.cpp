#include "platform/qt/qt_port_devices.h"

#include <QFileInfo>
#include <QSerialPortInfo>
#include <algorithm>
#include <utility>

namespace kx::platform {
namespace {

/// A card in the machine has a vendor number like any USB adapter; only the place of the device tells them
/// apart.
bool Is_Usb(const QString& name) {
  return QFileInfo("/sys/class/tty/" + name + "/device").canonicalFilePath().contains("/usb");
}

Port_Device Row(const QSerialPortInfo& port) {
  return {port.systemLocation().toStdString(), port.portName().toStdString(),
          port.description().toStdString(), Is_Usb(port.portName())};
}

/// Kind and number of a device: "ttyUSB10" gives "ttyUSB" and "10". Longer numbers come later.
std::pair<std::string, std::string> Split(const std::string& name) {
  const std::size_t digits = name.find_last_not_of("0123456789") + 1;
  return {name.substr(0, digits), name.substr(digits)};
}

bool Before(const Port_Device& a, const Port_Device& b) {
  const auto [a_kind, a_number] = Split(a.name);
  const auto [b_kind, b_number] = Split(b.name);
  if (a_kind != b_kind) return a_kind < b_kind;
  if (a_number.size() != b_number.size()) return a_number.size() < b_number.size();
  return a_number < b_number;
}

}  // namespace

std::vector<Port_Device> Qt_Port_Devices::List() const {
  std::vector<Port_Device> devices;
  for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) devices.push_back(Row(port));
  std::sort(devices.begin(), devices.end(), Before);
  return devices;
}

}  // namespace kx::platform
