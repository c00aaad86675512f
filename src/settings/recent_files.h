#pragma once

#include <string>
#include <vector>

/// The files that the user has opened or saved last, tunes and logs alike; the desktop remembers them.
namespace kx {

inline constexpr std::size_t most_recent_files = 10;

/// Full names, newest first.
[[nodiscard]] std::vector<std::string> Recent_Files();

/// @p path, a full name, becomes the newest one.
void Note_Recent_File(const std::string& path);

/// @p path leaves the list.
void Forget_Recent_File(const std::string& path);

}  // namespace kx
