#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace kx {

/// A serial port of this machine as the user picks it from a list.
class clsSerialPort {
 public:
  std::string Name;         ///< "COM3", or the friendly name
  std::string Description;  ///< for the list
  std::string DevPath;      ///< what opens the port
  bool IsUsb = false;
  std::int16_t COMx = 0;  ///< COM number

  /// True when the port could not be opened at the last test.
  [[nodiscard]] bool IsBusy() const { return is_busy_; }
  void Set_IsBusy(bool busy) { was_busy_ = std::exchange(is_busy_, busy); }

  /// IsBusy as it was before it was set last.
  [[nodiscard]] bool WasBusy() const { return was_busy_; }
  void Set_WasBusy(bool busy) { was_busy_ = busy; }

  /// "COM" and the number.
  [[nodiscard]] std::string COMxString() const;

  /// Tests whether the port can be opened by this program alone, keeps the outcome as IsBusy and returns it:
  /// true means that it can not.
  bool checkIfOpen();

  /// True when the operating system has a serial port of this number.
  [[nodiscard]] bool CheckIfExist() const;

 private:
  bool is_busy_ = false;
  bool was_busy_ = false;
};

/// The serial ports of this machine. Each filling replaces the former content.
class clsSerialPortList {
 public:
  /// Asks the operating system for its ports, in the way that its version offers. @p count is the highest
  /// number of the plain probe, which comes first with @p use_probe and adds what the system left out.
  /// @p only_existing and @p only_free leave out the ports that fail those tests.
  void EnumerateList(std::int16_t count, bool only_existing, bool only_free, bool use_probe);

  /// Plain probe alone: COM1 to COM @p count.
  void PopulateList(std::int16_t count, bool only_existing, bool only_free);

  /// The port of @p index, from 1. Throws Failure "Subscript out of range".
  [[nodiscard]] const clsSerialPort& port(int index) const;
  [[nodiscard]] clsSerialPort& port(int index);

  void AddPort(clsSerialPort port) { ports_.push_back(std::move(port)); }
  [[nodiscard]] int PortCount() const { return static_cast<int>(ports_.size()); }

  /// Why the operating system ended the last enumeration early, which leaves the list empty; else no text.
  [[nodiscard]] const std::string& Error_Text() const { return error_text_; }

 private:
  std::vector<clsSerialPort> ports_;
  std::string error_text_;
};

}  // namespace kx
