#include "widgets/table_grid.h"

#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <limits>

#include "settings/numbers.h"
#include "widgets/cell_colours.h"
#include "widgets/chart_look.h"
#include "widgets/difference_mark.h"
#include "widgets/key_codes.h"

namespace kx {
namespace {

constexpr int focus_frame = 3;  ///< pixels

/// Keys held with Ctrl, Alt or Meta belong to menus and shortcuts.
bool Is_Command_Key(const QKeyEvent& event) {
  const int key = event.key();
  if (key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_AltGr || key == Qt::Key_Meta)
    return true;
  return (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
}

QColor Blend(const QColor& front, const QColor& back) {
  const auto mean = [](int one, int other) { return (one + 2 * other) / 3; };
  return {mean(front.red(), back.red()), mean(front.green(), back.green()), mean(front.blue(), back.blue())};
}

bool Moves_Cursor(int key) {
  return key == Qt::Key_Up || key == Qt::Key_Down || key == Qt::Key_PageUp || key == Qt::Key_PageDown ||
         key == Qt::Key_Home || key == Qt::Key_End;
}

}  // namespace

Grid_Model::Grid_Model(const Grid& grid, QObject* parent) : QAbstractTableModel(parent), grid_(grid) {}

void Grid_Model::Refresh() {
  const bool resized = rows_ != grid_.Rows() - 1 || columns_ != grid_.Columns();
  if (resized) beginResetModel();
  rows_ = std::max(0, grid_.Rows() - 1);
  columns_ = grid_.Columns();
  Fit_Colour_Scale();
  if (resized) {
    endResetModel();
  } else if (rows_ > 0 && columns_ > 0) {
    emit dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
    emit headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
  }
}

void Grid_Model::Show_Colour_Scale(bool shown) {
  colour_scale_ = shown;
  Refresh();
}

/// A cell that holds no number, as while one is typed, has no colour.
void Grid_Model::Fit_Colour_Scale() {
  smallest_ = std::numeric_limits<double>::infinity();
  largest_ = -smallest_;
  for (int row = 1; colour_scale_ && row <= rows_; ++row) {
    const auto value = Whole_Number_Text(grid_.Text(row, columns_ - 1));
    smallest_ = std::min(smallest_, value.value_or(smallest_));
    largest_ = std::max(largest_, value.value_or(largest_));
  }
}

QVariant Grid_Model::Scale_Brush(const QModelIndex& index, int role) const {
  if (!colour_scale_ || !Is_Value(index.column()) || !(largest_ > smallest_)) return {};
  const auto value = Whole_Number_Text(Cell_Text(index.row() + 1, index.column()).toStdString());
  if (!value) return {};
  const QPalette palette = qobject_cast<QWidget*>(parent())->palette();
  const bool dark = palette.color(QPalette::Base).lightnessF() < 0.5;
  const QColor paper = Scale_Colour((*value - smallest_) / (largest_ - smallest_), dark);
  return role == Qt::BackgroundRole ? paper : Readable_On(paper, palette.color(QPalette::Text));
}

/// A ground that tells the value tells it of a value that differs, too: that one has its corner.
QVariant Grid_Model::Value_Brush(const QModelIndex& index, int role) const {
  const QVariant scale = Scale_Brush(index, role);
  const bool differs = Is_Value(index.column()) && !grid_.Mark(index.row() + 1).empty();
  if (scale.isValid() || !differs || role != Qt::BackgroundRole) return scale;
  return Difference_Ground(qobject_cast<QWidget*>(parent())->palette());
}

int Grid_Model::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

int Grid_Model::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : columns_; }

/// Between a change of the grid and the next Refresh a paint may ask for a cell that has gone.
QString Grid_Model::Cell_Text(int row, int column) const {
  if (row >= grid_.Rows() || column >= grid_.Columns()) return {};
  return QString::fromStdString(grid_.Text(row, column));
}

QVariant Grid_Model::data(const QModelIndex& index, int role) const {
  switch (role) {
    case Qt::DisplayRole:
      return Cell_Text(index.row() + 1, index.column());
    case Qt::TextAlignmentRole:
      return int(Qt::AlignRight | Qt::AlignVCenter);
    case Qt::ToolTipRole:
      return QString::fromStdString(grid_.Mark(index.row() + 1));
    case Qt::FontRole: {
      QFont font = qobject_cast<QWidget*>(parent())->font();
      font.setBold(Is_Value(index.column()));
      return font;
    }
    case Qt::BackgroundRole:
    case Qt::ForegroundRole:
      return Value_Brush(index, role);
    default:
      return {};
  }
}

QVariant Grid_Model::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal) return {};
  if (role == Qt::DisplayRole) return Cell_Text(0, section);
  if (role == Qt::TextAlignmentRole) return int(Qt::AlignRight | Qt::AlignVCenter);
  return {};
}

