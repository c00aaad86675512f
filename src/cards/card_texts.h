#pragma once

#include <string_view>

#include "settings/shown_text.h"

namespace kx {

extern Shown_Text txt_Chipdrive_status;  ///< status of the Chipdrive path, one line
extern Shown_Text txt_TodosStatus;       ///< status of the Todos path: a copy of the bench form's result
extern Shown_Text kx_crw_text;           ///< status of the box as card writer, one line

/// Every status word of the card paths, once. Words that look alike differ on purpose: they are compared as
/// they stand.
namespace card_words {
// Chipdrive
inline constexpr std::string_view searching = "< Searching... >";
inline constexpr std::string_view reader_ok = "< Card Reader OK >";
inline constexpr std::string_view no_reader = "< No Reader >";
inline constexpr std::string_view no_card = "< No Card >";
inline constexpr std::string_view card_error = "< Card error ";  // status, " >"
inline constexpr std::string_view card_differs = "< Card differs from tune >";

// All paths
inline constexpr std::string_view read_ok = "< Card Read OK >";
inline constexpr std::string_view read_cancel = "< Card Read cancel >";
inline constexpr std::string_view write_ok = "< Card Write OK >";

// Todos
inline constexpr std::string_view todos_pressed = "<------>";
inline constexpr std::string_view cannot_establish = "< Cannot establish connection >";
inline constexpr std::string_view no_resource_manager = "Could not Load Resource Manager!";
inline constexpr std::string_view no_todos_reader = "There are no Todos reader/writer connected to the PC";
inline constexpr std::string_view no_initial = "Could not Initialize the specified reader!";
inline constexpr std::string_view no_connection = "Could not connect to card by the specified reader!";
inline constexpr std::string_view no_todos_card = "< No card >";
inline constexpr std::string_view card_type_error = "< Card type set error >";
inline constexpr std::string_view card_connected = "< Card Connected >";
inline constexpr std::string_view card_reset_failure = "< Card Reset failure! >";
inline constexpr std::string_view connect_first = "< Please connect to the card first! >";
inline constexpr std::string_view no_start_address = "< Please input the Start Address! >";
inline constexpr std::string_view no_data_length = "< Please input Data Length! >";
inline constexpr std::string_view reading = "< Reading... >";
inline constexpr std::string_view read_data_fail = "< Read Data Fail >";
inline constexpr std::string_view read_success = "< Read success! >";
inline constexpr std::string_view writing = "< Writing... >";
inline constexpr std::string_view write_data_error = "< Write Data Error >";
inline constexpr std::string_view write_data_success = "< Write Data Success! >";
inline constexpr std::string_view disconnecting = "< Disconnecting... >";
inline constexpr std::string_view remove_card = "Remove Map Card";
inline constexpr std::string_view remove_card_from_reader = "Remove Map Card from reader/writer";
inline constexpr std::string_view card_disconnected = "< Card Disconnected >";
inline constexpr std::string_view disconnect_error = "< Disconnect Error >";
inline constexpr std::string_view pin_connect_first = " Please connect to the card first!";
inline constexpr std::string_view pin_digits = "< A PIN byte has two hex digits, 00 to FF >";
inline constexpr std::string_view protect_bit = "Read Protect Bit : ";  // value
inline constexpr std::string_view protect_bit_read = "< Read Success! >";
inline constexpr std::string_view protect_bit_error = "< Write Protect Bit Error >";
inline constexpr std::string_view protect_bit_written = "< Write Protect bit Success! >";
inline constexpr std::string_view no_protect_data = "< please input the data to be written to card! >";
inline constexpr std::string_view page_power_first = "< Please power on the card first >";
inline constexpr std::string_view page_no_start = "< Please input the Start address >";
inline constexpr std::string_view page_no_data = "< Please input the Data to be written to card >";
inline constexpr std::string_view page_failure = "< Write Data in page Failure >";
inline constexpr std::string_view page_success = "< Write Data in page Success >";

// The box as card writer
inline constexpr std::string_view box_writer_at_start = "< KX writer info >";
inline constexpr std::string_view box_pressed = "< ... >";
inline constexpr std::string_view write_no_response = "< No response...>";  // of the query before a write
inline constexpr std::string_view no_response = "< No response... >";
inline constexpr std::string_view no_map_card = "< No MapCard present >";
inline constexpr std::string_view failure = "< failure... >";
inline constexpr std::string_view card_inserted = "< MapCard inserted... >";
inline constexpr std::string_view card_not_inserted = "< MapCard not inserted...>";
}  // namespace card_words

}  // namespace kx
