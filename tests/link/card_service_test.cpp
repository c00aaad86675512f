#include <QProcess>
#include <filesystem>

#include "link/reader_fixture.h"
#include "settings/message.h"
#include "settings/wait.h"

namespace kx {
namespace {

constexpr const char* service_program = "/usr/sbin/pcscd";
constexpr const char* virtual_reader = "/usr/lib/pcsc/drivers/serial/libifdvpcd.so";

/// A reader of the service without hardware, under the name by which the program knows a Todos reader.
constexpr const char* service_settings =
    "FRIENDLYNAME \"Todos Argos Mini II USB\"\n"
    "DEVICENAME   /dev/null:0x8C7B\n"
    "LIBPATH      /usr/lib/pcsc/drivers/serial/libifdvpcd.so\n"
    "CHANNELID    0x8C7B\n";

/// The system's own card service, started and ended by the test, with the Todos library simulated above it.
class Card_Service : public test::Reader_Fixture {
 protected:
  void SetUp() override {
    if (!std::filesystem::exists(service_program) || !std::filesystem::exists(virtual_reader))
      GTEST_SKIP() << "NOT TESTED: pcscd and vsmartcard-vpcd are not installed (scripts/packages.txt)";
    if (Runs()) GTEST_SKIP() << "NOT TESTED: a card service runs on this machine, and is left alone";
  }
  void TearDown() override { End_Service(); }

  bool Runs() {
    platform::Card_Context context = 0;
    if (service_.SCardEstablishContext(context) != 0) return false;
    (void)service_.SCardReleaseContext(context);
    return true;
  }

  void Start_Service() {
    const QString settings = QString::fromStdString(folder_.Write("reader.conf", service_settings));
    program_.setProcessChannelMode(QProcess::MergedChannels);
    program_.start(service_program, {"--foreground", "--config", settings});
    ASSERT_TRUE(program_.waitForStarted());
    const Wait_Limit limit(20);
    while (Readers().find(todos_reader_name) == std::string::npos) {
      ASSERT_FALSE(limit.Passed()) << program_.readAll().toStdString();
      Do_Events();
    }
  }

  void End_Service() {
    if (program_.state() == QProcess::NotRunning) return;
    program_.terminate();
    if (program_.waitForFinished(10000)) return;
    program_.kill();
    program_.waitForFinished();
  }

  std::string Readers() {
    platform::Card_Context context = 0;
    std::string names;
    if (service_.SCardEstablishContext(context) != 0) return {};
    (void)service_.SCardListReaders(context, names);
    (void)service_.SCardReleaseContext(context);
    return names;
  }

  QProcess program_;
};

TEST_F(Card_Service, Lists_Its_Readers_For_The_Todos_Path) {
  Start_Service();
  Load_Todos_Form();
  ASSERT_FALSE(todos::readers.empty());
  EXPECT_TRUE(todos::readers.front().starts_with(todos_reader_name)) << todos::readers.front();
  Guarded(cmd_WriteTodos_Click);
  EXPECT_EQ(txt_TodosStatus.Text(), "< Card Write OK >");
  const Byte_Image written = CardByte;
  EXPECT_EQ(Card_In_File(), test::As_Sent(written));
  CardByte = {};
  Guarded(cmdReadTodos_Click);
  EXPECT_EQ(txt_TodosStatus.Text(), "< Card Read OK >");
  EXPECT_EQ(CardByte, written);
}

TEST_F(Card_Service, May_Be_Missing_And_Come_And_Go) {
  ask_.Expect("Could not Load Resource Manager!");
  Guarded(cmd_FindTodos_Click);
  Start_Service();
  Guarded(cmd_FindTodos_Click);
  EXPECT_EQ(txt_TodosStatus.Text(), "< Card Connected >");
  End_Service();
  ask_.Expect("Could not Load Resource Manager!");
  Guarded(cmd_FindTodos_Click);
  EXPECT_EQ(Todos_Powered, 0);
  Start_Service();
  Guarded(cmd_FindTodos_Click);
  EXPECT_EQ(txt_TodosStatus.Text(), "< Card Connected >") << "with a context of the new service";
}

}  // namespace
}  // namespace kx
