#pragma once

namespace kx {

/// Which tab of each tab control is on show, counted from 0. Written by the tab handlers of the main form.
struct Shown_Tabs {
  int sstab_Main = 0;
  int SSTab_Ignition = 0;
  int SSTab_Fuel = 0;
  int SSTab_PWM = 0;
  int SSTab_Analog = 0;
};
extern Shown_Tabs shown_tabs;

/// Tabs of sstab_Main.
namespace main_tab {
constexpr int general = 0;
constexpr int ignition = 1;
constexpr int fuel = 2;
constexpr int pwm = 3;
constexpr int analog = 4;
}  // namespace main_tab

}  // namespace kx
