#pragma once

namespace kx::test {

/// The program with its main form in @p folder, whose user steps the fuel table on and on, until it is
/// killed. It keeps the tune being edited every 50 ms in place of 30 s.
int Run_Editing_Child(const char* folder);

}  // namespace kx::test
