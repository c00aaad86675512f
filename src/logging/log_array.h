#pragma once

#include <array>
#include <limits>
#include <span>
#include <string>
#include <vector>

/// The decoded log: one contiguous column of numbers a slot. Slot 0 is the time in seconds, slots 1 to 40 are
/// the signals of logging/log_signals.h. Rows count from 1; row 0 of every column stands for the names.
namespace kx {

constexpr int log_capacity = 6000;  ///< rows that a log holds, 300 s
constexpr int log_slot_count = 40;
constexpr int log_rows_a_second = 20;  ///< fixed by the box
constexpr double log_row_seconds = 0.05;

class Log_Array {
 public:
  /// What a cell holds that nothing was stored in.
  static constexpr double empty = std::numeric_limits<double>::quiet_NaN();

  Log_Array();

  /// Cell of @p row, 0 to 6000, and @p slot, 0 to 40. Throws Failure "Subscript out of range" elsewhere.
  [[nodiscard]] double& operator()(int row, int slot) { return cells_[Index(row, slot)]; }
  [[nodiscard]] double operator()(int row, int slot) const { return cells_[Index(row, slot)]; }

  /// False for an empty cell.
  [[nodiscard]] bool Has(int row, int slot) const;

  /// Rows 0 to 6000 of one slot, so that element n is row n. Throws as above.
  [[nodiscard]] std::span<double> Column(int slot);
  [[nodiscard]] std::span<const double> Column(int slot) const;

  /// Row 0: name of a signal, UTF-8; empty until a log has been decoded. Throws as above.
  [[nodiscard]] const std::string& Name(int slot) const;
  void Set_Name(int slot, std::string name);

  /// Empties all cells and names.
  void Clear();

 private:
  static constexpr int rows = log_capacity + 1;
  static constexpr int slot_total = log_slot_count + 1;
  [[nodiscard]] static std::size_t Index(int row, int slot);

  std::vector<double> cells_;
  std::array<std::string, slot_total> names_;
};

/// The log on show. Written by KX_Log_Data_Read, by the live log and by the calculations.
extern Log_Array LogArray;

}  // namespace kx
