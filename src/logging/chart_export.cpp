#include "logging/chart_export.h"

#include <algorithm>
#include <cctype>

#include "logging/log_state.h"
#include "platform/files.h"
#include "platform/seams.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr const char* filter =
    "Logg file image (*.bmp)|*.bmp|As text file (*.csv)|*.csv|Picture (*.png)|*.png|Document (*.pdf)|*.pdf";
constexpr std::string_view log_extension = ".kxl";

std::string Proposed_Name(std::string_view behind) {
  std::string name = Log_File_Name;
  if (name.ends_with(log_extension)) name[name.size() - log_extension.size()] = '_';
  return name + std::string(behind);
}

std::string Extension_Of(const std::string& name) {
  std::string extension = name.substr(std::min(name.rfind('.'), name.size() - 1) + 1);
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); });
  return extension;
}

std::string Numbers_For_File(Point_Head head) {
  const std::string table = Chart_Table_Text(head);
  platform::seams.desktop->Set_Clipboard_Text(From_Windows_1252(table));
  return (head == Point_Head::time ? "Time" : "RPM") + table;
}

}  // namespace

void Export_Chart(Point_Head head, const Chart_Picture& picture) {
  Export_Of_Log(
      "", [head] { return Numbers_For_File(head); }, picture);
}

void Export_Of_Log(std::string_view behind, const std::function<std::string()>& numbers,
                   const Chart_Picture& picture) {
  const auto name =
      platform::seams.ask->Save_Name({"Save As", filter, Log_Directory, Proposed_Name(behind), "bmp"});
  if (!name || name->empty()) return;
  const std::string format = Extension_Of(*name);
  const std::string bytes = format == "csv" ? numbers() : picture(format);
  if (bytes.empty()) return Tell(*name + ": no such kind of picture", platform::Icon::critical);
  const auto result = platform::Replace_File(*name, bytes);
  if (!result.Ok()) return Tell(result.reason, platform::Icon::critical);
  Show_Notice("Saved " + *name);
}

}  // namespace kx
