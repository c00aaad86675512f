#include "settings/recent_files.h"

#include <algorithm>

#include "platform/seams.h"

namespace kx {
namespace {

constexpr const char* habit = "recent_files";  ///< full names, a line each

void Keep(const std::vector<std::string>& files) {
  std::string text;
  for (const std::string& file : files) text += file + "\n";
  platform::seams.desktop->Remember(habit, text);
}

std::vector<std::string> Without(const std::string& path) {
  auto files = Recent_Files();
  std::erase(files, path);
  return files;
}

}  // namespace

std::vector<std::string> Recent_Files() {
  std::vector<std::string> files;
  if (platform::seams.desktop == nullptr) return files;
  std::string text = platform::seams.desktop->Remembered(habit);
  for (std::size_t end = text.find('\n'); end != std::string::npos; end = text.find('\n')) {
    if (end > 0 && files.size() < most_recent_files) files.push_back(text.substr(0, end));
    text.erase(0, end + 1);
  }
  return files;
}

void Note_Recent_File(const std::string& path) {
  if (platform::seams.desktop == nullptr || path.find('\n') != std::string::npos) return;
  auto files = Without(path);
  files.insert(files.begin(), path);
  files.resize(std::min(files.size(), most_recent_files));
  Keep(files);
}

void Forget_Recent_File(const std::string& path) {
  if (platform::seams.desktop != nullptr) Keep(Without(path));
}

}  // namespace kx
