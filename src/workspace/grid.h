#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kx {

class Grid;

/// Calls @p edit with each selected row from @p first_row on, and by how many rows it stands behind the first
/// selected one.
void Each_Selected(const Grid& grid, int first_row, const std::function<void(int row, int distance)>& edit);

/// The texts and the cursor of one table as the user sees it, apart from any widget. Row 0 is the heading
/// row; entries count from row 1. Columns count from 0.
class Grid {
 public:
  /// Sets the number of rows (heading included) and columns. Texts of cells that stay are kept; the cursor is
  /// brought back inside.
  void Resize(int rows, int columns);

  [[nodiscard]] int Rows() const { return static_cast<int>(rows_.size()); }
  [[nodiscard]] int Columns() const { return columns_; }

  /// Text of a cell. Throws Failure "Subscript out of range" outside the grid, as Set_Text does.
  [[nodiscard]] const std::string& Text(int row, int column) const;
  void Set_Text(int row, int column, std::string text);

  /// Puts @p texts into @p row from column 0 on.
  void Set_Row_Texts(int row, std::vector<std::string> texts);

  /// What is to be said about a row's value, which the grid then marks; empty for nothing. A row outside the
  /// grid has none.
  void Set_Mark(int row, std::string tip);
  [[nodiscard]] const std::string& Mark(int row) const;
  void Clear_Marks() { marks_.clear(); }

  [[nodiscard]] int Row() const { return row_; }          ///< current row, 1 up
  [[nodiscard]] int Row_Sel() const { return row_sel_; }  ///< end of the selection, 1 up
  [[nodiscard]] int Top_Row() const { return top_row_; }  ///< first visible row, 1 up

  /// Moves the cursor; both ends are kept inside the entries.
  void Select(int row, int row_sel);
  void Set_Top_Row(int row);

  [[nodiscard]] int Sel_Start() const;  ///< smaller end of the selection
  [[nodiscard]] int Sel_Count() const;  ///< rows of the selection beyond the first
  [[nodiscard]] bool Selected(int row) const;

 private:
  [[nodiscard]] int Inside(int row) const;

  std::vector<std::vector<std::string>> rows_;
  std::vector<std::string> marks_;  ///< by row; shorter than rows_ when the rest has none
  int columns_ = 0;
  int row_ = 1;
  int row_sel_ = 1;
  int top_row_ = 1;
};

}  // namespace kx
