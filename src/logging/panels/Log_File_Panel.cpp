#include "logging/panels/Log_File_Panel.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QKeyEvent>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "logging/file_panel.h"
#include "logging/live_log.h"
#include "logging/log_setup_commands.h"
#include "logging/log_state.h"
#include "widgets/form_helpers.h"

namespace kx {
namespace {

constexpr int least_lines_of_lists = 3;
constexpr int lines_of_remarks = 3;
constexpr int info_page = 0;
constexpr int preview_page = 1;

QListWidget* List(const QString& name, const QString& tip) {
  auto* list = new QListWidget;
  list->setObjectName(name);
  list->setToolTip(tip);
  list->setUniformItemSizes(true);
  list->setMinimumHeight(list->fontMetrics().lineSpacing() * least_lines_of_lists);
  return list;
}

QLineEdit* Read_Only(const QString& name, const QString& tip) {
  auto* box = new QLineEdit;
  box->setObjectName(name);
  box->setToolTip(tip);
  box->setReadOnly(true);
  box->setFocusPolicy(Qt::ClickFocus);
  return box;
}

void Fill(QListWidget& list, const std::vector<std::string>& names) {
  const QString chosen = list.currentItem() != nullptr ? list.currentItem()->text() : QString();
  list.clear();
  for (const std::string& name : names) list.addItem(Text(name));
  for (int row = 0; row < list.count(); ++row) {
    if (list.item(row)->text() == chosen) list.setCurrentRow(row);
  }
}

/// A file cannot take the place of a log that is being received.
void Open_Log(const std::string& name) {
  if (Log_Running()) return Tell("A log is running. Press STOP before opening a file.");
  File1_DblClick(name);
}

}  // namespace

Log_File_Panel::Log_File_Panel(Setting_Controls& settings, QWidget* parent)
    : QWidget(parent), info_(new QStackedWidget) {
  info_->addWidget(Make_Info(settings));
  info_->addWidget(Make_Preview());
  info_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->addWidget(Make_Lists(), 1);
  layout->addWidget(info_);
}

QWidget* Log_File_Panel::Make_Lists() {
  auto* lists = new QWidget;
  Drive1_ = new QComboBox;
  Drive1_->setObjectName("Drive1");
  Drive1_->setToolTip("Where to look for logs: the root, the home folder and mounted volumes");
  Drive1_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  connect(Drive1_, &QComboBox::textActivated, this,
          [](const QString& drive) { Guarded([&] { Drive1_Change(drive.toStdString()); }); });
  Dir1_ = List("Dir1", "Folders; a double click or Enter opens one");
  connect(Dir1_, &QListWidget::itemActivated, this, [](const QListWidgetItem* item) {
    Guarded([name = item->text().toStdString()] { Dir1_Change(name); });
  });
  File1_ =
      List("File1", "Logs (*.kxl): click for a preview, double click or Enter to open, Delete to delete");
  connect(File1_, &QListWidget::itemClicked, this, [](const QListWidgetItem* item) {
    Guarded([name = item->text().toStdString()] { File1_Click(name); });
  });
  connect(File1_, &QListWidget::itemDoubleClicked, this, &Log_File_Panel::Open);
  File1_->installEventFilter(this);
  auto* layout = new QVBoxLayout(lists);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(Drive1_);
  layout->addWidget(Dir1_, 2);
  layout->addWidget(File1_, 3);
  return lists;
}

QWidget* Log_File_Panel::Make_Info(Setting_Controls& settings) {
  auto* frame = new QGroupBox("Log");
  frame->setObjectName("File_Info_Frame");
  txt_File_ = Read_Only("txt_File", "");
  length_ = Read_Only("txt_Log_Length", "Length of the log, s");
  remarks_ = new QPlainTextEdit;
  remarks_->setObjectName("txt_Log_Free_Text");
  remarks_->setToolTip("Your remarks; they are saved in one line with the log");
  remarks_->setTabChangesFocus(true);
  remarks_->setFixedHeight(remarks_->fontMetrics().lineSpacing() * lines_of_remarks + 10);
  connect(remarks_, &QPlainTextEdit::textChanged, this, [this] {
    log_settings.txt_Log_Free_Text = File_Bytes_Of(remarks_->toPlainText().replace("\n", "\r\n"));
    Guarded(Log_Setting_Changed);
  });
  auto* rows = new QFormLayout(frame);
  rows->setContentsMargins(4, 2, 4, 2);
  rows->addRow("File", txt_File_);
  rows->addRow("Date", settings.Line("txt_Log_Date", log_settings.txt_Log_Date, "Date of the log"));
  rows->addRow("Time", settings.Line("txt_Log_Time", log_settings.txt_Log_Time, "Time of day at its start"));
  rows->addRow("Length", length_);
  rows->addRow(remarks_);
  return frame;
}

QWidget* Log_File_Panel::Make_Preview() {
  auto* frame = new QGroupBox("File clicked");
  frame->setObjectName("File_Info_Frame_tmp");
  auto* rows = new QFormLayout(frame);
  rows->setContentsMargins(4, 2, 4, 2);
  const auto add = [rows](const QString& caption, const QString& name, Shown_Text& text) {
    auto* box = Read_Only(name, caption + " as the file says");
    Follow(box, text, [](QLineEdit* line, const QString& shown) { line->setText(shown); });
    rows->addRow(caption, box);
  };
  add("Date", "txt_Log_Date_tmp", txt_Log_Date_tmp);
  add("Time", "txt_Log_Time_tmp", txt_Log_Time_tmp);
  add("Length", "txt_Log_Length_tmp", txt_Log_Length_tmp);
  auto* text = new QPlainTextEdit;
  text->setObjectName("txt_Log_Free_Text_tmp");
  text->setToolTip("Name and remarks of the file");
  text->setReadOnly(true);
  text->setFixedHeight(text->fontMetrics().lineSpacing() * (lines_of_remarks + 1) + 10);
  Follow(text, txt_Log_Free_Text_tmp,
         [](QPlainTextEdit* view, const QString& shown) { view->setPlainText(shown); });
  rows->addRow(text);
  return frame;
}

void Log_File_Panel::Open(const QListWidgetItem* item) {
  if (item == nullptr) return;
  // A copy: the list is filled anew in there.
  Guarded([name = item->text().toStdString()] { Open_Log(name); });
}

/// Enter opens, Delete deletes the file that the list stands at.
bool Log_File_Panel::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress || File1_->currentItem() == nullptr) {
    return QWidget::eventFilter(watched, event);
  }
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (enter) Open(File1_->currentItem());
  if (key == Qt::Key_Delete) {
    Guarded([name = File1_->currentItem()->text().toStdString()] { File1_Delete(name); });
  }
  return enter || key == Qt::Key_Delete;
}

