#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "logging/live_row.h"
#include "logging/log_backup.h"
#include "logging/log_reception.h"
#include "logging/log_state.h"
#include "platform/event_loop.h"
#include "settings/image.h"
#include "settings/reference_tune.h"

/// The inside of the live log: one object from the opened port to the end of the log. Only the files of the
/// live log use this.
namespace kx {

/// Characters that must wait before the receive handler takes a chunk, and the longest chunk.
inline constexpr int log_receive_threshold = 130;
inline constexpr int log_chunk_length = 400;
inline constexpr int log_chunk_length_recovered = 200;

/// Waiting characters at an update tick from which on the computer has fallen behind.
inline constexpr int log_overload_limit = 1200;

/// Decoded rows after which a log goes on in the next file; further lines than that are kept out of a file.
inline constexpr int log_split_rows = 5900;

enum class Shown_Alert { none, logging, no_connection };

/// The tune in use while the box's own settings go into a log; kept in memory and in tmp_kxs_file.kxs.
class Kept_Tune {
 public:
  /// Keeps the tune. A file that cannot be written does not stop the log.
  void Keep();

  /// Notes the tune that is on show while the log runs: what the user changes begins from it.
  void Note_Shown() { shown_ = CardByte; }

  /// Brings the tune back and refreshes the main form; nothing unless it was kept. What the user has changed
  /// meanwhile is one undo away and among the earlier tunes, and the status line says so.
  void Bring_Back();

 private:
  Byte_Image image_;
  Byte_Image shown_;
  std::optional<Reference_Tune> opened_;
  std::string name_;  // of the tune's file: a read that fails takes it away
  std::string source_;
  bool kept_ = false;
};

/// One live log. Made when the port is open, gone when the log has ended; a handler that runs when that
/// happens holds it until it returns.
class Live_Log {
 public:
  explicit Live_Log(Kept_Tune tune) : tune_(std::move(tune)) {}

  /// From the cleared log to the start string.
  void Begin();

  /// One receive event of the port.
  void Receive();

  /// Characters have come that no chunk may have taken yet: looks for the newest row among them.
  void Note_Arrival();

  /// timer_LogAlert, 750 ms.
  void Alert_Tick();

  /// Timer1, at the user's interval.
  void Update_Tick();

  /// Stops the stream and gives the port back. The first half of the one way out.
  void Leave_Line();

  /// The second half: backup, decoding, saving, the tune and the report. Not while Splitting().
  void Finish();

  /// True while a part is being saved, which may ask the user. A log that is ended meanwhile is finished
  /// behind that.
  [[nodiscard]] bool Splitting() const { return splitting_; }

  /// Decodes the rows on show anew: the settings give other sensors to the slots.
  void Decode_Again();

  [[nodiscard]] const std::optional<Live_Row>& Newest() const { return newest_; }
  bool follow = false;  ///< the table on show follows the engine

  [[nodiscard]] Shown_Alert Alert() const { return alert_; }
  [[nodiscard]] bool Alert_Inverted() const { return inverted_; }

 private:
  void Set_Alert(Shown_Alert alert);
  void Set_Newest(std::optional<Live_Row> row);
  void Touch_Port(Alert_Action action) const;
  void Update_Chart_Or_Time();
  void Update_Live_Chart();
  void Count_File_Time();
  void Split_If_Long();
  void Fast_Save_Long_Log_File();
  [[nodiscard]] Chunk_Outcome Take_Waiting_Chunk();
  void Split();
  void Take_What_Waits();
  [[nodiscard]] std::string Input_At_Split() const;
  [[nodiscard]] bool Save_Part(std::string& whole);
  /// At the end of what a part has been made of: no row, half a row, or one of which more has come meanwhile.
  enum class Row_In_Progress { none, cut, goes_on };
  void Begin_Next_Part(const std::string& behind, const std::string& came, Row_In_Progress row);
  void Tell_Lost_Once();
  void Tell_Failed_Once(const std::string& what);
  void Report() const;

  Log_Reception reception_;
  std::string* stream_ = &Log_Data_Text;  // where chunks go: another text while a part is being saved
  Log_Backup backup_;
  Kept_Tune tune_;
  std::string directory_;           // of all parts, as it was at the start
  std::optional<Live_Row> newest_;  // nothing while the box is silent
  Shown_Alert alert_ = Shown_Alert::none;
  bool inverted_ = false;
  bool Log_OnComm_Busy = false;
  bool Log_Stopped_By_Overload = false;
  double Log_Elapsed = 0;       // s counted in log-to-file-only mode since the file began
  std::size_t shown_from_ = 0;  // position in Log_Data_Text behind which the rows on show begin
  bool may_split_ = true;       // cleared by a part that could not be saved: all that follows stays with it
  bool splitting_ = false;
  bool left_line_ = false;
  bool lost_told_ = false;
  bool failure_told_ = false;
};

/// Sets a flag for as long as it lives, whatever happens meanwhile.
class Flag_Guard {
 public:
  explicit Flag_Guard(bool& flag) : flag_(flag) { flag_ = true; }
  ~Flag_Guard() { flag_ = false; }
  Flag_Guard(const Flag_Guard&) = delete;
  Flag_Guard& operator=(const Flag_Guard&) = delete;

 private:
  bool& flag_;
};

/// The timers of the live log, made at the first start.
struct Live_Timers {
  std::unique_ptr<platform::Interval_Timer> Timer1;
  std::unique_ptr<platform::Interval_Timer> timer_LogAlert;
};
extern Live_Timers live_timers;

/// Tells the windows.
void Show_Live_Log();
void Show_Live_Place();

/// Date and time of a log, or part, that begins now, into the settings.
void Note_Log_Begin();

/// "[log_data]" cut behind its last line feed, closed by "[end log_data]".
void Trim_Log_Data();

/// Decodes the whole rows of @p rx into LogArray from row Log_Row_Count + 1 on; half a row stays. True when
/// the log has become too long for one file, with what follows the row in question not decoded.
[[nodiscard]] bool KX_Log_Row_Data_Read(std::string& rx);

}  // namespace kx
