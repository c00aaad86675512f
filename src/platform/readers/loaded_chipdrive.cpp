#include "platform/readers/loaded_chipdrive.h"

#include "platform/readers/library_call.h"

namespace kx::platform {
namespace {

/// Handle, command, its length, data to the card, its length, data from the card, its length.
using Command_Call = std::int32_t KX_LIBRARY_CALL(std::int32_t*, const char*, std::int32_t*, const char*,
                                                  std::int32_t*, char*, std::int32_t*);

/// Room behind the answer's buffer, for a library that counts on more than it was told of.
constexpr std::size_t spare_room = 4096;

}  // namespace

std::optional<std::int32_t> Loaded_Chipdrive::SCardComand(const std::string& command,
                                                          const std::string& input, std::string& output,
                                                          std::int32_t& output_length) {
  auto* const call = Entry_Of<Command_Call>(library_, "SCardComand");
  if (call == nullptr) return std::nullopt;
  std::int32_t handle = 0;
  auto command_length = static_cast<std::int32_t>(command.size());
  auto input_length = static_cast<std::int32_t>(input.size());
  std::string buffer = output;
  buffer.resize(output.size() + spare_room, ' ');
  const std::int32_t status = call(&handle, command.c_str(), &command_length, input.c_str(), &input_length,
                                   buffer.data(), &output_length);
  output.assign(buffer, 0, output.size());
  return status;
}

}  // namespace kx::platform
