#include "sim/faults.h"

#include <algorithm>
#include <utility>

namespace kx::sim {
namespace {

bool Is_Image(Command command) { return command == Command::Read_Master || command == Command::Read_Slave; }

/// The three digits behind the label, exchanged for @p dataset.
std::string With_Dataset(std::string answer, std::uint8_t dataset) {
  constexpr std::string_view label = "SC ID ";
  const std::string digits = std::to_string(1000 + dataset).substr(1);
  return answer.replace(answer.find(label) + label.size(), digits.size(), digits);
}

std::string With_Lower_Case(std::string answer) {
  std::ranges::transform(answer, answer.begin(),
                         [](char c) { return c >= 'A' && c <= 'F' ? static_cast<char>(c - 'A' + 'a') : c; });
  return answer;
}

std::string Without_Markers(std::string answer) {
  std::ranges::replace_if(
      answer, [](char c) { return c == '@' || c == '#'; }, ' ');
  return answer;
}

}  // namespace

Fault_Injector::Fault_Injector(Faults faults) : faults_(std::move(faults)), random_(faults_.Seed) {}

Shaped_Answer Fault_Injector::Shape(Command command, std::string answer) {
  Shaped_Answer shaped;
  if (!Chosen(command)) {
    shaped.Text = std::move(answer);
    return shaped;
  }
  if (faults_.Refuse) return shaped;
  shaped.Text = With_Byte_Faults(Replaced(command, std::move(answer)));
  if (faults_.Twice) shaped.Text += shaped.Text;
  shaped.Stale = faults_.Stale;
  shaped.Delay = faults_.Delay;
  shaped.Single = faults_.Single;
  shaped.Hold = faults_.Burst;
  Cut_At_Hang_Up(shaped);
  return shaped;
}

bool Fault_Injector::Chosen(Command command) {
  if ((faults_.On >> static_cast<unsigned>(command) & 1U) == 0) return false;
  ++matches_;
  if (matches_ < faults_.From) return false;
  return faults_.Times == 0 || matches_ - faults_.From < faults_.Times;
}

std::string Fault_Injector::Replaced(Command command, std::string answer) {
  if (faults_.Garbage) return Random_Bytes(answer.size());
  if (faults_.Dataset && command == Command::Info) answer = With_Dataset(std::move(answer), *faults_.Dataset);
  if (command == Command::Log && faults_.Half) answer.resize(answer.size() / 2);
  if (!Is_Image(command)) return answer;
  if (faults_.Lower_Case) answer = With_Lower_Case(std::move(answer));
  if (faults_.No_Marker) answer = Without_Markers(std::move(answer));
  if (faults_.Half) answer.resize(answer.size() / 2);
  return answer;
}

std::string Fault_Injector::Random_Bytes(std::size_t count) {
  std::string text(count, '\0');
  std::ranges::generate(text, [this] { return static_cast<char>(random_() & 0xFFU); });
  return text;
}

bool Fault_Injector::Strikes(const Byte_Fault& fault) {
  if (fault.Nth != 0 && fault.Nth == bytes_) return true;
  return fault.Chance > 0 && static_cast<double>(random_()) < fault.Chance * 4294967296.0;
}

std::string Fault_Injector::With_Byte_Faults(const std::string& answer) {
  std::string text;
  for (char c : answer) {
    ++bytes_;
    if (Strikes(faults_.Drop)) continue;
    if (Strikes(faults_.Corrupt))
      c = static_cast<char>(static_cast<unsigned char>(c) ^ (1U + random_() % 255U));
    text += c;
    if (Strikes(faults_.Duplicate)) text += c;
  }
  return text;
}

void Fault_Injector::Cut_At_Hang_Up(Shaped_Answer& shaped) {
  if (!faults_.Hang_Up) return;
  const std::size_t left = *faults_.Hang_Up - sent_;
  shaped.Hang_Up = shaped.Text.size() >= left;
  if (shaped.Hang_Up) {
    shaped.Text.resize(left);
    shaped.Stale.clear();
    shaped.Hold = false;
  }
  sent_ += shaped.Text.size();
}

}  // namespace kx::sim
