// The Todos reader's library in front of a simulated card: see reader_on_file.h for where the card is.
#include <string_view>

#include "sim/libraries/reader_on_file.h"

#ifdef _WIN32
#define KXSIM_ENTRY extern "C" __declspec(dllexport) std::int32_t __stdcall
#else
#define KXSIM_ENTRY extern "C" __attribute__((visibility("default"))) std::int32_t
#endif

namespace {

using Number = std::int32_t;
using Byte = std::uint8_t;
using kx::sim::Card_Reader;

kx::sim::Reader_On_File reader;

std::size_t Size(Number length) { return static_cast<std::size_t>(length > 0 ? length : 0); }

}  // namespace

KXSIM_ENTRY AgmSynInitial(const char* name, Number length, std::intptr_t /*context*/) {
  return reader.With([&](Card_Reader& held) { return held.Initial({name, Size(length)}); });
}

KXSIM_ENTRY AgmSynCardConnect(const char* /*name*/, Number /*length*/, std::intptr_t /*context*/,
                              Number* card) {
  return reader.With([&](Card_Reader& held) { return held.Connect(*card); });
}

KXSIM_ENTRY AgmSynSetCardType(Number card, Byte type) {
  return reader.With([&](Card_Reader& held) { return held.Set_Type(card, type); });
}

KXSIM_ENTRY AgmSynCardReset(Number card, Byte* answer, Number size, Number* length, Byte* result) {
  *result = 0;
  return reader.With([&](Card_Reader& held) { return held.Reset(card, {answer, Size(size)}, *length); });
}

KXSIM_ENTRY AgmSynCardDisconnect(Number card, Number /*disposition*/) {
  return reader.With([&](Card_Reader& held) { return held.Disconnect(card); });
}

KXSIM_ENTRY AgmSynCardRead(Number card, Byte /*area*/, Number address, Byte* buffer, Number length,
                           Number size, Number* count) {
  return reader.With([&](Card_Reader& held) {
    return held.Read(card, address, length, {buffer, Size(size)}, *count);
  });
}

KXSIM_ENTRY AgmSynCardWriteOneByte(Number card, Byte /*area*/, Number address, Byte data) {
  return reader.With([&](Card_Reader& held) { return held.Write_One_Byte(card, address, data); });
}

KXSIM_ENTRY AgmSynCardPageWrite(Number card, Byte /*area*/, Number address, const Byte* data, Number length) {
  return reader.With([&](Card_Reader& held) { return held.Page_Write(card, address, {data, Size(length)}); });
}

KXSIM_ENTRY AgmSynCardMemReadPB(Number card, Number address, Byte* bit) {
  return reader.With([&](Card_Reader& held) { return held.Read_Protect_Bit(card, address, *bit); });
}

KXSIM_ENTRY AgmSynCardMemWritePB(Number card, Number address, Byte data) {
  return reader.With([&](Card_Reader& held) { return held.Write_Protect_Bit(card, address, data); });
}

KXSIM_ENTRY AgmSynCardVerifyPIN(Number card, Byte /*area*/, const Byte* pin, Number length, Number /*value*/,
                                Byte* /*answer*/, Number* /*answer_length*/) {
  return reader.With([&](Card_Reader& held) { return held.Verify_Pin(card, {pin, Size(length)}); });
}

KXSIM_ENTRY AgmSynCardChangePIN(Number card, Byte /*area*/, const Byte* pin, const Byte* new_pin,
                                Number length, Number /*value*/, Byte* /*answer*/,
                                Number* /*answer_length*/) {
  return reader.With([&](Card_Reader& held) {
    return held.Change_Pin(card, {pin, Size(length)}, {new_pin, Size(length)});
  });
}
