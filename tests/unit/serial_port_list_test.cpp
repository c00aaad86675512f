#include "boxlink/serial_port_list.h"

#include <map>
#include <optional>
#include <set>

#include "boxlink/port_map.h"
#include "boxlink/preferences.h"
#include "settings/failure.h"
#include "support/link_fixture.h"
#include "support/workspace_fixture.h"

namespace kx {
namespace {

using platform::Com_Services;
using platform::Listing;
using platform::Port_Error;
using platform::Port_Interface;
using platform::System_Version;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr System_Version windows_98{1, 4, 10};
constexpr System_Version windows_nt{2, 4, 0};
constexpr System_Version windows_xp{2, 5, 1};

/// A system with COM ports as it was recorded. A key that is not in the tree fails the walk.
class Recorded_Com : public Com_Services {
 public:
  std::optional<System_Version> version;
  Listing<Port_Interface> interfaces;
  std::map<std::string, std::vector<std::string>> keys;
  std::map<std::string, std::string> texts;  ///< by key and value name

  [[nodiscard]] std::optional<System_Version> Version() const override { return version; }
  [[nodiscard]] Listing<Port_Interface> Interfaces() const override { return interfaces; }
  [[nodiscard]] Listing<std::string> Registry_Keys(const std::string& path) const override {
    const auto found = keys.find(path);
    if (found == keys.end()) return {{}, {2, "No such key"}};
    return {found->second, {}};
  }
  [[nodiscard]] std::optional<std::string> Registry_Text(const std::string& path,
                                                         const std::string& name) const override {
    const auto found = texts.find(path + ":" + name);
    return found == texts.end() ? std::nullopt : std::optional(found->second);
  }
};

class Recorded_Devices : public test::Listed_Devices {
 public:
  std::set<std::string> existing;
  std::set<std::string> busy;
  const Com_Services* com = nullptr;

  [[nodiscard]] bool Exists(const std::string& port) const override {
    return existing.contains(port) || Port_Devices::Exists(port);
  }
  [[nodiscard]] bool Is_Free(const std::string& port) const override {
    return !busy.contains(port) && Exists(port);
  }
  [[nodiscard]] const Com_Services* Com() const override { return com; }
};

class Serial_Ports : public test::Link_State_Fixture {
 protected:
  Serial_Ports() {
    platform::seams.port_devices = &recorded_;
    platform::seams.desktop = &desktop_;
  }

  void Run_On(std::optional<System_Version> version) {
    com_.version = version;
    recorded_.com = &com_;
  }

  /// One text a port: all that the list tells of it.
  static std::vector<std::string> Texts(const clsSerialPortList& ports) {
    std::vector<std::string> texts;
    for (int index = 1; index <= ports.PortCount(); ++index) {
      const clsSerialPort& port = ports.port(index);
      texts.push_back(std::to_string(port.COMx) + "|" + port.Name + "|" + port.Description + "|" +
                      port.DevPath + (port.IsUsb ? "|usb" : ""));
    }
    return texts;
  }
  static std::vector<int> Numbers(const clsSerialPortList& ports) {
    std::vector<int> numbers;
    for (int index = 1; index <= ports.PortCount(); ++index) numbers.push_back(ports.port(index).COMx);
    return numbers;
  }
  std::vector<std::string> Enumerated(std::int16_t count = 16, bool only_existing = false,
                                      bool only_free = false, bool use_probe = false) {
    ports_.EnumerateList(count, only_existing, only_free, use_probe);
    return Texts(ports_);
  }

