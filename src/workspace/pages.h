#pragma once

#include <compare>
#include <string_view>

#include "workspace/tables.h"

/// Where on the screen something of the tune stands: the tabs of the main form with their sub-tabs, and the
/// box settings.
namespace kx {

/// Tabs of sstab_Main (main_tab) with a sub-tab; behind them the windows and what has no place at all.
struct Page {
  int tab = 0;
  int sub_tab = 0;
  bool operator==(const Page&) const = default;
  std::strong_ordering operator<=>(const Page& other) const {
    const auto by_tab = tab <=> other.tab;
    return by_tab == std::strong_ordering::equal ? sub_tab <=> other.sub_tab : by_tab;
  }
};

namespace page {
constexpr Page fuel_options{main_tab::fuel, 2};
constexpr Page air_temperature{main_tab::fuel, 3};
constexpr Page boost_control{main_tab::pwm, 2};
constexpr Page box_settings{main_tab::analog + 1, 0};  ///< KX_Config
constexpr Page none{main_tab::analog + 2, 0};          ///< shown by no control
}  // namespace page

[[nodiscard]] constexpr Page Page_Of(Table table) { return {Row_Of(table).tab, Row_Of(table).sub_tab}; }

/// Caption of a sub-tab, or the name of the window; empty for page::none.
[[nodiscard]] std::string_view Caption_Of(Page page);

/// Caption of a tab of sstab_Main.
[[nodiscard]] std::string_view Main_Caption_Of(int tab);

/// The page on which a slider, a list, a check box or a group of options stands, and its name where its label
/// alone would not tell it from others.
struct Control_Place {
  std::string_view control;
  Page page;
  std::string_view name = {};
};

/// The place of a control, by its name. Throws Failure "Subscript out of range" when there is none.
[[nodiscard]] const Control_Place& Place_Of(std::string_view control);

}  // namespace kx
