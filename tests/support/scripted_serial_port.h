#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/seams.h"

namespace kx::test {

/// A serial port whose far end is a function of the test. Fill in `answer`, or call Arrive() for text that
/// comes unasked.
class Scripted_Serial_Port : public platform::Serial_Port {
 public:
  /// What the far end sends back at once to each write; for a box: [&](auto text) { return box.Feed(text); }.
  std::function<std::string(const std::string&)> answer;

  /// What else has arrived whenever the program reads, for far ends that keep their own time.
  std::function<std::string()> deliver;

  /// What the operating system says to Open, by path.
  std::function<platform::Port_Error(const std::string&)> refuse;

  std::vector<std::string> writes;  ///< every write since it was cleared last
  std::vector<std::string> opened;  ///< every path that was opened

  /// All writes in one text.
  [[nodiscard]] std::string Sent() const {
    std::string all;
    for (const std::string& text : writes) all += text;
    return all;
  }

  void Arrive(std::string_view text) {
    waiting_ += text;
    if (open_ && on_event) on_event(platform::Line_Event::received);
  }

  /// The device goes away: reported once, after which the port is closed.
  void Lose() {
    if (!std::exchange(open_, false)) return;
    if (on_event) on_event(platform::Line_Event::lost);
  }

  platform::Port_Error Open(const std::string& path) override {
    const platform::Port_Error error = refuse ? refuse(path) : platform::Port_Error{};
    if (!error.Ok()) return error;
    opened.push_back(path);
    open_ = true;
    return {};
  }
  void Close() override {
    open_ = false;
    waiting_.clear();
  }
  [[nodiscard]] bool Is_Open() const override { return open_; }

  bool Write(std::string_view text) override {
    if (!open_) return false;
    writes.emplace_back(text);
    const std::string reply = answer ? answer(std::string(text)) : std::string();
    if (!reply.empty()) {
      waiting_ += reply;
      platform::seams.event_loop->Post([this] {
        if (open_ && on_event) on_event(platform::Line_Event::received);
      });
    }
    return open_;
  }

  std::string Read() override {
    if (deliver) waiting_ += deliver();
    return std::exchange(waiting_, {});
  }

 private:
  bool open_ = false;
  std::string waiting_;
};

}  // namespace kx::test
