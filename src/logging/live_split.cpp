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

/// Nothing of a device that has gone, which the ticks tell of, or of a line that is another's by now.
std::string Live_Log::Input_At_Split() const {
  try {
    return left_line_ ? std::string() : MSComm1.Input();
  } catch (const Failure&) {
    return {};
  }
}

void Live_Log::Fast_Save_Long_Log_File() {
  if (may_split_) {
    const Flag_Guard splitting(splitting_);
    Split();
  }
  Log_Row_Count = 0;
  shown_from_ = may_split_ ? 0 : Whole_Lines(Log_Data_Text).size();
}

/// A part that can not be saved stays: the log goes on in one text, which nothing is cut from any more until
/// the log ends.
void Live_Log::Split() {
  log_settings.check_AutoSave = true;
  std::string whole = Log_Data_Text;
  const std::size_t received = whole.size();
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
    const bool came = whole.size() != received && whole.size() > saved;
    return Begin_Next_Part(behind, whole.substr(std::min(saved, whole.size())), came);
  }
  Log_Data_Text = whole;
  if (Log_Chunk_No == 1) Log_File_Name = single;
  if (Log_Chunk_No == 1) Log_Chunk_No = 0;
}

/// @p came begins with the row in progress. That one is lost between two parts, wherever its end is, unless
/// @p row_goes_on: more came while the part was being saved. The backup, which begins anew with what no file
/// has, keeps it.
void Live_Log::Begin_Next_Part(const std::string& behind, const std::string& came, bool row_goes_on) {
  const std::string waiting = Input_At_Split();
  const std::size_t end = waiting.find("\r\n");
  reception_.skip_half_row = !row_goes_on && end == std::string::npos;
  reception_.Log_Rx_Text = row_goes_on                ? came + waiting
                           : reception_.skip_half_row ? std::string()
                                                      : waiting.substr(end + 2);
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
