#pragma once

#include <string>

#include "settings/image.h"
#include "settings/shown_text.h"

namespace kx {

/// The typed boxes of the curve generator: gain in %, offset in V. Filled by Update_All from the tune.
extern Shown_Text an_gain;
extern Shown_Text an_offset;

/// What of the Analog 2 tab belongs to the output's present mode.
struct Analog2_Frames {
  bool an2_limit_frame = true;
  bool an2_func_set = false;
  bool an2_activation_frame = false;
  bool an2_out_grid = true;
};
[[nodiscard]] Analog2_Frames Analog2_Frames_Shown();

/// Offset of the curve generator in the tune, in counts; negative below 0 V.
[[nodiscard]] double Generator_Offset(const Byte_Image& image = CardByte);

/// What the two boxes show for a tune.
[[nodiscard]] std::string Generator_Gain_Text(const Byte_Image& image);
[[nodiscard]] std::string Generator_Offset_Text(const Byte_Image& image);

/// Fills both boxes from the tune.
void Fill_Curve_Boxes();

/// Button of the "Curve generator" frame. As a curve the table itself is computed; as a limit or trimmed
/// limit gain and offset are stored for the box's own calculation; with the boost activated output nothing
/// changes. Numbers out of range are told of and replaced; without a gain nothing is done. Throws Failure
/// "Type mismatch" when a box holds no number. Nothing of it can be undone.
void Command12_Click();

void Reset_Analog2_State();

}  // namespace kx
