#include "logging/live_log.h"

#include <utility>

#include "boxlink/box_info.h"
#include "boxlink/comm_port.h"
#include "boxlink/link_texts.h"
#include "boxlink/protocol.h"
#include "boxlink/sync_engine.h"
#include "boxlink/transfer.h"
#include "logging/dataset_section.h"
#include "logging/live_log_owner.h"
#include "logging/log_array.h"
#include "logging/log_files.h"
#include "logging/log_sections.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "platform/seams.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/refresh.h"
#include "settings/session.h"

namespace kx {

Live_Log_Hooks live_log_hooks;
Live_Timers live_timers;

namespace {

constexpr int alert_tick_ms = 750;
constexpr int first_update_tick_ms = 500;
constexpr const char* line_in_use = "A transfer has the line. START works when it has ended.";
constexpr const char* open_failed = "Could not open Com port. Please check settings";

enum class Phase { idle, reading_settings, opening };

Phase phase = Phase::idle;
bool start_given_up = false;      // by the closing of the window that it was asked for in
std::shared_ptr<Live_Log> live;   // while it has the line
std::shared_ptr<Live_Log> ended;  // from leaving the line to the end of its stop sequence

/// A start is entered once; whatever ends it, the button comes back.
class Start_Guard {
 public:
  Start_Guard() {
    start_given_up = false;
    Set(Phase::opening);
  }
  ~Start_Guard() { Set(Phase::idle); }
  Start_Guard(const Start_Guard&) = delete;
  Start_Guard& operator=(const Start_Guard&) = delete;
  static void Set(Phase to) {
    phase = to;
    Show_Live_Log();
  }
};

/// What a log carries of the box's settings.
struct Section_Texts {
  std::string readable = Empty_Section(Log_Section::readable);
  std::string dataset = Empty_Section(Log_Section::dataset);
};

bool Settings_Were_Read() {
  const std::string& status = rs232_text.Text();
  return Box_Info_OK && !Closing && !start_given_up && !status.starts_with(words::read_aborted) &&
         status.find(words::communication_error) == std::string::npos &&
         status.find("Failed to open") == std::string::npos;
}

/// Reads the box into the tune, and from there into the sections. The log in memory keeps its own until the
/// new one has the line.
Section_Texts Read_Box(Kept_Tune& tune) {
  Section_Texts texts;
  Start_Guard::Set(Phase::reading_settings);
  tune.Keep();
  try {
    Read_Settings_Click();
  } catch (const Failure& failure) {
    Tell(failure.what(), platform::Icon::critical);
    Start_Guard::Set(Phase::opening);
    return texts;
  }
  if (Settings_Were_Read()) {
    const std::string held = std::exchange(Log_Dataset_Text, {});
    Update_Log_Dataset();
    texts.dataset = std::exchange(Log_Dataset_Text, held);
    if (live_log_hooks.readable_settings) texts.readable = live_log_hooks.readable_settings();
  }
  Start_Guard::Set(Phase::opening);
  return texts;
}

/// Receive events go to the log, line errors to where they always go.
void Log_OnComm() {
  const auto log = live;
  if (log && MSComm1.CommEvent() == comm_event::receive) return log->Receive();
  MSComm1_OnComm();
}

void Log_OnArrival() {
  if (const auto log = live) log->Note_Arrival();
}

bool Open_Log_Port() {
  MSComm1.Set_PortOpen(false);
  MSComm1.Set_CommPort(Com_Port_Number);
  MSComm1.Set_Settings(line_settings);
  if (!MSComm1.Set_PortOpen(true).Ok()) return false;
  End_Run_Left_Open();
  MSComm1.RThreshold = log_receive_threshold;
  MSComm1.InputLen = log_chunk_length;
  MSComm1.OnComm = Log_OnComm;
  MSComm1.OnArrival = Log_OnArrival;
  return true;
}

/// The second half of the end. Behind the split that the log was ended in, so that no text is in two hands.
void Finish_Ended_Log() {
  if (!ended || ended->Splitting()) return;
  std::exchange(ended, nullptr)->Finish();
}

void Make_Timers() {
  if (live_timers.Timer1) return;
  live_timers.Timer1 = platform::seams.event_loop->Make_Timer();
  live_timers.Timer1->Set_Interval(first_update_tick_ms);
  live_timers.Timer1->On_Tick([] {
    if (const auto log = live) log->Update_Tick();
    Finish_Ended_Log();
  });
  live_timers.timer_LogAlert = platform::seams.event_loop->Make_Timer();
  live_timers.timer_LogAlert->Set_Interval(alert_tick_ms);
  live_timers.timer_LogAlert->On_Tick([] {
    if (const auto log = live) log->Alert_Tick();
  });
}

/// The first step of the log as an operation that has the line.
void Take_Port(Kept_Tune& tune, Section_Texts texts) {
  if (!Open_Log_Port()) {
    tune.Bring_Back();
    return Tell(open_failed, platform::Icon::critical);
  }
  Make_Timers();
  Clear_Data_Arrays();
  Readable_Settings_Text = std::move(texts.readable);
  Log_Dataset_Text = std::move(texts.dataset);
  const auto log = std::make_shared<Live_Log>(std::move(tune));
  live = log;
  log->Begin();
  Guarded(Show_Live_Place);
  Fail_If_Ended();
}

void Enable_Buttons_after_log() {
  if (!live_timers.Timer1) return;
  live_timers.Timer1->Set_Enabled(false);
  live_timers.timer_LogAlert->Set_Enabled(false);
}

/// Whoever ends the operation, the log leaves the line at once and is finished behind the handler.
void Give_Line_Back(std::string_view) {
  if (!live) return;
  ended = std::exchange(live, nullptr);
  ended->Leave_Line();
  Show_Live_Log();
  Guarded(Show_Live_Place);
  platform::seams.event_loop->Post(Finish_Ended_Log);
}

void Stop_Log() {
  End_Transfer();
  Finish_Ended_Log();
}

void Start_Log() {
  const Start_Guard guard;
  if (notice_text.Text() == line_in_use) Show_Notice("");
  if (!Check_If_Unsaved_File() || start_given_up) return;
  Kept_Tune tune;
  Section_Texts texts;
  if (log_settings.check_SettingsInLogg) {
    texts = Read_Box(tune);
    tune.Note_Shown();
  }
  if (start_given_up) tune.Bring_Back();
  if (Closing || start_given_up) return;
  Run_Transfer({.end_early = Give_Line_Back, .goes_on = Log_Running, .rest = Enable_Buttons_after_log},
               [&] { Take_Port(tune, std::move(texts)); });
}

/// A start that still reads the box, or waits for an answer, ends at that wait.
void Give_Up_Start() {
  if (phase == Phase::idle || Log_Running()) return;
  start_given_up = true;
  if (phase == Phase::reading_settings) End_Transfer();
}

}  // namespace

void Show_Live_Log() {
  if (live_log_hooks.show) live_log_hooks.show();
}

void Show_Live_Place() {
  if (live_log_hooks.show_place) live_log_hooks.show_place();
}

std::optional<Live_Row> Newest_Live_Row() { return live ? live->Newest() : std::nullopt; }

void Follow_Engine_Click(bool on) {
  if (live) live->follow = on;
  Show_Live_Place();
}

bool Following_Engine() { return live && live->follow; }

bool Log_Running() { return live != nullptr; }

void cmd_Open_Com_Click() {
  if (Log_Running()) return Stop_Log();
  if (phase != Phase::idle || ended) return;
  if (Transfer_Running()) return Show_Notice(line_in_use);
  Start_Log();
}

void Clear_Data_Arrays() {
  LogArray.Clear();
  Log_Data_Text.clear();
  Log_Rows = Log_Field_Count = Log_Row_Count = Log_Chunk_No = 0;
  Log_Chart_First = 1;
  Log_Chart_Last = 0;
  cmd_Show_Current_Data_Clear();
  Show_Log(log_view_hooks.show_chart);
}

void cmd_Clear_Logg_Click() {
  if (Log_Running() || ended) return;
  if (!Check_If_Unsaved_File()) return;
  Log_File_Present = Log_File_Unsaved = false;
  Clear_Data_Arrays();
  Show_Log(log_view_hooks.show_file);
}

bool Finish_Log_For_Close() {
  Give_Up_Start();
  if (Log_Running()) Stop_Log();
  Finish_Ended_Log();
  return !ended && Check_If_Unsaved_File();
}

bool Decode_Live_Log_Again() {
  if (!live) return false;
  live->Decode_Again();
  return true;
}

Live_Log_View Shown_Live_Log() {
  Live_Log_View view;
  view.button_enabled = phase == Phase::idle && !ended;
  view.log_buttons_enabled = !live && !ended;
  if (phase == Phase::reading_settings) {
    view.button = "Reading box settings";
    view.button_font = 8;
  }
  if (!live) return view;
  view.button = "STOP";
  view.logging_alert = live->Alert() == Shown_Alert::logging;
  view.alert_inverted = live->Alert_Inverted();
  view.no_connection_alert = live->Alert() == Shown_Alert::no_connection;
  view.only_to_file = log_settings.check_LogToFileOnly;
  return view;
}

void Reset_Live_Log() {
  live.reset();
  ended.reset();
  phase = Phase::idle;
  start_given_up = false;
  live_timers = {};
  live_log_hooks = {};
  Log_Row_Count = 0;
  cmd_Show_Current_Data_Clear();
}

}  // namespace kx
