#pragma once

namespace kx::test {

/// A program that does nothing but log: the box at @p device, the backup in @p folder, until it is killed.
int Run_Live_Log_Child(const char* device, const char* folder);

}  // namespace kx::test
