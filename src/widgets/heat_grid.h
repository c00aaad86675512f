#pragma once

#include <QAbstractTableModel>
#include <QLabel>
#include <QTableView>
#include <functional>
#include <optional>
#include <vector>

namespace kx {

/// What a heat grid shows. Cells stand row by row; all indexes count from 0.
struct Heat_Table {
  struct Cell {
    QString text;
    std::optional<double> share;  ///< place on the scale of colours, 0 to 1; nothing for an empty cell

    friend bool operator==(const Cell&, const Cell&) = default;
  };
  QString corner;  ///< what the headings of the rows count
  QStringList columns;
  QStringList rows;
  std::vector<Cell> cells;
  std::function<QString(int row, int column)> tip = {};

  [[nodiscard]] const Cell& At(int row, int column) const {
    return cells.at(static_cast<std::size_t>(row) * static_cast<std::size_t>(columns.size()) +
                    static_cast<std::size_t>(column));
  }
};

/// A Heat_Table as Qt's views read it.
class Heat_Model : public QAbstractTableModel {
  Q_OBJECT

 public:
  using QAbstractTableModel::QAbstractTableModel;

  /// Shows @p table; only cells that differ are painted again.
  void Show(Heat_Table table);
  [[nodiscard]] const Heat_Table& Shown() const { return table_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  Heat_Table table_;
};

/// Numbers in coloured cells, with headings that stay in sight. The cell that the keys move stands in a
/// frame. Its context menu copies, as Ctrl+Shift+C does.
class Heat_Grid : public QTableView {
  Q_OBJECT

 public:
  explicit Heat_Grid(const QString& name, QWidget* parent = nullptr);

  void Show(Heat_Table table);

  /// Puts all cells with their headings on the clipboard, as a spreadsheet has them: TAB between columns.
  void Copy();

  /// All cells and headings at their size, whatever is in sight, in the palette and the font of the grid.
  [[nodiscard]] QPixmap Whole_Picture() const;

 signals:
  /// Double click, or Enter: the user wants what belongs to this cell.
  void Cell_Wanted(int row, int column);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void initViewItemOption(QStyleOptionViewItem* option) const override;

 private:
  void Fit_Cells();

  Heat_Model* model_;
  QLabel* corner_;
};

}  // namespace kx
