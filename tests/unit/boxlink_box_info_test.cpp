#include "boxlink/box_info.h"

#include "boxlink/protocol.h"
#include "boxlink/transfer.h"
#include "settings/failure.h"
#include "support/link_fixture.h"

namespace kx {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

TEST(Box_Info_Answer, Finds_Its_Fields_In_Any_Order) {
  const Box_Info info = Parse_Box_Info(
      "Slave present\r\nStatus 0A7\r\nSC ID 107\r\nMaster mode\r\nSerial KX01234\r\nTORNVIK KX 4.1 \xB5\r\n");
  EXPECT_EQ(info.firmware, "4.1 \xC2\xB5");
  EXPECT_EQ(info.serial, 1234);
  EXPECT_EQ(info.sc_id, "107");
  EXPECT_EQ(info.status, "0A7");
  EXPECT_TRUE(info.master_mode);
  EXPECT_TRUE(info.slave_present);
  EXPECT_FALSE(info.card_present);
}

TEST(Box_Info_Answer, Reads_Serial_Numbers_Of_Both_Kinds) {
  const std::pair<const char*, int> rows[] = {{"12AFh", 4783},  {"01234", 1234}, {"99999", 99999},
                                              {"FFFFh", 65535}, {"  42\r", 42},  {"abcde", 0},
                                              {"12", 12},       {"", 0}};
  for (const auto& [text, value] : rows)
    EXPECT_EQ(Parse_Box_Info(std::string("Serial KX") + text).serial, value) << text;
}

TEST(Box_Info_Answer, Missing_Labels_Leave_Their_Fields_Empty) {
  for (const char* answer : {"", "TORNVIK KX", "Serial", "SC ID", "Status", "no label at all\r\n"}) {
    const Box_Info info = Parse_Box_Info(answer);
    EXPECT_EQ(info.firmware + info.sc_id + info.status, "") << answer;
    EXPECT_EQ(info.serial, 0) << answer;
    EXPECT_FALSE(info.master_mode);
  }
}

TEST(Box_Info_Answer, Is_Complete_With_Its_Line_End_And_Mode) {
  EXPECT_TRUE(Info_Complete("Slave mode\r\n"));
  for (const char* cut : {"Slave mode\r", "Slave\r\n", ""}) EXPECT_FALSE(Info_Complete(cut)) << cut;
}

using Box_Query = test::Link_Fixture;

TEST_F(Box_Query, Fills_Every_Item_In_Its_Fixed_Time) {
  Box() = {.Firmware = "4.12",
           .Serial = 4783,
           .Serial_As_Hex = true,
           .Dataset = 107,
           .Status = "01F",
           .Slave_Present = true,
           .Card_Present = true};
  ASSERT_TRUE(Open_For_Transfer());
  Get_Box_Info();
  EXPECT_NEAR(clock_.Elapsed(), 0.05, 0.002);
  EXPECT_TRUE(Box_Info_OK && Slave_Present && Card_Present);
  EXPECT_EQ(Box_Firmware + "," + Box_SC_ID + "," + Box_Status, "4.12,107,01F");
  EXPECT_EQ(Box_Serial, 4783);
  EXPECT_EQ(Box_Info_Text,
            "TORNVIK KX 4.12\r\nSerial KX4783\r\nSC ID 107\r\nMaster mode\r\nSmartcard Present \r\nSlave "
            "Present \r\n");
  EXPECT_EQ(uncoded.Text(), Box_Info_Text);
  EXPECT_EQ(rs232_text.Text(), "< Info received OK >");
}

TEST_F(Box_Query, An_Answer_That_Is_Late_Or_Cut_Is_None) {
  for (const char* knobs : {"refuse", "delay=0.06", "garbage"}) {
    Set_Faults("");
    ASSERT_TRUE(Open_For_Transfer());
    Get_Box_Info();
    ASSERT_TRUE(Box_Info_OK) << knobs;
    Set_Faults(knobs);
    Get_Box_Info();
    EXPECT_FALSE(Box_Info_OK) << knobs;
    EXPECT_EQ(Box_Serial, 1234);
    EXPECT_EQ(Box_Info_Text, "No responce from system");
    EXPECT_EQ(uncoded.Text(), "No responce from system");
    EXPECT_EQ(rs232_text.Text(), "< No responce >");
  }
}

TEST_F(Box_Query, Info_Leaves_The_Port_As_It_Was) {
  Debug_txt.Set("old journal");
  for (const bool open : {false, true}) {
    ASSERT_TRUE(!open || Open_For_Transfer());
    port_.Arrive("left over");
    ask_.Expect("TORNVIK KX 4.12\r\nSerial KX1234\r\nSC ID 108\r\nMaster mode\r\n", platform::Answer::ok,
                [] { EXPECT_FALSE(Transfer_Running()); });
    Connect_Info_Click();
    EXPECT_EQ(ask_.last_box.title, "Connected box info");
    EXPECT_EQ(ask_.last_box.icon, platform::Icon::information);
    EXPECT_EQ(MSComm1.PortOpen(), open);
  }
  EXPECT_EQ(Debug_txt.Text(), "");
}

TEST_F(Box_Query, Info_Without_A_Box_Or_A_Port_Shows_No_Message) {
  Set_Faults("refuse");
  Connect_Info_Click();
  EXPECT_EQ(rs232_text.Text(), "< No responce >");
  port_.refuse = [](const std::string&) { return platform::Port_Error{1, "No such device"}; };
  Connect_Info_Click();
  EXPECT_EQ(rs232_text.Text(), "< Failed to open COM9 >");
  EXPECT_FALSE(MSComm1.PortOpen() || Transfer_Running());
}

TEST_F(Box_Query, A_Device_That_Goes_In_The_Query_Is_Told) {
  Set_Faults("hang_up=10");
  Box_Info_OK = true;
  EXPECT_THROW(Connect_Info_Click(), Failure);
  EXPECT_EQ(rs232_text.Text(), "< No responce >");
  EXPECT_FALSE(Box_Info_OK);
  EXPECT_FALSE(MSComm1.PortOpen() || MSComm1.Lost() || Transfer_Running());
}

TEST_F(Box_Query, Port_Test_Lists_Forty_Ports) {
  port_.refuse = [](const std::string& path) {
    return path == "/dev/ttyUSB4" ? platform::Port_Error{} : platform::Port_Error{2, "Permission denied"};
  };
  Text1.Set("old");
  Command3_Click();
  EXPECT_THAT(Text1.Text(), StartsWith("Com port 1 not ok   2 - Permission denied\r\nCom port 2 not ok"));
  EXPECT_THAT(Text1.Text(), HasSubstr("\r\nCom port 9 ok\r\nCom port 10 not ok"));
  EXPECT_THAT(Text1.Text(), HasSubstr("\r\nCom port 40 not ok   1 - No such device\r\n"));
  EXPECT_EQ(MSComm1.CommPort(), 40);
  EXPECT_FALSE(MSComm1.PortOpen() || Transfer_Running());
}

}  // namespace
}  // namespace kx
