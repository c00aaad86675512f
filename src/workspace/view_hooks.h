#pragma once

#include <functional>
#include <string>

#include "workspace/tables.h"

namespace kx {

struct Choice_Row;
struct Scalar_Row;

/// Tabs of SSTab_Communication.
namespace communication_tab {
constexpr int card = 0;
constexpr int box = 1;
}  // namespace communication_tab

/// What the main form shows besides the values of the tables, as the tune, the selected preset and the tab on
/// show have it. The form asks for it whenever it shows itself, and decides nothing.
struct View_State {
  bool tblctrl = false;                ///< the table panel
  bool analog1_tab = true;             ///< "Analog1 out": MAF simulation off
  bool maf_output_tab = false;         ///< "MAF-Sim": MAF simulation on
  bool maf_limit_tab = false;          ///< "MAF-Sim limit": its limit is active
  bool An2out_frame = true;            ///< else Label_Analog2_notification shows
  bool Frame_IG_RPM_MAFSIM = false;    ///< in place of Frame_Ignition_RPM_normal
  std::string Label41;                 ///< help text of the ignition load tab
  std::string Label_IG_RPM;            ///< help text of the ignition RPM tab
  std::string Label_AN1;               ///< help text of the Analog 1 tab
  std::string Label_AN2_limitexplain;  ///< shows in the modes that limit only
  std::string Frame_PWMRPM_Notification;
  std::string txt_PWMRPM_Notification;
};
[[nodiscard]] View_State View_Of_Tune();

/// Tab of SSTab_Communication that the configuration asks for.
[[nodiscard]] int Communication_Tab();

/// Index in interface_options of the card frame on show. Written by Update_All; an interface without a frame
/// leaves the one on show.
extern int card_frame;

/// How the core reaches the forms. Set by the main form; unset hooks do nothing.
struct View_Hooks {
  std::function<void()> show_values;      ///< grids, charts and controls after Update_All
  std::function<void()> show_layout;      ///< View_Of_Tune, axes, sizes after Update_Tabs, Show_Right_Tabs
  std::function<void(Table)> show_table;  ///< one grid and its chart after a key or a moved cursor
  std::function<void(const Scalar_Row&)> show_scalar;  ///< one slider and its texts, from the tune
  std::function<void(const Choice_Row&)> show_choice;  ///< one list, check box or group of options, likewise
  std::function<void()> show_differences;              ///< values and all marks, after another comparison
  std::function<void()> show_temp_chart;               ///< Coolant_Chart and the labels of its limits
};
extern View_Hooks view_hooks;

/// Shows one grid and its chart again.
void Show_Table(Table table);

void Reset_View_State();

}  // namespace kx
