#include "sim/drive.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <iterator>
#include <numbers>

namespace kx::sim {
namespace {

constexpr double Step_Seconds = 0.001;
constexpr int Steps_A_Row = 50;
constexpr double Watts_Per_Hp = 736;
constexpr double Idle_Rpm = 850;
constexpr double Launch_Rpm = 1800;  // the clutch slips below
constexpr double Spool_Seconds = 0.35;
constexpr double Lambda_Volt_Step = 8;  // raw counts between two points of the probe's curve

/// One stretch of the drive. It ends when the engine has come to Until, or after Seconds.
struct Segment {
  int Gear;         // 0: clutch open
  double Throttle;  // 0..1
  double Brake;     // m/s^2
  double Until;     // rpm; reached from below with the throttle open, else from above
  double Seconds;
};

constexpr std::array Script = {
    Segment{0, 0, 0, 0, 2.0},   Segment{1, 1, 0, 6200, 6},   Segment{0, 0, 0, 0, 0.25},
    Segment{2, 1, 0, 6300, 8},  Segment{0, 0, 0, 0, 0.25},   Segment{3, 1, 0, 6400, 12},
    Segment{0, 0, 0, 0, 0.25},  Segment{4, 1, 0, 6400, 14},  Segment{4, 0, 0, 5200, 4},
    Segment{4, 0, 4, 2000, 9},  Segment{3, 0.25, 0, 0, 1.5}, Segment{3, 0, 0, 2500, 5},
    Segment{3, 1, 0, 6400, 9},  Segment{3, 0, 0, 4500, 4},   Segment{4, 0, 1, 2200, 8},
    Segment{4, 1, 0, 6400, 16}, Segment{4, 0, 0, 5000, 4},   Segment{4, 0, 5, 1500, 12},
    Segment{0, 0, 5, 0, 3},
};

struct Point {
  double X;
  double Y;
};

/// Straight lines between @p points, level beyond the ends.
template <std::size_t Count>
double Curve(const std::array<Point, Count>& points, double x) {
  if (x <= points.front().X) return points.front().Y;
  for (std::size_t i = 1; i < Count; ++i) {
    const Point& low = points.at(i - 1);
    const Point& high = points.at(i);
    if (x < high.X) return low.Y + (high.Y - low.Y) * (x - low.X) / (high.X - low.X);
  }
  return points.back().Y;
}

/// Torque at full throttle and full boost, Nm by rpm.
constexpr std::array<Point, 9> Full_Torque = {{{800, 100},
                                               {1500, 160},
                                               {2000, 225},
                                               {2500, 290},
                                               {3000, 330},
                                               {4500, 332},
                                               {5500, 302},
                                               {6500, 248},
                                               {7200, 190}}};

/// Boost that the charger reaches in the end, bar by rpm.
constexpr std::array<Point, 5> Full_Boost = {
    {{1200, 0.05}, {2000, 0.45}, {3000, 1.0}, {5500, 0.95}, {7000, 0.8}}};

/// Part of the torque that is there without boost.
constexpr double Torque_Without_Boost = 0.55;

double Full_Boost_At(double rpm) { return Curve(Full_Boost, rpm); }

/// Nm at the crankshaft; a closed throttle brakes.
double Engine_Torque(double rpm, double throttle, double boost) {
  const double filled = Torque_Without_Boost + (1 - Torque_Without_Boost) * boost / Full_Boost_At(rpm);
  return throttle * Curve(Full_Torque, rpm) * std::min(filled, 1.0) - (1 - throttle) * (15 + rpm / 150);
}

double Radians_A_Second(double rpm) { return rpm * 2 * std::numbers::pi / 60; }

}  // namespace

Drive::Drive(std::uint32_t seed, const Car& car) : car_(car), random_(seed), rpm_(Idle_Rpm) {
  measured_ = rpm_;
}

/// What the engine would turn without clutch, from the speed of the car.
double Drive::Rpm_Of_Wheels() const {
  const int gear = Script.at(segment_).Gear;
  if (gear == 0) return 0;
  return speed_ * 3.6 / car_.Gears.at(static_cast<std::size_t>(gear - 1)) * 1000;
}

void Drive::Follow_Script() {
  const Segment& now = Script.at(segment_);
  in_segment_ += Step_Seconds;
  const bool reached = now.Until > 0 && (now.Throttle > 0 ? rpm_ >= now.Until : rpm_ <= now.Until);
  if (in_segment_ < now.Seconds && !(reached && in_segment_ > 0.2)) return;
  segment_ = (segment_ + 1) % Script.size();
  in_segment_ = 0;
}

/// The charger lags behind; a closed throttle lets it fall.
void Drive::Spool() {
  const double wanted = throttle_ * Full_Boost_At(rpm_);
  boost_ += (wanted - boost_) * Step_Seconds / Spool_Seconds;
}

/// In gear the wheels turn the engine, or the slipping clutch holds it; else it falls to idle.
void Drive::Turn_Engine() {
  const Segment& now = Script.at(segment_);
  const double held = now.Throttle > 0 ? Launch_Rpm : Idle_Rpm;
  if (now.Gear == 0) {
    const double wobble = static_cast<double>(random_() % 41U) - 20;
    rpm_ += (Idle_Rpm + wobble - rpm_) * Step_Seconds / 0.4;
    slipped_ = true;
    return;
  }
  rpm_ = std::max(Rpm_Of_Wheels(), held);
  if (rpm_ == held) slipped_ = true;
}

/// N; what the engine's torque becomes at the road, less the brakes.
double Drive::Wheel_Force() const {
  const Segment& now = Script.at(segment_);
  const double brakes = speed_ > 0.1 ? now.Brake * car_.Mass : 0;
  if (now.Gear == 0) return -brakes;
  const double metres_a_radian =
      car_.Gears.at(static_cast<std::size_t>(now.Gear - 1)) / 3.6 / Radians_A_Second(1000);
  return Engine_Torque(rpm_, throttle_, boost_) / metres_a_radian - brakes;
}

void Drive::Step() {
  Follow_Script();
  throttle_ = Script.at(segment_).Throttle;
  if (throttle_ < 1) lifted_ = true;
  Turn_Engine();
  Spool();
  const double force = Wheel_Force();
  const double drag = 0.5 * car_.Cw * car_.Area * car_.Air * speed_ * speed_;
  const double before = speed_;
  speed_ = std::max(0.0, speed_ + (force - drag) / car_.Mass * Step_Seconds);
  work_ += (speed_ * speed_ - before * before) * car_.Mass / 2 + drag * before * Step_Seconds;
  turned_ += rpm_ / 60 * Step_Seconds;
}

/// The box counts whole turns: below 1200 rpm a row may come before the next turn and repeats the last value.
double Drive::Measured_Rpm() {
  if (turned_ >= 1) {
    measured_ = rpm_;
    turned_ = std::fmod(turned_, 1);
  }
  return measured_;
}

/// @p raw as a byte, one count up or down by chance.
int Drive::Noisy(double raw) {
  const int noise = static_cast<int>(random_() % 8U);
  const int moved = static_cast<int>(std::lround(raw)) + (noise == 0 ? 1 : 0) - (noise == 1 ? 1 : 0);
  return std::clamp(moved, 0, 255);
}

std::string Drive::Row_Text() {
  const double load = throttle_ * (Torque_Without_Boost + 0.45 * boost_);
  const double in_fuel = 1.6 + 10.5 * load;                // ms
  const double added = std::max(0.0, boost_ - 0.4) * 2.5;  // ms
  const double map_raw = (1.0 + boost_ - 0.45 * (1 - throttle_) - 0.09) / 0.0098039;
  const double lambda_raw = (throttle_ > 0.5 ? 12.2 - 1.6 * boost_ : 16.0) * Lambda_Volt_Step;
  const double throttle_raw = (4 + 6.6 * throttle_) * 8;
  const double ignition_raw = (25.4 - 4 * std::max(0.0, boost_)) / 0.2;
  const auto tenths = rows_ * 5;
  const std::array<double, 19> raw = {map_raw,
                                      lambda_raw,
                                      throttle_raw,
                                      90,
                                      ignition_raw,
                                      in_fuel / 0.204,
                                      (in_fuel + added) / 0.204,
                                      127 + added * 10,
                                      40 + load * 100,
                                      map_raw,
                                      throttle_raw,
                                      boost_ * 180,
                                      118,
                                      static_cast<double>(tenths / 100 % 60),
                                      static_cast<double>(tenths % 100),
                                      90,
                                      100,
                                      110,
                                      120};
  std::array<char, 16> text{};
  const double rpm = Measured_Rpm();
  std::snprintf(text.data(), text.size(), "%.4f", rpm / 1000);
  std::string row = rpm < 9999.95 ? text.data() : "A.0000";
  for (std::size_t i = 0; i < raw.size(); ++i) {
    const bool time_field = i == 13 || i == 14;
    std::snprintf(text.data(), text.size(), " %03d",
                  time_field ? static_cast<int>(raw.at(i)) : Noisy(raw.at(i)));
    row += text.data();
  }
  return row + " \r\n";
}

Drive_Row Drive::Next() {
  work_ = 0;
  slipped_ = lifted_ = false;
  const int gear = Script.at(segment_).Gear;
  for (int i = 0; i < Steps_A_Row; ++i) Step();
  const bool in_one_gear = gear == Script.at(segment_).Gear && !slipped_;
  if (!slipped_) rpm_ = Rpm_Of_Wheels();  // the speed has moved since the last step began
  Drive_Row row;
  row.Text = Row_Text();
  row.Rpm = rpm_;
  row.Power = work_ / (Step_Seconds * Steps_A_Row) / Watts_Per_Hp;
  row.Speed = speed_;
  row.Gear = in_one_gear ? gear : 0;
  row.Pull = row.Gear != 0 && !lifted_;
  ++rows_;
  return row;
}

}  // namespace kx::sim
