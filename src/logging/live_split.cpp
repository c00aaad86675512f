#include <algorithm>
#include <exception>
#include <string>
#include <string_view>

#include "boxlink/comm_port.h"
#include "logging/live_log.h"
#include "logging/live_log_owner.h"
#include "logging/log_array.h"
#include "logging/log_files.h"
#include "logging/log_parts.h"
#include "logging/log_reader.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "settings/failure.h"
#include "settings/text_encoding.h"

/// A long log becomes a series of numbered files while it runs on.
namespace kx {
namespace {

constexpr int header_lines = 3;
constexpr const char* first_number = "001.kxl";

/// Name of the first part: that of the single file, date, time and number.
std::string First_Part_Name(const std::string& single) {
  std::string mark = "_" + log_settings.txt_Log_Date + log_settings.txt_Log_Time + "_";
  mark = Sound_File_Name(From_Windows_1252(mark));
  return single.substr(0, single.size() - 4) + mark + first_number;
}

/// Position behind line @p count of @p text; the end when it has no more.
std::size_t Behind_Lines(std::string_view text, int count) {
  std::size_t at = 0;
  for (; count > 0 && at != std::string_view::npos; --count) {
    at = text.find('\n', at);
    if (at != std::string_view::npos) ++at;
  }
  return std::min(at, text.size());
}

/// What @p whole has behind the first @p saved characters of @p received, which are in a file. An
/// interruption meanwhile has put its mark in the place of their line end.
std::string Come_Since(const std::string& whole, std::string_view received, std::size_t saved) {
  received = received.substr(0, saved);
  const auto [at, end] = std::mismatch(whole.begin(), whole.end(), received.begin(), received.end());
  return {at, whole.end()};
}

/// Ends "[log_data]" for a file of its own, which holds 6000 lines at most; gives back the lines behind.
std::string Close_Part() {
  Log_Data_Text.resize(Whole_Lines(Log_Data_Text).size());
  const std::size_t end = Behind_Lines(Log_Data_Text, log_capacity);
  std::string behind = Log_Data_Text.substr(end);
  Log_Data_Text.resize(end);
  Trim_Log_Data();
  return behind;
}

}  // namespace

/// Lines that no reader decodes count here as well, so that a file never has more than it may hold.
void Live_Log::Split_If_Long() {
  if (!may_split_) return;
  constexpr int lines = log_split_rows + 50;
  if (Behind_Lines(Log_Data_Text, lines) < Log_Data_Text.size()) Fast_Save_Long_Log_File();
}

/// Chunks go on into @p whole: a question or a refusal by the disk may wait for its answer in here.
bool Live_Log::Save_Part(std::string& whole) {
  struct Way_Back {
    std::string*& stream;
    ~Way_Back() { stream = &Log_Data_Text; }
  } const way_back{stream_};
  stream_ = &whole;
  may_split_ = false;
  reception_.Log_Reception_On = true;
  try {
    return Log_File_Auto_Save();
  } catch (const std::exception& failure) {
    Tell_Failed_Once(failure.what());
    return false;
  }
}

/// Nothing of a device that has gone, which the ticks tell of, of a line that is another's by now, or of a
/// stream that is broken off, which comes back at a row of its own.
std::string Live_Log::Input_At_Split() const {
  try {
    return left_line_ || reception_.Log_Stream_Broken ? std::string() : MSComm1.Input();
  } catch (const Failure&) {
    return {};
  }
}

/// The line has run ahead of a disk that takes its time, which is no overload.
void Live_Log::Take_What_Waits() {
  reception_.Log_Reception_On = !left_line_;
  try {
    while (reception_.Log_Reception_On && MSComm1.InBufferCount() > log_receive_threshold) Receive();
  } catch (const Failure&) {
    // The ticks tell of a device that has gone.
  }
}

void Live_Log::Fast_Save_Long_Log_File() {
  if (may_split_) {
    const Flag_Guard splitting(splitting_);
    Split();
    Take_What_Waits();
  }
  Log_Row_Count = 0;
  shown_from_ = may_split_ ? 0 : Whole_Lines(Log_Data_Text).size();
}

/// A part that can not be saved stays: the log goes on in one text, which nothing is cut from any more until
/// the log ends.
void Live_Log::Split() {
  log_settings.check_AutoSave = true;
  const std::string received = Log_Data_Text;
  std::string whole = received;
  const std::size_t saved = Whole_Lines(whole).size();
  const std::string single = Log_File_Name;
  if (Log_Chunk_No == 0) {
    Log_Chunk_No = 1;
    Log_File_Name = First_Part_Name(single);
  }
  const std::string behind = Close_Part();
  Log_Rows = static_cast<int>(std::ranges::count(Log_Data_Text, '\n')) - header_lines;
  log_settings.txt_Log_Length = Log_Length_Text(Log_Rows);
  Log_Chart_First = 1;
  Log_Chart_Last = Log_Rows;
  Mark_Log_Unsaved();
  Log_Directory = directory_;
  may_split_ = Save_Part(whole);
  if (may_split_) {
    const Row_In_Progress row = whole != received         ? Row_In_Progress::goes_on
                                : saved < received.size() ? Row_In_Progress::cut
                                                          : Row_In_Progress::none;
    return Begin_Next_Part(behind, Come_Since(whole, received, saved), row);
  }
  Log_Data_Text = whole;
  if (Log_Chunk_No == 1) Log_File_Name = single;
  if (Log_Chunk_No == 1) Log_Chunk_No = 0;
  Mark_Log_Unsaved();
}

/// @p came begins with the row in progress. That one is lost between two parts, wherever its end is, unless
/// it goes on: more came while the part was being saved. The backup, which begins anew with what no file
/// has, keeps it.
void Live_Log::Begin_Next_Part(const std::string& behind, const std::string& came, Row_In_Progress row) {
  const std::string waiting = Input_At_Split();
  const std::size_t end = waiting.find("\r\n");
  const bool goes_on = row == Row_In_Progress::goes_on;
  const bool whole_row_waits = end != std::string::npos;
  const bool cut = row == Row_In_Progress::cut || !waiting.empty();
  reception_.skip_half_row = cut && !goes_on && !whole_row_waits && !reception_.Log_Stream_Broken;
  reception_.Log_Rx_Text = goes_on           ? came + waiting
                           : whole_row_waits ? waiting.substr(end + 2)
                                             : std::string();
  log_settings.txt_Log_Length = Log_Length_Text(0);
  Note_Log_Begin();
  Log_Data_Text =
      "[log_data]" + Crlf() + reception_.Log_Start_String + Crlf() + behind + reception_.Log_Rx_Text;
  Log_Elapsed = 0;
  ++Log_Chunk_No;
  Log_File_Name = Next_Part_Name(Log_File_Name);
  Mark_Log_Unsaved();
  const Log_Settings& begun = log_settings;
  if (!backup_.Begin_Anew(begun.txt_Log_Date, begun.txt_Log_Time, behind + came + waiting)) {
    backup_.Print(waiting);
  }
}

/// What stands before the rows on show may have lost its line end to a remark.
void Live_Log::Decode_Again() {
  if (splitting_ || log_settings.check_LogToFileOnly) return;
  const std::size_t from = std::min(shown_from_, Log_Data_Text.size());
  std::string_view shown = std::string_view(Log_Data_Text).substr(from);
  if (from > 0 && Log_Data_Text[from - 1] != '\n') shown.remove_prefix(Behind_Lines(shown, 1));
  LogArray.Clear();
  Log_Row_Count = 0;
  reception_.Log_Rx_Text = shown;
  (void)KX_Log_Row_Data_Read(reception_.Log_Rx_Text);
  Log_Chart_Last = std::min(Log_Chart_Last, Log_Row_Count);
  Log_Chart_First = std::min(Log_Chart_First, std::max(Log_Chart_Last, 1));
}

}  // namespace kx
