#include "workspace/panels/General_Panel.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "settings/image.h"
#include "settings/session.h"
#include "widgets/elided_label.h"
#include "widgets/form_helpers.h"
#include "widgets/scroll_page.h"
#include "workspace/panels/Live_Values_Panel.h"

namespace kx {
namespace {

/// The text of @p edit as files have it, lines ended by CR LF. Not by toPlainText, which turns no-break
/// spaces into blanks.
std::string File_Text(const QPlainTextEdit& edit) {
  QString text = edit.document()->toRawText();
  for (const QChar end : {QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator)}) {
    text.replace(end, "\r\n");
  }
  return text.toStdString();
}

}  // namespace

General_Panel::General_Panel(QWidget* parent)
    : QWidget(parent),
      file_(new Elided_Label("file_label")),
      folder_(new Elided_Label("folder_label")),
      dataset_(new Elided_Label("dataset_label")),
      description_(new QPlainTextEdit) {
  description_->setObjectName("txt_File_Description");
  description_->setTabChangesFocus(true);
  description_->setToolTip("Notes on the tune, kept in its file; Ctrl+Z here is this text's own");
  // What was loaded is the tune's as it is; only what the user types is taken from the widget.
  Follow(description_, txt_File_Description, [](QPlainTextEdit* edit, const QString& text) {
    const QSignalBlocker filling(edit);
    edit->setPlainText(text);
  });
  connect(description_, &QPlainTextEdit::textChanged, this,
          [this] { txt_File_Description.Typed(File_Text(*description_)); });

  auto* tune = new QGroupBox("Tune");
  auto* rows = new QFormLayout(tune);
  rows->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  rows->addRow("File", file_);
  rows->addRow("Folder", folder_);
  rows->addRow("Dataset", dataset_);
  auto* notes = new QGroupBox("File description");
  auto* notes_layout = new QVBoxLayout(notes);
  notes_layout->addWidget(description_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tune);
  layout->addWidget(new Scroll_Page(new Live_Values_Panel));  // gives way on a small screen
  layout->addWidget(notes, 1);
}

void General_Panel::Show_Values() {
  file_->setText(Text(card_data_file));
  folder_->setText(Text(card_data_dir.empty() ? start_dir : card_data_dir));
  dataset_->setText(QString::number(DatasetID));
}

}  // namespace kx
