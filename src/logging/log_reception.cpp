#include "logging/log_reception.h"

#include <algorithm>

namespace kx {
namespace {

constexpr std::string_view line_end = "\r\n";
constexpr std::string_view delayed_start_line = "a 'Delayed start error occured\r\n";
constexpr std::string_view interruption_mark = " 'Interuption of log\r\n";

/// What follows the last line feed: the beginning of a row. A chunk without one stays whole.
std::string_view From_Row_Start(std::string_view chunk) {
  const std::size_t feed = chunk.rfind('\n');
  return feed == std::string_view::npos ? chunk : chunk.substr(feed + 1);
}

void Cut_Half_Line(std::string& text) { text.resize(Whole_Lines(text).size()); }

Chunk_Outcome Take_First(Log_Reception& reception, std::string& data, std::string_view chunk) {
  const std::string_view rows = From_Row_Start(chunk);
  reception.Log_First_Data_Seen = true;
  reception.Log_Data_Seen = true;
  reception.Log_Rx_Text += rows;
  data += reception.Log_Delayed_Start ? std::string(delayed_start_line)
                                      : reception.Log_Start_String + std::string(line_end);
  data += rows;
  return {true, true, std::string(rows)};
}

Chunk_Outcome Take_Next(Log_Reception& reception, std::string& data, std::string_view chunk) {
  std::string_view rows = chunk;
  if (reception.skip_half_row) {
    const std::size_t feed = rows.find('\n');
    reception.skip_half_row = feed == std::string_view::npos;
    rows.remove_prefix(std::min(feed, rows.size() - 1) + 1);
  }
  reception.Log_Data_Seen = true;
  reception.Log_Rx_Text += rows;
  data += rows;
  return {false, false, std::string(chunk)};
}

/// The row before the interruption carries the mark, and is lost with it. The backup may end in half a row,
/// which the mark spoils for every reader.
Chunk_Outcome Take_Resumed(Log_Reception& reception, std::string& data, std::string_view chunk) {
  const std::string_view rows = From_Row_Start(chunk);
  reception.Log_Stream_Broken = false;
  reception.Log_Data_While_Broken = false;
  reception.Log_Rx_Text += rows;
  if (data.ends_with('\n')) data.resize(data.size() - (data.ends_with(line_end) ? 2 : 1));
  const std::string marked = std::string(interruption_mark) + std::string(rows);
  data += marked;
  return {false, true, marked};
}

Alert_Action Note_Silence(Log_Reception& reception, std::string& data) {
  if (!reception.Log_First_Data_Seen) {
    reception.Log_Delayed_Start = true;
    return Alert_Action::start;
  }
  if (reception.Log_Data_While_Broken) {
    reception.Log_Data_Seen = true;
    return Alert_Action::flush;
  }
  reception.skip_half_row = false;
  reception.Log_Stream_Broken = true;
  reception.Log_Had_Interruption = true;
  Cut_Half_Line(data);
  Cut_Half_Line(reception.Log_Rx_Text);
  return Alert_Action::restart;
}

}  // namespace

std::string_view Whole_Lines(std::string_view text) {
  const std::size_t feed = text.rfind('\n');
  return text.substr(0, feed == std::string_view::npos ? 0 : feed + 1);
}

Chunk_Outcome Take_Chunk(Log_Reception& reception, std::string& data, std::string_view chunk) {
  if (!reception.Log_First_Data_Seen) return Take_First(reception, data, chunk);
  if (!reception.Log_Stream_Broken) return Take_Next(reception, data, chunk);
  if (reception.Log_Data_Seen) return Take_Resumed(reception, data, chunk);
  reception.Log_Data_While_Broken = true;
  return {};
}

Alert_Action Note_Alert_Tick(Log_Reception& reception, std::string& data) {
  if (!reception.Log_Data_Seen) return Note_Silence(reception, data);
  reception.Log_Data_Seen = false;
  return reception.Log_Stream_Broken ? Alert_Action::resend : Alert_Action::blink;
}

}  // namespace kx
