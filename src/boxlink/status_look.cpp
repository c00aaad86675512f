#include "boxlink/status_look.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace kx {
namespace {

/// What only the words of a failure hold. They are looked for first: "Verify finished and failed" is one.
constexpr std::array<std::string_view, 8> of_failures{
    "ailed", "aborted", "No responce", "rror", "verify failure", "not matching", "not matched", "ERROR"};
constexpr std::array<std::string_view, 4> of_successes{"finished", "OK", "KX read", " open >"};

template <typename Words>
bool Holds_Any(std::string_view status, const Words& words) {
  return std::ranges::any_of(words, [&](auto word) { return status.find(word) != std::string_view::npos; });
}

constexpr std::string_view port_words = "Com port ";

}  // namespace

Tone Tone_Of_Status(std::string_view status) {
  if (Holds_Any(status, of_failures)) return Tone::failure;
  return Holds_Any(status, of_successes) ? Tone::success : Tone::plain;
}

std::vector<int> Ports_That_Work(std::string_view port_test) {
  std::vector<int> ports;
  for (std::size_t at = port_test.find(port_words); at != std::string_view::npos;
       at = port_test.find(port_words, at + 1)) {
    const std::string_view line = port_test.substr(at + port_words.size());
    int number = 0;
    const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), number);
    const std::string_view rest = line.substr(static_cast<std::size_t>(end - line.data()));
    if (error == std::errc() && rest.starts_with(" ok")) ports.push_back(number);
  }
  return ports;
}

}  // namespace kx
