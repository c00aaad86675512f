#include "logging/log_calculations.h"

#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <vector>

namespace kx {
namespace {

using namespace testing;

const double empty_cell = std::nan("");

MATCHER_P(Cell, expected, "") {
  return std::isnan(expected) ? std::isnan(arg) : std::abs(arg - expected) < 1e-9;
}

std::vector<Matcher<double>> Cells(std::initializer_list<double> values) {
  std::vector<Matcher<double>> cells;
  for (const double value : values) cells.push_back(Cell(value));
  return cells;
}

/// A log of as many rows as @p rpm has, all else empty.
struct Small_Log {
  explicit Small_Log(std::vector<double> rpm) : cells{} {
    for (auto& column : cells) column.assign(rpm.size(), empty_cell);
    cells[0] = std::move(rpm);
  }
  [[nodiscard]] Calculation_Columns Columns() {
    return {cells[0], cells[1], cells[2], cells[3],  cells[4],  cells[5],  cells[6],
            cells[7], cells[8], cells[9], cells[10], cells[11], cells[12], cells[13]};
  }
  std::vector<double>& rpm2 = cells[1];
  std::vector<double>& in_fuel = cells[2];
  std::vector<double>& tot_fuel = cells[3];
  std::vector<double>& power = cells[4];
  std::vector<double>& torque = cells[5];
  std::vector<double>& speed = cells[6];
  std::vector<double>& acceleration = cells[7];
  std::vector<double>& in_duty = cells[8];
  std::vector<double>& tot_duty = cells[9];
  std::vector<double>& boost = cells[10];
  std::array<std::vector<double>, 14> cells;
};

/// 1000 kg with Cw 0.3 and 2 m2, 37 km/h at 1000 rpm.
Calculation_Inputs Sample_Car() {
  Calculation_Inputs inputs;
  inputs.gearing = 37;
  inputs.drag = 0.5 * 0.3 * 2 * 1.225;
  inputs.in_gain = 1;
  inputs.tot_gain = 1;
  return inputs;
}

TEST(Log_Calculations, Stairs_Of_Rpm_Become_Slopes) {
  const std::vector<std::array<std::vector<double>, 2>> cases = {
      {{{1000, 1000, 1000, 1100, 1100, 1200, 1200}, {1000, 1033.33, 1066.67, 1100, 1150, 1200, 1200}}},
      {{{900, 900, 900}, {900, 900, 900}}},
      {{{800, 810.125, 790}, {800, 810.12, 790}}},
      {{{801.006}, {801.006}}},
      {{{empty_cell, empty_cell, 500}, {0, 250, 500}}},
  };
  for (const auto& [sent, expected] : cases) {
    std::vector<double> rpm = sent;
    std::vector<double> rpm2(rpm.size(), empty_cell);
    RPM2_Filter1(rpm, rpm2);
    EXPECT_THAT(rpm2, Pointwise(DoubleNear(1e-9), expected));
    EXPECT_EQ(rpm, rpm2);
  }
}

TEST(Log_Calculations, Moving_Averages_Round_And_Fill_Their_Ends) {
  const std::vector<double> source = {1, 2, 4, 8, 16, 32, 64};
  struct Case {
    void (*filter)(int, Log_Column, Log_Column);
    int n;
    std::vector<double> expected;
  };
  const std::vector<double> untouched(7, -1);
  const std::vector<Case> cases = {
      {RPM2_Filter3, 0, source},
      {RPM2_Filter3, 1, {2.33, 2.33, 4.67, 9.33, 18.67, 37.33, 37.33}},
      {RPM2_Filter3, 2, {6.2, 6.2, 6.2, 12.4, 24.8, 24.8, 24.8}},
      {RPM2_Filter3, 3, untouched},  // seven rows want seven, and that is one too few
      {RPM2_Filter3, -1, untouched},
      {RPM2_Filter4, 1, {1.5, 1.5, 3, 6, 12, 24, 24}},
      {RPM2_Filter4, 3, {3.75, 3.75, 3.75, 3.75, 3.75, 3.75, 3.75}},
      {RPM2_Filter4, 6, untouched},
  };
  for (const Case& c : cases) {
    std::vector<double> from = source;
    std::vector<double> target(7, -1);
    c.filter(c.n, from, target);
    EXPECT_THAT(target, Pointwise(DoubleNear(1e-9), c.expected)) << c.n;
  }
  std::vector<double> in_place = source;
  RPM2_Filter3(1, in_place, in_place);
  EXPECT_THAT(in_place, Pointwise(DoubleNear(1e-9), cases[1].expected));
  std::vector<double> ties = {0.01, 0.02, 0.04, 0.05};  // averages 0.015, 0.03 and 0.045: ties go to even
  RPM2_Filter4(1, ties, ties);
  EXPECT_THAT(ties, Pointwise(DoubleNear(1e-9), std::vector{0.02, 0.02, 0.03, 0.03}));
}

/// 3000 to 3020 rpm at 37 km/h a thousand: 30.8333 to 31.0389 m/s in 0.05 s.
TEST(Log_Calculations, A_Pull_Worked_Out_By_Hand) {
  Small_Log log({3000, 3020, 3020.01});
  Calculate_Columns(log.Columns(), Sample_Car());
  EXPECT_THAT(log.power, ElementsAreArray(Cells({0, 187.4, 187.4})));
  EXPECT_THAT(log.torque[1], Cell(436.99));
  EXPECT_THAT(log.acceleration, ElementsAreArray(Cells({4.11, 0, 0})));
  EXPECT_THAT(log.speed, ElementsAreArray(Cells({111, 111.74, 111.74})));
}

TEST(Log_Calculations, Units_Of_Torque_And_Speed) {
  Calculation_Inputs inputs = Sample_Car();
  inputs.min_hp = inputs.max_hp = 200;
  for (const auto& [divisor, torque] : {std::pair{1.0, 281.69}, {1.35582, 207.76}}) {
    Small_Log log({5000, 5000, 5000});
    inputs.torque_divisor = divisor;
    Calculate_Columns(log.Columns(), inputs);
    EXPECT_THAT(log.torque[1], Cell(torque));
  }
  inputs.speed_divisor = 1;  // 37 m/s at 1000 rpm: from 13514 rpm on beyond all cars
  Small_Log log({1000, 1010, 14000});
  Calculate_Columns(log.Columns(), inputs);
  EXPECT_THAT(log.speed, ElementsAreArray(Cells({37, 37.37, 0})));
  EXPECT_THAT(log.acceleration[0], Cell(7.4));
}

TEST(Log_Calculations, Power_Keeps_Its_Limits_As_They_Stand) {
  Calculation_Inputs inputs = Sample_Car();
  inputs.min_hp = 20.125;
  inputs.max_hp = 300.55;
  Small_Log log({3000, 2900, 2900, 3100, 3100.5, 3100.5});
  Calculate_Columns(log.Columns(), inputs);
  EXPECT_THAT(log.power[1], Cell(20.12));   // the smoothing rounds to 2 decimals,
                                            // its window being one row
  EXPECT_THAT(log.power[2], Cell(300.55));  // 2900, 3000 without the stair, 3100
  inputs.drag = 0;
  inputs.min_hp = 20;
  Small_Log flat({2500, 2500, 2500});
  Calculate_Columns(flat.Columns(), inputs);
  EXPECT_THAT(flat.power, ElementsAreArray(Cells({0, 20, 20})));
}

TEST(Log_Calculations, Smoothing_Reaches_Both_Rpm_And_Power) {
  Calculation_Inputs inputs = Sample_Car();
  inputs.rpm_smoothing = 1;
  inputs.power_smoothing = 1;
  inputs.drag = 0;
  Small_Log log({3000, 3003, 3012, 3009, 3030});
  Calculate_Columns(log.Columns(), inputs);
  EXPECT_EQ(log.cells[0], log.rpm2);
  EXPECT_THAT(log.rpm2, ElementsAreArray(Cells({3005, 3005, 3008, 3017, 3017})));
  // 3005 to 3008 and on to 3017 give 25.9 and 77.8 hp before the average of two rows
  EXPECT_THAT(log.power, ElementsAreArray(Cells({10, 10, 22.95, 51.85, 51.85})));
}

TEST(Log_Calculations, Duty_Cycles_Move_In_Whole_Steps) {
  Small_Log log({3000, 2000, 6000, 3000});
  log.in_fuel = {5, 17.4, 20, 5};  // 0.125 is a tie and goes to 0.12; 0.29; 1.00
  log.tot_fuel = {6, empty_cell, 1, 5};
  Calculation_Inputs inputs = Sample_Car();
  inputs.tot_gain = 0.2;
  Calculate_Columns(log.Columns(), inputs);
  EXPECT_THAT(log.in_duty, ElementsAreArray(Cells({12, 28.999999999999996, 100, empty_cell})));
  EXPECT_THAT(log.tot_duty, ElementsAreArray(Cells({3, 0, 1, empty_cell})));
  Small_Log without_sensor({3000, 2000});
  without_sensor.in_fuel = {5, 5};
  inputs.in_gain.reset();
  Calculate_Columns(without_sensor.Columns(), inputs);
  EXPECT_THAT(without_sensor.in_duty, Each(IsNan()));
}

TEST(Log_Calculations, Short_And_Odd_Logs) {
  Small_Log none({});
  Calculate_Columns(none.Columns(), Sample_Car());

  Small_Log one({2000});
  Calculate_Columns(one.Columns(), Sample_Car());
  EXPECT_THAT(one.speed[0], Cell(74));
  for (const int column : {4, 5, 7, 8, 9, 13}) EXPECT_THAT(one.cells[column][0], Cell(0)) << column;

  Small_Log standing({0, 0, 0});
  standing.in_fuel = standing.tot_fuel = {3, 3, 3};
  standing.boost = {0, 0, 0};
  Calculation_Inputs inputs = Sample_Car();
  inputs.fuel_filter = true;
  Calculate_Columns(standing.Columns(), inputs);
  EXPECT_THAT(standing.torque, Each(0));
  EXPECT_THAT(standing.in_fuel, Each(3));

  Small_Log wild({1e300, -1e300, 1e300});
  wild.in_fuel = wild.tot_fuel = {1e300, 1, 1};
  Calculate_Columns(wild.Columns(), inputs);
  EXPECT_THAT(wild.torque[1], Cell(0));
  EXPECT_THAT(wild.in_duty[0], IsNan());
}

TEST(Log_Calculations, Difference_Of_Two_Inputs_Of_The_Slave) {
  Small_Log log({1000, 1000, 1000});
  log.cells[11] = {5, empty_cell, 1};
  log.cells[12] = {2, 3, 1};
  Calculate_Columns(log.Columns(), Sample_Car());
  EXPECT_THAT(log.cells[13], ElementsAreArray(Cells({3, -3, empty_cell})));
}

enum class Verdict { plain, full, total_full };

/// One row as the filter sees it, and what it must say.
struct Filter_Step {
  Fuel_Row row;
  Verdict expected;
};

void Expect_Filtered(const std::vector<Filter_Step>& steps) {
  Fuel_Filter filter{Fuel_Filter_Limits()};
  for (std::size_t i = 0; i < steps.size(); ++i) {
    const auto& [row, expected] = steps[i];
    const Filtered_Fuel result = filter.Take(row);
    const bool full = expected == Verdict::full;
    const bool total = expected != Verdict::plain;
    EXPECT_EQ(result.in_fuel, full ? std::optional(120000 / row.rpm) : std::nullopt) << i;
    EXPECT_EQ(result.tot_fuel, total ? std::optional(120000 / row.rpm) : std::nullopt) << i;
    EXPECT_EQ(result.in_duty, full ? 100 : Duty_Cycle(row.rpm, row.in_fuel)) << i;
    EXPECT_EQ(result.tot_duty, total ? 100 : Duty_Cycle(row.rpm, row.tot_fuel)) << i;
  }
}

TEST(Fuel_Filter, Each_Branch) {
  using enum Verdict;
  const Filter_Step load = {{200, 5000, 16, 16}, plain};  // teaches 0.08 ms a count
  // Before anything is learned nothing is false, and a total beyond the period is cut.
  Expect_Filtered({{{200, 2000, 1, 1}, plain}, {{50, 5000, 12, 30}, total_full}});
  // Saturated at once: 24 ms of 24.
  Expect_Filtered({{{200, 5000, 24, 10}, full}});
  Expect_Filtered({load,
                   {{200, 5000, 10, 10}, full},  // collapsed to 0.05
                   {{0, 4000, 24, 10}, full},    // stuck at the 24 ms just written
                   {{200, 5000, 10, 10}, full},
                   {{80, 5000, 4, 4}, plain},  // lift-off ends it and teaches nothing
                   {{200, 5000, 10, 10}, full}});
  // A collapse that falling boost explains is real, and the ratio follows it.
  Expect_Filtered({load,
                   {{180, 5000, 9.9, 9.9}, plain},   // 20 down, 0.055
                   {{180, 5000, 7, 7}, plain},       // 0.039, more than 0.7 of that
                   {{200, 5000, 5.1, 5.1}, full}});  // 0.026, less than 0.7 of that
  // A recovered reading ends the hold; under high load it is learned.
  Expect_Filtered({load,
                   {{200, 5000, 10, 10}, full},
                   {{200, 5000, 12, 12}, plain},  // 0.06 is no less than 0.056
                   {{200, 5000, 9, 9}, plain},    // 0.045 is no less than 0.042
                   {{200, 5000, 6, 6}, full}});   // 0.030
  // Below high load the ratio follows, too, but not at no boost at all.
  Expect_Filtered({load,
                   {{100, 2000, 2, 2}, plain},  // 0.02
                   {{0, 2000, 2, 2}, plain},
                   {{200, 5000, 5.1, 5.1}, plain}});
}

}  // namespace
}  // namespace kx
