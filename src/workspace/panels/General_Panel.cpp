#include "workspace/panels/General_Panel.h"

#include <QFormLayout>
#include <QGroupBox>
#include <QVBoxLayout>

#include "settings/image.h"
#include "settings/session.h"
#include "widgets/form_helpers.h"

namespace kx {
namespace {

QLabel* Value_Label(const QString& name) {
  auto* label = new QLabel;
  label->setObjectName(name);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setWordWrap(true);
  return label;
}

}  // namespace

General_Panel::General_Panel(QWidget* parent)
    : QWidget(parent),
      file_(Value_Label("file_label")),
      folder_(Value_Label("folder_label")),
      dataset_(Value_Label("dataset_label")),
      description_(new QPlainTextEdit) {
  description_->setObjectName("txt_File_Description");
  description_->setTabChangesFocus(true);
  Follow(description_, txt_File_Description,
         [](QPlainTextEdit* edit, const QString& text) { edit->setPlainText(text); });
  // The widget ends lines with LF, files with CR LF.
  connect(description_, &QPlainTextEdit::textChanged, this, [this] {
    txt_File_Description.Typed(description_->toPlainText().replace("\n", "\r\n").toStdString());
  });

  auto* tune = new QGroupBox("Tune");
  auto* rows = new QFormLayout(tune);
  rows->addRow("File", file_);
  rows->addRow("Folder", folder_);
  rows->addRow("Dataset", dataset_);
  auto* notes = new QGroupBox("File description");
  auto* notes_layout = new QVBoxLayout(notes);
  notes_layout->addWidget(description_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(tune);
  layout->addWidget(notes, 1);
}

void General_Panel::Show_Values() {
  file_->setText(Text(card_data_file));
  folder_->setText(Text(card_data_dir.empty() ? start_dir : card_data_dir));
  dataset_->setText(QString::number(DatasetID));
}

}  // namespace kx
