#include "sim/line.h"

#include <algorithm>
#include <utility>

namespace kx::sim {

Line::Line(Box box, const Faults& faults, Pace pace)
    : box_(std::move(box)), injector_(faults), character_time_(pace == Pace::Real ? Character_Time : 0) {}

void Line::Receive(std::string_view bytes, double now) {
  pc_done_ = std::max(pc_done_, now);
  for (const char c : bytes) {
    if (hung_up_) return;
    pc_done_ += character_time_;
    Take(c);
  }
}

void Line::Take(char c) {
  const Faults& faults = injector_.Knobs();
  ++counts_.Bytes_Received;
  ++taken_;
  if (faults.Slave_Lost && taken_ > *faults.Slave_Lost) box_.Contents().Slave_Present = false;
  if (!faults.Stall || taken_ <= *faults.Stall) {
    for (const char received : As_Received(c)) Feed(received);
  }
  if (faults.Hang_Up_Received && taken_ >= *faults.Hang_Up_Received) Close();
}

/// What comes of the byte that was taken last.
std::string Line::As_Received(char c) const {
  const Faults& faults = injector_.Knobs();
  if (faults.Drop_Received == taken_) return {};
  if (faults.Corrupt_Received == taken_) c = static_cast<char>(c ^ 1);
  return std::string(faults.Duplicate_Received == taken_ ? 2 : 1, c);
}

void Line::Feed(char c) {
  std::string answer = box_.Feed({&c, 1});
  if (answer.empty()) return;
  ++counts_.Exchanges;
  Send(injector_.Shape(box_.Last_Command(), std::move(answer)));
}

void Line::Send(Shaped_Answer answer) {
  if (answer.Hold && held_.empty()) {
    held_ = std::move(answer.Text);
    return;
  }
  std::string text = std::exchange(held_, {}) + answer.Text;
  box_done_ = std::max(box_done_, pc_done_ + answer.Delay);
  if (answer.Single) {
    for (const char c : text) Send_Piece(std::string(1, c), Character_Time);
  } else {
    Send_Piece(std::move(text), character_time_);
  }
  Send_Piece(std::move(answer.Stale), character_time_);
  if (answer.Hang_Up) on_its_way_.push_back({box_done_, {}, true});
}

void Line::Send_Piece(std::string text, double character_time) {
  if (text.empty()) return;
  box_done_ += character_time * static_cast<double>(text.size());
  on_its_way_.push_back({box_done_, std::move(text)});
}

std::string Line::Deliver(double now) {
  std::string text;
  while (!on_its_way_.empty() && on_its_way_.front().When <= now) {
    const Delivery piece = std::move(on_its_way_.front());
    on_its_way_.pop_front();
    text += piece.Text;
    if (piece.Hang_Up) Close();
  }
  counts_.Bytes_Sent += text.size();
  return text;
}

std::optional<double> Line::Next_Delivery() const {
  if (on_its_way_.empty()) return std::nullopt;
  return on_its_way_.front().When;
}

void Line::Close() {
  hung_up_ = true;
  on_its_way_.clear();
  held_.clear();
}

void Line::Set_Faults(const Faults& faults) {
  Close();
  hung_up_ = false;
  taken_ = 0;
  injector_ = Fault_Injector(faults);
}

}  // namespace kx::sim
