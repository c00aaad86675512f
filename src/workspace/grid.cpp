#include "workspace/grid.h"

#include <algorithm>
#include <cstdlib>

#include "settings/failure.h"

namespace kx {

void Each_Selected(const Grid& grid, int first_row, const std::function<void(int row, int distance)>& edit) {
  for (int row = first_row; row < grid.Rows(); ++row) {
    if (grid.Selected(row)) edit(row, row - grid.Sel_Start());
  }
}

int Grid::Inside(int row) const { return std::clamp(row, 1, std::max(1, Rows() - 1)); }

void Grid::Resize(int rows, int columns) {
  columns_ = columns;
  rows_.resize(static_cast<std::size_t>(rows));
  for (auto& texts : rows_) texts.resize(static_cast<std::size_t>(columns));
  Select(row_, row_sel_);
  Set_Top_Row(top_row_);
}

const std::string& Grid::Text(int row, int column) const {
  if (row < 0 || row >= Rows() || column < 0 || column >= columns_) Fail_Subscript();
  return rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
}

void Grid::Set_Text(int row, int column, std::string text) {
  if (row < 0 || row >= Rows() || column < 0 || column >= columns_) Fail_Subscript();
  rows_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = std::move(text);
}

void Grid::Set_Row_Texts(int row, std::vector<std::string> texts) {
  for (std::size_t column = 0; column < texts.size(); ++column) {
    Set_Text(row, static_cast<int>(column), std::move(texts[column]));
  }
}

void Grid::Set_Mark(int row, std::string tip) {
  const auto at = static_cast<std::size_t>(row);
  if (marks_.size() <= at) marks_.resize(at + 1);
  marks_[at] = std::move(tip);
}

const std::string& Grid::Mark(int row) const {
  static const std::string none;
  return row < 0 || row >= static_cast<int>(marks_.size()) ? none : marks_[static_cast<std::size_t>(row)];
}

void Grid::Select(int row, int row_sel) {
  row_ = Inside(row);
  row_sel_ = Inside(row_sel);
}

void Grid::Set_Top_Row(int row) { top_row_ = Inside(row); }

int Grid::Sel_Start() const { return std::min(row_, row_sel_); }

int Grid::Sel_Count() const { return std::abs(row_ - row_sel_); }

bool Grid::Selected(int row) const { return Sel_Start() <= row && row <= Sel_Start() + Sel_Count(); }

}  // namespace kx
