#pragma once

#include <QAbstractTableModel>
#include <QTableView>
#include <optional>

#include "workspace/grid.h"

namespace kx {

/// The texts of a Grid as Qt's views read them. Row 0 of the grid is the header.
class Grid_Model : public QAbstractTableModel {
  Q_OBJECT

 public:
  Grid_Model(const Grid& grid, QObject* parent);

  /// The grid's texts or size may have changed.
  void Refresh();

  /// Colours behind the values, from the smallest to the largest that is shown.
  void Show_Colour_Scale(bool shown);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  [[nodiscard]] QString Cell_Text(int row, int column) const;
  void Fit_Colour_Scale();
  [[nodiscard]] QVariant Scale_Brush(const QModelIndex& index, int role) const;
  [[nodiscard]] QVariant Value_Brush(const QModelIndex& index, int role) const;
  [[nodiscard]] bool Is_Value(int column) const { return column + 1 == columns_; }

  const Grid& grid_;
  int rows_ = 0;
  int columns_ = 0;
  bool colour_scale_ = false;
  double smallest_ = 0;  ///< of the values on show
  double largest_ = 0;
};

/// A tuning table on screen: shows a Grid and reports what the user does to it; changes no text itself. Rows
/// grow to fill the height, so that all entries of a table can be read at once. The cursor is the Grid's
/// alone: Qt's selection only shows it, and every gesture of keys and mouse goes through Cell_Entered.
class Table_Grid : public QTableView {
  Q_OBJECT

 public:
  Table_Grid(Grid& grid, const QString& name, QWidget* parent = nullptr);

  /// Shows the grid's texts, size, cursor and first visible row.
  void Refresh();

  /// Colours behind the values; off at the start.
  void Show_Colour_Scale(bool shown) { model_->Show_Colour_Scale(shown); }

  /// Asks for the context menu at the current cell, as the menu key does.
  void Want_Menu();

  /// Marks where the engine is by an arrow at the left edge: 1 up, with fractions between two entries. Paints
  /// nothing but the arrow's place.
  void Set_Place(std::optional<double> entry);

 signals:
  /// The user moved the cursor; rows count from 1.
  void Cell_Entered(int row, int row_sel);

  /// A key for the cell's line editor; the code is that of the character typed, see Key_Code_Of.
  void Key_Pressed(int key_code, int shift_state);

  /// The context menu is wanted at @p place on the screen.
  void Menu_Wanted(const QPoint& place);

 protected:
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void initViewItemOption(QStyleOptionViewItem* option) const override;

 private:
  void Fit_Rows();
  void Paint_Differences(QPainter& painter) const;
  void Show_Cursor();
  bool Select_By_Key(const QKeyEvent& event);
  void Move_Cursor(int key, bool extend);
  void Enter(int row, int row_sel);
  [[nodiscard]] int Nearest_Row(const QPoint& position) const;
  [[nodiscard]] QRect Place_Mark() const;
  void Paint_Place(QPainter& painter) const;

  Grid& grid_;
  Grid_Model* model_;
  bool dragging_ = false;        ///< the button went down on an entry
  std::optional<double> place_;  ///< of the engine
};

}  // namespace kx
