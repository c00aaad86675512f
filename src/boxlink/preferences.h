#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "boxlink/serial_port_list.h"

/// What the PC settings form KX_prefs offers and keeps: the box's COM port and the way to a card.
namespace kx {

/// One option of the card interface.
struct Interface_Option {
  std::string_view control;  ///< in KX_prefs
  std::string_view word;     ///< in the settings file
  std::string_view caption;
  std::string_view frame;  ///< on the card side of SSTab_Communication
};

/// In the order in which toggle_interface goes through them.
inline constexpr std::array interface_options{
    Interface_Option{"interface_option_a", "SC_Reader", "Chipdrive Card Reader / Writer", "Frame1"},
    Interface_Option{"interface_option_c", "KX_MapCard", "Box as Card Reader / Writer", "kx_crw_frame"},
    Interface_Option{"interface_option_d", "TodosII_Reader", "TodosII Card Reader / Writer", "frame_Todos"},
};

/// Index of the option whose word is @p word; -1 for any other word, which selects no option.
[[nodiscard]] int Option_Of_Interface(std::string_view word);

/// The serial ports that the form offers.
[[nodiscard]] clsSerialPortList List_Ports();

/// The form's list, one text for each port in its order.
[[nodiscard]] std::vector<std::string> Port_Rows(const clsSerialPortList& ports);

/// Row, from 0, of the port with the number @p com_number; -1 when it is not in the list.
[[nodiscard]] int Row_Of_Port(const clsSerialPortList& ports, int com_number);

/// Makes the port of row @p row the box's port and @p interface_word the card interface, keeps both in the
/// settings file and refreshes the views. With row -1 the port stays as it is.
void Apply_Preferences(const clsSerialPortList& ports, int row, const std::string& interface_word);

/// Makes the next option the card interface, the first one after the last or after a word without an option;
/// keeps it in the settings file and refreshes the views.
void toggle_interface();

/// Name of a system with COM ports by its version record. Empty for a family that has no names here.
[[nodiscard]] std::string OS_Name(int platform_id, int major_version, int minor_version);

/// The operating system as the form shows it.
[[nodiscard]] std::string Label_OS_Text();

}  // namespace kx
