#pragma once

#include <array>
#include <functional>
#include <optional>
#include <string>

#include "logging/live_row.h"

/// The live log as the windows see it: START and STOP, what is to be shown meanwhile, and the ways to its
/// end.
namespace kx {

/// Rows decoded so far in the live log, 0 to log_capacity; the newest row of LogArray while a log runs.
extern int Log_Row_Count;

/// The button cmd_Open_Com, the menu Start_Logg and Direct_startlog: starts a log, or stops the one that
/// runs. Nothing happens while a start is under way, and while a transfer has the line nothing but a word
/// about it in the status line. Waits for the box's settings when they are to go into the log; any handler
/// may run in there.
void cmd_Open_Com_Click();

/// Asks about an unsaved log and empties the log. Nothing happens while a log runs.
void cmd_Clear_Logg_Click();

/// Empties the log in memory without a question: rows, texts, counts, chart range and read-outs.
void Clear_Data_Arrays();

/// To be called when KX_Log or the program is about to close, while boxes still open: ends the log that runs
/// or is being started, then asks about an unsaved one. False when the user wanted it saved and it has not
/// come to be, or when the log waits for an answer about one of its parts: it is finished behind that.
bool Finish_Log_For_Close();

/// For a change of settings while a log runs: decodes the rows on show anew, as many as that takes. False
/// when no log runs.
bool Decode_Live_Log_Again();

/// True from a start that has opened the port to its stop.
[[nodiscard]] bool Log_Running();

/// The newest row that has arrived, 20 a second, however seldom the update tick comes. Nothing without a log
/// and while the box is silent.
[[nodiscard]] std::optional<Live_Row> Newest_Live_Row();

/// Whether the table on show follows the engine: the user's choice, off as a log begins and gone with it.
void Follow_Engine_Click(bool on);
[[nodiscard]] bool Following_Engine();

/// What KX_Log shows of the live log. A function of the log's state, asked for whenever something has
/// changed.
struct Live_Log_View {
  std::string button = "START";  ///< caption of cmd_Open_Com
  int button_font = 14;          ///< points; bold at 14
  bool button_enabled = true;
  bool log_buttons_enabled = true;   ///< cmd_Clear_Logg and view_logg
  bool logging_alert = false;        ///< txt_Logging_alert is shown
  bool alert_inverted = false;       ///< white on black in place of black on white
  bool no_connection_alert = false;  ///< txt_NoConnection_alert is shown
  bool only_to_file = false;         ///< label_NoGraph in place of the chart
};
[[nodiscard]] Live_Log_View Shown_Live_Log();

inline constexpr const char* logging_alert_text = "Logging";
inline constexpr const char* no_connection_alert_text =
    "No response from system! \r\nPlease check connection.";
inline constexpr const char* no_graph_text = "Only logging to file";

/// A read-out field of the main form: the newest value of one row field while a log runs.
struct Live_Value {
  const char* field;  ///< name of the control, "txt_Live_" and the slot
  std::string text;   ///< value, a blank and its unit, UTF-8; empty without a log
};
inline constexpr int live_value_count = 8;
extern std::array<Live_Value, live_value_count> live_values;

/// Fills live_values from the newest row of LogArray, and empties them.
void cmd_Show_Current_Data_Click();
void cmd_Show_Current_Data_Clear();

/// How the live log reaches what lies above it. Unset hooks do nothing.
struct Live_Log_Hooks {
  std::function<void()> show;                      ///< Shown_Live_Log has changed
  std::function<void()> show_values;               ///< live_values have changed
  std::function<void()> show_place;                ///< Newest_Live_Row or Following_Engine have changed
  std::function<std::string()> readable_settings;  ///< section "[readable_settings]" of the tune
};
extern Live_Log_Hooks live_log_hooks;

/// Ends what runs without a word and forgets timers and hooks.
void Reset_Live_Log();

}  // namespace kx
