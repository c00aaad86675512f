#pragma once

#include <string>

#include "settings/presets.h"

namespace kx::test {

/// Makes a preset of @p mask and @p program the only one and the selected one. Takes effect at the next
/// Update_All. By default it switches everything on, for dataset 108, and leaves the tune alone.
inline void Choose_Preset(const std::string& mask = "6C216E67", const std::string& program = "") {
  Preset_List = {{"test", mask, program, "", ""}};
  User_Preset = 0;
}

}  // namespace kx::test
