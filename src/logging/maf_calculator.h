#pragma once

#include <string>

#include "logging/log_array.h"
#include "settings/image.h"

/// Averages the logged signal of an air-mass meter for each row of the MAF-simulation table.
namespace kx {

/// Row of the table that a sample belongs to, 0 to 17; @p product is rpm times raw pressure times 32 by 1000.
/// Row 0 has all below the first edge, row 17 all from the last edge on, row 16 never a sample.
[[nodiscard]] int Maf_Bin(double product, const Maf_Table& table);

/// The working as text, lines ended by CR LF, of rows @p first to @p last of @p log. @p map_input and @p
/// maf_input are the list indexes of the box settings, 0 to 2: analog inputs as raw in slots 31 to 33. Writes
/// the products into slot 35 of @p log and sums and counts into columns 2 and 3 of @p table. A row outside
/// the log throws Failure.
[[nodiscard]] std::string Maf_Calculation(Log_Array& log, int first, int last, int map_input, int maf_input,
                                          Maf_Table& table);

/// What Text4 shows; the button shows and hides it.
struct Maf_Text {
  std::string Text4;
  bool visible = false;
};
extern Maf_Text maf_text;

/// The button cmd_MAF_Sim and its menu: shows or hides the text and works it out anew for the stretch that
/// the chart shows. The inputs as above.
void cmd_MAF_Sim_Click(int map_input, int maf_input);

}  // namespace kx
