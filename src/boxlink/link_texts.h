#pragma once

#include <string>
#include <string_view>

#include "settings/shown_text.h"

namespace kx {

extern Shown_Text rs232_text;      ///< status of the box link, one line
extern Shown_Text rs232_tool_tip;  ///< what helps when the port did not open; else empty
extern Shown_Text Debug_txt;       ///< journal of the transfer; the form keeps its cursor at the end
extern Shown_Text Text1;           ///< result of the port test
extern Shown_Text uncoded;         ///< the box's information as last asked for

/// Every status word of the link, once. Those that end in a blank are followed by the time, some then by one
/// of the two ends.
namespace words {
inline constexpr std::string_view at_start = "< COM-Port info >";
inline constexpr std::string_view transfer_pressed = "< ..... >";
inline constexpr std::string_view info_pressed = "<------>";
inline constexpr std::string_view asking_info = "< .... >";
inline constexpr std::string_view info_received = "< Info received OK >";
inline constexpr std::string_view no_responce = "< No responce >";
inline constexpr std::string_view no_responce_sentence = "No responce from system";
inline constexpr std::string_view failed_to_open = "< Failed to open COM";  // number, " >"
inline constexpr std::string_view port_word = "< COM";                      // number
inline constexpr std::string_view port_open_end = " open >";
inline constexpr std::string_view port_closed_end = " closed >";
inline constexpr std::string_view read_started = "Read started ";
inline constexpr std::string_view read_aborted = "Read aborted ";
inline constexpr std::string_view read_finished = "Read finished ";
inline constexpr std::string_view error_in_updating = "< Error in updateing >";
inline constexpr std::string_view verify_started = "Verify started ";
inline constexpr std::string_view verify_aborted = "Verify aborted ";
inline constexpr std::string_view verify_finished = "Verify finished ";
inline constexpr std::string_view verify_failed = "Verify failed ";
inline constexpr std::string_view verify_finished_and_failed = "Verify finished and failed ";
inline constexpr std::string_view write_verify_started = "Write verify started ";
inline constexpr std::string_view write_verify_finished = "Write verify finished ";
inline constexpr std::string_view write_started = "Write started ";
inline constexpr std::string_view writing = "Writing... ";  // no time
inline constexpr std::string_view write_aborted = "Write aborted ";
inline constexpr std::string_view write_finished = "Write finished ";

// The timer-driven engine.
inline constexpr std::string_view end = " >";
inline constexpr std::string_view dotted_end = "... >";
inline constexpr std::string_view slave_check = "< Check >";
inline constexpr std::string_view second_slave_check = "< Check2 >";
inline constexpr std::string_view reading_data = "< reading data from KX... >";
inline constexpr std::string_view verifying = "< verifying... >";
inline constexpr std::string_view writing_data = "< writing data to KX... >";
inline constexpr std::string_view data_read = "< KX read ";              // time, end
inline constexpr std::string_view data_written = "< write finished ";    // time, end
inline constexpr std::string_view data_read_back = "< Write finished ";  // time, dotted end
inline constexpr std::string_view data_verified = "< KX data verify OK >";
inline constexpr std::string_view data_differs = "< verify failure >";              // offsets
inline constexpr std::string_view slave_written = "< Write finished, slave OK,  ";  // time, dotted end
inline constexpr std::string_view slave_differs = "< Slave EE not matching... >";
inline constexpr std::string_view dataset_not_matched = "< Dataset ID not matched >";
inline constexpr std::string_view card_byte_error = "< Card byte error >";
inline constexpr std::string_view communication_error = "< communication error >";
}  // namespace words

/// @p word followed by the time of day and @p end.
[[nodiscard]] std::string With_Time(std::string_view word, std::string_view end = {});

/// Adds a line to the journal.
void Add_To_Journal(std::string_view line);

/// Adds @p word with the time to the journal and shows the same as status.
void Report_Step(std::string_view word);

/// The same with a journal that begins anew.
void Report_First_Step(std::string_view word);

}  // namespace kx
