#include "logging/maf_calculator.h"

#include <cmath>

#include "logging/log_signals.h"
#include "logging/log_state.h"
#include "settings/numbers.h"
#include "settings/text_encoding.h"

namespace kx {

Maf_Text maf_text;

namespace {

constexpr std::size_t value = 0;
constexpr std::size_t edge = 1;
constexpr std::size_t sum = 2;
constexpr std::size_t samples = 3;
constexpr int rows = 18;
constexpr int edges = 16;  // rows 1 to 16 have an upper edge
constexpr int product_slot = 35;

std::size_t At(int row) { return static_cast<std::size_t>(row); }

std::string Heading(int map_input, int maf_input) {
  const std::string end = Crlf();
  return "MAF-Simulation, calculator" + end + "Select MAP and MAF in/output channel in box settings" + end +
         "MAP-Input AN" + std::to_string(map_input) + "   MAF-Input AN" + std::to_string(maf_input) + end +
         "SampleNo:   \tRPM\tMAP\tRpm*map\tMAFIn" + end;
}

double Number(double cell) { return std::isnan(cell) ? 0 : cell; }

/// One sample into its bin; its line of the working.
std::string Take_Sample(Log_Array& log, int row, int map_slot, int maf_slot, Maf_Table& table) {
  const double rpm = Number(log(row, Slot_Of(Log_Signal::RPM2)));
  const double pressure = Number(log(row, map_slot));
  const double maf = Number(log(row, maf_slot));
  const double product = std::floor(rpm * pressure * 32) / 1000;
  log(row, product_slot) = product;
  auto& bin = table.at(At(Maf_Bin(product, table)));
  bin.at(samples) += 1;
  bin.at(sum) += maf;
  return "SampleNo: " + std::to_string(row) + "\t" + Number_Text(rpm) + "\t" + Number_Text(pressure) + "\t" +
         Number_Text(product) + "\t" + Number_Text(maf) + Crlf();
}

/// The first row has no edge and the last neither edge nor value.
std::string Row_Text(int row, const Maf_Table& table) {
  const auto& cells = table.at(At(row));
  const std::string shown_value = row > edges ? "" : Number_Text(cells.at(value));
  const std::string shown_edge = row < 1 || row > edges ? "" : Number_Text(cells.at(edge));
  std::string text = "Row" + std::to_string(row) + "\t" + shown_value + "\t" + shown_edge + "\t" +
                     Number_Text(cells.at(sum)) + "\t" + Number_Text(cells.at(samples)) + "\t";
  if (cells.at(samples) == 0) return text + Crlf();
  const double volts = Round_To(cells.at(sum) / cells.at(samples) / 256 * 5, 2);
  return text + Number_Text(volts) + "V" + Crlf();
}

}  // namespace

int Maf_Bin(double product, const Maf_Table& table) {
  for (int j = 1; j <= edges; ++j) {
    if (product < table.at(At(j)).at(edge)) return j - 1;
  }
  return rows - 1;
}

std::string Maf_Calculation(Log_Array& log, int first, int last, int map_input, int maf_input,
                            Maf_Table& table) {
  for (int row = 0; row < rows; ++row) table.at(At(row)).at(sum) = table.at(At(row)).at(samples) = 0;
  std::string text = Heading(map_input, maf_input);
  for (int row = first; row <= last; ++row) {
    text += Take_Sample(log, row, first_raw_copy_slot + map_input, first_raw_copy_slot + maf_input, table);
  }
  text += "Value\tBoarder\tSum\tSamples\tAvarage MAF" + Crlf();
  for (int row = 0; row < rows; ++row) text += Row_Text(row, table);
  return text;
}

void cmd_MAF_Sim_Click(int map_input, int maf_input) {
  maf_text.visible = !maf_text.visible;
  maf_text.Text4 =
      Maf_Calculation(LogArray, Log_Chart_First, Log_Chart_Last, map_input, maf_input, MAF_Sim_Tab);
}

}  // namespace kx
