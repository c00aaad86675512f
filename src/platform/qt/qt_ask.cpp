#include "platform/qt/qt_ask.h"

#include <QAbstractButton>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMessageBox>
#include <algorithm>
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

/// Patterns of a filter of Name_Filters.
QStringList Patterns_Of(const QString& filter) {
  return filter.section('(', -1).chopped(1).split(' ', Qt::SkipEmptyParts);
}

/// What both dialogs share. They are Qt's own on every desktop: of these the default extension is known to be
/// added before the question whether to overwrite, and tests can drive them. Filters are shown by name.
void Prepare(QFileDialog& dialog, const File_Question& question) {
  dialog.setOption(QFileDialog::DontUseNativeDialog);
  dialog.setOption(QFileDialog::HideNameFilterDetails);
  dialog.setOption(QFileDialog::DontConfirmOverwrite, !question.asks_to_replace);
  if (!question.title.empty()) dialog.setWindowTitle(QString::fromStdString(question.title));
  dialog.setDirectory(Directory(question.directory));
  dialog.setNameFilters(Name_Filters(question.filter));
  for (const QString& filter : Name_Filters(question.filter)) {
    if (!Patterns_Of(filter).contains("*." + QString::fromStdString(question.default_extension))) continue;
    dialog.selectNameFilter(filter);
    break;
  }
  if (!question.name.empty()) dialog.selectFile(QString::fromStdString(question.name));
}

/// True when @p name ends in the extension of the question or in one that its filter names, in any case.
bool Has_Extension(const QString& name, const File_Question& question) {
  QStringList patterns{"*." + QString::fromStdString(question.default_extension)};
  for (const QString& filter : Name_Filters(question.filter)) patterns += Patterns_Of(filter);
  return std::ranges::any_of(patterns, [&name](const QString& pattern) {
    return pattern.startsWith("*.") && name.endsWith(pattern.mid(1), Qt::CaseInsensitive);
  });
}

/// Extension for a name without one: the first of the filter that the user has chosen, unless the default one
/// is among them or it has none.
QString Extension_By_Filter(const QString& chosen, const File_Question& question) {
  const QString standard = QString::fromStdString(question.default_extension);
  const QStringList patterns = Patterns_Of(chosen);
  if (patterns.contains("*." + standard)) return standard;
  const auto named = std::ranges::find_if(patterns, [](const QString& pattern) {
    return pattern.startsWith("*.") && !pattern.mid(2).contains('*');
  });
  return named == patterns.end() ? standard : named->mid(2);
}

/// Adds the extension of the chosen filter to a name that lacks one, whatever else stands behind a dot in it,
/// before the dialog looks whether such a file is there. A name that is a directory stays, and in a dialog
/// that opens files every name of a file.
class Name_Dialog : public QFileDialog {
 public:
  Name_Dialog(QWidget* parent, const File_Question& question) : QFileDialog(parent), question_(question) {}

 protected:
  void accept() override {
    const QFileInfo chosen(selectedFiles().value(0));
    const bool taken = chosen.isDir() || (chosen.exists() && acceptMode() == AcceptOpen);
    auto* name = findChild<QLineEdit*>("fileNameEdit");
    if (!taken && !name->text().isEmpty() && !Has_Extension(name->text(), question_)) {
      name->setText(name->text() + "." + Extension_By_Filter(Chosen_Filter(), question_));
    }
    QFileDialog::accept();
  }

 private:
  /// selectedNameFilter() is without its patterns here, since only names are shown.
  [[nodiscard]] QString Chosen_Filter() const {
    return Name_Filters(question_.filter).value(findChild<QComboBox*>("fileTypeCombo")->currentIndex());
  }

  const File_Question& question_;
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
  Name_Dialog dialog(QApplication::activeWindow(), question);
  dialog.setObjectName("open_dialog");
  dialog.setFileMode(QFileDialog::ExistingFile);
  Prepare(dialog, question);
  return Chosen_Name(dialog);
}

std::optional<std::string> Qt_Ask::Save_Name(const File_Question& question) {
  Name_Dialog dialog(QApplication::activeWindow(), question);
  dialog.setObjectName("save_dialog");
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  Prepare(dialog, question);
  return Chosen_Name(dialog);
}

}  // namespace kx::platform
