#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "settings/image.h"

/// Which bytes the timer-driven engine sends. A run is a stretch of adjacent bytes; a run list holds start
/// and length of each in turn, three decimal digits with a comma before them: ",005,002,009,001,".
namespace kx {

/// Last byte that the timer-driven engine compares; one less than the synchronous one.
inline constexpr int last_timer_compared = 249;

/// Offsets 0 to last_timer_compared, rising, at which the two images differ.
[[nodiscard]] std::vector<int> Differing_Offsets(const Byte_Image& a, const Byte_Image& b);

/// The offsets for the status line, a comma behind each.
[[nodiscard]] std::string Offsets_Text(const std::vector<int>& offsets);

/// Run list of a write to the master: byte 1 first, whether it differs or not, then one run per stretch of
/// the rising @p offsets.
[[nodiscard]] std::string Master_Run_List(const std::vector<int>& offsets);

/// Run list of a write to the slave: each of the @p offsets is a run of its own; no comma at the end.
[[nodiscard]] std::string Slave_Run_List(const std::vector<int>& offsets);

/// The number of the list at @p position, which counts from 1; the next one is run_list_step further on.
[[nodiscard]] int Run_List_Number(std::string_view list, int position);
inline constexpr int run_list_step = 4;

/// True while @p position has not passed the end of the list.
[[nodiscard]] bool Runs_Left(std::string_view list, int position);

}  // namespace kx
