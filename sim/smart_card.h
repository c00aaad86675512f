#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "sim/image_file.h"

namespace kx::sim {

/// The three bytes of a card's PIN.
using Pin = std::array<std::uint8_t, 3>;

/// A MapCard: an SLE4442 with 256 bytes, of which the first 32 can each be protected for good, and a PIN with
/// three tries. Plain data and what the chip does to it; whoever owns the card may change it between two
/// operations.
class Smart_Card {
 public:
  static constexpr std::size_t Protectable = 32;
  static constexpr int All_Tries = 3;

  /// Seconds that the chip takes to store a byte.
  static constexpr double Byte_Time = 0.005;

  Image Memory{};
  std::array<bool, Protectable> Protected{};
  Pin Secret{0xA5, 0xA5, 0xA5};
  int Tries = All_Tries;   ///< Left before the card is locked for good, 0..3.
  bool Needs_Pin = false;  ///< Nothing is stored before the PIN was presented; else the reader does that.

  /// Everything that the card was asked to store since it was made, address and value.
  std::vector<std::pair<std::size_t, std::uint8_t>> Asked;

  [[nodiscard]] bool Locked() const { return Tries == 0; }

  /// Takes the power: a presented PIN counts no longer.
  void Power_Off() { verified_ = false; }

  /// False when the card is locked or waits for its PIN. A protected byte stays without a word, as it does in
  /// the chip.
  bool Store(std::size_t address, std::uint8_t value);

  /// Protects the byte at @p address when @p value is what it holds. False when the card takes no writes or
  /// has no such bit; another value leaves the bit without a word.
  bool Protect(std::size_t address, std::uint8_t value);

  /// Each wrong PIN takes a try, a right one gives all back; a locked card takes none.
  bool Verify(const Pin& pin);

  /// Presents @p pin and stores @p new_pin.
  bool Change(const Pin& pin, const Pin& new_pin);

 private:
  [[nodiscard]] bool Takes_Writes() const { return !Locked() && (verified_ || !Needs_Pin); }

  bool verified_ = false;
};

/// A card as read from a file; @p Error is empty when it was read wholly.
struct Loaded_Card {
  Smart_Card Card;
  std::string Faults;  ///< Knobs of the reader, see card_reader.h.
  std::string Error;
};

/// Reads a card file: a tune file whose 256 numbers are the memory, with any of these lines behind them:
/// "protected=0,1,5", "pin=A5A5A5", "tries=3", "needs_pin=1", "faults=no_card".
[[nodiscard]] Loaded_Card Read_Card(const std::string& path);

/// Writes a card file. Returns what is wrong, or an empty text.
[[nodiscard]] std::string Write_Card(const std::string& path, const Smart_Card& card,
                                     const std::string& faults);

}  // namespace kx::sim
