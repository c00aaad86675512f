#include "workspace/map_export.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/seams.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/session.h"
#include "workspace/map_data.h"

namespace kx {
namespace {

constexpr std::size_t extension_length = 4;  ///< of ".kxs"

std::string Suggested_Name() {
  const std::size_t kept = card_data_file.size() - std::min(extension_length, card_data_file.size());
  return card_data_file.substr(0, kept) + "_kxs";
}

/// The last three characters in lower case.
std::string Kind_Of(const std::string& name) {
  std::string kind = name.substr(name.size() - std::min<std::size_t>(3, name.size()));
  std::ranges::transform(kind, kind.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
  });
  return kind;
}

}  // namespace

void Export_Image_Click(const std::function<std::string()>& picture) {
  const auto name =
      platform::seams.ask->Save_Name({"Save As", "3D-map image (*.bmp)|*.bmp|As text file (*.csv)|*.csv",
                                      card_data_dir, Suggested_Name(), "bmp"});
  if (!name || name->empty()) return;
  const std::string kind = Kind_Of(*name);
  if (kind != "csv" && kind != "bmp") {
    return Tell("A map is exported to a name that ends in .bmp or .csv", platform::Icon::warning);
  }
  const auto result = platform::Replace_File(*name, kind == "csv" ? Map_Text(Map_Data) : picture());
  if (!result.Ok()) return Tell(result.reason, platform::Icon::critical);
  platform::seams.desktop->Set_Clipboard_Text("");
  Show_Notice("Saved " + *name);
}

}  // namespace kx
