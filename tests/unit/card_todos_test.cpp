#include <gmock/gmock.h>

#include "cards/chipdrive.h"
#include "cards/todos_bench.h"
#include "settings/message.h"
#include "support/card_fixture.h"

namespace kx {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Todos : public test::Card_Fixture {
 protected:
  [[nodiscard]] static std::string Result() { return todos::result.Text(); }
  static std::string After(void (*click)()) {
    Guarded(click);
    EXPECT_EQ(txt_TodosStatus.Text(), Result());
    EXPECT_EQ(Card_Status, Result());
    return Result();
  }
  static void Type(std::array<Shown_Text, 3>& fields, std::array<const char*, 3> texts) {
    for (std::size_t i = 0; i < fields.size(); ++i) fields.at(i).Typed(texts.at(i));
  }
};

TEST_F(Todos, Connecting_Shows_The_Reset_Answer) {
  EXPECT_EQ(After(ConnectCard_Click), "< Card Connected >");
  EXPECT_THAT(todos_.calls,
              ElementsAre("Initial Todos Argos Mini II USB 00 00", "Connect", "Type 0", "Reset", "Type 0"));
  EXPECT_EQ(todos::output.Text(), " ATR in Hex :  A2  13  10  91  ");
  EXPECT_EQ(Todos_Powered, -1);
  EXPECT_EQ(Todos_ATR_Length, 4);
  EXPECT_EQ(After(Disconnect_Click), "< Card Disconnected >");
  EXPECT_EQ(Todos_Powered, 0);
  EXPECT_EQ(service_.open, 0);
  EXPECT_EQ(After(CardReset_Click), "< Please connect to the card first! >");
  EXPECT_EQ(After(Disconnect_Click), "< Disconnect Error >");
}

TEST_F(Todos, The_Service_Or_The_Reader_May_Be_Missing) {
  service_.running = false;
  ask_.Expect("Could not Load Resource Manager!");
  EXPECT_EQ(After(cmd_FindTodos_Click), "Could not Load Resource Manager!");
  service_.running = true;
  for (const std::string& names :
       {std::string(), std::string("Other\0", 6), std::string(255, 'x'), std::string(255, '\0')}) {
    service_.names = names;
    ask_.Expect("There are no Todos reader/writer connected to the PC");
    EXPECT_EQ(After(cmdReadTodos_Click), "There are no Todos reader/writer connected to the PC");
    EXPECT_EQ(ask_.last_box.icon, platform::Icon::critical);
    EXPECT_FALSE(Todos_Reader_OK);
  }
  EXPECT_THAT(todos_.calls, IsEmpty());
  service_.names = "My Todos Argos Mini II USB 01";  // without its NUL
  EXPECT_EQ(After(cmd_FindTodos_Click), "< Card Connected >");
}

TEST_F(Todos, A_Service_That_Was_Started_Anew_Gets_A_New_Context) {
  Guarded(ConnectCard_Click);
  Guarded(ConnectCard_Click);
  ++service_.newest;
  EXPECT_EQ(After(ConnectCard_Click), "< Card Connected >");
  EXPECT_THAT(todos_.contexts, ElementsAre(1, 1, 3));
  EXPECT_EQ(service_.open, 1);
}

TEST_F(Todos, The_Chosen_Reader_Stays_Chosen_While_It_Is_There) {
  service_.names = std::string("Keyboard\0Todos Argos Mini II USB 00\0", 36);
  int changes = 0;
  todos::on_readers = [&] { ++changes; };
  Load_Todos_Form();
  EXPECT_THAT(todos::readers, ElementsAre("Keyboard", "Todos Argos Mini II USB 00"));
  EXPECT_EQ(todos::reader, 0);
  todos::reader = 1;
  service_.names = std::string("New\0Keyboard\0Todos Argos Mini II USB 00\0", 40);
  Guarded(ConnectCard_Click);
  EXPECT_EQ(todos::reader, 2);
  EXPECT_EQ(changes, 2);
  EXPECT_EQ(todos_.calls.front(), "Initial Todos Argos Mini II USB 00");
  Guarded(Disconnect_Click);
  service_.running = false;
  Load_Todos_Form();
  EXPECT_EQ(Result(), "< Cannot establish connection >");
}

TEST_F(Todos, Fields_That_Are_No_Numbers_Are_Refused_Behind_The_Connection) {
  const Byte_Image before = CardByte;
  for (const char* text : {"", " ", "x", "-1", "1.5", "65536", "1e9"}) {
    todos::TRAdd.Typed(text);
    todos_.calls.clear();
    EXPECT_EQ(After(ComRead_Click), "< Please input the Start Address! >") << text;
    EXPECT_EQ(todos_.calls.back(), "Type 0") << "connected first";
  }
  todos::TRAdd.Typed("0");
  for (const char* text : {"", "0", "257", "-5", "a lot"}) {
    todos::ReadData.Typed(text);
    EXPECT_EQ(After(ComRead_Click), "< Please input Data Length! >") << text;
  }
  todos::TWAdd.Typed("");
  EXPECT_EQ(After(comwrite_Click), "< Please input the Start Address! >");
  EXPECT_THAT(reader_.Card.Asked, IsEmpty());
  CardByte[map::card_checksum] = before[map::card_checksum];
  EXPECT_EQ(CardByte, before);
}

TEST_F(Todos, The_Bench_Reads_A_Part_To_The_Start_Of_The_Tune) {
  const Byte_Image before = CardByte;
  todos::TRAdd.Typed("100");
  todos::ReadData.Typed("3");
  EXPECT_EQ(After(ComRead_Click), "< Read success! >");
  for (int i = 0; i < Byte_Image::size; ++i)
    EXPECT_EQ(CardByte[i], i < 3 ? Other_Tune()[100 + i] : before[i]);
  EXPECT_TRUE(todos::output.Text().starts_with("Read Data : \r\n0: " + std::to_string(CardByte[0]) + "\r\n"));
  Undo();
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(After(cmdReadTodos_Click), "< Please input the Start Address! >") << "whole cards only";
  todos::TRAdd.Typed("0");
  EXPECT_EQ(After(cmdReadTodos_Click), "< Please input Data Length! >");
  todos::TWAdd.Typed("8");
  EXPECT_EQ(After(cmd_WriteTodos_Click), "< Please input the Start Address! >");
  EXPECT_THAT(reader_.Card.Asked, IsEmpty());
}

TEST_F(Todos, The_Bench_Marks_What_It_Writes_And_Leaves_The_Tune_Alone) {
  const Byte_Image tune = CardByte = Other_Tune();
  DatasetID = 107;
  EXPECT_EQ(After(comwrite_Click), "< Write Data Success! >");
  EXPECT_EQ(CardByte, tune);
  EXPECT_EQ(reader_.Card.Memory[map::dataset], 107);
  EXPECT_EQ(reader_.Card.Memory[map::reserved_low], 0);
  EXPECT_EQ(reader_.Card.Memory[map::card_checksum], tune[map::card_checksum]);
}

TEST_F(Todos, A_Write_Ends_At_The_First_Byte_That_Fails) {
  Set_Reader_Faults("write_fault=5");
  EXPECT_EQ(After(comwrite_Click), "< Write Data Error >");
  EXPECT_EQ(reader_.Card.Asked.size(), 5U);
  EXPECT_EQ(reader_.Card.Memory[3], CardByte[3]) << "earlier bytes stay written";
  EXPECT_EQ(reader_.Card.Memory[4], Other_Tune()[4]);
}

TEST_F(Todos, A_Read_That_Is_Ended_Does_Not_Stay_At_Its_Beginning) {
  const Byte_Image before = CardByte;
  loop_.on_turn = [] {
    if (Result() == "< Reading... >") End_Transfer();
  };
  for (void (*const click)() : {cmdReadTodos_Click, ComRead_Click}) {
    EXPECT_EQ(After(click), "< Read Data Fail >");
    EXPECT_EQ(CardByte, before);
  }
}

TEST_F(Todos, A_Pin_That_Is_No_Pin_Costs_No_Try) {
  EXPECT_EQ(After(ComChp_Click), " Please connect to the card first!");
  Guarded(ConnectCard_Click);
  for (const char* text : {"", "G1", "1234", "-1", "0x5", " 5", "5 "}) {
    Type(todos::pin, {"A5", text, "A5"});
    EXPECT_EQ(After(ComChp_Click), "< A PIN byte has two hex digits, 00 to FF >") << text;
  }
  Type(todos::pin, {"A5", "A5", "A5"});
  EXPECT_EQ(After(change_Click), "< A PIN byte has two hex digits, 00 to FF >") << "no new PIN";
  EXPECT_EQ(reader_.Card.Tries, 3);
  EXPECT_EQ(std::ranges::count(todos_.calls, "Verify"), 0);
}

TEST_F(Todos, A_Card_That_Wants_Its_Pin_Gets_It_From_The_Bench_Alone) {
  reader_.Card.Needs_Pin = true;
  EXPECT_EQ(After(cmd_WriteTodos_Click), "< Write Data Error >");
  EXPECT_EQ(reader_.Card.Tries, 3) << "nobody presents a PIN unasked";
  Type(todos::pin, {"a5", "A5", "5"});
  EXPECT_EQ(After(ComChp_Click), "PIN Verify Fail!");
  EXPECT_EQ(reader_.Card.Tries, 2);
  Type(todos::pin, {"a5", "A5", "A5"});
  EXPECT_EQ(After(ComChp_Click), " PIN Verify Success!");
  Guarded(cmd_WriteTodos_Click);
  EXPECT_EQ(txt_TodosStatus.Text(), "< Card Write OK >");
  Type(todos::new_pin, {"01", "2", "fF"});
  EXPECT_EQ(After(change_Click), "Change PIN Success!");
  EXPECT_EQ(reader_.Card.Secret, (sim::Pin{1, 2, 0xFF}));
  for (const int tries_left : {2, 1, 0, 0}) {
    EXPECT_EQ(After(change_Click), "Change PIN Fail");
    EXPECT_EQ(reader_.Card.Tries, tries_left);
  }
}

TEST_F(Todos, The_Words_Of_A_Card_With_Two_Pin_Bytes_Are_Its_Own) {
  Guarded(ConnectCard_Click);
  todos::card_type = 1;
  Type(todos::pin, {"A5", "A5", "no"});
  EXPECT_EQ(After(ComChp_Click), "PIN verify Error");
  Type(todos::new_pin, {"1", "2", ""});
  EXPECT_EQ(After(change_Click), "Change PIN failure");
  EXPECT_EQ(After(ConnectCard_Click), "< Card type set error >") << "the card is no such card";
}

TEST_F(Todos, Protect_Bits_Are_Read_And_Written_Once_And_For_All) {
  EXPECT_EQ(After(ReadPB_Click), "< Please input the Start Address! >");
  EXPECT_EQ(After(WritePB_Click), "< Please input the Start Address! >");
  todos::MemAddress.Typed("5");
  EXPECT_EQ(After(WritePB_Click), "< please input the data to be written to card! >");
  EXPECT_EQ(After(ReadPB_Click), "< Read Data Fail >") << "not connected";
  todos::MemStatus.Typed("7");
  EXPECT_EQ(After(WritePB_Click), "< Write Protect Bit Error >");
  EXPECT_THAT(todos_.calls, IsEmpty()) << "there is no card that it could be asked about";
  Guarded(ConnectCard_Click);
  EXPECT_EQ(After(ReadPB_Click), "< Read Success! >");
  EXPECT_EQ(todos::output.Text(), "Read Protect Bit : 1");
  todos::MemStatus.Typed(std::to_string(reader_.Card.Memory[5]));
  EXPECT_EQ(After(WritePB_Click), "< Write Protect bit Success! >");
  Guarded(ReadPB_Click);
  EXPECT_EQ(todos::output.Text(), "Read Protect Bit : 0");
  todos::MemAddress.Typed("32");
  EXPECT_EQ(After(WritePB_Click), "< Write Protect Bit Error >");
}

TEST_F(Todos, A_Page_Goes_To_The_Card_As_It_Was_Typed) {
  EXPECT_EQ(After(Pagewrite_Click), "< Please power on the card first >");
  Guarded(ConnectCard_Click);
  EXPECT_EQ(After(Pagewrite_Click), "< Please input the Data to be written to card >");
  todos::WriteData.Typed("AB\u00E5");
  for (const char* length : {"0", "4", "x"}) {
    todos::writelength.Typed(length);
    EXPECT_EQ(After(Pagewrite_Click), "< Please input the Data to be written to card >") << length;
  }
  todos::writelength.Typed("");
  todos::TWAdd.Typed("");
  EXPECT_EQ(After(Pagewrite_Click), "< Please input the Start address >");
  todos::TWAdd.Typed("40");
  EXPECT_EQ(After(Pagewrite_Click), "< Write Data in page Success >");
  todos::TWAdd.Typed("50");
  todos::writelength.Typed("1");
  Guarded(Pagewrite_Click);
  using Asked = std::vector<std::pair<std::size_t, std::uint8_t>>;
  EXPECT_EQ(reader_.Card.Asked, (Asked{{40, 'A'}, {41, 'B'}, {42, 0xE5}, {50, 'A'}}));
  todos::TWAdd.Typed("256");
  EXPECT_EQ(After(Pagewrite_Click), "< Write Data in page Failure >");
}

}  // namespace
}  // namespace kx
