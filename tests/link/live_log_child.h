#pragma once

namespace kx::test {

/// A program that does nothing but log: the box at @p device, backup and parts in @p folder, until it is
/// killed. @p rows are in the log's text when its first rows come, as if they had been received before.
int Run_Live_Log_Child(const char* device, const char* folder, int rows);

}  // namespace kx::test
