#pragma once

#include <string>
#include <string_view>

/// The five sections of a log file, pure text. A section runs from its bracket line to its closing bracket
/// line; only the data section ends in CR LF.
namespace kx {

/// One section: what stands in its bracket lines.
enum class Log_Section { settings, sensors, readable, data, dataset };

struct Log_Sections {
  std::string settings;
  std::string sensors;
  std::string readable;
  std::string data;
  std::string dataset;
  bool settings_found = false;  ///< else the section is an empty shell, as the next
  bool sensors_found = false;
};

/// Splits the text of a file, in whatever order its sections stand; of a doubled one the first counts. One
/// without its closing line ends at the next opening line or with the file and gets one; one that is missing
/// becomes an empty shell. LF alone becomes CR LF. A file of rows alone, from "RPM AN1" on, becomes a data
/// section begun by @p start_string.
[[nodiscard]] Log_Sections Split_Log_File(std::string_view file, std::string_view start_string);

/// The bytes of a log file.
[[nodiscard]] std::string Join_Log_File(const Log_Sections& sections);

/// A section of bracket lines alone; that of the data ends in CR LF.
[[nodiscard]] std::string Empty_Section(Log_Section section);

/// Of a data section: what stands behind the line that starts the rows, up to the closing line. Nothing
/// (a null view) when no line starts them.
[[nodiscard]] std::string_view Row_Text(std::string_view data);

}  // namespace kx
