#include "logging/log_repair.h"

#include "logging/log_state.h"
#include "platform/files.h"
#include "platform/folders.h"
#include "settings/message.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr char end_of_text = '\x1A';

/// True when more than filling stands behind the mark.
bool Would_Lose_Text(std::string_view bytes) {
  const std::string_view rest = bytes.substr(Before_End_Of_Text(bytes).size());
  return rest.find_first_not_of(std::string_view("\x1A\0\r\n\t ", 6)) != std::string_view::npos;
}

/// Through a file beside, so that at each moment one of the two is whole.
bool Repair(const std::string& path, const std::string& bytes) {
  const std::string beside = path + "_repaired.kxl";
  const std::string text = Repaired_Text(bytes);
  if (Would_Lose_Text(bytes) && !platform::Replace_File(path + "_original.kxl", bytes).Ok()) return false;
  if (!platform::Replace_File(beside, text).Ok()) return false;
  const bool done = platform::Replace_File(path, text).Ok();
  return platform::Remove_File(beside).Ok() && done;
}

}  // namespace

bool Read_Log_File(const std::string& path, std::string& bytes) {
  Log_File_Repaired = false;
  if (platform::File_Size(path).value_or(0) > largest_log_file) {
    Tell(path + ": the file is too large for a log, it has more than 64 MB", platform::Icon::critical);
    return false;
  }
  const bool readable = platform::Read_Whole_File(path, bytes).Ok();
  if (readable && bytes.find(end_of_text) == std::string::npos) return true;
  if (readable && Repair(path, bytes) && platform::Read_Whole_File(path, bytes).Ok()) {
    Log_File_Repaired = true;
    return true;
  }
  Tell("System could not repair the file");
  return false;
}

std::string Repaired_Text(std::string_view bytes) {
  std::string text;
  for (const std::string_view line : Lines_Of(Before_End_Of_Text(bytes))) text.append(line).append("\r\n");
  return text;
}

}  // namespace kx
