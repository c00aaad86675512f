// Fuzz target of the log file reader: any bytes are read, decoded, written and read again. What is written
// must mean the same as what was read. scripts/fuzz_log_reader.sh builds and runs it.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "logging/file_panel.h"
#include "logging/log_reader.h"
#include "logging/log_repair.h"
#include "logging/log_sections.h"
#include "logging/log_settings.h"
#include "logging/log_state.h"
#include "platform/seams.h"

namespace {

/// Agrees to everything.
class Silent_Ask : public kx::platform::Ask {
 public:
  kx::platform::Answer Show(const kx::platform::Message&) override { return kx::platform::Answer::ok; }
  std::optional<std::string> Open_Name(const kx::platform::File_Question&) override { return {}; }
  std::optional<std::string> Save_Name(const kx::platform::File_Question&) override { return {}; }
};

void Require(bool holds) {
  if (!holds) std::abort();
}

void Read(const std::string& bytes) {
  kx::KX_Info_Data_File_Test(bytes, false);
  kx::Read_All_Log_Setting_Variables();
  kx::KX_Log_Data_Read();
  Require(kx::Log_Rows >= 0 && kx::Log_Rows <= kx::log_capacity);
  Require(kx::Log_Chart_First >= 1 && kx::Log_Chart_Last <= kx::Log_Rows);
}

std::string Written() {
  kx::Update_All_Log_Setting_Variables();
  return kx::Join_Log_File({kx::Log_Setting_Text, kx::Log_Sens_Def_Text, kx::Readable_Settings_Text,
                            kx::Log_Data_Text, kx::Log_Dataset_Text});
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Silent_Ask ask;
  kx::platform::seams.ask = &ask;
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  static_cast<void>(kx::Preview_Of(bytes));
  kx::Reset_Log_State();
  kx::Load_All_Default_Log_Settings();
  Read(kx::Repaired_Text(bytes));
  const std::string first = Written();
  const int rows = kx::Log_Rows;
  Read(first);
  Require(kx::Log_Rows == rows);
  const std::string second = Written();
  Read(second);
  Require(Written() == second);  // from the second time on nothing changes any more
  return 0;
}