  Recorded_Com com_;
  Recorded_Devices recorded_;
  Kept_Desktop desktop_;
  clsSerialPortList ports_;
};

TEST_F(Serial_Ports, A_Port_Remembers_How_It_Was_Before) {
  Run_On(windows_xp);
  recorded_.existing = {"COM12"};
  clsSerialPort port;
  port.COMx = 12;
  EXPECT_EQ(port.COMxString(), "COM12");
  EXPECT_TRUE(port.CheckIfExist());
  EXPECT_FALSE(port.checkIfOpen());
  recorded_.busy = {"COM12"};
  EXPECT_TRUE(port.checkIfOpen());
  EXPECT_TRUE(port.IsBusy());
  EXPECT_FALSE(port.WasBusy());
  recorded_.busy.clear();
  EXPECT_FALSE(port.checkIfOpen());
  EXPECT_TRUE(port.WasBusy());
  port.Set_WasBusy(false);
  EXPECT_FALSE(port.WasBusy());
}

TEST_F(Serial_Ports, The_List_Counts_From_One_And_Its_Ports_Can_Be_Changed) {
  clsSerialPort port;
  port.Name = "first";
  ports_.AddPort(port);
  ports_.port(1).Name = "renamed";
  EXPECT_EQ(std::as_const(ports_).port(1).Name, "renamed");
  EXPECT_THROW(std::ignore = ports_.port(0), Failure);
  EXPECT_THROW(std::ignore = ports_.port(2), Failure);
}

TEST_F(Serial_Ports, The_Plain_Probe_Tries_Each_Number) {
  struct Case {
    bool only_existing, only_free;
    std::vector<int> numbers;
  };
  const Case cases[] = {
      {false, false, {1, 2, 3, 4, 5}}, {true, false, {2, 5}}, {true, true, {5}}, {false, true, {5}}};
  Run_On({});
  recorded_.existing = {"COM2", "COM5", "COM6"};
  recorded_.busy = {"COM2"};
  for (const Case& row : cases) {
    ports_.PopulateList(5, row.only_existing, row.only_free);
    EXPECT_EQ(Numbers(ports_), row.numbers) << row.only_existing << row.only_free;
  }
  EXPECT_THAT(Texts(ports_), ElementsAre(R"(5|COM5||\\.\COM5)"));
}

TEST_F(Serial_Ports, The_Plain_Probe_Asks_For_The_Devices_Of_The_Map_Where_Ports_Are_Paths) {
  folder_.Write("test.ini", "com_device2=/dev/pts/7\r\n");
  recorded_.existing = {"/dev/pts/7", "/dev/ttyUSB0", "/dev/ttyS1"};
  ports_.PopulateList(16, true, false);
  EXPECT_THAT(Texts(ports_), ElementsAre(R"(2|COM2||\\.\COM2)", R"(5|COM5||\\.\COM5)"));
}

TEST_F(Serial_Ports, The_Version_Of_The_System_Chooses_The_Way) {
  const std::pair<std::optional<System_Version>, const char*> cases[] = {
      {windows_98, "From the registry"},
      {System_Version{0, 3, 10}, "From the registry"},
      {windows_nt, "COM2"},
      {System_Version{2, 5, 0}, "Device (COM4)"},
      {System_Version{2, 10, 0}, "Device (COM4)"},
      {std::nullopt, "COM1"}};
  com_.interfaces.rows = {{"Device (COM4)", "Device", {}}};
  com_.keys = {{"Enum", {"BIOS"}}, {R"(Enum\BIOS)", {"*PNP0501"}}, {R"(Enum\BIOS\*PNP0501)", {"0D"}}};
  com_.texts = {{R"(Enum\BIOS\*PNP0501\0D:PORTNAME)", "COM9"},
                {R"(Enum\BIOS\*PNP0501\0D:FRIENDLYNAME)", "From the registry"}};
  recorded_.existing = {"COM2"};
  for (const auto& [version, name] : cases) {
    Run_On(version);
    ports_.EnumerateList(16, false, false, false);
    ASSERT_GT(ports_.PortCount(), 0);
    EXPECT_EQ(ports_.port(1).Name, name);
  }
}

TEST_F(Serial_Ports, Device_Interfaces_Are_Read_By_Their_Properties) {
  using namespace std::string_literals;
  Run_On(windows_xp);
  com_.interfaces.rows = {
      {"Communications Port (COM1)\0rest"s, "Communications Port\0rest"s, {}},
      {"USB Serial Port (COM23)", "USB Serial Port", "on Serial USB\0"s},
      {"USB Serial Port (COM24)", "USB Serial Port", "USB Serial Converter"},
      {"Modem without a number", "Modem", "USB"},
      {"ECP Printer Port (LPT1)", "ECP Printer Port", {}},
      {"Odd (COMx)", "Odd", {}},
      {"Odd (COM7b)", "Odd", {}},
      {"Odd (COM7", "Odd", {}},
      {"Odd (COM70000)", "Odd", {}},
      {"No description (COM5)", {}, {}},
      {{}, "No name (COM6)", {}},
  };
  EXPECT_THAT(Enumerated(), ElementsAre(R"(1|Communications Port (COM1)|Communications Port|\\.\COM1)",
                                        R"(23|USB Serial Port (COM23)|USB Serial Port|\\.\COM23|usb)",
                                        R"(24|USB Serial Port (COM24)|USB Serial Port|\\.\COM24)"));
  recorded_.existing = {"COM1", "COM24"};
  recorded_.busy = {"COM1"};
  EXPECT_THAT(Enumerated(16, true, true), ElementsAre(testing::StartsWith("24|")));
}

TEST_F(Serial_Ports, The_Registry_Is_Searched_Where_It_Holds_Ports) {
  Run_On(windows_98);
  com_.keys = {{"Enum", {"BIOS", "USBPORTS", "ROOT", "PCI"}},
               {R"(Enum\BIOS)", {"*PNP0501", "*PNP0500", "*PNP0A03"}},
               {R"(Enum\BIOS\*PNP0501)", {"0D", "0E"}},
               {R"(Enum\BIOS\*PNP0500)", {"0F"}},
               {R"(Enum\USBPORTS)", {"VID_0403+PID_6001"}},
               {R"(Enum\USBPORTS\VID_0403+PID_6001)", {"1"}},
               {R"(Enum\ROOT)", {"Ports"}},
               {R"(Enum\ROOT\Ports)", {"0000", "0001", "0002"}},
               {R"(Enum\PCI)", {}}};
  com_.texts = {{R"(Enum\BIOS\*PNP0501\0D:PORTNAME)", "COM1"},
                {R"(Enum\BIOS\*PNP0501\0D:FRIENDLYNAME)", "Communications Port (COM1)"},
                {R"(Enum\BIOS\*PNP0501\0E:FRIENDLYNAME)", "Without a port name (COM2)"},
                {R"(Enum\BIOS\*PNP0500\0F:PORTNAME)", "COM3"},
                {R"(Enum\USBPORTS\VID_0403+PID_6001\1:PORTNAME)", "COM17"},
                {R"(Enum\USBPORTS\VID_0403+PID_6001\1:FRIENDLYNAME)", "USB Serial Port"},
                {R"(Enum\ROOT\Ports\0000:PORTNAME)", "LPT1"},
                {R"(Enum\ROOT\Ports\0001:PORTNAME)", "COM"},
                {R"(Enum\ROOT\Ports\0002:PORTNAME)", "COM4:"}};
  EXPECT_THAT(Enumerated(), ElementsAre(R"(1|Communications Port (COM1)||\\.\COM1)", R"(3|COM3||\\.\COM3)",
                                        R"(17|USB Serial Port||\\.\COM17|usb)", R"(4|COM4:||\\.\COM4:)"));
}

TEST_F(Serial_Ports, An_Error_Of_A_List_Call_Leaves_An_Empty_List) {
  Run_On(windows_xp);
  com_.interfaces.rows = {{"Device (COM4)", "Device", {}}};
  ASSERT_EQ(Enumerated().size(), 1U);
  com_.interfaces.error = {5, "Access denied"};
  EXPECT_THAT(Enumerated(4, false, false, true), IsEmpty());
  EXPECT_EQ(ports_.Error_Text(), "Access denied");

  Run_On(windows_98);
  com_.keys = {{"Enum", {"BIOS", "PCI"}}, {R"(Enum\BIOS)", {"*PNP0501"}}, {R"(Enum\BIOS\*PNP0501)", {"0D"}}};
  com_.texts = {{R"(Enum\BIOS\*PNP0501\0D:PORTNAME)", "COM1"}};
  EXPECT_THAT(Enumerated(), IsEmpty());
  EXPECT_EQ(ports_.Error_Text(), "No such key");
  com_.keys[R"(Enum\PCI)"] = {};
  EXPECT_EQ(Enumerated().size(), 1U);
  EXPECT_EQ(ports_.Error_Text(), "");
}

TEST_F(Serial_Ports, The_Probe_Adds_What_The_System_Left_Out) {
  Run_On(windows_xp);
  com_.interfaces.rows = {{"Device (COM2)", "Device", {}}, {"Device (COM30)", "Device", {}}};
  EXPECT_THAT(Enumerated(3, false, false, true),
              ElementsAre(R"(2|Device (COM2)|Device|\\.\COM2)", R"(30|Device (COM30)|Device|\\.\COM30)",
                          R"(1|COM1||\\.\COM1)", R"(3|COM3||\\.\COM3)"));
}

TEST_F(Serial_Ports, Devices_With_Paths_Have_The_Numbers_That_Open_Them) {
  recorded_.rows = {{"/dev/ttyACM0", "ttyACM0", "KX box", true},
                    {"/dev/ttyACM4", "ttyACM4", "Fifth", true},
                    {"/dev/ttyS0", "ttyS0", "", false},
                    {"/dev/ttyUSB0", "ttyUSB0", "First", true},
                    {"/dev/ttyUSB4", "ttyUSB4", "Its number is given away", true},
                    {"/dev/ttyUSB9", "ttyUSB9", "Tenth", true}};
  folder_.Write("test.ini",
                "com_device9=/dev/pts/7\r\ncom_device40=/dev/ttyUSB0\r\ncom_device3=/dev/gone\r\n");
  recorded_.existing = {"/dev/pts/7"};
  EXPECT_THAT(
      Enumerated(),
      ElementsAre("1|/dev/ttyS0 (COM1)|/dev/ttyS0|/dev/ttyS0", "5|First (COM5)|First|/dev/ttyUSB0|usb",
                  "9|/dev/pts/7 (COM9)|/dev/pts/7|/dev/pts/7", "13|KX box (COM13)|KX box|/dev/ttyACM0|usb",
                  "17|Fifth (COM17)|Fifth|/dev/ttyACM4|usb",
                  "18|Its number is given away (COM18)|Its number is given away|/dev/ttyUSB4|usb",
                  "19|Tenth (COM19)|Tenth|/dev/ttyUSB9|usb", "40|First (COM40)|First|/dev/ttyUSB0|usb"));
  for (int index = 1; index <= ports_.PortCount(); ++index) {
    EXPECT_EQ(Device_Path(ports_.port(index).COMx), ports_.port(index).DevPath);
  }
  recorded_.busy = {"/dev/pts/7", "/dev/ttyS0"};
  Enumerated(16, false, true);
  EXPECT_THAT(Numbers(ports_), ElementsAre(5, 13, 17, 18, 19, 40));
}

/// Links made by the system's device manager name an adapter for good; the box's port may be one.
TEST_F(Serial_Ports, A_Device_Under_Another_Path_Is_Described_All_The_Same) {
  const std::string device = folder_.Write("device", "");
  const std::string link = folder_.Path("./device");
  recorded_.rows = {{device, "device", "Adapter", true}};
  recorded_.existing = {link};
  folder_.Write("test.ini", "com_device6=" + link + "\r\ncom_device7=" + device + "\r\n");
  EXPECT_THAT(Enumerated(), ElementsAre("6|Adapter (COM6)|Adapter|" + link + "|usb",
                                        "7|Adapter (COM7)|Adapter|" + device + "|usb"));
}

TEST_F(Serial_Ports, Toggling_The_Interface_Goes_Round_And_Starts_At_The_First_For_Other_Words) {
  int refreshes = 0;
  refresh_hooks.update_all = [&] { ++refreshes; };
  Default_Interface = "Serial";
  for (const char* word : {"SC_Reader", "KX_MapCard", "TodosII_Reader", "SC_Reader"}) {
    toggle_interface();
    EXPECT_EQ(Default_Interface, word);
    EXPECT_EQ(Read_Key("Default_Interface"), word);
  }
  EXPECT_EQ(refreshes, 4);
}

TEST_F(Serial_Ports, The_System_Is_Named_By_Its_Version) {
  const std::pair<std::optional<System_Version>, const char*> cases[] = {
      {{{0, 3, 10}}, "Windows 3.1"},
      {{{1, 4, 0}}, "Windows 95"},
      {windows_98, "Windows 98"},
      {{{1, 4, 90}}, "Windows ME"},
      {{{1, 4, 11}}, "OS version not detected"},
      {{{2, 3, 51}}, "Windows NT 3.51"},
      {windows_nt, "Windows NT 4.0"},
      {{{2, 5, 2}}, "Windows server 2003"},
      {windows_xp, "OS version not detected"},
      {{{3, 5, 2}}, "Test OS 1"},
      {{}, "Test OS 1"}};
  for (const auto& [version, name] : cases) {
    Run_On(version);
    EXPECT_EQ(Label_OS_Text(), name);
  }
  recorded_.com = nullptr;
  EXPECT_EQ(Label_OS_Text(), "Test OS 1");
}

}  // namespace
}  // namespace kx
