#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace kx {

enum class Chart_Id {
  IgMapChart,
  IgRPMChart,
  FuelMapChart,
  FuelRpmChart,
  PwmMapChart,
  PwmRpmChart,
  an1_out_chart,
  an2_out_limchart,
  an2_out_chart,
  MAFSim_chart,
  MAFSim_limit_chart
};

inline constexpr std::array<std::string_view, 11> chart_names{
    "IgMapChart",    "IgRPMChart",       "FuelMapChart",  "FuelRpmChart", "PwmMapChart",       "PwmRpmChart",
    "an1_out_chart", "an2_out_limchart", "an2_out_chart", "MAFSim_chart", "MAFSim_limit_chart"};

/// One line of a chart, a point an entry.
struct Chart_Series {
  std::string name;  ///< empty for the table's own values
  std::vector<double> values;
};

/// What a chart beside a grid shows, apart from any widget. The first series is the table.
struct Chart {
  std::vector<std::string> labels;  ///< from the grid's axis column, a label a point
  std::vector<Chart_Series> series;
  Chart_Series reference;  ///< the table of the tune that it is compared with; no values where none differs
  std::string axis_title;
  std::string value_title;
  int current = 1;  ///< entry that the grid's cursor is on, 1 up
};

[[nodiscard]] Chart& Chart_Of(Chart_Id id);

}  // namespace kx
