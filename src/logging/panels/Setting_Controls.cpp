#include "logging/panels/Setting_Controls.h"

#include "logging/log_setup_commands.h"
#include "settings/message.h"
#include "settings/text_encoding.h"

namespace kx {

QLineEdit* Setting_Controls::Line(const QString& name, std::string& text, const QString& tip, int width) {
  auto* box = new QLineEdit;
  box->setObjectName(name);
  box->setToolTip(tip);
  if (width > 0) box->setFixedWidth(box->fontMetrics().averageCharWidth() * (width + 2));
  QObject::connect(box, &QLineEdit::textEdited, box, [&text](const QString& typed) {
    text = File_Bytes_Of(typed);
    Guarded(Log_Setting_Changed);
  });
  Add([box, &text] { Show_File_Text(*box, text); });
  return box;
}

QCheckBox* Setting_Controls::Check(const QString& name, const QString& caption, bool& state,
                                   const QString& tip) {
  auto* check = new QCheckBox(caption);
  check->setObjectName(name);
  check->setToolTip(tip);
  QObject::connect(check, &QCheckBox::clicked, check, [&state](bool on) {
    state = on;
    Guarded(Log_Setting_Changed);
  });
  Add([check, &state] { check->setChecked(state); });
  return check;
}

void Setting_Controls::Add(std::function<void()> show) { shows_.push_back(std::move(show)); }

void Setting_Controls::Show() const {
  for (const auto& show : shows_) show();
}

void Show_File_Text(QLineEdit& box, const std::string& bytes) {
  const QString text = Shown_Bytes(bytes);
  if (box.text() == text) return;
  box.setText(text);
  box.setCursorPosition(0);
}

QString Shown_Bytes(const std::string& bytes) { return QString::fromStdString(From_Windows_1252(bytes)); }

std::string File_Bytes_Of(const QString& text) { return To_Windows_1252(text.toStdString()); }

}  // namespace kx
