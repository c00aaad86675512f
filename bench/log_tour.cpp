#include "log_tour.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QTest>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>
#include <stdexcept>

#include "hit_map_tour.h"
#include "logging/live_log.h"
#include "logging/log_array.h"
#include "logging/log_settings.h"
#include "logging/log_signals.h"
#include "logging/log_state.h"
#include "sim/drive.h"
#include "tour_controls.h"

namespace kx::bench {
namespace {

constexpr int recorded_ms = 15000;
constexpr int demo_first_row = 940;  ///< of the drive, row 1 of the demo log
constexpr double watts_a_hp = 736;
constexpr double allowed = 0.03;  ///< share by which a computed peak may be off

struct Peaks {
  double power = 0;   ///< hp
  double torque = 0;  ///< Nm
};

/// What the simulated car truly did at full throttle in @p gear, of @p rows rows from @p first on.
Peaks True_Peaks(int first, int rows, int gear) {
  sim::Drive drive;
  for (int i = 0; i < first; ++i) (void)drive.Next();
  Peaks peaks;
  for (int i = 0; i < rows; ++i) {
    const sim::Drive_Row row = drive.Next();
    if (row.Gear != gear || !row.Pull) continue;
    peaks.power = std::max(peaks.power, row.Power);
    peaks.torque = std::max(peaks.torque, row.Power * watts_a_hp * 30 / (row.Rpm * std::numbers::pi));
  }
  return peaks;
}

/// The same as the log has it, over the rows that were at full throttle.
Peaks Logged_Peaks(int first, int gear) {
  sim::Drive drive;
  for (int i = 0; i < first; ++i) (void)drive.Next();
  Peaks peaks;
  for (int i = 1; i <= Log_Rows; ++i) {
    const sim::Drive_Row row = drive.Next();
    if (row.Gear != gear || !row.Pull) continue;
    peaks.power = std::max(peaks.power, LogArray(i, Slot_Of(Log_Signal::POWER)));
    peaks.torque = std::max(peaks.torque, LogArray(i, Slot_Of(Log_Signal::TORQUE)));
  }
  return peaks;
}

void Compare(const char* what, const char* unit, double logged, double truly) {
  std::printf("       %s %.1f %s, truly %.1f %s (%+.1f %%)\n", what, logged, unit, truly, unit,
              (logged / truly - 1) * 100);
  Require(std::abs(logged / truly - 1) <= allowed, std::string(what) + " is too far off");
}

}  // namespace

Log_Tour::Log_Tour(const QDir& out, std::function<void(const QString&)> answer_with)
    : out_(out), answer_with_(std::move(answer_with)) {}

void Log_Tour::Press(const char* button) {
  Part<QAbstractButton>("KX_Log", button)->click();
  QApplication::processEvents();
}

void Log_Tour::Choose(const char* entry) {
  Part<QAction>("KX_Log", entry)->trigger();
  QApplication::processEvents();
}

void Log_Tour::Take_Picture(QWidget& form, const char* name) const {
  QApplication::processEvents();
  Require(form.grab().save(out_.filePath(QString(name) + ".png")), std::string("no picture ") + name);
}

void Log_Tour::Open_Demo_Log() {
  Part<QAction>("BoostProgMain", "log_window")->trigger();
  Window("KX_Log")->resize(1180, 640);
  answer_with_(QDir::current().absoluteFilePath("demo_pull.kxl"));
  Choose("Log_File_Open");
  Require(Log_Rows > 200, "the demo log has " + std::to_string(Log_Rows) + " rows");
  const int gear = log_settings.Gear_option;
  const Peaks logged = Logged_Peaks(demo_first_row, gear);
  const Peaks truly = True_Peaks(demo_first_row, Log_Rows, gear);
  Compare("peak power ", "hp", logged.power, truly.power);
  Compare("peak torque", "Nm", logged.torque, truly.torque);
  Take_Picture(*Window("KX_Log"), "log_window");
  Choose("Log_Preferenses");
  Take_Picture(*Window("KX_Log_Setup"), "log_settings");
  Window("KX_Log_Setup")->close();
}

void Log_Tour::Record() {
  Press("cmd_Open_Com");
  Require(Log_Running(), "START started nothing");
  QTest::qWait(recorded_ms / 2);
  Take_Picture(*Window("KX_Log"), "log_live");
  Show_Engine_Place(out_);
  QTest::qWait(recorded_ms / 2);
  Press("cmd_Open_Com");
  Require(!Log_Running() && !Log_File_Unsaved, "the log was not ended and saved");
  Require(Log_Rows > 280, std::to_string(Log_Rows) + " rows in 15 s");
}

void Log_Tour::Show_And_Export() {
  sim::Drive drive;
  int gear = 0;
  double most = 0;
  for (int i = 0; i < Log_Rows; ++i) {
    const sim::Drive_Row row = drive.Next();
    if (row.Pull && row.Gear > 0 && row.Power > most) {
      most = row.Power;
      gear = row.Gear;
    }
  }
  Require(gear > 0, "no pull in the recorded time");
  Press(qPrintable(QString("Gear_option(%1)").arg(gear)));
  answer_with_(out_.filePath("tour.kxl"));
  Choose("Log_File_Save_As");
  Require(QFile::exists(out_.filePath("tour.kxl")), "no tour.kxl");
  answer_with_(out_.filePath("tour.csv"));
  Choose("Log_Picture_File_Save_As");
  Require(QFile(out_.filePath("tour.csv")).size() > 1000, "no tour.csv");
  answer_with_(out_.filePath("log_chart.png"));
  Choose("Log_Picture_File_Save_As");
  Press("Command9");
  Take_Picture(*Window("KX_RPM"), "rpm_graph");
  Take_Picture(*Window("KX_Log"), "log_recorded");
  Part<QAction>("KX_Log", "Log_Close")->trigger();
}

}  // namespace kx::bench
