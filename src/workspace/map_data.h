#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "workspace/grid.h"

/// The 3D map: a load table times its RPM table, which is what the engine gets. It works on the texts in the
/// grids, so it shows what they show, a cell still being typed included.
namespace kx {

/// The maps in the order of the options that choose them.
enum class Map { ignition, pwm, fuel };

inline constexpr std::array<std::string_view, 3> map_captions{"Ignition", "PWM", "Fuel"};

/// First index the RPM entry, second the load entry, both from 1; index 0 of either holds the headings.
using Map_Table = std::vector<std::vector<std::string>>;

/// Table of the map drawn last: up to 41 RPM by 33 load entries. Written by the three calculations.
extern Map_Table Map_Data;

/// Fill Map_Data from the grids of the map.
void Calculate_Ignition3dmap();
void Calculate_PWM3dmap();
void Calculate_Fuel3dmap();

/// Runs the calculation of @p map.
void Calculate_3dmap(Map map);

/// Table of any two grids: load x RPM / 100 as default number texts, headings "RPM>" and "<load". A cell
/// without a number counts as 0.
[[nodiscard]] Map_Table Map_Of(const Grid& load, const Grid& rpm);

/// Titles of chart and axes for a map, with the units that its grids show now.
struct Map_Titles {
  std::string chart;
  std::string rpm;
  std::string load;
  std::string value;
};
[[nodiscard]] Map_Titles Titles_Of(Map map);

/// A map as numbers for the surface; points row by row, all loads of the first RPM entry first.
struct Map_Points {
  std::vector<std::string> rpm;    ///< heading of each RPM entry, without the mark
  std::vector<std::string> load;   ///< of each load entry
  std::vector<double> values;      ///< rpm.size() x load.size()
  std::vector<std::string> texts;  ///< the same as texts

  [[nodiscard]] std::size_t At(std::size_t rpm_entry, std::size_t load_entry) const {
    return rpm_entry * load.size() + load_entry;
  }
};
[[nodiscard]] Map_Points Points_Of(const Map_Table& table);

/// The table as text: fields parted by TAB, a line for each RPM entry ended by CR LF, headings first.
[[nodiscard]] std::string Map_Text(const Map_Table& table);

/// Low, middle and high byte of a colour number.
[[nodiscard]] constexpr int RedFromRGB(int colour) { return colour & 0xFF; }
[[nodiscard]] constexpr int GreenFromRGB(int colour) { return colour >> 8 & 0xFF; }
[[nodiscard]] constexpr int BlueFromRGB(int colour) { return colour >> 16 & 0xFF; }

/// Colour number of the surface's data points: red.
inline constexpr int map_point_colour = 255;

/// Forgets the map drawn last.
void Reset_Map_Data();

}  // namespace kx
