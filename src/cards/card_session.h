#pragma once

#include <functional>
#include <string_view>

namespace kx {

/// Runs one card operation. It has the line to itself like a transfer, since both replace or send the whole
/// tune: while one runs, no other is entered, and "Close port" or the closing of the program end it at its
/// next wait. An operation that was not entered leaves quietly. @p end_early, when given, is called when
/// @p operation did not come to its own end.
void Run_Card_Operation(void (*operation)(), const std::function<void(std::string_view)>& end_early = {});

}  // namespace kx
