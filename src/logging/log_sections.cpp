#include "logging/log_sections.h"

#include <algorithm>
#include <array>

#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr std::size_t none = std::string_view::npos;
constexpr std::string_view line_end = "\r\n";
constexpr std::string_view header = "RPM AN1 AN2 AN3";
constexpr std::string_view header_of_bare_rows = "RPM AN1";

struct Brackets {
  std::string_view open;
  std::string_view close;
};

constexpr std::array<Brackets, 5> brackets{{{"[log_settings]", "[end log_settings]"},
                                            {"[log_sens_def]", "[end log_sens_def]"},
                                            {"[readable_settings]", "[end readable_settings]"},
                                            {"[log_data]", "[end log_data]"},
                                            {"[log_dataset]", "[end log_dataset]"}}};

/// The backup of a running log closes its data so.
constexpr std::string_view backup_close = "[end_log_data]";

const Brackets& Brackets_Of(Log_Section section) { return brackets[static_cast<std::size_t>(section)]; }

/// First place from @p from on where a line begins with @p mark.
std::size_t Find_Line(std::string_view text, std::string_view mark, std::size_t from = 0) {
  for (std::size_t at = text.find(mark, from); at != none; at = text.find(mark, at + 1)) {
    if (at == 0 || text[at - 1] == '\n') return at;
  }
  return none;
}

/// Where the first opening line of any section stands from @p from on, or the end of the text.
std::size_t Next_Opening(std::string_view text, std::size_t from) {
  std::size_t next = text.size();
  for (const Brackets& row : brackets) next = std::min(next, Find_Line(text, row.open, from));
  return next;
}

/// End of the content that begins at @p from: its closing line, or what shows that this one is missing.
std::size_t End_Of_Content(std::string_view text, Log_Section section, std::size_t from) {
  std::size_t end = text.find(Brackets_Of(section).close, from);
  if (section == Log_Section::data) end = std::min(end, text.find(backup_close, from));
  return std::min(end, Next_Opening(text, from));
}

/// @p text with a whole line end behind it, wherever it was cut off.
std::string Line_Ended(std::string text) {
  if (text.ends_with(line_end)) return text;
  return text + (text.ends_with('\r') ? "\n" : "\r\n");
}

/// Opening line and content, a line end behind; nothing when the section is missing.
std::string Opened_Section(std::string_view text, Log_Section section) {
  const std::string_view open = Brackets_Of(section).open;
  const std::size_t at = Find_Line(text, open);
  if (at == none) return {};
  const std::size_t end = End_Of_Content(text, section, at + open.size());
  return Line_Ended(std::string(text.substr(at, end - at)));
}

std::string Closed(std::string opened, Log_Section section) {
  return opened.empty() ? Empty_Section(section) : opened.append(Brackets_Of(section).close);
}

std::string Data_Section(std::string_view text, std::string_view start_string) {
  std::string opened = Opened_Section(text, Log_Section::data);
  const std::size_t bare = text.find(header_of_bare_rows);
  if (opened.empty() && bare != none) {
    opened = std::string(Brackets_Of(Log_Section::data).open) + Crlf() + std::string(start_string) + Crlf();
    opened += text.substr(bare, End_Of_Content(text, Log_Section::data, bare) - bare);
    opened = Line_Ended(std::move(opened));
  }
  if (opened.empty()) return Empty_Section(Log_Section::data);
  return Closed(std::move(opened), Log_Section::data) + Crlf();
}

/// @p file with CR LF for each LF alone, and without the mark that some editors put before the first line.
std::string With_Whole_Line_Ends(std::string_view file) {
  constexpr std::string_view editor_mark = "\xEF\xBB\xBF";
  if (file.starts_with(editor_mark)) file.remove_prefix(editor_mark.size());
  std::string text;
  text.reserve(file.size() + file.size() / 64);
  for (std::size_t from = 0; from < file.size();) {
    const std::size_t end = std::min(file.find('\n', from), file.size());
    text += file.substr(from, end - from);
    if (end < file.size()) text += !text.empty() && text.back() == '\r' ? "\n" : "\r\n";
    from = end + 1;
  }
  return text;
}

std::size_t After_Line(std::string_view text, std::size_t at) {
  const std::size_t end = text.find('\n', at);
  return end == none ? text.size() : end + 1;
}

/// Last place of @p mark, which is rare. Forward, since a search backwards takes many times as long.
std::size_t Find_Last(std::string_view text, std::string_view mark) {
  std::size_t last = none;
  for (std::size_t at = text.find(mark); at != none; at = text.find(mark, at + 1)) last = at;
  return last;
}

/// Where the rows begin by what starts them: a remark behind the opening line of a backup, the answer of an
/// old box, or the last start string.
std::size_t After_Start(std::string_view data) {
  const std::string_view open = Brackets_Of(Log_Section::data).open;
  if (data.starts_with(open) && !data.substr(open.size()).starts_with(line_end)) return After_Line(data, 0);
  std::size_t at = data.find("\r\nL");
  if (at == none) at = Find_Last(data, "\r\na");
  return at == none ? none : After_Line(data, at + line_end.size());
}

/// True when a line of @p text begins like a row: "3.2500 128".
bool Has_Row(std::string_view text) {
  constexpr std::size_t shortest = 10;
  const auto lines = Lines_Of(text);
  return std::any_of(lines.begin(), lines.end(), [](std::string_view line) {
    return line.size() >= shortest && (line[1] == '.' || line[1] == ',') && line[6] == ' ';
  });
}

/// Where the first row stands in a data section, or none. A header starts the rows, unless it came again
/// after an interruption.
std::size_t First_Row(std::string_view data) {
  const std::size_t start = After_Start(data);
  const std::size_t head = data.find(header);
  if (head == none) return start;
  const bool again = start < head && Has_Row(data.substr(start, head - start));
  return again ? start : After_Line(data, head);
}

}  // namespace

Log_Sections Split_Log_File(std::string_view file, std::string_view start_string) {
  const std::string text = With_Whole_Line_Ends(file);
  Log_Sections sections;
  std::string settings = Opened_Section(text, Log_Section::settings);
  std::string sensors = Opened_Section(text, Log_Section::sensors);
  sections.settings_found = !settings.empty();
  sections.sensors_found = !sensors.empty();
  sections.settings = Closed(std::move(settings), Log_Section::settings);
  sections.sensors = Closed(std::move(sensors), Log_Section::sensors);
  sections.readable = Closed(Opened_Section(text, Log_Section::readable), Log_Section::readable);
  sections.data = Data_Section(text, start_string);
  sections.dataset = Closed(Opened_Section(text, Log_Section::dataset), Log_Section::dataset);
  return sections;
}

std::string Join_Log_File(const Log_Sections& sections) {
  std::string bytes;
  for (const std::string* section :
       {&sections.settings, &sections.sensors, &sections.readable, &sections.data, &sections.dataset}) {
    bytes += *section + Crlf();
  }
  return bytes + Crlf();
}

std::string Empty_Section(Log_Section section) {
  const Brackets& row = Brackets_Of(section);
  const std::string shell = std::string(row.open) + Crlf() + std::string(row.close);
  return section == Log_Section::data ? shell + Crlf() : shell;
}

std::string_view Row_Text(std::string_view data) {
  const std::size_t first = First_Row(data);
  if (first == none) return {};
  const std::size_t end = data.rfind(Brackets_Of(Log_Section::data).close);
  return data.substr(first, end == none || end < first ? none : end - first);
}

}  // namespace kx
