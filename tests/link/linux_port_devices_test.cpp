#include "platform/linux/port_devices.h"

#include <gmock/gmock.h>
#include <pty.h>
#include <unistd.h>

#include <QSerialPort>
#include <ctime>
#include <filesystem>

#include "boxlink/preferences.h"
#include "platform/seams.h"
#include "settings/brand.h"
#include "settings/ini_file_adm.h"
#include "settings/session.h"
#include "support/temp_dir.h"
#include "support/test_folders.h"

namespace kx::platform {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

/// The kernel's folder of terminals, as recorded and written out below a folder of the test.
class Kernel_Tree : public testing::Test {
 protected:
  /// A terminal that belongs to the device @p device. @p type is the chip type of a built-in port.
  void Add(const std::string& name, const std::string& device, const std::string& type = "") {
    const std::string place = "devices/" + device + "/tty/" + name;
    fs::create_directories(folder_.Path(place));
    if (!type.empty()) folder_.Write(place + "/type", type + "\n");
    fs::create_directories(folder_.Path("class/tty"));
    fs::create_symlink("../../" + place, folder_.Path("class/tty/" + name));
  }
  void Add_Usb_Adapter(const std::string& folder, const std::string& product) {
    fs::create_directories(folder_.Path("devices/" + folder));
    folder_.Write("devices/" + folder + "/idVendor", "0403\n");
    if (!product.empty()) folder_.Write("devices/" + folder + "/product", product + "\n");
  }
  [[nodiscard]] std::vector<std::string> Listed() const {
    std::vector<std::string> texts;
    for (const Port_Device& row :
         Linux_Port_Devices(folder_.Path("class/tty/"), folder_.Path("notes/")).List()) {
      texts.push_back(row.path + "|" + row.name + "|" + row.description + (row.is_usb ? "|usb" : ""));
    }
    return texts;
  }

  test::Temp_Dir folder_;
};

TEST_F(Kernel_Tree, Ports_Are_What_Has_A_Device_Behind_It) {
  Add_Usb_Adapter("pci0/usb1/1-2", "USB Serial Converter");
  Add_Usb_Adapter("pci0/usb1/1-3", "");
  fs::create_directories(folder_.Path("notes"));
  folder_.Write("notes/c188:7", "S:serial\nE:ID_MODEL=KX_box\nE:ID_MODEL_ENC=KX\\x20box\\xc3\\xa9\\x\n");
  Add("tty1", "virtual");
  Add("ptmx", "virtual");
  Add("ttyS0", "pnp0/00:01", "4");
  Add("ttyS1", "platform/serial8250", "0");
  Add("ttyUSB10", "pci0/usb1/1-2/1-2:1.0/ttyUSB10");
  Add("ttyUSB2", "pci0/usb1/1-2/1-2:1.1/ttyUSB2");
  Add("ttyUSB7", "pci0/usb1/1-2/1-2:1.2/ttyUSB7");
  folder_.Write("devices/pci0/usb1/1-2/1-2:1.2/ttyUSB7/tty/ttyUSB7/dev", "188:7\n");
  Add("ttyACM0", "pci0/usb1/1-3/1-3:1.0");
  Add("rfcomm0", "virtual");
  EXPECT_THAT(Listed(), ElementsAre("/dev/rfcomm0|rfcomm0|", "/dev/ttyACM0|ttyACM0||usb", "/dev/ttyS0|ttyS0|",
                                    "/dev/ttyUSB2|ttyUSB2|USB Serial Converter|usb",
                                    "/dev/ttyUSB7|ttyUSB7|KX box\xC3\xA9\\x|usb",
                                    "/dev/ttyUSB10|ttyUSB10|USB Serial Converter|usb"));
  EXPECT_THAT(Linux_Port_Devices("/no/such/folder/").List(), testing::IsEmpty());
}

/// The form lists the ports each time it comes on show, so they have to be there at once.
TEST_F(Kernel_Tree, Forty_Ports_Are_Listed_Within_A_Tenth_Of_A_Second) {
  class All_There : public Linux_Port_Devices {
   public:
    using Linux_Port_Devices::Linux_Port_Devices;
    [[nodiscard]] bool Exists(const std::string&) const override { return true; }
  };
  Add_Usb_Adapter("pci0/usb1/1-2", "Adapter");
  for (int i = 0; i < 40; ++i) {
    const std::string name = "ttyUSB" + std::to_string(i);
    Add(name, "pci0/usb1/1-2/1-2:1.0/" + name);
  }
  All_There devices(folder_.Path("class/tty/"));
  seams.port_devices = &devices;
  start_dir = test::Shipped_Data();
  Ini_File_Name = "KXBenchPro.ini";
  const std::clock_t start = std::clock();  // the time of this program alone
  const clsSerialPortList ports = List_Ports();
  EXPECT_LE(std::clock() - start, CLOCKS_PER_SEC / 10);
  EXPECT_EQ(ports.PortCount(), 8 + 4 + 4 + 32);  // every number up to 16, since all are there
  EXPECT_EQ(ports.port(48).Name, "Adapter (COM48)");
  Reset_Session_State();
  Ini_File_Name.clear();
  seams = {};
}

/// A terminal of the test's own, under a link as the simulated box has it.
class Linux_Port : public testing::Test {
 protected:
  Linux_Port() {
    char name[64];
    if (openpty(&near_, &far_, name, nullptr, nullptr) != 0) throw std::runtime_error("no pseudo terminal");
    path_ = name;
    link_ = folder_.Path("box");
    fs::create_symlink(path_, link_);
  }
  ~Linux_Port() override {
    close(near_);
    close(far_);
  }

  test::Temp_Dir folder_;
  Linux_Port_Devices devices_;
  std::string path_;
  std::string link_;
  int near_ = -1;
  int far_ = -1;
};

TEST_F(Linux_Port, Only_Terminals_Exist) {
  EXPECT_TRUE(devices_.Exists(path_));
  EXPECT_TRUE(devices_.Exists(link_));
  fs::create_symlink(folder_.Path("gone"), folder_.Path("dead"));
  for (const std::string& path :
       {std::string(), folder_.Path(), folder_.Write("file", "x"), folder_.Path("dead")}) {
    EXPECT_FALSE(devices_.Exists(path)) << path;
    EXPECT_FALSE(devices_.Is_Free(path)) << path;
  }
}

TEST_F(Linux_Port, A_Port_That_A_Program_Holds_Is_Not_Free) {
  QSerialPort program;
  program.setPortName(QString::fromStdString(path_));
  ASSERT_TRUE(program.open(QIODevice::ReadWrite));
  EXPECT_FALSE(devices_.Is_Free(path_));
  EXPECT_FALSE(devices_.Is_Free(link_));
  program.close();
  EXPECT_TRUE(devices_.Is_Free(path_));
  EXPECT_TRUE(devices_.Is_Free(link_));
}

}  // namespace
}  // namespace kx::platform
