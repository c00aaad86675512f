#include "support/timer_engine_fixture.h"

namespace kx {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

TEST_F(Timer_Engine, Read_Loads_The_Tune) {
  CardByte = {};
  card_data_file = "Track day.kxs";
  Run_To_End(Com_knapp5_Click);
  EXPECT_EQ(CardByte, test::Sample_Tune());
  EXPECT_EQ(refreshed_, "at");
  EXPECT_EQ(card_data_file, "New1.kxs");
  EXPECT_EQ(Title_Text(), "Settings loaded from box");
  EXPECT_EQ(txt_File_Description.Text(), "Settings loaded from box");
  EXPECT_THAT(statuses_, ElementsAre("< Info received OK >", "< reading data from KX... >", "< KX read T >"));
  EXPECT_THAT(port_.writes, ElementsAre("v", "rd"));
  EXPECT_THAT(changes_, ElementsAre(true, false));
}

TEST_F(Timer_Engine, Verify_Names_What_Differs_In_Bytes_0_To_249) {
  Run_To_End(Com_knapp4_Click);
  EXPECT_THAT(statuses_, ElementsAre("< Info received OK >", "< verifying... >", "< KX data verify OK >"));
  EXPECT_THAT(port_.writes, ElementsAre("v", "rd", "ue"));
  for (const int i : {0, 5, 249, 250}) CardByte[i] ^= 1;
  const Byte_Image before = CardByte;
  Run_To_End(Com_knapp4_Click);
  EXPECT_EQ(Status(), "< verify failure >0,5,249,");
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(refreshed_, "");
}

TEST_F(Timer_Engine, Write_Sends_Byte_1_And_The_Differing_Runs_And_Reads_Back) {
  for (const int i : {5, 6, 9}) CardByte[i] ^= 0x11;
  CardByte[map::dataset] = 3;
  Write_To_Lone_Master();
  EXPECT_THAT(statuses_, ElementsAre("< Check >", "< Check2 >", "< Info received OK >", "< verifying... >",
                                     "< KX data verify OK >", "< verify failure >5,6,9,",
                                     "< writing data to KX... >", "< write finished T >",
                                     "< Info received OK >", "< verifying... >", "< Write finished T... >"));
  EXPECT_THAT(port_.writes, ElementsAre("rs", "v", "rs", "v", "rd", "bw", "01", Hex(1), "$", "bw", "05",
                                        Hex(5), Hex(6), "$", "bw", "09", Hex(9), "$", "ue", "v", "rd", "ue"));
  EXPECT_EQ(CardByte[map::dataset], 108);
  CardByte[map::dataset] = Box().Master[255];
  EXPECT_EQ(Box().Master, test::As_Sent(CardByte));
}

TEST_F(Timer_Engine, A_Read_Back_That_Differs_Is_The_End) {
  Box() = test::Sample_Box(true);
  Box().Slave[79] ^= 1;
  CardByte[101] ^= 1;
  loop_.on_turn = [this] {
    if (Write_Verify) Box().Master[101] = 0;
  };
  ask_.Expect("ERROR 3");
  Run_To_End(Com_knapp3_Click);
  EXPECT_EQ(Status(), "< verify failure >101,");
}

TEST_F(Timer_Engine, A_Write_Sends_What_Was_There_When_It_Began) {
  CardByte[60] ^= 1;
  const Byte_Image begun = CardByte;
  for (const char* phase : {"bw", "bs"}) {
    CardByte = begun;
    DatasetID = 108;
    Box() = test::Sample_Box(true);
    Box().Slave[79] ^= 1;
    Expect_Boxes({"ERROR 3", "ERROR 3"});
    loop_.on_turn = [this, phase] {
      if (port_.Sent().find(phase) == std::string::npos) return;
      CardByte[60] = CardByte[79] = 0xEE;
      DatasetID = 106;
    };
    Run_To_End(Com_knapp3_Click);
    EXPECT_EQ(Status(), "< Write finished, slave OK,  T... >");
    EXPECT_EQ(Box().Master, test::As_Sent(begun));
    EXPECT_EQ(Box().Slave, sim::As_Slave(test::As_Sent(begun)));
  }
}

TEST_F(Timer_Engine, Writes_Of_Many_Bytes_Keep_The_Pace_Of_The_Timer) {
  for (int i = 2; i < 250; ++i) CardByte[i] ^= 1;
  CardByte[0] ^= 1;
  double first = 0;
  double last = 0;
  rs232_text.On_Change([&] {
    if (Status() == "< writing data to KX... >") first = clock_.Elapsed();
  });
  loop_.on_turn = [&] {
    if (!port_.writes.empty() && port_.writes.back() == "$") last = clock_.Elapsed();
  };
  Write_To_Lone_Master();
  EXPECT_EQ(Box().Master[249], CardByte[249]);
  // A tick for each byte, of byte 1, byte 0 and bytes 2 to 249, and five for each of the three runs.
  EXPECT_LT(last - first, 1.15 * 0.01 * (250 + 3 * 5));
}

TEST_F(Timer_Engine, A_Slave_That_Differs_Is_Repaired_Byte_By_Byte) {
  Box() = test::Sample_Box(true);
  CardByte[200] ^= 1;
  for (const std::size_t i : {0U, 78U, 79U}) Box().Slave[i] ^= 0x81;
  Expect_Boxes({"ERROR 3", "ERROR 3"});
  Run_To_End(Com_knapp3_Click);
  EXPECT_THAT(
      statuses_,
      ElementsAre("< Check >", "< Info received OK >", "< verifying... >", "< KX data verify OK >",
                  "< verify failure >200,", "< writing data to KX... >", "< write finished T >",
                  "< Info received OK >", "< verifying... >", "< Write finished T... >",
                  "< Info received OK >", "< reading data from KX... >", "< Slave EE not matching... >",
                  "< writing data to KX... >", "< write finished T >", "< Info received OK >",
                  "< reading data from KX... >", "< Write finished, slave OK,  T... >"));
  EXPECT_THAT(port_.Sent(),
              HasSubstr("rsbs00" + Hex(0) + "$bs4E" + Hex(78) + "$bs4F" + Hex(79) + "$uevrsue"));
  EXPECT_EQ(Text1.Text(), ",000,001,078,001,079,001");
  EXPECT_EQ(Box().Slave, sim::As_Slave(test::As_Sent(CardByte)));
  EXPECT_FALSE(Slave_Needed || Slave_Pass || Slave_Pending);
}

TEST_F(Timer_Engine, A_Slave_Keeps_Its_Mark_When_Its_Byte_1_Is_Repaired) {
  Box() = test::Sample_Box(true);
  rs232_text.On_Change([this] {
    if (Status() == "< Write finished T... >") Box().Slave[1] ^= 0x10;
  });
  Expect_Boxes({"ERROR 3", "ERROR 3"});
  Run_To_End(Com_knapp3_Click);
  EXPECT_EQ(Status(), "< Write finished, slave OK,  T... >");
  EXPECT_EQ(Box().Slave, sim::As_Slave(test::As_Sent(CardByte)));
  EXPECT_THAT(port_.Sent(), HasSubstr("bs0149$"));
}

TEST_F(Timer_Engine, Runs_To_The_Slave_Do_Not_Wait_For_The_End_Of_The_One_Before) {
  for (const char* knobs : {"on=$+bs,delay=0.015", "on=$,from=2,times=2,refuse"}) {
    Box() = test::Sample_Box(true);
    for (const std::size_t i : {20U, 21U, 22U}) Box().Slave[i] ^= 0x81;
    Set_Faults(knobs);
    Expect_Boxes({"ERROR 3", "ERROR 3"});
    Run_To_End(Com_knapp3_Click);
    EXPECT_EQ(Status(), "< Write finished, slave OK,  T... >") << knobs;
    EXPECT_THAT(port_.Sent(), HasSubstr("bs14" + Hex(20) + "$bs15" + Hex(21) + "$bs16" + Hex(22) + "$"))
        << knobs;
  }
}

TEST_F(Timer_Engine, A_Slave_Is_Given_Up_When_Two_Repairs_In_A_Row_Leave_No_Fewer_Bytes) {
  CardByte[map::flags_a] |= map::slave_mode.mask;  // which the comparison takes off the slave's
  Box() = test::Sample_Box(true);
  Expect_Boxes({"This setting will set ChargeMarshal to slave", "ERROR 3", "ERROR 3", "ERROR 3"});
  Run_To_End(Com_knapp3_Click);
  EXPECT_EQ(Status(), "< Slave EE not matching... >");
  EXPECT_EQ(Text1.Text(), ",001,001");
  CardByte[map::flags_a] = 0x41;
  struct Spoilt {
    std::size_t repairs;  ///< that each spoil a byte
    const char* status;
  };
  for (const auto& [repairs, status] :
       {Spoilt{1, "< Write finished, slave OK,  T... >"}, {9, "< Slave EE not matching... >"}}) {
    Box() = test::Sample_Box(true);
    Box().Slave[29] ^= 1;
    Expect_Boxes({"ERROR 3", "ERROR 3", "ERROR 3"});
    rs232_text.On_Change([this, ends = 0U, most = repairs]() mutable {
      if (Status() != "< write finished T >") return;
      if (ends > 0 && ends <= most) Box().Slave[30 + ends] ^= 1;
      ++ends;
    });
    Run_To_End(Com_knapp3_Click);
    EXPECT_EQ(Status(), status) << repairs;
  }
}

TEST_F(Timer_Engine, A_Slave_Is_Repaired_By_A_Master_That_Told_Its_Dataset_Before) {
  Box() = test::Sample_Box(true);
  Box().Slave[30] ^= 1;
  Set_Faults("on=v,from=3,times=1,refuse");
  Expect_Boxes({"ERROR 3", "ERROR 3"});
  Run_To_End(Com_knapp3_Click);
  EXPECT_EQ(Status(), "< Write finished, slave OK,  T... >");
}

TEST_F(Timer_Engine, A_Slave_That_Goes_Away_Ends_The_Write_With_Its_Master) {
  for (const auto& [knobs, status] : {std::pair{"slave_lost=14", "< Write finished T... >"},
                                      std::pair{"slave_lost=20", "< communication error >"}}) {
    Box() = test::Sample_Box(true);
    Set_Faults(knobs);
    ask_.Expect("ERROR 3");
    Run_To_End(Com_knapp3_Click);
    EXPECT_EQ(Status(), status);
  }
}

TEST_F(Timer_Engine, A_Slave_Phase_That_Failed_Is_Forgotten) {
  Box() = test::Sample_Box(true);
  Set_Faults("on=rs,from=2,refuse");
  ask_.Expect("ERROR 3");
  Run_To_End(Com_knapp3_Click);
  Set_Faults("on=rs,refuse");
  Write_To_Lone_Master();
  EXPECT_EQ(Status(), "< Write finished T... >");
}

TEST_F(Timer_Engine, A_Box_That_Does_Not_Tell_Its_Dataset_Or_Has_Another_Is_Not_Written) {
  Run_To_End(Com_knapp4_Click);
  CardByte[60] ^= 1;
  Set_Faults("on=v,refuse");
  Expect_Boxes({"ERROR 4", "ERROR 5", "ERROR 6"});
  Run_To_End(Com_knapp3_Click);
  EXPECT_EQ(Status(), "< communication error >");
  EXPECT_FALSE(MSComm1.PortOpen());
  Set_Faults("dataset=107");
  Expect_Boxes({"ERROR 4", "ERROR 6", "\r\nDataset ID not matched"});
  Run_To_End(Com_knapp3_Click);
  EXPECT_EQ(Status(), "< Dataset ID not matched >");
  EXPECT_EQ(Box().Master, test::As_Sent(test::Sample_Tune()));
  port_stays_open_ = true;
}

}  // namespace
}  // namespace kx
