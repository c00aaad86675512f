#include <algorithm>
#include <array>
#include <initializer_list>

#include "settings/text_encoding.h"
#include "workspace/setting_summary.h"
#include "workspace/tables.h"

namespace kx {
namespace {

struct Titled_Table {
  const char* title;
  Table table;
};

constexpr std::array tables_below{Titled_Table{"Ignition load table:", Table::ignition_load},
                                  Titled_Table{"Ignition rpm table:", Table::ignition_rpm},
                                  Titled_Table{"Fuel load table:", Table::fuel_load},
                                  Titled_Table{"Fuel rpm table:", Table::fuel_rpm},
                                  Titled_Table{"Boost load table:", Table::pwm_load},
                                  Titled_Table{"Boost rpm table:", Table::pwm_rpm},
                                  Titled_Table{"Analog1 out table:", Table::analog1},
                                  Titled_Table{"Analog2 out table:", Table::analog2}};

std::string Title_Line() { return "--------Tables--------" + Crlf(); }

/// Cells of one grid row, each followed by TAB; of a row beyond the grid's end only the TABs, so that the
/// grids to its right keep their columns.
std::string Cells(Table table, int row) {
  const Grid& grid = Grid_Of(table);
  std::string text;
  for (int column = 0; column < grid.Columns(); ++column) {
    if (row < grid.Rows()) text += grid.Text(row, column);
    text += '\t';
  }
  return text;
}

std::string Side_By_Side(const std::string& titles, std::initializer_list<Table> tables) {
  std::string text = titles + Crlf();
  int rows = 0;
  for (const Table table : tables) rows = std::max(rows, Grid_Of(table).Rows());
  for (int row = 0; row < rows; ++row) {
    for (const Table table : tables) text += Cells(table, row);
    text += Crlf();
  }
  return text;
}

}  // namespace

std::string Show_Tabels_Alt1() {
  std::string text = Title_Line();
  for (const Titled_Table& entry : tables_below) text += Side_By_Side(entry.title, {entry.table});
  return text;
}

std::string Show_Tabels_Alt2() {
  return Title_Line() +
         Side_By_Side("Ignition load table\tFuel load table\t\tBoost load table",
                      {Table::ignition_load, Table::fuel_load, Table::pwm_load}) +
         Side_By_Side("Fuel rpm table\tIgnition rpm table\t\tBoost rpm table",
                      {Table::fuel_rpm, Table::ignition_rpm, Table::pwm_rpm}) +
         Side_By_Side("Analog1 out table:\tAnalog2 out table:", {Table::analog1, Table::analog2});
}

}  // namespace kx
