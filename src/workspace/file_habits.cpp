#include "workspace/file_habits.h"

#include <algorithm>
#include <cctype>
#include <string_view>

#include "logging/live_log.h"
#include "logging/log_files.h"
#include "platform/folders.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/recent_files.h"
#include "workspace/setting_file_commands.h"

namespace kx {
namespace {

constexpr const char* log_runs = "A log is being recorded. Another one opens when it has ended.";

bool Ends_In(const std::string& path, std::string_view extension) {
  const auto same = [](char a, char b) { return std::tolower(static_cast<unsigned char>(a)) == b; };
  return path.size() >= extension.size() &&
         std::equal(extension.begin(), extension.end(), path.end() - static_cast<long>(extension.size()),
                    [&](char wanted, char c) { return same(c, wanted); });
}

bool Is_Tune(const std::string& path) { return Ends_In(path, ".kxs"); }
bool Is_Log(const std::string& path) { return Ends_In(path, ".kxl"); }

}  // namespace

bool Can_Open_By_Name(const std::string& path) { return Is_Tune(path) || (Is_Log(path) && !Log_Running()); }

bool Open_By_Name(const std::string& path) {
  if (Is_Tune(path)) Open_Setting_File(path);
  if (!Is_Log(path)) return false;
  if (!Log_Running()) return Open_File(path);
  Show_Notice(log_runs);
  return false;
}

bool Open_Recent_File(const std::string& path) {
  if (platform::Exists(path)) return Open_By_Name(path);
  Forget_Recent_File(path);
  Tell(path + " is not there any more. It has left the list.");
  return false;
}

}  // namespace kx
