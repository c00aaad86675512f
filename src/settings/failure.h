#pragma once

#include <stdexcept>

namespace kx {

/// Ends the handler in which it happens. Its text is shown once by the last guard around every handler, the
/// views are refreshed and the program goes on; what the handler has changed until then stays.
class Failure : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

[[noreturn]] inline void Fail_Overflow() { throw Failure("Overflow"); }
[[noreturn]] inline void Fail_Type_Mismatch() { throw Failure("Type mismatch"); }
[[noreturn]] inline void Fail_Division_By_Zero() { throw Failure("Division by zero"); }
[[noreturn]] inline void Fail_Subscript() { throw Failure("Subscript out of range"); }

}  // namespace kx
