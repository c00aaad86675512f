#include <algorithm>
#include <string>
#include <string_view>

#include "boxlink/comm_port.h"
#include "logging/live_log.h"
#include "logging/live_log_owner.h"
#include "logging/log_array.h"
#include "logging/log_files.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "settings/failure.h"
#include "settings/numbers.h"
#include "settings/text_encoding.h"

/// A long log becomes a series of numbered files while it runs on.
namespace kx {
namespace {

constexpr int header_lines = 3;
constexpr std::size_t name_end_length = 7;  // "001.kxl"

std::string Part_Name_End(int part) { return Format(part, "000") + ".kxl"; }

/// Name of the first part: that of the single file, date, time and number.
std::string First_Part_Name(const std::string& single) {
  std::string mark = "_" + log_settings.txt_Log_Date + log_settings.txt_Log_Time + "_";
  mark = Sound_File_Name(From_Windows_1252(mark));
  return single.substr(0, single.size() - 4) + mark + Part_Name_End(1);
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

/// Nothing of a device that has gone, which the ticks tell of.
std::string Waiting_Input() {
  try {
    return MSComm1.Input();
  } catch (const Failure&) {
    return {};
  }
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
  return Log_File_Auto_Save();
}

/// A part that can not be saved stays: the log goes on in one text, which nothing is cut from any more.
void Live_Log::Fast_Save_Long_Log_File() {
  Log_Row_Count = 0;
  if (!may_split_) return;
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
  Log_Chart_First = 1;
  Log_Chart_Last = Log_Rows;
  Mark_Log_Unsaved();
  Log_Directory = directory_;
  may_split_ = Save_Part(whole);
  const bool came = whole.size() != received;
  if (may_split_) return Begin_Next_Part(behind, came ? whole.substr(std::min(saved, whole.size())) : "");
  Log_Data_Text = whole;
  if (Log_Chunk_No == 1) Log_File_Name = single;
  if (Log_Chunk_No == 1) Log_Chunk_No = 0;
}

/// The row in progress is lost between two parts, wherever its end is; but not when rows @p came, from their
/// beginning on, while the part was being saved. The backup
/// knows no parts.
void Live_Log::Begin_Next_Part(const std::string& behind, const std::string& came) {
  const std::string waiting = Waiting_Input();
  const std::size_t end = waiting.find("\r\n");
  reception_.skip_half_row = came.empty() && end == std::string::npos;
  reception_.Log_Rx_Text = !came.empty()              ? came + waiting
                           : reception_.skip_half_row ? std::string()
                                                      : waiting.substr(end + 2);
  Note_Log_Begin();
  Log_Data_Text =
      "[log_data]" + Crlf() + reception_.Log_Start_String + Crlf() + behind + reception_.Log_Rx_Text;
  ++Log_Chunk_No;
  Log_File_Name.resize(Log_File_Name.size() - name_end_length);
  Log_File_Name += Part_Name_End(Log_Chunk_No);
  Mark_Log_Unsaved();
  backup_.Print(waiting);
}

}  // namespace kx
