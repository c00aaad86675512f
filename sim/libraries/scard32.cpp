// The Chipdrive's library in front of a simulated card: see reader_on_file.h for where the card is.
#include <string_view>

#include "sim/libraries/reader_on_file.h"

#ifdef _WIN32
#define KXSIM_ENTRY extern "C" __declspec(dllexport) std::int32_t __stdcall
#else
#define KXSIM_ENTRY extern "C" __attribute__((visibility("default"))) std::int32_t
#endif

namespace {

kx::sim::Reader_On_File reader;

std::size_t Size(const std::int32_t* length) {
  return static_cast<std::size_t>(length != nullptr && *length > 0 ? *length : 0);
}

}  // namespace

KXSIM_ENTRY SCardComand(const std::int32_t* /*handle*/, const char* command,
                        const std::int32_t* command_length, const char* input,
                        const std::int32_t* input_length, char* output, std::int32_t* output_length) {
  const auto* const in = reinterpret_cast<const std::uint8_t*>(input);
  auto* const out = reinterpret_cast<std::uint8_t*>(output);
  const std::string_view word(command, Size(command_length));
  return reader.With([&](kx::sim::Card_Reader& held) {
    return held.Command(word, {in, Size(input_length)}, {out, Size(output_length)}, *output_length);
  });
}
