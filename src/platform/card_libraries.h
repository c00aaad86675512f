#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>

/// The three libraries behind card readers. The two of the readers' makers are closed and not part of this
/// program: they are looked for in its own folder when they are needed. Sizes and statuses are those of the
/// libraries; whatever they claim to have delivered is to be checked by the caller.
namespace kx::platform {

/// SCARD32, the library of the Chipdrive reader.
class Chipdrive_Library {
 public:
  virtual ~Chipdrive_Library() = default;

  /// Runs @p command. @p output is the buffer for its answer, of a fixed size; @p output_length tells that
  /// size and comes back with what the library claims to have filled. @p input and @p output are one
  /// character a byte.
  /// @return the library's status; nothing when there is no library or it lacks the call.
  virtual std::optional<std::int32_t> SCardComand(const std::string& command, const std::string& input,
                                                  std::string& output, std::int32_t& output_length) = 0;
};

/// A context of the card service, as wide as the service has it. 0 is none.
using Card_Context = std::intptr_t;

/// What each call of a missing library or entry returns.
constexpr std::int32_t no_card_library = -1;

/// AgmSyn, the library of the Todos reader. Each call returns 0 on success.
class Todos_Library {
 public:
  using Bytes = std::span<std::uint8_t>;
  using Const_Bytes = std::span<const std::uint8_t>;

  virtual ~Todos_Library() = default;

  /// Binds the library to the reader of that name.
  virtual std::int32_t AgmSynInitial(const std::string& reader, Card_Context context) = 0;
  virtual std::int32_t AgmSynCardConnect(const std::string& reader, Card_Context context,
                                         std::int32_t& card) = 0;
  virtual std::int32_t AgmSynSetCardType(std::int32_t card, std::uint8_t type) = 0;

  /// Powers the card. @p length comes back with the claimed length of the answer in @p answer.
  virtual std::int32_t AgmSynCardReset(std::int32_t card, Bytes answer, std::int32_t& length) = 0;
  virtual std::int32_t AgmSynCardDisconnect(std::int32_t card, std::int32_t disposition) = 0;

  /// Reads @p length bytes from @p address on. The last byte of @p buffer is a spare one, which the library
  /// is not told of. @p count comes back with the claimed number of bytes read.
  virtual std::int32_t AgmSynCardRead(std::int32_t card, std::int32_t address, std::int32_t length,
                                      Bytes buffer, std::int32_t& count) = 0;
  virtual std::int32_t AgmSynCardWriteOneByte(std::int32_t card, std::int32_t address, std::uint8_t data) = 0;
  virtual std::int32_t AgmSynCardPageWrite(std::int32_t card, std::int32_t address, Const_Bytes data) = 0;
  virtual std::int32_t AgmSynCardMemReadPB(std::int32_t card, std::int32_t address, std::uint8_t& bit) = 0;
  virtual std::int32_t AgmSynCardMemWritePB(std::int32_t card, std::int32_t address, std::uint8_t data) = 0;
  virtual std::int32_t AgmSynCardVerifyPIN(std::int32_t card, Const_Bytes pin) = 0;

  /// @p pin and @p new_pin have one length.
  virtual std::int32_t AgmSynCardChangePIN(std::int32_t card, Const_Bytes pin, Const_Bytes new_pin) = 0;
};

/// The system's card service (PC/SC). Each call returns 0 on success; a service that does not run is a
/// failure like any other.
class Card_Service {
 public:
  virtual ~Card_Service() = default;
  virtual long SCardEstablishContext(Card_Context& context) = 0;

  /// The names of all readers, each ended by NUL; the last may lack it.
  virtual long SCardListReaders(Card_Context context, std::string& names) = 0;
  virtual long SCardReleaseContext(Card_Context context) = 0;
};

}  // namespace kx::platform
