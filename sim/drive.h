#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <random>
#include <string>

namespace kx::sim {

/// Seconds between two rows of the log stream.
inline constexpr double Row_Seconds = 0.05;

/// The car around the box.
struct Car {
  double Mass = 1250;                                                 ///< kg
  double Cw = 0.31;                                                   ///< air resistance
  double Area = 2.0;                                                  ///< frontal area, m2
  double Air = 1.225;                                                 ///< air density, kg/m3
  std::array<double, 6> Gears = {8.4, 14.6, 21.2, 28.7, 36.5, 44.0};  ///< km/h at 1000 rpm, first gear first
};

/// One row of the box, and what was true in the 0.05 s before it.
struct Drive_Row {
  std::string Text;   ///< as sent, a blank and CR LF at its end
  double Rpm = 0;     ///< of the engine at the row
  double Power = 0;   ///< mean power at the wheels, hp of 736 W; braking and coasting below 0
  double Speed = 0;   ///< of the car at the row, m/s
  int Gear = 0;       ///< 1 to 6; 0 when the clutch was open or slipped in that time
  bool Pull = false;  ///< full throttle all that time
};

/// A drive without end: idle, pulls through the gears, lift-off, braking, idle again. A turbo engine of some
/// 235 hp moves the car; what it does is known, so a log of it can be held against the truth. Equal seeds
/// give equal drives on every machine.
class Drive {
 public:
  explicit Drive(std::uint32_t seed = 1, const Car& car = {});

  /// The next row, 0.05 s after the last.
  [[nodiscard]] Drive_Row Next();

  [[nodiscard]] const Car& The_Car() const { return car_; }

 private:
  struct Sample;
  void Step();
  void Follow_Script();
  void Turn_Engine();
  void Spool();
  [[nodiscard]] double Wheel_Force() const;
  [[nodiscard]] double Rpm_Of_Wheels() const;
  [[nodiscard]] double Measured_Rpm();
  [[nodiscard]] std::string Row_Text();
  [[nodiscard]] int Noisy(double raw);

  Car car_;
  std::mt19937 random_;
  std::size_t segment_ = 0;
  double in_segment_ = 0;  // s
  double speed_ = 0;       // m/s
  double rpm_ = 0;
  double boost_ = 0;      // bar above the air outside
  double throttle_ = 0;   // 0..1
  double measured_ = 0;   // rpm of the last whole turn
  double turned_ = 0;     // turns since then
  double work_ = 0;       // J at the wheels since the last row
  bool slipped_ = false;  // clutch open or slipping since the last row
  bool lifted_ = false;   // off full throttle since the last row
  long long rows_ = 0;
};

}  // namespace kx::sim
