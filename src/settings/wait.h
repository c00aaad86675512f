#pragma once

namespace kx {

/// The limit of a wait that spins through the event loop. Starts when made.
class Wait_Limit {
 public:
  /// @p seconds from now, on the seconds-since-midnight clock.
  explicit Wait_Limit(double seconds);

  /// True when the limit is reached, when the clock has fallen back over midnight (a wait must not hang until
  /// the next evening), or when the program is closing.
  [[nodiscard]] bool Passed() const;

 private:
  double start_;
  double end_;
};

/// Lets waiting events run. Any handler may run in here.
void Do_Events();

}  // namespace kx
