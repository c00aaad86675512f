#include "support/test_folders.h"

namespace kx::test {

std::string Shipped_Data() { return KXBENCH_DATA "/"; }

std::string Test_Data() { return KXBENCH_TESTS_DATA "/"; }

}  // namespace kx::test
