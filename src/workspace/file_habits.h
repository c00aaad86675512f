#pragma once

#include <string>

/// Files that come to the program by other ways than its open commands: the list of recent files, a drop.
namespace kx {

/// True when a file of that name is a tune or a log, which can be opened now: a log not while another one is
/// being recorded.
[[nodiscard]] bool Can_Open_By_Name(const std::string& path);

/// Opens a tune or a log as its open command does, with the same questions. True when it was a log, which is
/// then on show in the log window. A kind that is neither is left alone.
bool Open_By_Name(const std::string& path);

/// An entry of the list of recent files: one that is gone is told of and leaves the list.
bool Open_Recent_File(const std::string& path);

}  // namespace kx
