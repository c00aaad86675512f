#pragma once

#include <string>
#include <vector>

#include "platform/card_libraries.h"
#include "sim/card_reader.h"

namespace kx::test {

/// The Chipdrive's library over a simulated reader, in process.
class Simulated_Chipdrive : public platform::Chipdrive_Library {
 public:
  explicit Simulated_Chipdrive(sim::Card_Reader& reader) : reader_(reader) {}

  bool missing = false;
  std::vector<std::string> commands;

  std::optional<std::int32_t> SCardComand(const std::string& command, const std::string& input,
                                          std::string& output, std::int32_t& output_length) override {
    commands.push_back(command);
    if (missing) return std::nullopt;
    const auto* const in = reinterpret_cast<const std::uint8_t*>(input.data());
    auto* const out = reinterpret_cast<std::uint8_t*>(output.data());
    return reader_.Command(command, {in, input.size()}, {out, output.size()}, output_length);
  }

 private:
  sim::Card_Reader& reader_;
};

/// The Todos reader's library over a simulated reader, in process.
class Simulated_Todos : public platform::Todos_Library {
 public:
  explicit Simulated_Todos(sim::Card_Reader& reader) : reader_(reader) {}

  std::vector<std::string> calls;
  std::vector<platform::Card_Context> contexts;  ///< with which the library was bound

  std::int32_t AgmSynInitial(const std::string& reader, platform::Card_Context context) override {
    calls.push_back("Initial " + reader);
    contexts.push_back(context);
    return reader_.Initial(reader);
  }
  std::int32_t AgmSynCardConnect(const std::string&, platform::Card_Context, std::int32_t& card) override {
    calls.emplace_back("Connect");
    return reader_.Connect(card);
  }
  std::int32_t AgmSynSetCardType(std::int32_t card, std::uint8_t type) override {
    calls.push_back("Type " + std::to_string(type));
    return reader_.Set_Type(card, type);
  }
  std::int32_t AgmSynCardReset(std::int32_t card, Bytes answer, std::int32_t& length) override {
    calls.emplace_back("Reset");
    return reader_.Reset(card, answer, length);
  }
  std::int32_t AgmSynCardDisconnect(std::int32_t card, std::int32_t) override {
    calls.emplace_back("Disconnect");
    return reader_.Disconnect(card);
  }
  std::int32_t AgmSynCardRead(std::int32_t card, std::int32_t address, std::int32_t length, Bytes buffer,
                              std::int32_t& count) override {
    calls.push_back("Read " + std::to_string(address) + " " + std::to_string(length));
    return reader_.Read(card, address, length, buffer, count);
  }
  std::int32_t AgmSynCardWriteOneByte(std::int32_t card, std::int32_t address, std::uint8_t data) override {
    return reader_.Write_One_Byte(card, address, data);
  }
  std::int32_t AgmSynCardPageWrite(std::int32_t card, std::int32_t address, Const_Bytes data) override {
    return reader_.Page_Write(card, address, data);
  }
  std::int32_t AgmSynCardMemReadPB(std::int32_t card, std::int32_t address, std::uint8_t& bit) override {
    calls.emplace_back("Read bit");
    return reader_.Read_Protect_Bit(card, address, bit);
  }
  std::int32_t AgmSynCardMemWritePB(std::int32_t card, std::int32_t address, std::uint8_t data) override {
    calls.emplace_back("Protect");
    return reader_.Write_Protect_Bit(card, address, data);
  }
  std::int32_t AgmSynCardVerifyPIN(std::int32_t card, Const_Bytes pin) override {
    calls.emplace_back("Verify");
    return reader_.Verify_Pin(card, pin);
  }
  std::int32_t AgmSynCardChangePIN(std::int32_t card, Const_Bytes pin, Const_Bytes new_pin) override {
    return reader_.Change_Pin(card, pin, new_pin);
  }

 private:
  sim::Card_Reader& reader_;
};

/// A card service that lists what a test fills in.
class Listed_Readers : public platform::Card_Service {
 public:
  bool running = true;
  std::string names = std::string("Todos Argos Mini II USB 00 00\0", 30);
  platform::Card_Context newest = 0;
  int open = 0;  ///< contexts made and not released

  long SCardEstablishContext(platform::Card_Context& context) override {
    if (!running) return 1;
    ++open;
    context = ++newest;
    return 0;
  }
  long SCardListReaders(platform::Card_Context context, std::string& list) override {
    if (!running || context != newest) return 1;
    list = names;
    return names.empty() ? 1 : 0;
  }
  long SCardReleaseContext(platform::Card_Context) override {
    --open;
    return 0;
  }
};

}  // namespace kx::test
