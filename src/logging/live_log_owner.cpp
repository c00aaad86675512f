#include "logging/live_log_owner.h"

#include <algorithm>
#include <array>
#include <exception>
#include <functional>
#include <utility>

#include "boxlink/comm_port.h"
#include "boxlink/protocol.h"
#include "logging/file_panel.h"
#include "logging/live_log.h"
#include "logging/log_array.h"
#include "logging/log_files.h"
#include "logging/log_parts.h"
#include "logging/log_reader.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "platform/seams.h"
#include "settings/earlier_tunes.h"
#include "settings/history.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/numbers.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "settings/text_encoding.h"
#include "settings/tune_origin.h"

namespace kx {
namespace {

constexpr const char* kept_tune_name = "tmp_kxs_file.kxs";
constexpr int least_update_ms = 50;
constexpr double counted_seconds = 0.5;  // that an update tick counts in log-to-file-only mode
constexpr double longest_counted = 250;  // s, 50 less than a file holds
constexpr const char* edited_text =
    "The tune from before the log is back. What you changed while the log ran is among the earlier tunes: "
    "File, Earlier tunes...";
constexpr const char* overload_text =
    "The computer can not handle this logging speed. Please lower the number "
    "of seconds to show or increase "
    "the update interval";
constexpr const char* both_text =
    "There were both a delayed start, and some interruption of log. Current "
    "box settings were therefore not "
    "read.";
constexpr const char* delayed_text =
    "There were a delay before logging started. Current box settings were "
    "therefore not read.";
constexpr const char* interrupted_text = "There were some interruptions during the log";

/// Interval of the update tick by the user's text, ms; the number rule reads "0,5" as it does everywhere.
int Update_Interval() {
  const int ms = To_Int16(Val_Any(log_settings.txt_Show_Log_Interval) * 1000);
  return ms > 0 ? ms : least_update_ms;
}

void Set_Update_Interval() {
  try {
    live_timers.Timer1->Set_Interval(Update_Interval());
  } catch (const std::exception& failure) {
    Tell(failure.what(), platform::Icon::critical);
  }
}

/// A step of the stop sequence: what fails in it must not keep the next from saving the log.
void Try(const std::function<void()>& step) {
  try {
    step();
  } catch (const std::exception& failure) {
    Tell(failure.what(), platform::Icon::critical);
  }
}

void Decode_Whole_Log() {
  KX_Log_Data_Read();
  Show_Whole_Log();
  Show_Log(log_view_hooks.show_chart);
}

}  // namespace

void Kept_Tune::Keep() {
  image_ = CardByte;
  opened_ = Opened_Tune();
  name_ = card_data_file;
  source_ = tune_source;
  kept_ = true;
  std::string lines;
  for (int i = 0; i < Byte_Image::size; ++i) lines += std::to_string(CardByte[i]) + Crlf();
  (void)platform::Replace_File(start_dir + kept_tune_name, lines);
}

void Kept_Tune::Bring_Back() {
  if (!kept_) return;
  kept_ = false;
  const bool edited = !(CardByte == shown_);
  if (edited) Capture_History();
  Replace_Tune(image_, source_);
  Restore_Opened_Tune(std::move(opened_));
  card_data_file = name_;
  Set_Title(name_);
  Refresh_Whole_Image();
  if (edited) Show_Notice(edited_text);
}

void Note_Log_Begin() {
  log_settings.txt_Log_Date = platform::seams.clock->Date_Text();
  log_settings.txt_Log_Time = platform::seams.clock->Time_Text();
  Show_Log(log_view_hooks.show_file);
}

void Trim_Log_Data() {
  Log_Data_Text.resize(Whole_Lines(Log_Data_Text).size());
  Log_Data_Text += "[end log_data]" + Crlf();
}

/// Behind the last box, which may wait for its answer for as long as it likes, the line is emptied and the
/// stream begins.
void Live_Log::Begin() {
  Note_Log_Begin();
  directory_ = Log_Directory;
  Log_File_Name = From_Windows_1252(log_settings.txt_Default_Save_Name) + ".kxl";
  Log_File_Present = true;
  Log_File_Named = false;
  Reset_File_Panel();
  Mark_Log_Unsaved();
  Update_All_Log_Setting_Variables();
  Log_Data_Text = "[log_data]" + Crlf();
  backup_.Init_Logg_Backup_File(log_settings.txt_Log_Date, log_settings.txt_Log_Time);
  reception_.Log_Start_String = log_settings.Log_Start_String;
  Set_Update_Interval();
  reception_.Log_Reception_On = true;
  live_timers.timer_LogAlert->Set_Enabled(true);
  live_timers.Timer1->Set_Enabled(true);
  Show_Live_Log();
  try {
    Drop_Input();
    MSComm1.Output(reception_.Log_Start_String);
  } catch (const Failure&) {
    Tell_Lost_Once();
  }
}

Chunk_Outcome Live_Log::Take_Waiting_Chunk() {
  const Flag_Guard busy(Log_OnComm_Busy);
  return Take_Chunk(reception_, *stream_, MSComm1.Input());
}

/// The backup comes last: while the box for a full disk waits for its answer, chunks are taken as ever.
void Live_Log::Receive() {
  if (Log_OnComm_Busy || !reception_.Log_Reception_On) return;
  if (MSComm1.InBufferCount() <= log_receive_threshold) return;
  const Chunk_Outcome outcome = Take_Waiting_Chunk();
  if (outcome.begins) live_timers.Timer1->Set_Enabled(true);
  if (outcome.first) Set_Alert(Shown_Alert::none);
  backup_.Print(outcome.backup);
}

/// A view that fails costs no row: it is told once, and the log goes on.
void Live_Log::Set_Newest(std::optional<Live_Row> row) {
  if (row == newest_) return;
  newest_ = std::move(row);
  try {
    Show_Live_Place();
  } catch (const std::exception& failure) {
    Tell_Failed_Once(failure.what());
  }
}

/// While the stream is broken off, what comes may begin anywhere in a row.
void Live_Log::Note_Arrival() {
  if (!reception_.Log_First_Data_Seen || reception_.Log_Stream_Broken) return;
  const std::size_t known = std::min(stream_->size(), newest_row_reach);
  std::string end = stream_->substr(stream_->size() - known);
  end += MSComm1.Waiting();
  if (auto row = Newest_Row(end)) Set_Newest(std::move(row));
}

void Live_Log::Set_Alert(Shown_Alert alert) {
  alert_ = alert;
  Show_Live_Log();
}

void Live_Log::Alert_Tick() {
  const Alert_Action action = Note_Alert_Tick(reception_, *stream_);
  if (action == Alert_Action::blink) {
    inverted_ = !inverted_;
    return Set_Alert(Shown_Alert::logging);
  }
  if (action != Alert_Action::resend) {
    live_timers.Timer1->Set_Enabled(false);
    Set_Alert(Shown_Alert::no_connection);
    Set_Newest({});
  }
  try {
    Touch_Port(action);
  } catch (const Failure&) {
    Tell_Lost_Once();
  }
}

void Live_Log::Touch_Port(Alert_Action action) const {
  if (action != Alert_Action::flush) return MSComm1.Output(reception_.Log_Start_String);
  MSComm1.InputLen = 0;
  Drop_Input();
  MSComm1.InputLen = log_chunk_length_recovered;
}

/// A log whose chart fails goes on being received.
void Live_Log::Update_Chart_Or_Time() {
  try {
    if (log_settings.check_LogToFileOnly) return Count_File_Time();
    Update_Live_Chart();
  } catch (const std::exception& failure) {
    reception_.Log_Reception_On = true;
    Tell_Failed_Once(failure.what());
  }
}

/// While the rows are decoded and drawn no chunk is taken: what waits in the port afterwards tells whether
/// the computer keeps up.
void Live_Log::Update_Tick() {
  if (log_settings.check_LogToFileOnly) return Update_Chart_Or_Time();
  reception_.Log_Reception_On = false;
  live_timers.Timer1->Set_Enabled(false);
  try {
    Log_Stopped_By_Overload = MSComm1.InBufferCount() > log_overload_limit;
  } catch (const Failure&) {
    return Tell_Lost_Once();
  }
  if (Log_Stopped_By_Overload) {
    cmd_Open_Com_Click();
    return Tell(overload_text, platform::Icon::critical);
  }
  Update_Chart_Or_Time();
  reception_.Log_Reception_On = true;
  live_timers.Timer1->Set_Enabled(Log_Running());
}

void Live_Log::Update_Live_Chart() {
  const bool too_long = KX_Log_Row_Data_Read(reception_.Log_Rx_Text);
  if (too_long) {
    Fast_Save_Long_Log_File();
  } else {
    Split_If_Long();
  }
  cmd_Show_Current_Data_Click();
  const double width = Val_Any(log_settings.txt_Show_Log_Sek) * log_rows_a_second;
  Log_Chart_Last = std::min(Log_Row_Count, log_capacity);
  Log_Chart_First =
      std::max(1, static_cast<int>(Log_Chart_Last - std::clamp(Round_Whole(width), 0.0, 6000.0)));
  Show_Log(log_view_hooks.show_chart);
}

void Live_Log::Count_File_Time() {
  reception_.Log_Rx_Text.clear();
  Log_Elapsed += counted_seconds;
  log_settings.txt_Log_Length = Format(Log_Elapsed, "0.00") + " s";
  Show_Live_Log();
  Show_Log(log_view_hooks.show_file);
  if (Log_Elapsed > longest_counted) {
    Fast_Save_Long_Log_File();
  } else {
    Split_If_Long();
  }
}

void Live_Log::Tell_Lost_Once() {
  if (!std::exchange(lost_told_, true)) Tell(lost_connection, platform::Icon::critical);
}

void Live_Log::Tell_Failed_Once(const std::string& what) {
  if (!std::exchange(failure_told_, true)) Tell(what, platform::Icon::critical);
}

void Live_Log::Leave_Line() {
  left_line_ = true;
  reception_.Log_Reception_On = false;
  try {
    if (!Log_Stopped_By_Overload) MSComm1.Output(" ");
  } catch (const Failure&) {
    // A line that is lost takes no blank, and the box behind it has nobody to stream to.
  }
  MSComm1.Set_PortOpen(false);
  MSComm1.OnComm = MSComm1_OnComm;
  MSComm1.OnArrival = {};
}

void Live_Log::Finish() {
  Try([&] { backup_.Finalize_Logg_Backup_File(log_settings.check_SettingsInLogg); });
  Trim_Log_Data();
  if (Log_Chunk_No != 0) Log_Directory = directory_;
  if (!log_settings.check_LogToFileOnly) Try(Decode_Whole_Log);
  Mark_Log_Unsaved();
  if (log_settings.check_AutoSave) Try([] { (void)Log_File_Auto_Save(); });
  const int rows = Row_Count_Of(Log_Data_Text);
  if (Log_File_Unsaved && rows > log_capacity) Tell(Long_Log_Text(rows), platform::Icon::information);
  Try([&] { tune_.Bring_Back(); });
  cmd_Show_Current_Data_Clear();
  Show_Live_Log();
  Report();
}

void Live_Log::Report() const {
  const bool delayed = reception_.Log_Delayed_Start;
  const bool interrupted = reception_.Log_Had_Interruption;
  if (!delayed && !interrupted) return;
  const char* text = delayed && interrupted ? both_text : delayed ? delayed_text : interrupted_text;
  Tell(text, platform::Icon::information);
}

}  // namespace kx
