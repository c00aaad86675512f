#include "workspace/start_up.h"

#include "boxlink/link_state.h"
#include "cards/card_paths.h"
#include "logging/live_log.h"
#include "logging/log_state.h"
#include "platform/files.h"
#include "platform/seams.h"
#include "sensors/definition_file.h"
#include "sensors/load_axes.h"
#include "sensors/sensor_store.h"
#include "settings/brand.h"
#include "settings/build_profile.h"
#include "settings/byte_notes.h"
#include "settings/earlier_tunes.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/presets.h"
#include "settings/reference_tune.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "settings/text_encoding.h"
#include "settings/tune_being_edited.h"
#include "workspace/analog2.h"
#include "workspace/box_settings.h"
#include "workspace/compare.h"
#include "workspace/curve_drag.h"
#include "workspace/map_data.h"
#include "workspace/sensor_editor.h"
#include "workspace/sensor_gestures.h"
#include "workspace/setting_summary.h"
#include "workspace/summary_commands.h"
#include "workspace/table_limits.h"
#include "workspace/tables.h"
#include "workspace/update_views.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

/// A log carries the report as file text, from bracket line to bracket line.
std::string Report_For_Log() {
  Update_Readable_Setting_Window();
  std::string report = To_Windows_1252(Readable_Settings);
  while (report.ends_with('\n') || report.ends_with('\r')) report.pop_back();
  return report;
}

void Reset_State() {
  Reset_Live_Log();
  Reset_Refresh_State();
  Reset_Image_State();
  Reset_Session_State();
  Reset_Ini_State();
  Reset_Notice_State();
  Reset_Earlier_Tunes();
  Reset_Tune_Being_Edited();
  Reset_Preset_State();
  Reset_Byte_Notes_State();
  Reset_Sensor_State();
  Reset_Load_Axes_State();
  Reset_Link_State();
  Reset_Cards();
  Reset_Table_State();
  Reset_Table_Limits();
  Reset_Curve_Drag();
  Reset_View_State();
  Reset_History();
  Reset_Analog2_State();
  Reset_Box_Settings();
  Reset_Reference_State();
  Reset_Compare_State();
  Reset_Setting_Summary();
  Reset_Summary_Commands();
  Reset_Log_State();
  Reset_Map_Data();
  Reset_Sensor_Editor();
  Reset_Sensor_Drag();
}

}  // namespace

void Prepare_Start() {
  Reset_State();
  start_dir = platform::Working_Directory();
  Reset_Brand_State();
  Set_Brand(Brand);
}

void Load_Event() {
  live_log_hooks.readable_settings = Report_For_Log;
  if (const auto interface = Read_Key("Default_Interface")) Default_Interface = *interface;
  Init_MAF_Sim();
  Init_ini_file();
  Init_Default_Settings(build::start_mode);
  Refresh_Whole_Image();
  Note_Opened_Tune();
  Show_Right_Tabs();
  Start_Keeping_Tunes();
  Note_Tune_On_File();
}

void Open_Help_File() { Open_Help_Page("index.html"); }

void Open_Help_Page(const std::string& page) {
  const std::string manual = start_dir + "manual/" + page;
  std::string bytes;
  if (!platform::Read_Whole_File(manual, bytes).Ok()) return Tell("There is no manual at " + manual);
  platform::seams.desktop->Open_With_Handler(manual);
}

void Show_About() { Tell(About_Text(), platform::Icon::information, Program_Name); }

void Open_Help_Link() { platform::seams.desktop->Open_With_Handler(Download_Link); }

}  // namespace kx