Table_Grid::Table_Grid(Grid& grid, const QString& name, QWidget* parent)
    : QTableView(parent), grid_(grid), model_(new Grid_Model(grid, this)) {
  setObjectName(name);
  setModel(model_);
  setSelectionBehavior(SelectRows);
  setSelectionMode(ContiguousSelection);
  setEditTriggers(NoEditTriggers);
  setVerticalScrollMode(ScrollPerItem);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setTabKeyNavigation(false);
  setAlternatingRowColors(true);
  setWordWrap(false);
  verticalHeader()->hide();
  verticalHeader()->setMinimumSectionSize(1);
  horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
  horizontalHeader()->setSectionsClickable(false);
  horizontalHeader()->setHighlightSections(false);
  Refresh();
}

void Table_Grid::Refresh() {
  model_->Refresh();
  const int columns = grid_.Columns();
  setMinimumWidth(columns * fontMetrics().horizontalAdvance("-00000.0") +
                  verticalScrollBar()->sizeHint().width());
  Fit_Rows();
  Show_Cursor();
}

/// The current index is the cell that a key changes; the selection may end above or below it.
void Table_Grid::Show_Cursor() {
  if (model_->rowCount() == 0) return;
  const QModelIndex current = model_->index(grid_.Row() - 1, grid_.Columns() - 1);
  const QModelIndex end = model_->index(grid_.Row_Sel() - 1, grid_.Columns() - 1);
  selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
  selectionModel()->select(QItemSelection(current, end),
                           QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

void Table_Grid::Fit_Rows() {
  const int rows = model_->rowCount();
  if (rows == 0) return;
  const int text_height = fontMetrics().height();
  const int wanted = viewport()->height() / rows;
  const int height = std::clamp(wanted, text_height + 1, text_height * 2);
  if (verticalHeader()->defaultSectionSize() != height) verticalHeader()->setDefaultSectionSize(height);
}

void Table_Grid::Enter(int row, int row_sel) {
  emit Cell_Entered(row, row_sel);
  scrollTo(model_->index(grid_.Row_Sel() - 1, 0));
}

/// The end of the selection moves; without @p extend the other end comes along.
void Table_Grid::Move_Cursor(int key, bool extend) {
  const int last = std::max(1, model_->rowCount());
  const int page = std::max(1, viewport()->height() / std::max(1, rowHeight(0)) - 1);
  int row = grid_.Row_Sel();
  switch (key) {
    case Qt::Key_Up:
      row -= 1;
      break;
    case Qt::Key_Down:
      row += 1;
      break;
    case Qt::Key_PageUp:
      row -= page;
      break;
    case Qt::Key_PageDown:
      row += page;
      break;
    case Qt::Key_Home:
      row = 1;
      break;
    default:
      row = last;
      break;
  }
  row = std::clamp(row, 1, last);
  Enter(extend ? grid_.Row() : row, row);
}

/// Ctrl+A, and Home and End held with Ctrl, which do what they do alone. False for any other key.
bool Table_Grid::Select_By_Key(const QKeyEvent& event) {
  if (event.matches(QKeySequence::SelectAll)) {
    emit Cell_Entered(1, std::max(1, model_->rowCount()));
    return true;
  }
  const bool ends = event.key() == Qt::Key_Home || event.key() == Qt::Key_End;
  const Qt::KeyboardModifiers held = event.modifiers() & ~Qt::KeypadModifier;
  if (!ends || (held & ~Qt::ShiftModifier) != Qt::ControlModifier) return false;
  Move_Cursor(event.key(), (held & Qt::ShiftModifier) != 0);
  return true;
}

void Table_Grid::keyPressEvent(QKeyEvent* event) {
  if (Select_By_Key(*event)) return event->accept();
  const bool copy = event->key() == Qt::Key_C && event->matches(QKeySequence::Copy);
  if (Is_Command_Key(*event) && !copy) return event->ignore();
  // Tab leaves the grid, as from any other control.
  if (event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) return event->ignore();
  grid_.Set_Top_Row(verticalScrollBar()->value() + 1);
  emit Key_Pressed(Key_Code_Of(*event), Shift_State_Of(*event));
  if (Moves_Cursor(event->key())) Move_Cursor(event->key(), (event->modifiers() & Qt::ShiftModifier) != 0);
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    verticalScrollBar()->setValue(grid_.Top_Row() - 1);
    scrollTo(currentIndex());
  }
  event->accept();
}

/// Entry under a point of the viewport, or the nearest one.
int Table_Grid::Nearest_Row(const QPoint& position) const {
  if (position.y() < 0) return std::max(1, rowAt(0));
  const int row = rowAt(position.y());
  return row < 0 ? model_->rowCount() : row + 1;
}

/// A click below the last row is at no entry.
void Table_Grid::mousePressEvent(QMouseEvent* event) {
  const int row = rowAt(event->pos().y()) + 1;
  if (event->button() != Qt::LeftButton) return;
  dragging_ = row > 0;
  if (!dragging_) return;
  emit Cell_Entered((event->modifiers() & Qt::ShiftModifier) != 0 ? grid_.Row() : row, row);
}

void Table_Grid::mouseMoveEvent(QMouseEvent* event) {
  if ((event->buttons() & Qt::LeftButton) == 0 || model_->rowCount() == 0 || !dragging_) return;
  const int row = Nearest_Row(event->pos());
  if (row != grid_.Row_Sel()) Enter(grid_.Row(), row);
}

void Table_Grid::Want_Menu() {
  if (model_->rowCount() == 0) return;
  scrollTo(currentIndex());
  emit Menu_Wanted(viewport()->mapToGlobal(visualRect(currentIndex()).bottomLeft()));
}

/// The right button picks the entry that it is pressed on, but inside the selection it leaves that alone.
void Table_Grid::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
  if (event->reason() != QContextMenuEvent::Mouse) return Want_Menu();
  const int row = rowAt(event->pos().y()) + 1;
  if (row == 0) return;
  setFocus(Qt::MouseFocusReason);
  if (!grid_.Selected(row)) emit Cell_Entered(row, row);
  emit Menu_Wanted(event->globalPos());
}

