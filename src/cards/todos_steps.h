#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "boxlink/transfer.h"
#include "cards/todos.h"
#include "platform/seams.h"

/// Steps that the operations with a Todos reader are made of, for use inside one of them.
namespace kx::todos {

/// Shows @p text as result and as status of the main form.
void Set_Result(std::string_view text);

[[nodiscard]] const Card_Type& Chosen_Type();

/// True between a connection and its end.
[[nodiscard]] bool Connected();

/// Runs @p call with the library; a missing library, or one that throws, gives platform::no_card_library.
template <typename Call>
std::int32_t With_Library(Call call) {
  auto* const library = platform::seams.todos;
  if (library == nullptr) return platform::no_card_library;
  try {
    return call(*library);
  } catch (...) {
    return platform::no_card_library;
  }
}

/// The same for one call of several: waiting events run before it, so that the window stands still for no
/// longer than a call takes. Throws Transfer_Ended when the operation is to end.
template <typename Call>
std::int32_t Next_Call(Call call) {
  Yield();
  return With_Library(call);
}

/// Connects to the card in the chosen reader and resets it; Todos_Powered tells whether that worked, the
/// result why it did not.
void Connect();
void Reset_Card();
void Disconnect_Card();

/// The whole number from @p lowest to @p highest that @p text holds; nothing for any other text.
[[nodiscard]] std::optional<std::int32_t> Number_In(const Shown_Text& text, int lowest, int highest);

/// Highest address that a card of any kind has.
constexpr int last_address = 65535;

/// The fields as they are at first.
void Reset_Fields();

}  // namespace kx::todos
