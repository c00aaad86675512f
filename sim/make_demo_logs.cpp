// Makes the demo logs in data/ anew: make_demo_logs DATA_FOLDER. Equal on every machine.
#include <algorithm>
#include <iostream>
#include <string>
#include <vector>

#include "logging/dataset_section.h"
#include "logging/log_files.h"
#include "logging/log_reader.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "settings/image.h"
#include "settings/numbers.h"
#include "sim/drive.h"
#include "sim/image_file.h"

namespace {

using kx::sim::Drive_Row;

constexpr int rows_a_second = 20;

/// One log: a stretch of the drive, the gear that its power is right for, and what the user reads about it.
struct Demo {
  const char* name;
  int first_second;
  int last_second;
  int gear;
  bool interrupted;
  const char* story;
};

constexpr Demo demos[] = {
    {"demo_pull.kxl", 47, 60, 4, false, "One pull in fourth gear, from 2600 to 6400 rpm."},
    {"demo_drive.kxl", 0, 72, 3, false,
     "Idle, pulls through the gears, lift-off and braking, seen in third gear."},
    {"demo_interrupted.kxl", 28, 64, 3, true, "A late start and a cable that came loose for three seconds."}};

std::vector<Drive_Row> Rows_Of(const Demo& demo, const kx::sim::Car& car) {
  kx::sim::Drive drive(1, car);
  std::vector<Drive_Row> rows;
  for (int i = 0; i < demo.last_second * rows_a_second; ++i) {
    Drive_Row row = drive.Next();
    if (i >= demo.first_second * rows_a_second) rows.push_back(std::move(row));
  }
  return rows;
}

/// As the workbench writes a log that it has received.
std::string Data_Section(const Demo& demo, const std::vector<Drive_Row>& rows) {
  constexpr std::size_t loose = 200;
  constexpr std::size_t back = 260;
  std::string text = "[log_data]\r\n";
  text += demo.interrupted ? "a 'Delayed start error occured\r\n" : "a\r\n";
  for (std::size_t i = 0; i < rows.size(); ++i) {
    if (demo.interrupted && i > loose && i < back) continue;
    std::string row = rows[i].Text;
    if (demo.interrupted && i == loose) row.insert(row.size() - 2, " 'Interuption of log");
    text += row;
  }
  return text + "[end log_data]\r\n";
}

/// Highest power of a pull in the chosen gear, as it truly was.
double True_Peak(const Demo& demo, const std::vector<Drive_Row>& rows) {
  double peak = 0;
  for (const Drive_Row& row : rows) {
    if (row.Gear == demo.gear && row.Pull) peak = std::max(peak, row.Power);
  }
  return peak;
}

void Set_Car(const kx::sim::Car& car, int gear) {
  kx::Log_Settings& settings = kx::log_settings;
  for (int i = 1; i <= kx::gear_count; ++i) {
    settings.txt_Gearing.at(static_cast<std::size_t>(i)) =
        kx::Number_Text(car.Gears.at(static_cast<std::size_t>(i - 1)));
  }
  settings.Gear_option = gear;
  settings.txt_Weight = kx::Number_Text(car.Mass);
  settings.txt_AirResistance = kx::Number_Text(car.Cw);
  settings.txt_FrontalArea = kx::Format(car.Area, "0.0");
  settings.txt_AirDensity = kx::Number_Text(car.Air);
}

/// Pressure, lambda and throttle through their sensors; rpm and power on show.
void Set_Signals() {
  auto& rows = kx::log_settings.rows;
  const auto choose = [&](std::size_t row, const char* name, int sensor, bool second_scale) {
    rows.at(row).custom_name = name;
    rows.at(row).sensor = sensor;
    rows.at(row).view = true;
    rows.at(row).secondary = second_scale;
  };
  constexpr int ignition = 1;   // numbers in the built-in list
  constexpr int voltage = 3;    // "Analog_0-5V"
  constexpr int raw = 5;        // "AD_0-255"
  constexpr int pressure = 12;  // "MPX 2.5bar"
  constexpr int throttle = 15;  // "Smart_throttle"
  constexpr int lambda = 16;    // "WB_Lambda"
  choose(1, "Boost", pressure, true);
  choose(2, "Lambda", lambda, true);
  choose(3, "Throttle", throttle, false);
  rows.at(3).view = false;
  rows.at(4).sensor = voltage;
  rows.at(5).sensor = ignition;
  rows.at(26).sensor = raw;
  rows.at(0).view = true;
  rows.at(21).view = true;
  rows.at(22).view = true;
}

bool Make(const Demo& demo, const std::string& folder) {
  const kx::sim::Car car;
  const std::vector<Drive_Row> rows = Rows_Of(demo, car);
  kx::Reset_Log_State();
  kx::Load_All_Default_Log_Settings();
  Set_Car(car, demo.gear);
  Set_Signals();
  kx::log_settings.txt_Log_Date = "2026-05-17";
  kx::log_settings.txt_Log_Time = "10:00:00";
  kx::log_settings.txt_Log_Free_Text = std::string(demo.story) + " The simulated car reached " +
                                       kx::Format(True_Peak(demo, rows), "0.0") + " hp at its wheels.";
  kx::Update_Log_Dataset();
  kx::Log_Data_Text = Data_Section(demo, rows);
  kx::Show_Whole_Log();
  kx::KX_Log_Data_Read();
  kx::Show_Whole_Log();
  return kx::Save_File(folder + "/" + demo.name);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) return (std::cerr << "usage: make_demo_logs DATA_FOLDER\n"), 1;
  const std::string folder = arguments[1];
  const kx::sim::Loaded_Image tune = kx::sim::Read_Image(folder + "/demo.kxs");
  if (!tune.Error.empty()) return (std::cerr << tune.Error << "\n"), 1;
  for (int i = 0; i < kx::Byte_Image::size; ++i) kx::CardByte[i] = tune.Bytes.at(static_cast<std::size_t>(i));
  const bool made = std::ranges::all_of(demos, [&](const Demo& demo) { return Make(demo, folder); });
  if (!made) return (std::cerr << "a demo log could not be written\n"), 1;
  return 0;
}