void Log_File_Panel::Show_Folder() {
  Drive1_->clear();
  int chosen = -1;
  std::size_t longest = 0;
  for (const std::string& drive : Drive_List()) {
    Drive1_->addItem(Text(drive));
    if (Log_Directory.starts_with(drive) && drive.size() > longest) {
      longest = drive.size();
      chosen = Drive1_->count() - 1;
    }
  }
  Drive1_->setCurrentIndex(chosen);
  std::vector<std::string> folders = Folder_List();
  folders.insert(folders.begin(), "..");
  Fill(*Dir1_, folders);
  Fill(*File1_, Log_File_List());
  File1_->setStatusTip(Text(Log_Directory));
}

void Log_File_Panel::Show_File() {
  const bool on_disk = Log_File_Named && !Log_Running();
  txt_File_->setText(on_disk ? Text(Log_File_Name) : QString());
  txt_File_->setToolTip(on_disk ? Text(Log_Directory + Log_File_Name) : "The log has no file yet");
  Show_File_Text(*length_, log_settings.txt_Log_Length);
  const QString remarks = Shown_Bytes(log_settings.txt_Log_Free_Text).replace("\r\n", "\n");
  if (remarks_->toPlainText() == remarks) return;
  const QSignalBlocker filling(remarks_);
  remarks_->setPlainText(remarks);
}

void Log_File_Panel::Show_Preview() { info_->setCurrentIndex(Preview_Shown ? preview_page : info_page); }

}  // namespace kx
