#pragma once

#include <string>
#include <string_view>

/// The reception of a live log as a state machine: chunks and alert ticks in, log text out. It knows no port,
/// no timer and no window.
namespace kx {

/// The whole state. Text is the box's own, one character a byte.
struct Log_Reception {
  bool Log_Reception_On = false;       ///< receive events count
  bool Log_First_Data_Seen = false;    ///< the stream has begun
  bool Log_Data_Seen = false;          ///< something was taken since the last alert tick
  bool Log_Stream_Broken = false;      ///< an interruption is in progress; chunks are dropped
  bool Log_Data_While_Broken = false;  ///< the box sends again, its rows are cut anywhere
  bool Log_Delayed_Start = false;      ///< an alert tick passed before any data
  bool Log_Had_Interruption = false;   ///< at least one interruption

  std::string Log_Start_String = "a";  ///< what starts and resumes the stream
  std::string Log_Rx_Text;             ///< received and not yet decoded
  bool skip_half_row = false;          ///< what comes up to the next line feed belongs to no part
};

/// What became of a chunk.
struct Chunk_Outcome {
  bool first = false;   ///< the first data of the log
  bool begins = false;  ///< the stream begins, or goes on after an interruption:
                        ///< the update tick may run
  std::string backup;   ///< what the backup file gets, as it stands
};

/// Takes one chunk into the texts, @p data being the section "[log_data]" in the making. Rows of a stream
/// that begins or comes back are taken from the next row's beginning on, as far as the chunk tells; the
/// marked row of an interruption is one that no reader decodes.
Chunk_Outcome Take_Chunk(Log_Reception& reception, std::string& data, std::string_view chunk);

/// What an alert tick asks for.
enum class Alert_Action {
  blink,    ///< data comes: show it
  resend,   ///< send the start string; data may be on its way
  start,    ///< silence before any data: send the start string
  restart,  ///< the stream has broken off: send the start string
  flush,    ///< the box sends again: throw away what waits, so that the next chunk
            ///< counts
};

/// Notes that a tick has passed and says what it asks for. @p data loses its half row where the stream broke.
[[nodiscard]] Alert_Action Note_Alert_Tick(Log_Reception& reception, std::string& data);

/// @p text up to its last line feed, that included; nothing of a text without one.
[[nodiscard]] std::string_view Whole_Lines(std::string_view text);

}  // namespace kx
