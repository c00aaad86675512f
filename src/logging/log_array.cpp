#include "logging/log_array.h"

#include <algorithm>
#include <cmath>

#include "settings/failure.h"

namespace kx {

Log_Array LogArray;

Log_Array::Log_Array() : cells_(static_cast<std::size_t>(rows) * slot_total, empty) {}

std::size_t Log_Array::Index(int row, int slot) {
  if (row < 0 || row >= rows || slot < 0 || slot >= slot_total) Fail_Subscript();
  return static_cast<std::size_t>(slot) * rows + static_cast<std::size_t>(row);
}

bool Log_Array::Has(int row, int slot) const { return !std::isnan((*this)(row, slot)); }

std::span<double> Log_Array::Column(int slot) { return {&cells_[Index(0, slot)], rows}; }

std::span<const double> Log_Array::Column(int slot) const { return {&cells_[Index(0, slot)], rows}; }

const std::string& Log_Array::Name(int slot) const { return names_[Index(0, slot) / rows]; }

void Log_Array::Set_Name(int slot, std::string name) { names_[Index(0, slot) / rows] = std::move(name); }

void Log_Array::Clear() {
  std::fill(cells_.begin(), cells_.end(), empty);
  names_.fill({});
}

}  // namespace kx
