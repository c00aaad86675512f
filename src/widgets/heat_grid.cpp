#include "widgets/heat_grid.h"

#include <QAction>
#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <algorithm>
#include <utility>

#include "platform/seams.h"
#include "widgets/heat_colours.h"

namespace kx {
namespace {

constexpr int room_around_text = 5;  ///< pixels, both sides together

/// Width of the widest of @p texts.
int Widest(const QFontMetrics& font, const QStringList& texts) {
  int widest = 0;
  for (const QString& text : texts) widest = std::max(widest, font.horizontalAdvance(text));
  return widest;
}

}  // namespace

void Heat_Model::Show(Heat_Table table) {
  const bool same_shape = table.columns == table_.columns && table.rows == table_.rows;
  if (!same_shape) beginResetModel();
  const Heat_Table before = std::exchange(table_, std::move(table));
  if (!same_shape) return endResetModel();
  for (int row = 0; row < rowCount(); ++row) {
    for (int column = 0; column < columnCount(); ++column) {
      if (before.At(row, column) == table_.At(row, column)) continue;
      emit dataChanged(index(row, column), index(row, column));
    }
  }
}

int Heat_Model::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(table_.rows.size());
}

int Heat_Model::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(table_.columns.size());
}

QVariant Heat_Model::data(const QModelIndex& index, int role) const {
  const Heat_Table::Cell& cell = table_.At(index.row(), index.column());
  switch (role) {
    case Qt::DisplayRole:
      return cell.text;
    case Qt::TextAlignmentRole:
      return int(Qt::AlignCenter);
    case Qt::BackgroundRole:
      return cell.share ? QBrush(Heat_Colour(*cell.share)) : QVariant();
    case Qt::ForegroundRole:
      return cell.share ? QBrush(Ink_On(Heat_Colour(*cell.share))) : QVariant();
    case Qt::ToolTipRole:
      return table_.tip ? table_.tip(index.row(), index.column()) : QString();
    default:
      return {};
  }
}

QVariant Heat_Model::headerData(int section, Qt::Orientation orientation, int role) const {
  const QStringList& texts = orientation == Qt::Horizontal ? table_.columns : table_.rows;
  if (role == Qt::DisplayRole && section < texts.size()) return texts[section];
  if (role == Qt::TextAlignmentRole) {
    return int(orientation == Qt::Horizontal ? Qt::AlignCenter : Qt::AlignRight | Qt::AlignVCenter);
  }
  return {};
}

Heat_Grid::Heat_Grid(const QString& name, QWidget* parent)
    : QTableView(parent), model_(new Heat_Model(this)), corner_(new QLabel(this)) {
  setObjectName(name);
  setModel(model_);
  setSelectionMode(NoSelection);
  setEditTriggers(NoEditTriggers);
  setTabKeyNavigation(false);
  setWordWrap(false);
  setTextElideMode(Qt::ElideNone);
  setHorizontalScrollMode(ScrollPerPixel);
  setCornerButtonEnabled(false);
  corner_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  corner_->setMargin(room_around_text / 2);
  for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
    header->setSectionsClickable(false);
    header->setHighlightSections(false);
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setMinimumSectionSize(1);
  }
  auto* copy = new QAction("&Copy", this);
  copy->setObjectName("grid_copy");
  copy->setShortcut(QKeySequence("Ctrl+Shift+C"));
  copy->setShortcutContext(Qt::WidgetShortcut);
  addAction(copy);
  setContextMenuPolicy(Qt::ActionsContextMenu);
  connect(copy, &QAction::triggered, this, &Heat_Grid::Copy);
  connect(this, &QTableView::doubleClicked, this,
          [this](const QModelIndex& cell) { emit Cell_Wanted(cell.row(), cell.column()); });
}

void Heat_Grid::Show(Heat_Table table) {
  model_->Show(std::move(table));
  Fit_Cells();
  if (!currentIndex().isValid() && model_->rowCount() > 0) setCurrentIndex(model_->index(0, 0));
}

void Heat_Grid::Copy() {
  const Heat_Table& table = model_->Shown();
  QString text = table.corner + '\t' + table.columns.join('\t') + "\r\n";
  for (int row = 0; row < model_->rowCount(); ++row) {
    text += table.rows[row];
    for (int column = 0; column < model_->columnCount(); ++column) text += '\t' + table.At(row, column).text;
    text += "\r\n";
  }
  platform::seams.desktop->Set_Clipboard_Text(text.toStdString());
}

/// As wide as the widest text, wider where there is room; rows likewise.
void Heat_Grid::Fit_Cells() {
  const Heat_Table& table = model_->Shown();
  if (table.cells.empty()) return;
  int widest = Widest(fontMetrics(), table.columns);
  for (const Heat_Table::Cell& cell : table.cells) {
    if (!cell.text.isEmpty()) widest = std::max(widest, fontMetrics().horizontalAdvance(cell.text));
  }
  corner_->setText(table.corner);
  corner_->setGeometry(frameWidth(), frameWidth(), verticalHeader()->width(), horizontalHeader()->height());
  const int columns = static_cast<int>(table.columns.size());
  const int rows = static_cast<int>(table.rows.size());
  const int line = fontMetrics().height();
  const int width = std::max(widest + room_around_text, viewport()->width() / columns);
  const int height = std::clamp(viewport()->height() / rows, line + 1, line * 2);
  if (horizontalHeader()->defaultSectionSize() != width) horizontalHeader()->setDefaultSectionSize(width);
  if (verticalHeader()->defaultSectionSize() != height) verticalHeader()->setDefaultSectionSize(height);
}

QPixmap Heat_Grid::Whole_Picture() const {
  Heat_Grid whole("");
  whole.setPalette(palette());
  whole.setFont(font());
  whole.setFrameShape(NoFrame);
  whole.setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  whole.setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  whole.Show(model_->Shown());
  whole.ensurePolished();
  whole.horizontalHeader()->setDefaultSectionSize(horizontalHeader()->defaultSectionSize());
  whole.verticalHeader()->setDefaultSectionSize(verticalHeader()->defaultSectionSize());
  whole.setCurrentIndex({});
  const QSize headings(whole.verticalHeader()->sizeHint().width(),
                       whole.horizontalHeader()->sizeHint().height());
  whole.resize(headings.width() + whole.horizontalHeader()->length(),
               headings.height() + whole.verticalHeader()->length());
  return whole.grab();
}

void Heat_Grid::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (!enter || !currentIndex().isValid()) return QTableView::keyPressEvent(event);
  emit Cell_Wanted(currentIndex().row(), currentIndex().column());
}

/// A double frame, dark and light, is seen on every colour.
void Heat_Grid::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (!currentIndex().isValid() || !hasFocus()) return;
  QPainter painter(viewport());
  const QRect cell = visualRect(currentIndex());
  painter.setPen(QPen(Qt::black, 2));
  painter.drawRect(cell.adjusted(1, 1, -2, -2));
  painter.setPen(QPen(Qt::white, 1));
  painter.drawRect(cell.adjusted(2, 2, -3, -3));
}

void Heat_Grid::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  Fit_Cells();
}

void Heat_Grid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange && model_ != nullptr) Fit_Cells();
}

/// The colours mean something: neither focus nor mouse change them.
void Heat_Grid::initViewItemOption(QStyleOptionViewItem* option) const {
  QTableView::initViewItemOption(option);
  option->state &= ~(QStyle::State_HasFocus | QStyle::State_MouseOver | QStyle::State_Selected);
}

}  // namespace kx
