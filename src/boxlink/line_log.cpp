#include "boxlink/line_log.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "platform/files.h"
#include "platform/seams.h"
#include "settings/message.h"
#include "settings/session.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

using platform::seams;

constexpr std::size_t characters_a_line = 16;
constexpr std::array<const char*, 5> direction_names{"PC ", "box", "port opened", "port closed", "port lost"};

std::deque<Line_Entry> kept;
std::size_t kept_characters = 0;
bool some_dropped = false;

void Drop_Oldest() {
  kept_characters -= kept.front().text.size();
  kept.pop_front();
  some_dropped = true;
}

template <typename... Values>
std::string Printed(const char* format, Values... values) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), format, values...);
  return text.data();
}

std::string Time_Of_Day(float seconds) {
  const int milliseconds = static_cast<int>(static_cast<double>(seconds) * 1000);
  const int whole = milliseconds / 1000;
  return Printed("%02d:%02d:%02d.%03d", whole / 3600, whole / 60 % 60, whole % 60, milliseconds % 1000);
}

std::string Escaped(char character) {
  constexpr std::string_view named = "\r\n\t\\";
  constexpr std::string_view letters = "rnt\\";
  const std::size_t at = named.find(character);
  if (at != std::string_view::npos) return std::string("\\") + letters[at];
  if (character >= ' ' && character <= '~') return {character};
  return Printed("\\x%02X", static_cast<unsigned>(static_cast<unsigned char>(character)));
}

/// "72 64    rd", the hex part always as wide as that of a full line.
std::string Hex_And_Text(std::string_view characters) {
  std::string hex;
  std::string text;
  for (const char character : characters) {
    hex += Printed("%02X ", static_cast<unsigned>(static_cast<unsigned char>(character)));
    text += Escaped(character);
  }
  hex.resize(3 * characters_a_line, ' ');
  return "  " + hex + " " + text;
}

std::string Heading() {
  return "Line log of " + seams.clock->Date_Text() + " " + seams.clock->Time_Text() + Crlf() +
         "Time of day, seconds since the first entry, who spoke, characters in hex and as text" + Crlf() +
         (some_dropped ? "What came before the first entry is no longer kept" + Crlf() : "");
}

std::string Whole_Log() {
  std::string text = Heading();
  for (const Line_Entry& entry : kept) text += Line_Log_Text(entry, kept.front().microseconds);
  return text;
}

std::string Suggested_Name() {
  std::string time = seams.clock->Time_Text();
  std::ranges::replace(time, ':', '-');
  return "line_log_" + seams.clock->Date_Text() + "_" + time;
}

}  // namespace

void Log_Line(Line_Direction direction, std::string_view text) {
  kept.push_back({seams.clock->Monotonic_Microseconds(), seams.clock->Seconds_Since_Midnight(), direction,
                  std::string(text)});
  kept_characters += text.size();
  while (kept.size() > line_log_entries || kept_characters > line_log_characters) Drop_Oldest();
}

const std::deque<Line_Entry>& Line_Log() { return kept; }

std::string Line_Log_Text(const Line_Entry& entry, long long start) {
  const double seconds = static_cast<double>(entry.microseconds - start) / 1e6;
  const std::string when = Time_Of_Day(entry.seconds_of_day) + Printed(" %13.6f  ", seconds) +
                           direction_names.at(static_cast<std::size_t>(entry.direction));
  if (entry.direction == Line_Direction::opened) return when + " " + entry.text + Crlf();
  if (entry.text.empty()) return when + Crlf();
  std::string lines;
  std::string_view left = entry.text;
  while (!left.empty()) {
    const std::string_view part = left.substr(0, characters_a_line);
    lines += (lines.empty() ? when : std::string(when.size(), ' ')) + Hex_And_Text(part) + Crlf();
    left.remove_prefix(part.size());
  }
  return lines;
}

void Export_Line_Log_Click() {
  const auto name = seams.ask->Save_Name(
      {"Export line log", "Text files (*.txt)|*.txt|All (*.*)|*.*", card_data_dir, Suggested_Name(), "txt"});
  if (!name || name->empty()) return;
  const auto result = platform::Replace_File(*name, Whole_Log());
  if (!result.Ok()) Tell(result.reason, platform::Icon::critical);
}

void Reset_Line_Log() {
  kept.clear();
  kept_characters = 0;
  some_dropped = false;
}

}  // namespace kx
