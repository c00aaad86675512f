#include <algorithm>
#include <array>
#include <charconv>
#include <vector>

#include "sim/faults.h"

namespace kx::sim {
namespace {

/// The whole of @p text as a number, not below 0; false leaves @p number as it was.
template <typename Number>
bool Read_Number(std::string_view text, Number& number) {
  Number value{};
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size() || !(value >= Number{})) return false;
  number = value;
  return true;
}

template <typename Number>
bool Read_Number(std::string_view text, std::optional<Number>& number) {
  Number value{};
  if (!Read_Number(text, value)) return false;
  number = value;
  return true;
}

bool Read_From_One(std::string_view text, std::size_t& number) {
  return Read_Number(text, number) && number > 0;
}

/// An hour at most: longer is what Refuse is for.
bool Read_Delay(std::string_view text, double& seconds) {
  return Read_Number(text, seconds) && seconds <= 3600;
}

/// "17" for a byte, "2.5%" for a chance.
bool Read_Byte_Fault(std::string_view text, Byte_Fault& fault) {
  if (!text.ends_with('%')) return Read_From_One(text, fault.Nth);
  text.remove_suffix(1);
  double percent = 0;
  if (!Read_Number(text, percent) || percent > 100) return false;
  fault.Chance = percent / 100;
  return true;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(separator), text.size());
    parts.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return parts;
}

/// The bit of the command named @p name; 0 for a name that is none.
std::uint32_t Command_Bit(std::string_view name) {
  for (std::uint32_t i = 0; i < Command_Count; ++i) {
    if (Command_Name(static_cast<Command>(i)) == name) return 1U << i;
  }
  return 0;
}

/// "rd+rs" as a set of commands.
bool Read_Commands(std::string_view text, std::uint32_t& commands) {
  commands = 0;
  for (const std::string_view name : Split(text, '+')) {
    const std::uint32_t bit = Command_Bit(name);
    if (bit == 0) return false;
    commands |= bit;
  }
  return commands != 0;
}

/// "200:1.5": after 200 rows, for 1.5 seconds.
bool Read_Log_Off(std::string_view text, Faults& faults) {
  const std::size_t colon = std::min(text.find(':'), text.size());
  return Read_Number(text.substr(0, colon), faults.Log_Off) && colon < text.size() &&
         Read_Delay(text.substr(colon + 1), faults.Log_Off_Seconds);
}

bool Read_Text(std::string_view text, std::string& value) {
  value = text;
  return !text.empty();
}

bool Read_Flag(std::string_view text, bool& flag) {
  flag = true;
  return text.empty();
}

struct Knob {
  std::string_view Name;
  std::string_view Form;  ///< Empty for a knob without a value.
  std::string_view Help;
  bool (*Read)(Faults& faults, std::string_view value);  ///< False for a value that does not fit Form.
};

using Value = std::string_view;

