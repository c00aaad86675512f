#pragma once

#include <optional>
#include <string>

#include "logging/live_row.h"
#include "workspace/tables.h"

/// Where the engine is in the tables while a log runs.
namespace kx {

/// A place in a table.
struct Table_Place {
  double entry = 1;  ///< 1 to the number of entries, with fractions between two of them
  double value = 0;  ///< between the two entries as the table shows them, in its unit
  std::string text;  ///< the value in the format of the table's cells, and the unit; says so where the sensor
                     ///< of the values is missing
};

/// Place of one row of the box under the flags of @p image. Nothing for a table over neither load nor RPM,
/// and for a row that lacks what the table's axis counts.
[[nodiscard]] std::optional<Table_Place> Place_In(Table table, const Live_Row& row,
                                                  const Byte_Image& image = CardByte);

/// The same for the newest row of the log that runs; nothing without a log and while the box is silent.
[[nodiscard]] std::optional<Table_Place> Engine_Place(Table table);

/// "Follow": brings the cursor of @p table's grid to the entry nearest to the engine, unless a value is being
/// typed there. It leaves its entry when the engine is clearly nearer to another, so that noise half way
/// between two does not move it to and fro. True when it has moved.
bool Follow_To_Place(Table table, const Table_Place& place);

}  // namespace kx
