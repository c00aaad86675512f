#include "sim/pty_box.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/prctl.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <optional>
#include <system_error>

namespace kx::sim {
namespace {

/// Seconds on the clock that every line of this file is served by.
double Now() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

timespec Time_Until(double when) {
  const double seconds = std::max(0.0, when - Now());
  const double whole = std::floor(seconds);
  return {static_cast<time_t>(whole), static_cast<long>((seconds - whole) * 1e9)};
}

std::string System_Error(const std::string& what) {
  return what + ": " + std::generic_category().message(errno);
}

/// Characters go through unchanged and unechoed, also before the PC has set its side up.
bool Make_Raw(int terminal) {
  termios settings{};
  if (tcgetattr(terminal, &settings) != 0) return false;
  cfmakeraw(&settings);
  cfsetspeed(&settings, B115200);
  return tcsetattr(terminal, TCSANOW, &settings) == 0;
}

/// Path of the PC's side; empty when the system refuses.
std::string Terminal_Path(int master) {
  std::array<char, 64> path{};
  if (grantpt(master) != 0 || unlockpt(master) != 0) return {};
  return ptsname_r(master, path.data(), path.size()) == 0 ? path.data() : std::string();
}

}  // namespace

void Descriptor::Reset(int number) {
  if (number_ >= 0) close(number_);
  number_ = number;
}

Pty_Box::Pty_Box(Line line, std::string link) : line_(std::move(line)), link_(std::move(link)) {}

Pty_Box::~Pty_Box() { Stop(); }

std::string Pty_Box::Start() {
  Stop();
  std::string error = Open_Terminal();
  if (error.empty()) error = Watch_Visits();
  if (error.empty() && !link_.empty()) error = Make_Link();
  if (!error.empty()) {
    Close_Terminal();
    return error;
  }
  thread_ = std::thread(&Pty_Box::Serve, this);
  return {};
}

std::string Pty_Box::Open_Terminal() {
  master_.Reset(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
  terminal_ = Terminal_Path(master_.Number());
  pc_side_.Reset(open(terminal_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  return Make_Raw(pc_side_.Number()) ? std::string() : System_Error("Could not make a pseudo terminal");
}

std::string Pty_Box::Watch_Visits() {
  wake_.Reset(eventfd(0, EFD_CLOEXEC));
  visits_.Reset(inotify_init1(IN_CLOEXEC | IN_NONBLOCK));
  const int watch = inotify_add_watch(visits_.Number(), terminal_.c_str(), IN_OPEN | IN_CLOSE);
  visitors_ = 0;
  return watch >= 0 && wake_.Number() >= 0 ? std::string() : System_Error("Could not watch " + terminal_);
}

/// The PC finds its side hung up, if it has it open.
void Pty_Box::Close_Terminal() {
  pc_side_.Reset();
  master_.Reset();
}

std::string Pty_Box::Make_Link() const {
  std::error_code error;
  if (std::filesystem::exists(link_) && !std::filesystem::is_symlink(link_)) {
    return link_ + " exists and is not a link";
  }
  std::filesystem::remove(link_, error);
  std::filesystem::create_symlink(terminal_, link_, error);
  return error ? "Could not make the link " + link_ + ": " + error.message() : std::string();
}

/// Only our own link: another simulator may have taken the path over meanwhile.
void Pty_Box::Remove_Link() const {
  std::error_code error;
  if (std::filesystem::read_symlink(link_, error) == terminal_) std::filesystem::remove(link_, error);
}

void Pty_Box::Stop() {
  if (!thread_.joinable()) return;
  eventfd_write(wake_.Number(), 1);
  thread_.join();
  Close_Terminal();
  Remove_Link();
}

void Pty_Box::Serve() {
  prctl(PR_SET_TIMERSLACK, 1UL);  // wake up on time; the default allows half a character more
  while (Wait()) {
    Give_To_Pc();
    if (With_Line([](const Line& line) { return line.Hung_Up(); })) {
      Let_Pc_Read();
      Close_Terminal();
      return;
    }
  }
}

/// Closing the terminal takes away what the PC has not read yet, so a PC that reads gets a moment for it.
void Pty_Box::Let_Pc_Read() {
  int unread = 0;
  for (int i = 0; i < 200; ++i) {
    pollfd wake{wake_.Number(), POLLIN, 0};
    if (poll(&wake, 1, 1) != 0 || ioctl(pc_side_.Number(), FIONREAD, &unread) != 0 || unread == 0) return;
  }
}

/// Sleeps until something has happened or is due, and takes in what the PC did. False when it is time to end.
bool Pty_Box::Wait() {
  const auto next = With_Line([](const Line& line) { return line.Next_Delivery(); });
  const timespec timeout = Time_Until(next.value_or(0));
  std::array<pollfd, 3> files = {
      {{wake_.Number(), POLLIN, 0}, {visits_.Number(), POLLIN, 0}, {master_.Number(), POLLIN, 0}}};
  if (ppoll(files.data(), files.size(), next ? &timeout : nullptr, nullptr) < 0) return errno == EINTR;
  if (files[1].revents != 0) Note_Visits();
  if (files[2].revents != 0) Take_From_Pc();
  return files[0].revents == 0;
}

void Pty_Box::Take_From_Pc() {
  std::array<char, 4096> buffer{};
  const ssize_t count = read(master_.Number(), buffer.data(), buffer.size());
  if (count <= 0) return;
  const std::string_view bytes(buffer.data(), static_cast<std::size_t>(count));
  With_Line([&](Line& line) { line.Receive(bytes, Now()); });
}

/// Follows the PC opening and closing its side, which the kept-open side hides from the master.
void Pty_Box::Note_Visits() {
  std::array<char, 4096> events{};
  const ssize_t count = read(visits_.Number(), events.data(), events.size());
  for (ssize_t at = 0; at < count;) {
    inotify_event event{};
    std::memcpy(&event, events.data() + at, sizeof event);
    at += static_cast<ssize_t>(sizeof event + event.len);
    if ((event.mask & IN_OPEN) != 0) ++visitors_;
    if ((event.mask & IN_CLOSE) != 0) End_Visit();
  }
}

/// What one visitor left unread must not greet the next, and one that crashed must not keep others out.
void Pty_Box::End_Visit() {
  if (visitors_ > 0) --visitors_;
  if (visitors_ > 0) return;
  tcflush(master_.Number(), TCOFLUSH);  // what is still between the two sides
  tcflush(pc_side_.Number(), TCIFLUSH);
  ioctl(pc_side_.Number(), TIOCNXCL);
}

/// What nobody has the terminal open for is lost; so is what no longer fits because the PC does not read.
void Pty_Box::Give_To_Pc() {
  const std::string delivered = With_Line([](Line& line) { return line.Deliver(Now()); });
  std::string_view text = visitors_ > 0 ? delivered : std::string_view();
  while (!text.empty()) {
    const ssize_t count = write(master_.Number(), text.data(), text.size());
    if (count <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(count));
  }
}

}  // namespace kx::sim
