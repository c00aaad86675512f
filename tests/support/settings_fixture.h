#pragma once

#include <gtest/gtest.h>

#include <string>

#include "platform/seams.h"
#include "sensors/load_axes.h"
#include "sensors/sensor_store.h"
#include "settings/brand.h"
#include "settings/byte_notes.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/notice.h"
#include "settings/presets.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "support/queued_answers.h"
#include "support/temp_dir.h"

namespace kx::test {

/// Settings and sensors as before the start of the program, brand 0, in an empty folder.
class Settings_Fixture : public testing::Test {
 protected:
  void SetUp() override {
    Reset();
    platform::seams.ask = &ask_;
    start_dir = folder_.Path() + "/";
    Set_Brand(0);
  }
  void TearDown() override {
    Reset();
    platform::seams = {};
  }

  void Write_Ini(const std::string& bytes) const { folder_.Write(Ini_File_Name, bytes); }
  [[nodiscard]] std::string Ini() const { return folder_.Read(Ini_File_Name); }

  Temp_Dir folder_;
  Queued_Answers ask_;

 private:
  static void Reset() {
    Reset_Session_State();
    Reset_Brand_State();
    Reset_Ini_State();
    Reset_Image_State();
    Reset_Notice_State();
    Reset_Preset_State();
    Reset_Byte_Notes_State();
    Reset_Sensor_State();
    Reset_Load_Axes_State();
    Reset_Refresh_State();
  }
};

}  // namespace kx::test
