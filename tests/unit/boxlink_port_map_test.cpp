#include "boxlink/port_map.h"

#include "support/link_fixture.h"

namespace kx {
namespace {

using testing::AllOf;
using testing::HasSubstr;

class Port_Map : public test::Link_State_Fixture {};

TEST_F(Port_Map, Numbers_Stand_For_Fixed_Devices) {
  const std::pair<int, const char*> rows[] = {{1, "/dev/ttyS0"},
                                              {4, "/dev/ttyS3"},
                                              {5, "/dev/ttyUSB0"},
                                              {12, "/dev/ttyUSB7"},
                                              {13, "/dev/ttyACM0"},
                                              {16, "/dev/ttyACM3"},
                                              {17, ""},
                                              {0, ""},
                                              {-3, ""}};
  for (const auto& [number, path] : rows) EXPECT_EQ(Device_Path(number), path) << number;
}

TEST_F(Port_Map, Higher_Numbers_Count_The_Devices_That_The_Map_Does_Not_Reach) {
  devices_.rows = {
      {"/dev/ttyS0", "", ""}, {"/dev/ttyS4", "", ""}, {"/dev/ttyUSB7", "", ""}, {"/dev/ttyUSB8", "", ""}};
  EXPECT_EQ(Device_Path(17), "/dev/ttyS4");
  EXPECT_EQ(Device_Path(18), "/dev/ttyUSB8");
  EXPECT_EQ(Device_Path(19), "");
}

TEST_F(Port_Map, A_Line_Of_The_Settings_File_Overrides_Any_Number) {
  folder_.Write("test.ini",
                "COM_Device9=/dev/serial/by-id/box\r\ncom_device40=/dev/pts/7\r\ncom_device5=\r\n");
  EXPECT_EQ(Device_Path(9), "/dev/serial/by-id/box");
  EXPECT_EQ(Device_Path(40), "/dev/pts/7");
  EXPECT_EQ(Device_Path(5), "/dev/ttyUSB0");
  devices_.rows = {{"/dev/ttyUSB8", "", ""}, {"/dev/ttyUSB9", "", ""}};
  folder_.Write("test.ini", "com_device17=/dev/pts/7\r\ncom_device3=/dev/ttyUSB8\r\ncom_device-1=x\r\n");
  EXPECT_EQ(Device_Path(17), "/dev/pts/7");
  EXPECT_EQ(Device_Path(18), "/dev/ttyUSB9") << "neither hidden nor counted twice";
  EXPECT_EQ(Device_Path(-1), "");
}

TEST_F(Port_Map, A_System_With_Com_Names_Opens_Those) {
  class Com_Names : public test::Listed_Devices, public platform::Com_Services {
   public:
    [[nodiscard]] const Com_Services* Com() const override { return this; }
    [[nodiscard]] std::optional<platform::System_Version> Version() const override { return {}; }
    [[nodiscard]] platform::Listing<platform::Port_Interface> Interfaces() const override { return {}; }
    [[nodiscard]] platform::Listing<std::string> Registry_Keys(const std::string&) const override {
      return {};
    }
    [[nodiscard]] std::optional<std::string> Registry_Text(const std::string&,
                                                           const std::string&) const override {
      return {};
    }
  } com;
  platform::seams.port_devices = &com;
  folder_.Write("test.ini", "com_device4=\\\\.\\CNCB0\r\n");
  EXPECT_EQ(Device_Path(4), R"(\\.\CNCB0)");
  EXPECT_EQ(Device_Path(23), R"(\\.\COM23)");
  EXPECT_EQ(Device_Path(0), "");
}

TEST_F(Port_Map, Tells_What_Helps_When_A_Port_Does_Not_Open) {
  EXPECT_EQ(Open_Help({}, 5, "/dev/ttyUSB0"), "");
  EXPECT_THAT(Open_Help({1, "x"}, 5, "/dev/ttyUSB0"),
              AllOf(HasSubstr("/dev/ttyUSB0"), HasSubstr("com_device5=")));
  EXPECT_THAT(Open_Help({1, "x"}, 19, ""), HasSubstr("No device belongs to COM19"));
  EXPECT_THAT(Open_Help({2, "x"}, 5, "/dev/ttyUSB0"),
              AllOf(HasSubstr("dialout"), HasSubstr("sudo usermod -a -G dialout $USER")));
  EXPECT_THAT(Open_Help({3, "x"}, 5, "/dev/ttyUSB0"), HasSubstr("in use by another program"));
  EXPECT_EQ(Open_Help({8, "Something odd"}, 5, "/dev/ttyUSB0"), "/dev/ttyUSB0: Something odd");
}

}  // namespace
}  // namespace kx
