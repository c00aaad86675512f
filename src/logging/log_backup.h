#pragma once

#include <string>
#include <string_view>

#include "platform/files.h"

/// The crash copy of a live log: what has been received and is in no other file is with the operating system
/// as soon as it is taken, so that a killed program leaves it.
namespace kx {

/// In the program's folder, start_dir.
inline constexpr const char* log_backup_name = "tmp_backup_log_file.kxl";

/// Full name of the backup file.
[[nodiscard]] std::string Log_Backup_Path();

/// The crash copy of one live log. A disk that takes no more is told once, and the log goes on without it.
class Log_Backup {
 public:
  /// Replaces the backup of the log before and writes the opening line with @p date and @p time.
  void Init_Logg_Backup_File(const std::string& date, const std::string& time);

  /// The log before is in a file of its own: replaces the backup by an opening line with @p date and @p time
  /// and @p received, all that has come since. The new content is on the disk before the old one goes. False
  /// when it could not be replaced: the old content goes on then.
  bool Begin_Anew(const std::string& date, const std::string& time, std::string_view received);

  /// Adds received text as it stands.
  void Print(std::string_view text);

  /// Adds the end line, settings and sensors, and with @p box_settings what was read of the box; closes.
  void Finalize_Logg_Backup_File(bool box_settings);

 private:
  void Tell_Once(const platform::File_Result& result);

  platform::Append_File file_;
  std::string waiting_;  // what the disk has not taken yet, so that no gap comes
                         // between two rows
  bool failed_ = false;
};

/// True when @p text is a backup whose log was not ended: an opening line, a row behind it, no end line.
[[nodiscard]] bool Is_Unfinished_Backup(std::string_view text);

/// At the start of the program: offers a backup that a killed program has left, and opens it on yes as a log
/// that has not been saved, with the settings of the default log settings file, since it has none yet. On no
/// it stays until the next log.
void Offer_Unfinished_Backup();

}  // namespace kx
