#pragma once

#include <unistd.h>

namespace kx::test {

/// A superuser may do everything: while this lives, such a process works as a user without rights. Any other
/// one stays what it is.
class Other_User {
 public:
  Other_User() {
    if (::geteuid() == 0) changed_ = ::seteuid(nobody) == 0;
  }
  ~Other_User() {
    if (changed_ && ::seteuid(0) != 0) ::_exit(1);
  }
  Other_User(const Other_User&) = delete;
  Other_User& operator=(const Other_User&) = delete;

  /// True when the process is another user than the one who made the test's files.
  [[nodiscard]] bool Is_Other() const { return changed_; }

 private:
  static constexpr uid_t nobody = 65534;
  bool changed_ = false;
};

}  // namespace kx::test
