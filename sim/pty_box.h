#pragma once

#include <mutex>
#include <string>
#include <thread>
#include <utility>

#include "sim/line.h"

namespace kx::sim {

/// An open file of the system, closed with its owner; -1 is none.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  ~Descriptor() { Reset(); }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  [[nodiscard]] int Number() const { return number_; }
  void Reset(int number = -1);

 private:
  int number_;
};

/// A Line on a pseudo terminal, served by a thread of its own on the system's steady clock.
///
/// The PC's side may be opened and closed as often as one likes; what the box sends while nobody has it open
/// is lost, as on a real port. A fault that hangs up closes the terminal, and its path is gone until the next
/// Start().
class Pty_Box {
 public:
  /// Serves @p line; with @p link a symbolic link of that path leads to the terminal.
  explicit Pty_Box(Line line, std::string link = {});
  ~Pty_Box();
  Pty_Box(const Pty_Box&) = delete;
  Pty_Box& operator=(const Pty_Box&) = delete;

  /// Makes the terminal and begins to serve it. Returns what is wrong, or an empty text. An old link of the
  /// same path is replaced; anything else there is left alone and is an error.
  [[nodiscard]] std::string Start();

  /// Ends at once, whatever is on its way, and removes the terminal and the link. Without Start() it does
  /// nothing.
  void Stop();

  /// What the PC opens: the link if there is one, else the terminal. Empty before Start().
  [[nodiscard]] const std::string& Path() const { return link_.empty() ? terminal_ : link_; }

  /// Calls @p function with the line (faults, counts) while the serving thread keeps off it.
  template <typename Function>
  auto With_Line(Function&& function) {
    const std::lock_guard lock(mutex_);
    return std::forward<Function>(function)(line_);
  }

  /// Calls @p function with the box (images, labels) while the serving thread keeps off it.
  template <typename Function>
  auto With_Box(Function&& function) {
    return With_Line([&](Line& line) { return std::forward<Function>(function)(line.The_Box()); });
  }

 private:
  [[nodiscard]] std::string Open_Terminal();
  [[nodiscard]] std::string Watch_Visits();
  void Let_Pc_Read();
  void Close_Terminal();
  [[nodiscard]] std::string Make_Link() const;
  void Remove_Link() const;
  void Serve();
  [[nodiscard]] bool Wait();
  void Take_From_Pc();
  void Note_Visits();
  void End_Visit();
  void Give_To_Pc();

  std::mutex mutex_;  // guards line_
  Line line_;
  std::string link_;
  std::string terminal_;
  Descriptor master_;
  Descriptor pc_side_;  // kept open, so that the terminal outlives each visit of the PC
  Descriptor wake_;     // written once by Stop()
  Descriptor visits_;   // tells when the PC opens and closes its side
  int visitors_ = 0;    // how often the PC has its side open just now
  std::thread thread_;
};

}  // namespace kx::sim
