#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "sim/smart_card.h"

namespace kx::sim {

/// What is wrong with a reader or the library behind it. As made, nothing is.
struct Reader_Faults {
  bool No_Reader = false;
  bool No_Card = false;
  std::optional<std::size_t> Pull;         ///< The card is gone from the n-th byte moved on, from 1.
  std::optional<std::size_t> Write_Fault;  ///< The n-th byte asked to store is refused.
  std::optional<std::size_t> Lost_Write;   ///< It is not stored, and nobody says so.
  bool Wrong_Pin = false;                  ///< The card's PIN is none that anybody knows.
  bool Locked = false;                     ///< The card has no tries left.
  bool Garbage = false;                    ///< Lengths and counts come back as nonsense.
  std::optional<std::int32_t> Count;       ///< What a read claims to have read.
  std::optional<std::int32_t> Status;      ///< What every Chipdrive command returns.
  std::string Refuse;                      ///< The AgmSyn call of that name fails.
  std::optional<std::size_t> Refuse_Call;  ///< The n-th call of either library fails, from 1.
  std::optional<unsigned> Byte_Time;       ///< Milliseconds that a byte takes; whoever owns the reader waits.
  bool Throws = false;                     ///< The library throws at each call.
};

/// Reads knobs such as "pull=17,garbage". Returns what is wrong, or an empty text.
[[nodiscard]] std::string Parse_Reader_Faults(std::string_view text, Reader_Faults& faults);

/// A card reader as both makers' libraries show it, with one card in it.
class Card_Reader {
 public:
  using Bytes = std::span<std::uint8_t>;
  using Const_Bytes = std::span<const std::uint8_t>;

  static constexpr std::int32_t Ok = 0;
  static constexpr std::int32_t Chipdrive_No_Reader = 666;
  static constexpr std::int32_t Chipdrive_No_Card = 16384;
  static constexpr std::int32_t Chipdrive_Refused = 25344;
  static constexpr std::int32_t Failed = 1;

  Smart_Card Card;

  /// Changes the faults and starts their counts anew: a card that was pulled is in again.
  void Set_Faults(const Reader_Faults& faults);
  [[nodiscard]] const Reader_Faults& Faults() const { return faults_; }

  /// Since the faults were set.
  [[nodiscard]] std::size_t Calls() const { return calls_; }
  [[nodiscard]] std::size_t Bytes_Moved() const { return moved_; }

  /// False without reader or card, or when a fault has pulled it.
  [[nodiscard]] bool Card_Is_In() const;

  /// Has the card store a byte; false when the card is gone or refuses.
  bool Store_Byte(std::size_t address, std::uint8_t value);

  /// The Chipdrive's command: fills @p output and says in @p length how much of it.
  std::int32_t Command(std::string_view command, Const_Bytes input, Bytes output, std::int32_t& length);

  // AgmSyn. The calls want their order: bound, connected, type, reset; else they fail.
  std::int32_t Initial(std::string_view reader);
  std::int32_t Connect(std::int32_t& card);
  std::int32_t Set_Type(std::int32_t card, std::uint8_t type);
  std::int32_t Reset(std::int32_t card, Bytes answer, std::int32_t& length);
  std::int32_t Disconnect(std::int32_t card);
  std::int32_t Read(std::int32_t card, std::int32_t address, std::int32_t length, Bytes buffer,
                    std::int32_t& count);
  std::int32_t Write_One_Byte(std::int32_t card, std::int32_t address, std::uint8_t data);
  std::int32_t Page_Write(std::int32_t card, std::int32_t address, Const_Bytes data);
  std::int32_t Read_Protect_Bit(std::int32_t card, std::int32_t address, std::uint8_t& bit);
  std::int32_t Write_Protect_Bit(std::int32_t card, std::int32_t address, std::uint8_t data);
  std::int32_t Verify_Pin(std::int32_t card, Const_Bytes pin);
  std::int32_t Change_Pin(std::int32_t card, Const_Bytes pin, Const_Bytes new_pin);

 private:
  [[nodiscard]] bool Refused(std::string_view call);
  [[nodiscard]] bool Ready(std::string_view call, std::int32_t card);
  bool Move_Byte();
  std::int32_t Read_All(Bytes output);
  std::int32_t Write_All(Const_Bytes input);
  [[nodiscard]] std::int32_t Claimed(std::int32_t truth) const;

  Reader_Faults faults_;
  std::size_t calls_ = 0;
  std::size_t moved_ = 0;   // bytes read or written since the faults were set
  std::size_t stored_ = 0;  // bytes asked to store since then
  bool bound_ = false;
  bool connected_ = false;
  bool typed_ = false;
  bool powered_ = false;
};

}  // namespace kx::sim
