#pragma once

#include <optional>
#include <string>

namespace kx::platform {

enum class Buttons { ok, ok_cancel, yes_no };
enum class Icon { none, information, warning, critical, question };
enum class Answer { ok, cancel, yes, no };

/// One message box. Texts are UTF-8; an empty title stands for the program's own.
struct Message {
  std::string text;
  std::string title;
  Buttons buttons = Buttons::ok;
  Icon icon = Icon::none;
};

/// One file dialog. @p filter is "name|pattern|name|pattern"; blanks around a pattern do not count.
struct File_Question {
  std::string title;
  std::string filter;
  std::string directory;
  std::string name;
  std::string default_extension;
  bool asks_to_replace = true;  ///< else the caller asks, in its own words
};

/// All message boxes and file dialogs of the program. Each call blocks its caller while events go on.
class Ask {
 public:
  virtual ~Ask() = default;
  virtual Answer Show(const Message& message) = 0;

  /// Full name of an existing file, "/" as separator; nothing when the user cancels.
  virtual std::optional<std::string> Open_Name(const File_Question& question) = 0;

  /// Full name to save to, with the extension of the chosen filter (at first that of the default one) added
  /// and, if asked for, the overwrite question answered.
  virtual std::optional<std::string> Save_Name(const File_Question& question) = 0;
};

}  // namespace kx::platform