/// Coming back to a grid enters its cell anew: the next digit replaces its text.
void Table_Grid::focusInEvent(QFocusEvent* event) {
  QTableView::focusInEvent(event);
  if (model_->rowCount() > 0) emit Cell_Entered(grid_.Row(), grid_.Row_Sel());
}

void Table_Grid::resizeEvent(QResizeEvent* event) {
  QTableView::resizeEvent(event);
  Fit_Rows();
}

void Table_Grid::changeEvent(QEvent* event) {
  QTableView::changeEvent(event);
  if (event->type() == QEvent::FontChange && model_ != nullptr) Refresh();
}

void Table_Grid::Set_Place(std::optional<double> entry) {
  if (entry == place_) return;
  const QRect before = Place_Mark();
  place_ = entry;
  viewport()->update(before.united(Place_Mark()));
}

/// Where the arrow stands: its point is at the entry, between the middles of two rows as the fraction says.
QRect Table_Grid::Place_Mark() const {
  if (!place_ || model_->rowCount() == 0) return {};
  const int row = std::clamp(static_cast<int>(*place_), 1, model_->rowCount());
  const int height = rowHeight(row - 1);
  const int middle =
      rowViewportPosition(row - 1) + height / 2 + static_cast<int>(std::lround((*place_ - row) * height));
  const int size = fontMetrics().height();
  return {focus_frame, middle - size / 2, size, size + 1};
}

void Table_Grid::Paint_Place(QPainter& painter) const {
  if (!place_) return;
  const QRectF mark = QRectF(Place_Mark()).adjusted(0.5, 0.5, -1.5, -1.5);
  const double middle = mark.center().y();
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(palette().color(QPalette::Text), 1));
  painter.setBrush(Engine_Colour());
  painter.drawPolygon(QPolygonF({mark.topLeft(), QPointF(mark.right(), middle), mark.bottomLeft()}));
  painter.restore();
}

/// Without the focus the selection is pale: keys go elsewhere.
void Table_Grid::initViewItemOption(QStyleOptionViewItem* option) const {
  QTableView::initViewItemOption(option);
  if (hasFocus()) return;
  const QPalette& colours = palette();
  option->palette.setColor(QPalette::Highlight,
                           Blend(colours.color(QPalette::Highlight), colours.color(QPalette::Base)));
  option->palette.setColor(QPalette::HighlightedText, colours.color(QPalette::Text));
}

/// Over the cells and the frame, so that a selected one and the current one show their mark, too.
void Table_Grid::Paint_Differences(QPainter& painter) const {
  for (int row = 1; row < grid_.Rows(); ++row) {
    if (grid_.Mark(row).empty()) continue;
    Paint_Difference_Corner(painter, visualRect(model_->index(row - 1, grid_.Columns() - 1)), palette());
  }
  painter.setBrush(Qt::NoBrush);
}

/// A frame around the cell that a key changes, and around the whole grid while it takes the keys.
void Table_Grid::paintEvent(QPaintEvent* event) {
  QTableView::paintEvent(event);
  if (model_->rowCount() == 0) return;
  QPainter painter(viewport());
  const QRect cell = visualRect(model_->index(grid_.Row() - 1, grid_.Columns() - 1));
  painter.setPen(QPen(palette().color(QPalette::Text), hasFocus() ? 2 : 1));
  painter.drawRect(cell.adjusted(1, 1, -2, -2));
  Paint_Differences(painter);
  Paint_Place(painter);
  if (!hasFocus()) return;
  painter.setPen(QPen(palette().color(QPalette::Highlight), 2 * focus_frame));
  painter.drawRect(viewport()->rect());
}

}  // namespace kx
