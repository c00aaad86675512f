#pragma once

#include <string>

#include "platform/card_libraries.h"
#include "platform/shared_library.h"

namespace kx::platform {

/// SCARD32 from the folder @p folder, the program's own.
class Loaded_Chipdrive : public Chipdrive_Library {
 public:
  explicit Loaded_Chipdrive(const std::string& folder)
      : library_(folder + "/" + Library_File_Name("SCARD32")) {}
  std::optional<std::int32_t> SCardComand(const std::string& command, const std::string& input,
                                          std::string& output, std::int32_t& output_length) override;

 private:
  Shared_Library library_;
};

}  // namespace kx::platform
