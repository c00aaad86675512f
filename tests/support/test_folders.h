#pragma once

#include <string>

namespace kx::test {

/// What ships beside the program: settings, dataset texts, demo tunes. Ends in "/".
[[nodiscard]] std::string Shipped_Data();

/// What only the tests read. Ends in "/".
[[nodiscard]] std::string Test_Data();

}  // namespace kx::test
