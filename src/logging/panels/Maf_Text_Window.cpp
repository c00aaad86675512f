#include "logging/panels/Maf_Text_Window.h"

#include <QCloseEvent>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

#include "logging/maf_calculator.h"
#include "platform/seams.h"
#include "widgets/form_helpers.h"
#include "widgets/open_form.h"
#include "workspace/choice_controls.h"

namespace kx {

Maf_Text_Window::Maf_Text_Window(QWidget* parent) : QWidget(parent, Qt::Window), Text4_(new QPlainTextEdit) {
  setObjectName("Maf_Text_Window");
  setWindowTitle("MAF-Simulation, calculator");
  Text4_->setObjectName("Text4");
  Text4_->setReadOnly(true);
  Text4_->setToolTip(
      "Each sample of the stretch on show, then the average of the meter, V, for each table row");
  Text4_->setLineWrapMode(QPlainTextEdit::NoWrap);
  Text4_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  Text4_->setTabStopDistance(Text4_->fontMetrics().horizontalAdvance('0') * 10);
  auto* copy = new QPushButton("Copy all");
  copy->setObjectName("copy_text_button");
  copy->setToolTip("Put the whole text on the clipboard");
  On_Click(copy, [] { platform::seams.desktop->Set_Clipboard_Text(maf_text.Text4); });
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(copy);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Text4_, 1);
  layout->addLayout(buttons);
  resize(fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 30);
}

void Maf_Text_Window::Toggle(QWidget& over) {
  cmd_MAF_Sim_Click(Choice_Index(Choice_Row_Of("mafsim_combo")),
                    Choice_Index(Choice_Row_Of("mafsim_out_combo")));
  Text4_->setPlainText(Text(maf_text.Text4));
  if (!maf_text.visible) {
    hide();
    return;
  }
  Open_Form(*this, over);
  Text4_->moveCursor(QTextCursor::End);
}

void Maf_Text_Window::closeEvent(QCloseEvent* event) {
  maf_text.visible = false;
  event->accept();
}

}  // namespace kx
