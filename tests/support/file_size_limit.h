#pragma once

#include <sys/resource.h>

#include <csignal>

namespace kx::test {

/// A disk that fills up: while this lives no file of the process grows beyond @p bytes, a write that would
/// fails. Report nothing to a file meanwhile.
class File_Size_Limit {
 public:
  explicit File_Size_Limit(rlim_t bytes) : old_handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &old_);
    const rlimit limit{bytes, old_.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~File_Size_Limit() {
    ::setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, old_handler_);
  }
  File_Size_Limit(const File_Size_Limit&) = delete;
  File_Size_Limit& operator=(const File_Size_Limit&) = delete;

 private:
  void (*old_handler_)(int);
  rlimit old_{};
};

}  // namespace kx::test
