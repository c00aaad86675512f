#include "logging/log_backup.h"

#include "logging/log_files.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "settings/message.h"
#include "settings/session.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr std::string_view opening = "[log_data]";
constexpr std::string_view remark = " 'Backup of last made logging ";
constexpr std::string_view ending = "[end_log_data]";

std::string Opening_Line(const std::string& date, const std::string& time) {
  return std::string(opening).append(remark) + date + " " + time + Crlf();
}

/// Date and time of the log whose backup is @p text stand in its opening line alone.
void Take_Log_Begin(std::string_view text) {
  std::string_view line = text.substr(opening.size(), text.find('\r') - opening.size());
  if (!line.starts_with(remark)) return;
  line.remove_prefix(remark.size());
  const std::size_t blank = line.rfind(' ');
  if (blank == std::string_view::npos) return;
  log_settings.txt_Log_Date = line.substr(0, blank);
  log_settings.txt_Log_Time = line.substr(blank + 1);
}

/// The settings of the log as the controls have them, and what was read of the box.
std::string Texts_Behind(bool box_settings) {
  const std::string end = Crlf();
  std::string text = end + std::string(ending) + end + end;
  text += Log_Setting_Text + end + end + Log_Sens_Def_Text + end + end;
  if (box_settings) text += Readable_Settings_Text + end + Log_Dataset_Text + end + end;
  return text;
}

}  // namespace

std::string Log_Backup_Path() { return start_dir + log_backup_name; }

void Log_Backup::Tell_Once(const platform::File_Result& result) {
  if (result.Ok() || failed_) return;
  failed_ = true;
  Tell("The backup of this log can not be written. The log itself goes on." + Crlf() + result.reason,
       platform::Icon::warning);
}

void Log_Backup::Init_Logg_Backup_File(const std::string& date, const std::string& time) {
  failed_ = false;
  waiting_.clear();
  const auto opened = file_.Open(Log_Backup_Path(), platform::Append_File::Start::empty);
  Tell_Once(opened);
  Print(Opening_Line(date, time));
}

/// Closed meanwhile: some systems rename nothing over an open file.
bool Log_Backup::Begin_Anew(const std::string& date, const std::string& time, std::string_view received) {
  Tell_Once(file_.Close());
  const std::string content = Opening_Line(date, time) + std::string(received);
  const bool replaced = platform::Replace_File(Log_Backup_Path(), content).Ok();
  if (replaced) waiting_.clear();
  Tell_Once(file_.Open(Log_Backup_Path(), platform::Append_File::Start::at_end));
  return replaced;
}

void Log_Backup::Print(std::string_view text) {
  if (!file_.Is_Open()) return;
  waiting_ += text;
  const auto result = file_.Append(waiting_);
  if (result.Ok()) waiting_.clear();
  Tell_Once(result);
}

void Log_Backup::Finalize_Logg_Backup_File(bool box_settings) {
  Print(Texts_Behind(box_settings));
  Tell_Once(file_.Close());
}

bool Is_Unfinished_Backup(std::string_view text) {
  const std::size_t first_line_end = text.find('\n');
  return text.starts_with(opening) && text.find(ending) == std::string_view::npos &&
         first_line_end != std::string_view::npos &&
         text.find('\n', first_line_end + 1) != std::string_view::npos;
}

void Offer_Unfinished_Backup() {
  std::string text;
  if (!platform::Read_Whole_File(Log_Backup_Path(), text).Ok() || !Is_Unfinished_Backup(text)) return;
  if (!Ask_Yes_No("The last log was not finished. Open its backup?")) return;
  if (!Open_File(Log_Backup_Path())) return;
  Log_File_Named = false;
  if (!Default_Log_Setting_Text.empty()) Restore_Default_File_Click();
  Take_Log_Begin(text);
  Mark_Log_Unsaved();
}

}  // namespace kx
