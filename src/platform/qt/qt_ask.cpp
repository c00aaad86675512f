#include "platform/qt/qt_ask.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <array>

namespace kx::platform {
namespace {

/// One row for each value of Buttons, in its order.
struct Button_Set {
  QMessageBox::StandardButtons shown;
  Answer agreed;
  Answer refused;
};
constexpr std::array button_sets{
    Button_Set{QMessageBox::Ok, Answer::ok, Answer::ok},
    Button_Set{QMessageBox::Ok | QMessageBox::Cancel, Answer::ok, Answer::cancel},
    Button_Set{QMessageBox::Yes | QMessageBox::No, Answer::yes, Answer::no},
};

/// One for each value of Icon, in its order.
constexpr std::array icons{QMessageBox::NoIcon, QMessageBox::Information, QMessageBox::Warning,
                           QMessageBox::Critical, QMessageBox::Question};

QString Pattern(const QString& given) {
  QStringList patterns = given.split(';', Qt::SkipEmptyParts);
  for (QString& pattern : patterns) {
    pattern = pattern.trimmed();
    if (pattern == "*.*") pattern = "*";
  }
  return patterns.isEmpty() ? "*" : patterns.join(' ');
}

QString Directory(const std::string& given) {
  const QString directory = QString::fromStdString(given);
  return directory.isEmpty() || !QDir(directory).exists() ? QDir::currentPath() : directory;
}

constexpr int most_lines = 20;

/// A text of many lines would push the buttons off the screen: its head stays, and the whole of it scrolls in
/// the details, which are open from the start.
void Fit_To_Screen(QMessageBox& box) {
  const QStringList lines = box.text().trimmed().split('\n');
  if (lines.size() <= most_lines) return;
  box.setDetailedText(box.text());
  box.setText(lines.front().trimmed() + " (" + QString::number(lines.size() - 1) + ")");
  for (QAbstractButton* button : box.buttons()) {
    if (box.buttonRole(button) == QMessageBox::ActionRole) button->click();
  }
}

/// What both dialogs share. They are Qt's own on every desktop: of these the default extension is known to be
/// added before the question whether to overwrite, and tests can drive them. Filters are shown by name.
void Prepare(QFileDialog& dialog, const File_Question& question) {
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  if (!question.title.empty()) dialog.setWindowTitle(QString::fromStdString(question.title));
  dialog.setDirectory(Directory(question.directory));
  dialog.setNameFilters(Name_Filters(question.filter));
  if (!question.name.empty()) dialog.selectFile(QString::fromStdString(question.name));
}

/// Adds the default extension only to a name that is no file as it stands, so that files without one open
/// too.
class Open_Dialog : public QFileDialog {
 public:
  Open_Dialog(QWidget* parent, const std::string& extension)
      : QFileDialog(parent), extension_(QString::fromStdString(extension)) {}

 protected:
  void accept() override {
    setDefaultSuffix("");
    if (!QFileInfo::exists(selectedFiles().value(0))) setDefaultSuffix(extension_);
    QFileDialog::accept();
  }

 private:
  QString extension_;
};

std::optional<std::string> Chosen_Name(QFileDialog& dialog) {
  if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
  return dialog.selectedFiles().constFirst().toStdString();
}

}  // namespace

QStringList Name_Filters(const std::string& filter) {
  const QStringList fields = QString::fromStdString(filter).split('|');
  QStringList filters;
  for (qsizetype i = 0; i < fields.size(); i += 2) {
    const QString name = fields[i].trimmed();
    if (!name.isEmpty()) filters += name + " (" + Pattern(fields.value(i + 1)) + ")";
  }
  return filters;
}

Answer Qt_Ask::Show(const Message& message) {
  const Button_Set& buttons = button_sets.at(static_cast<std::size_t>(message.buttons));
  const QString title = QString::fromStdString(message.title);
  QMessageBox box(icons.at(static_cast<std::size_t>(message.icon)),
                  title.isEmpty() ? QCoreApplication::applicationName() : title,
                  QString::fromStdString(message.text), buttons.shown, QApplication::activeWindow());
  box.setObjectName("message_box");
  box.setTextFormat(Qt::PlainText);  // "< No response... >" is not a tag
  Fit_To_Screen(box);
  const int pressed = box.exec();
  return pressed == QMessageBox::Ok || pressed == QMessageBox::Yes ? buttons.agreed : buttons.refused;
}

std::optional<std::string> Qt_Ask::Open_Name(const File_Question& question) {
  Open_Dialog dialog(QApplication::activeWindow(), question.default_extension);
  dialog.setObjectName("open_dialog");
  dialog.setFileMode(QFileDialog::ExistingFile);
  Prepare(dialog, question);
  return Chosen_Name(dialog);
}

std::optional<std::string> Qt_Ask::Save_Name(const File_Question& question) {
  QFileDialog dialog(QApplication::activeWindow());
  dialog.setObjectName("save_dialog");
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.setDefaultSuffix(QString::fromStdString(question.default_extension));
  Prepare(dialog, question);
  return Chosen_Name(dialog);
}

}  // namespace kx::platform
