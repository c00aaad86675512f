#pragma once

#include <string>

#include "platform/card_libraries.h"
#include "platform/shared_library.h"

namespace kx::platform {

/// AgmSyn from the folder @p folder, the program's own.
class Loaded_Todos : public Todos_Library {
 public:
  explicit Loaded_Todos(const std::string& folder) : library_(folder + "/" + Library_File_Name("AgmSyn")) {}
  std::int32_t AgmSynInitial(const std::string& reader, Card_Context context) override;
  std::int32_t AgmSynCardConnect(const std::string& reader, Card_Context context,
                                 std::int32_t& card) override;
  std::int32_t AgmSynSetCardType(std::int32_t card, std::uint8_t type) override;
  std::int32_t AgmSynCardReset(std::int32_t card, Bytes answer, std::int32_t& length) override;
  std::int32_t AgmSynCardDisconnect(std::int32_t card, std::int32_t disposition) override;
  std::int32_t AgmSynCardRead(std::int32_t card, std::int32_t address, std::int32_t length, Bytes buffer,
                              std::int32_t& count) override;
  std::int32_t AgmSynCardWriteOneByte(std::int32_t card, std::int32_t address, std::uint8_t data) override;
  std::int32_t AgmSynCardPageWrite(std::int32_t card, std::int32_t address, Const_Bytes data) override;
  std::int32_t AgmSynCardMemReadPB(std::int32_t card, std::int32_t address, std::uint8_t& bit) override;
  std::int32_t AgmSynCardMemWritePB(std::int32_t card, std::int32_t address, std::uint8_t data) override;
  std::int32_t AgmSynCardVerifyPIN(std::int32_t card, Const_Bytes pin) override;
  std::int32_t AgmSynCardChangePIN(std::int32_t card, Const_Bytes pin, Const_Bytes new_pin) override;

 private:
  Shared_Library library_;
};

}  // namespace kx::platform
