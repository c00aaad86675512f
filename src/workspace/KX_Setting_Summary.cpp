#include "workspace/KX_Setting_Summary.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QMenuBar>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QVBoxLayout>

#include "widgets/form_helpers.h"
#include "workspace/setting_summary.h"
#include "workspace/summary_commands.h"

namespace kx {

KX_Setting_Summary::KX_Setting_Summary(QWidget* parent) : QMainWindow(parent), text_(new QPlainTextEdit) {
  setObjectName("KX_Setting_Summary");
  setWindowTitle("Setting summary viewer");
  text_->setObjectName("txt_SettingSummary");
  text_->setReadOnly(true);
  text_->setLineWrapMode(QPlainTextEdit::NoWrap);
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text_->setTabStopDistance(text_->fontMetrics().horizontalAdvance(' ') * 8);
  Follow(text_, txt_SettingSummary,
         [](QPlainTextEdit* view, const QString& text) { view->setPlainText(text); });
  auto* box_settings = new QPushButton("&Box settings");
  box_settings->setObjectName("cmd_View_Box_Settings");
  On_Click(box_settings, Summary_View_Box_Settings_Click);
  auto* log_settings_button = new QPushButton("&Log settings");
  log_settings_button->setObjectName("cmd_View_Log_Settings");
  log_settings_button->setToolTip("What the log in the log window keeps of its settings and of the box");
  On_Click(log_settings_button, Summary_View_Log_Settings_Click);
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(box_settings);
  buttons->addWidget(log_settings_button);
  buttons->addStretch(1);
  layout->addLayout(buttons);
  layout->addWidget(text_, 1);
  setCentralWidget(page);
  Make_Menus();
  resize(fontMetrics().averageCharWidth() * 110, fontMetrics().height() * 42);
}

void KX_Setting_Summary::Make_Menus() {
  QMenu* file = menuBar()->addMenu("&File");
  Add_Entry(file, "Open", "&Open...", QKeySequence::Open, Summary_Open_Click);
  Add_Entry(file, "Save_File", "&Save", QKeySequence::Save, Summary_Save_File_Click);
  Add_Entry(file, "SaveAs", "Save &As...", QKeySequence("Ctrl+Shift+S"), Summary_SaveAs_Click);
  Add_Entry(file, "Print", "&Print...", QKeySequence::Print, [this] { Print(); });
  QMenu* view = menuBar()->addMenu("&View");
  Add_Entry(view, "View_box_settings", "&Box settings", {}, Summary_View_Box_Settings_Click);
  Add_Entry(view, "View_Log_file_settings", "&Log settings", {}, Summary_View_Log_Settings_Click);
}

void KX_Setting_Summary::Show_With_Box_Settings() { Guarded(Summary_View_Box_Settings_Click); }

/// The platform's dialog; without a printer it offers a PDF file.
void KX_Setting_Summary::Print() {
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, this);
  if (dialog.exec() == QDialog::Accepted) text_->print(&printer);
}

}  // namespace kx