constexpr std::array Knobs = {
    Knob{"on", "COMMANDS", "strike answers to these only: v rd rs bw bs digit $ ue br a, joined by +",
         [](Faults& f, Value v) { return Read_Commands(v, f.On); }},
    Knob{"from", "N", "begin with the n-th of these answers (from 1)",
         [](Faults& f, Value v) { return Read_From_One(v, f.From); }},
    Knob{"times", "N", "strike n answers, then no more",
         [](Faults& f, Value v) { return Read_From_One(v, f.Times); }},
    Knob{"seed", "N", "start of the random numbers",
         [](Faults& f, Value v) { return Read_Number(v, f.Seed); }},
    Knob{"drop", "N or P%", "lose the n-th answer byte, or P percent of them",
         [](Faults& f, Value v) { return Read_Byte_Fault(v, f.Drop); }},
    Knob{"duplicate", "N or P%", "double the n-th answer byte, or P percent of them",
         [](Faults& f, Value v) { return Read_Byte_Fault(v, f.Duplicate); }},
    Knob{"corrupt", "N or P%", "change the n-th answer byte, or P percent of them",
         [](Faults& f, Value v) { return Read_Byte_Fault(v, f.Corrupt); }},
    Knob{"hang_up", "N", "close the line after n bytes of such answers",
         [](Faults& f, Value v) { return Read_Number(v, f.Hang_Up); }},
    Knob{"refuse", "", "give no answer", [](Faults& f, Value v) { return Read_Flag(v, f.Refuse); }},
    Knob{"delay", "SECONDS", "answer late", [](Faults& f, Value v) { return Read_Delay(v, f.Delay); }},
    Knob{"dataset", "0..255", "report another dataset",
         [](Faults& f, Value v) { return Read_Number(v, f.Dataset); }},
    Knob{"lower", "", "lower-case digits in images",
         [](Faults& f, Value v) { return Read_Flag(v, f.Lower_Case); }},
    Knob{"no_marker", "", "blanks for the markers of images",
         [](Faults& f, Value v) { return Read_Flag(v, f.No_Marker); }},
    Knob{"half", "", "half an image, half a log row",
         [](Faults& f, Value v) { return Read_Flag(v, f.Half); }},
    Knob{"garbage", "", "random bytes for an answer",
         [](Faults& f, Value v) { return Read_Flag(v, f.Garbage); }},
    Knob{"twice", "", "every answer twice", [](Faults& f, Value v) { return Read_Flag(v, f.Twice); }},
    Knob{"single", "", "deliver byte by byte", [](Faults& f, Value v) { return Read_Flag(v, f.Single); }},
    Knob{"burst", "", "deliver an answer only together with the next",
         [](Faults& f, Value v) { return Read_Flag(v, f.Burst); }},
    Knob{"stale", "TEXT", "send TEXT behind an answer",
         [](Faults& f, Value v) { return Read_Text(v, f.Stale); }},
    Knob{"log_pace", "N", "stream log rows n times as fast as a real box",
         [](Faults& f, Value v) { return Read_Number(v, f.Log_Pace) && f.Log_Pace > 0; }},
    Knob{"log_late", "SECONDS", "deaf for so long from the first start of a log on",
         [](Faults& f, Value v) { return Read_Delay(v, f.Log_Late); }},
    Knob{"log_header", "", "a header line before the rows of a log",
         [](Faults& f, Value v) { return Read_Flag(v, f.Log_Header); }},
    Knob{"log_off", "N:SECONDS", "switched off after n log rows, on again after so long",
         [](Faults& f, Value v) { return Read_Log_Off(v, f); }},
    Knob{"lenient", "", "obey a command inside an open run, in place of taking it for run data",
         [](Faults& f, Value v) { return Read_Flag(v, f.Lenient); }},
    Knob{"drop_received", "N", "lose the n-th received byte",
         [](Faults& f, Value v) { return Read_Number(v, f.Drop_Received); }},
    Knob{"duplicate_received", "N", "take the n-th received byte twice",
         [](Faults& f, Value v) { return Read_Number(v, f.Duplicate_Received); }},
    Knob{"corrupt_received", "N", "take the n-th received byte for its neighbour",
         [](Faults& f, Value v) { return Read_Number(v, f.Corrupt_Received); }},
    Knob{"stall", "N", "dead after n received bytes",
         [](Faults& f, Value v) { return Read_Number(v, f.Stall); }},
    Knob{"hang_up_received", "N", "close the line after n received bytes",
         [](Faults& f, Value v) { return Read_Number(v, f.Hang_Up_Received); }},
    Knob{"slave_lost", "N", "no slave after n received bytes",
         [](Faults& f, Value v) { return Read_Number(v, f.Slave_Lost); }},
};

std::string Quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string Known_Names() {
  std::string names;
  for (const Knob& knob : Knobs) names += (names.empty() ? "" : ", ") + std::string(knob.Name);
  return names;
}

std::string Wrong_Value(const Knob& knob, std::string_view value) {
  const std::string start = "Fault knob " + Quoted(knob.Name);
  if (knob.Form.empty()) return start + " takes no value";
  return start + " wants " + std::string(knob.Form) + ", not " + Quoted(value);
}

/// Sets one knob of @p faults from @p text, "name" or "name=value"; returns the error or an empty text.
std::string Turn_Knob(Faults& faults, std::string_view text) {
  const std::size_t equals = std::min(text.find('='), text.size());
  const std::string_view name = text.substr(0, equals);
  const std::string_view value = text.substr(std::min(equals + 1, text.size()));
  for (const Knob& knob : Knobs) {
    if (knob.Name == name) return knob.Read(faults, value) ? std::string() : Wrong_Value(knob, value);
  }
  return "Unknown fault knob " + Quoted(name) + "; known are " + Known_Names();
}

}  // namespace

Parsed_Faults Parse_Faults(std::string_view text) {
  Parsed_Faults parsed;
  for (const std::string_view knob : Split(text, ',')) {
    parsed.Error = Turn_Knob(parsed.Knobs, knob);
    if (!parsed.Error.empty()) break;
  }
  return parsed;
}

std::string Faults_Help() {
  std::string help;
  for (const Knob& knob : Knobs) {
    std::string line = "  " + std::string(knob.Name);
    if (!knob.Form.empty()) line += "=" + std::string(knob.Form);
    line.resize(std::max<std::size_t>(line.size() + 1, 22), ' ');
    help += line + std::string(knob.Help) + "\n";
  }
  return help;
}

}  // namespace kx::sim
