#pragma once

#include <cstddef>
#include <deque>
#include <string>
#include <string_view>

/// What went over the line to the box, for those who have to find out why a transfer failed. Kept in memory
/// for the run of the program; when it is full the oldest entries go.
namespace kx {

enum class Line_Direction { sent, received, opened, closed, lost };

/// One delivery, as the port gave or took it.
struct Line_Entry {
  long long microseconds = 0;  ///< on a clock that never steps back; only differences mean something
  float seconds_of_day = 0;    ///< local, from midnight
  Line_Direction direction = Line_Direction::sent;
  std::string text;  ///< characters sent or received; device of an opening; else empty
};

constexpr std::size_t line_log_entries = 50'000;      ///< entries kept at most
constexpr std::size_t line_log_characters = 1 << 20;  ///< characters kept at most, of all entries together

/// Adds an entry with the present time. Called by the port object for everything that passes it.
void Log_Line(Line_Direction direction, std::string_view text = {});

/// The entries kept, oldest first.
[[nodiscard]] const std::deque<Line_Entry>& Line_Log();

/// One entry as text: time of day, seconds since @p start (microseconds of the same clock), direction, hex
/// and characters, 16 a line; control characters and what is not ASCII as \r, \n, \t, \\ or \x1F. Lines end
/// in CR LF.
[[nodiscard]] std::string Line_Log_Text(const Line_Entry& entry, long long start);

/// "Export line log": asks for a file name and writes the log there as text.
void Export_Line_Log_Click();

void Reset_Line_Log();

}  // namespace kx
