#pragma once

#include <functional>
#include <string>

#include "logging/chart_view.h"

namespace kx {

/// Bytes of a file in a picture format: "bmp", "png" or "pdf"; empty when it cannot be made.
using Chart_Picture = std::function<std::string(const std::string& format)>;

/// Log_Picture_File_Save_As and mnu_export: asks for a name, proposed from the log's, and writes the numbers
/// of the chart (.csv) or what @p picture makes of it. The numbers go to the clipboard, too.
void Export_Chart(Point_Head head, const Chart_Picture& picture);

/// The same for any view of the log: @p behind goes behind the proposed name, @p numbers gives the bytes of a
/// .csv file.
void Export_Of_Log(std::string_view behind, const std::function<std::string()>& numbers,
                   const Chart_Picture& picture);

}  // namespace kx
