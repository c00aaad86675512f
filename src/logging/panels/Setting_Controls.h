#pragma once

#include <QCheckBox>
#include <QLineEdit>
#include <functional>
#include <string>
#include <vector>

namespace kx {

/// Controls of log_settings, on whichever form: each is filled from its text or tick, and writes it as the
/// user changes it, which marks the log unsaved. The texts are file bytes, the controls show Unicode.
class Setting_Controls {
 public:
  /// A box of @p width characters; 0 leaves the width to the layout. @p tip names unit and range.
  QLineEdit* Line(const QString& name, std::string& text, const QString& tip, int width = 0);

  QCheckBox* Check(const QString& name, const QString& caption, bool& state, const QString& tip);

  /// Something else that shows settings.
  void Add(std::function<void()> show);

  /// Fills all of them.
  void Show() const;

 private:
  std::vector<std::function<void()>> shows_;
};

/// Shows @p bytes of a log file in @p box, whose cursor stays when nothing differs.
void Show_File_Text(QLineEdit& box, const std::string& bytes);

/// What the user sees for @p bytes of a log file, and back.
[[nodiscard]] QString Shown_Bytes(const std::string& bytes);
[[nodiscard]] std::string File_Bytes_Of(const QString& text);

}  // namespace kx
