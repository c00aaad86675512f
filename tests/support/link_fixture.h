#pragma once

#include <gmock/gmock.h>

#include <string>
#include <string_view>
#include <vector>

#include "boxlink/comm_port.h"
#include "boxlink/link_state.h"
#include "boxlink/link_texts.h"
#include "platform/seams.h"
#include "settings/brand.h"
#include "settings/earlier_tunes.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/reference_tune.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "sim/line.h"
#include "support/in_process_loop.h"
#include "support/listed_devices.h"
#include "support/queued_answers.h"
#include "support/scripted_serial_port.h"
#include "support/stepped_clock.h"
#include "support/temp_dir.h"

namespace kx::test {

/// A tune in which every byte can be told from its neighbours, master mode, dataset 108.
inline Byte_Image Sample_Tune() {
  Byte_Image image;
  for (int i = 0; i < Byte_Image::size; ++i) image[i] = static_cast<std::uint8_t>(7 * i + 5);
  image[map::flags_a] = 0x41;
  image.Fill(map::reserved_low, map::reserved_high, 0);
  image[map::dataset] = 108;
  return image;
}

inline sim::Image As_Sent(const Byte_Image& image) {
  sim::Image sent{};
  for (int i = 0; i < Byte_Image::size; ++i) sent[static_cast<std::size_t>(i)] = image[i];
  return sent;
}

/// A box that holds the sample tune; a slave, when present, holds the same as a slave does.
inline sim::Box_Contents Sample_Box(bool slave = false) {
  sim::Box_Contents contents;
  contents.Master = As_Sent(Sample_Tune());
  contents.Slave = sim::As_Slave(contents.Master);
  contents.Slave_Present = slave;
  return contents;
}

/// @p text with every time of day as "T" and line ends as "|", so that a journal can be compared in one line.
inline std::string Without_Times(std::string text) {
  const auto starts_time = [&](std::size_t at) {
    static constexpr std::string_view shape = "dd:dd:dd";
    for (std::size_t i = 0; i < shape.size(); ++i) {
      const char c = text[at + i];
      if (shape[i] == ':' ? c != ':' : c < '0' || c > '9') return false;
    }
    return true;
  };
  for (std::size_t at = 0; at + 8 <= text.size(); ++at)
    if (starts_time(at)) text.replace(at, 8, "T");
  for (std::size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at))
    text.replace(at, 2, "|");
  return text;
}

/// The link in its first state, COM9 as the port, boxes answered by the test, an own settings file.
class Link_State_Fixture : public testing::Test {
 protected:
  Link_State_Fixture() {
    platform::seams.ask = &ask_;
    platform::seams.port_devices = &devices_;
    Reset_Refresh_State();
    Reset_Image_State();
    Reset_Session_State();
    Reset_Reference_State();
    Reset_Ini_State();
    start_dir = folder_.Path() + "/";
    Ini_File_Name = "test.ini";
    Com_Port_Number = 9;
    DatasetID = 108;
    CardByte = Sample_Tune();
  }
  ~Link_State_Fixture() override {
    Reset_Earlier_Tunes();
    platform::seams = {};
  }

  [[nodiscard]] static std::string Status() { return Without_Times(rs232_text.Text()); }
  static sim::Faults Faults_Of(const std::string& knobs) {
    const auto parsed = sim::Parse_Faults(knobs);
    EXPECT_EQ(parsed.Error, "");
    return parsed.Knobs;
  }

  Temp_Dir folder_;
  Queued_Answers ask_;
  Listed_Devices devices_;
};

/// The same on a stepped clock, with a simulated box at the far end of a scripted port.
class Link_Fixture : public Link_State_Fixture {
 protected:
  Link_Fixture() {
    platform::seams.clock = &clock_;
    platform::seams.event_loop = &loop_;
    platform::seams.serial_port = &port_;
    Reset_Link_State();
    port_.answer = [this](const std::string& text) {
      line_.Receive(text, clock_.Elapsed());
      return std::string();
    };
    port_.deliver = [this] { return line_.Deliver(clock_.Elapsed()); };
    loop_.on_turn = [this] {
      if (line_.Hung_Up()) port_.Lose();
    };
  }
  ~Link_Fixture() override { Reset_Link_State(); }

  sim::Box_Contents& Box() { return line_.The_Box().Contents(); }
  void Set_Faults(const std::string& knobs) { line_.Set_Faults(Faults_Of(knobs)); }

  Stepped_Clock clock_;
  In_Process_Loop loop_{clock_, 0.0005};
  Scripted_Serial_Port port_;
  sim::Line line_{sim::Box(Sample_Box())};
};

}  // namespace kx::test
