#pragma once

#include <QStringList>

#include "platform/ask.h"

namespace kx::platform {

/// Name filters as Qt takes them, "name (pattern)", from "name|pattern|name|pattern". Blanks around names and
/// patterns go, several patterns may stand with ";" between them, and "*.*" becomes "*", for names without a
/// point. A name without a pattern takes every file.
[[nodiscard]] QStringList Name_Filters(const std::string& filter);

/// Message boxes and file dialogs of Qt over the active window. Their objectName is "message_box",
/// "open_dialog" or "save_dialog"; an empty box title shows the application's name.
class Qt_Ask : public Ask {
 public:
  Answer Show(const Message& message) override;
  std::optional<std::string> Open_Name(const File_Question& question) override;
  std::optional<std::string> Save_Name(const File_Question& question) override;
};

}  // namespace kx::platform
