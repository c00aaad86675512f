#include "sim/line.h"

#include <algorithm>
#include <utility>

namespace kx::sim {

Line::Line(Box box, const Faults& faults, Pace pace)
    : box_(std::move(box)),
      injector_(faults),
      character_time_(pace == Pace::Real ? Character_Time : 0),
      drive_(box_.Contents().Drive_Seed) {
  box_.Contents().Lenient_Runs = faults.Lenient;
}

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
  Stream_Until(pc_done_);
  if (pc_done_ < deaf_until_) return;
  const bool streamed = box_.Streaming();
  std::string answer = box_.Feed({&c, 1});
  if (!streamed && box_.Streaming()) Begin_Stream();
  if (answer.empty()) return;
  ++counts_.Exchanges;
  Shaped_Answer shaped = injector_.Shape(box_.Last_Command(), std::move(answer));
  if (character_time_ > 0) shaped.Delay += box_.Answer_Time();
  Send(std::move(shaped), pc_done_);
}

void Line::Begin_Stream() {
  const Faults& faults = injector_.Knobs();
  next_row_ = pc_done_ + Row_Seconds / faults.Log_Pace;
  if (faults.Log_Late > 0 && !std::exchange(late_, true)) {
    box_.Stop_Stream();
    deaf_until_ = pc_done_ + faults.Log_Late;
  } else if (faults.Log_Header) {
    Send({.Text = "RPM AN1 AN2 AN3 AN4 IGN IN TOT ADD\r\n"}, pc_done_);
  }
}

/// Sends all rows that are due by @p now.
void Line::Stream_Until(double now) {
  while (box_.Streaming() && next_row_ <= now && !hung_up_) Send_Row();
}

void Line::Send_Row() {
  const Faults& faults = injector_.Knobs();
  Send(injector_.Shape(Command::Log, drive_.Next().Text), next_row_);
  ++counts_.Rows_Sent;
  ++streamed_;
  if (faults.Log_Off == streamed_) {
    box_.Stop_Stream();
    deaf_until_ = next_row_ + faults.Log_Off_Seconds;
  }
  next_row_ += Row_Seconds / faults.Log_Pace;
}

/// The answer leaves the box when what it has sent before is out.
void Line::Send(Shaped_Answer answer, double not_before) {
  if (answer.Hold && held_.empty()) {
    held_ = std::move(answer.Text);
    return;
  }
  std::string text = std::exchange(held_, {}) + answer.Text;
  box_done_ = std::max(box_done_, not_before + answer.Delay);
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
  Stream_Until(now);
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
  std::optional<double> next;
  if (!on_its_way_.empty()) next = on_its_way_.front().When;
  if (box_.Streaming() && !hung_up_) next = std::min(next.value_or(next_row_), next_row_);
  return next;
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
  streamed_ = 0;
  late_ = false;
  deaf_until_ = 0;
  injector_ = Fault_Injector(faults);
  box_.Contents().Lenient_Runs = faults.Lenient;
}

}  // namespace kx::sim
