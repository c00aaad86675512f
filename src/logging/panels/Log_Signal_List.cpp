#include "logging/panels/Log_Signal_List.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPixmap>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "logging/chart_view.h"
#include "widgets/chart_look.h"
#include "widgets/form_helpers.h"
#include "widgets/scroll_page.h"

namespace kx {
namespace {

constexpr int widest_in_characters = 50;

QIcon Swatch(int row, int size) {
  QPixmap colour(size, size / 2);
  colour.fill(Signal_Colour(row));
  return colour;
}

QCheckBox* Tick(const QString& name, int index) {
  auto* check = new QCheckBox;
  check->setObjectName(QString("%1(%2)").arg(name).arg(index));
  return check;
}

}  // namespace

Log_Signal_List::Log_Signal_List(QWidget* parent) : QWidget(parent), all_(nullptr), page_(nullptr) {
  auto* page = new QWidget;
  auto* rows = new QGridLayout(page);
  rows->setContentsMargins(4, 2, 4, 2);
  rows->setVerticalSpacing(1);
  rows->setColumnStretch(0, 1);
  for (int row = 0; row < signal_rows; ++row) Add_Row(row, rows);
  rows->setRowStretch(signal_rows, 1);
  all_ = Tick("Check_SignalsToView", select_all_index);
  all_->setText("Select/deselect all");
  all_->setToolTip("Tick or untick the signals of the first 35 rows");
  connect(all_, &QCheckBox::clicked, this, [](bool on) { Guarded([on] { Select_All_Signals_Click(on); }); });
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 2, 0, 0);
  auto* head = new QHBoxLayout;
  head->addWidget(all_, 1);
  head->addWidget(new QLabel("2nd"));
  head->addSpacing(fontMetrics().averageCharWidth() * 3);
  page_ = new Scroll_Page(page);
  layout->addLayout(head);
  layout->addWidget(page_, 1);
}

void Log_Signal_List::Add_Row(int row, QGridLayout* layout) {
  const auto at = static_cast<std::size_t>(row);
  view_[at] = Tick("Check_SignalsToView", row);
  view_[at]->setIcon(Swatch(row, fontMetrics().height()));
  connect(view_[at], &QCheckBox::clicked, this,
          [row](bool on) { Guarded([=] { Check_SignalsToView_Click(row, on); }); });
  secondary_[at] = Tick("Secondary_Check", row);
  connect(secondary_[at], &QCheckBox::clicked, this,
          [row](bool on) { Guarded([=] { Secondary_Check_Click(row, on); }); });
  layout->addWidget(view_[at], row, 0);
  layout->addWidget(secondary_[at], row, 1);
}

void Log_Signal_List::Show_Names() {
  bool all = true;
  for (int row = 0; row < signal_rows; ++row) {
    const auto at = static_cast<std::size_t>(row);
    const Log_Signal_Row& signal = Signal_Row(row);
    const QString caption = Text(Signal_Caption(row));
    view_[at]->setText(QString(caption).replace("&", "&&"));
    view_[at]->setToolTip("Show " + caption + " in the chart");
    secondary_[at]->setToolTip("Draw " + caption + " against the second Y scale, at the right");
    view_[at]->setChecked(signal.view);
    secondary_[at]->setChecked(signal.secondary);
    view_[at]->setVisible(signal.shown);
    secondary_[at]->setVisible(signal.shown);
    all = all && (row > last_selected_row || signal.view);
  }
  all_->setChecked(all);
  // As wide as the names want, within reason: a second scroll bar would hide the boxes at the right.
  const int wanted = page_->widget()->sizeHint().width() + page_->verticalScrollBar()->sizeHint().width() +
                     2 * page_->frameWidth();
  page_->setMinimumWidth(std::min(wanted, fontMetrics().averageCharWidth() * widest_in_characters));
}

}  // namespace kx
