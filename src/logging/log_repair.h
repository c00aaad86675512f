#pragma once

#include <cstdint>
#include <string>
#include <string_view>

/// Reading a log file whole, also one that a crash has left behind.
namespace kx {

/// Bytes. The longest logs have a few; what is larger is none.
constexpr std::uintmax_t largest_log_file = std::uintmax_t{64} << 20;

/// Reads @p path whole. One that cannot be read, or has an end-of-text mark in it, is repaired on disk by way
/// of @p path + "_repaired.kxl": its lines up to the mark stay. Where rows stand behind the mark, the file as
/// it was stays as @p path + "_original.kxl". False when a box has told that it did not work, or that the
/// file is too large, which is found before it is read. Sets Log_File_Repaired.
bool Read_Log_File(const std::string& path, std::string& bytes);

/// The lines of @p bytes up to the mark, each ended by CR LF.
[[nodiscard]] std::string Repaired_Text(std::string_view bytes);

}  // namespace kx
