#include "platform/readers/loaded_todos.h"

#include <array>

#include "platform/readers/library_call.h"

namespace kx::platform {
namespace {

using Number = std::int32_t;
using Byte = std::uint8_t;

/// The memory area that all calls name: the card's main memory.
constexpr Byte main_memory = 0;

/// A value that the PIN calls want before their last two pointers; its meaning is the library's.
constexpr Number pin_value = 5;

/// Calls the function @p name; @p Arguments are the library's own types.
template <typename... Arguments>
Number Call(Shared_Library& library, const char* name, Arguments... arguments) {
  auto* const function = Entry_Of<Number KX_LIBRARY_CALL(Arguments...)>(library, name);
  return function == nullptr ? no_card_library : function(arguments...);
}

Number Size_Of(std::span<const Byte> bytes) { return static_cast<Number>(bytes.size()); }

/// The library writes an answer to a PIN here, of which nobody makes use.
struct Pin_Answer {
  std::array<Byte, 256> bytes{};
  Number length = 0;
};

}  // namespace

Number Loaded_Todos::AgmSynInitial(const std::string& reader, Card_Context context) {
  return Call(library_, "AgmSynInitial", reader.c_str(), static_cast<Number>(reader.size()), context);
}

Number Loaded_Todos::AgmSynCardConnect(const std::string& reader, Card_Context context, Number& card) {
  return Call(library_, "AgmSynCardConnect", reader.c_str(), static_cast<Number>(reader.size()), context,
              &card);
}

Number Loaded_Todos::AgmSynSetCardType(Number card, Byte type) {
  return Call(library_, "AgmSynSetCardType", card, type);
}

Number Loaded_Todos::AgmSynCardReset(Number card, Bytes answer, Number& length) {
  std::array<Byte, 256> result{};
  return Call(library_, "AgmSynCardReset", card, answer.data(), Size_Of(answer), &length, result.data());
}

Number Loaded_Todos::AgmSynCardDisconnect(Number card, Number disposition) {
  return Call(library_, "AgmSynCardDisconnect", card, disposition);
}

Number Loaded_Todos::AgmSynCardRead(Number card, Number address, Number length, Bytes buffer, Number& count) {
  return Call(library_, "AgmSynCardRead", card, main_memory, address, buffer.data(), length,
              Size_Of(buffer) - 1, &count);
}

Number Loaded_Todos::AgmSynCardWriteOneByte(Number card, Number address, Byte data) {
  return Call(library_, "AgmSynCardWriteOneByte", card, main_memory, address, data);
}

Number Loaded_Todos::AgmSynCardPageWrite(Number card, Number address, Const_Bytes data) {
  return Call(library_, "AgmSynCardPageWrite", card, main_memory, address, data.data(), Size_Of(data));
}

Number Loaded_Todos::AgmSynCardMemReadPB(Number card, Number address, Byte& bit) {
  return Call(library_, "AgmSynCardMemReadPB", card, address, &bit);
}

Number Loaded_Todos::AgmSynCardMemWritePB(Number card, Number address, Byte data) {
  return Call(library_, "AgmSynCardMemWritePB", card, address, data);
}

Number Loaded_Todos::AgmSynCardVerifyPIN(Number card, Const_Bytes pin) {
  Pin_Answer answer;
  return Call(library_, "AgmSynCardVerifyPIN", card, main_memory, pin.data(), Size_Of(pin), pin_value,
              answer.bytes.data(), &answer.length);
}

Number Loaded_Todos::AgmSynCardChangePIN(Number card, Const_Bytes pin, Const_Bytes new_pin) {
  Pin_Answer answer;
  return Call(library_, "AgmSynCardChangePIN", card, main_memory, pin.data(), new_pin.data(), Size_Of(pin),
              pin_value, answer.bytes.data(), &answer.length);
}

}  // namespace kx::platform
