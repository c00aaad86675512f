#include "boxlink/sync_engine.h"

#include "boxlink/box_info.h"
#include "boxlink/protocol.h"
#include "settings/earlier_tunes.h"
#include "settings/failure.h"
#include "support/sync_engine_fixture.h"

namespace kx {
namespace {

using testing::HasSubstr;

constexpr auto slave_question =
    "This will force KX-system to enter slave mode. Do you really want to continue?";
const std::string other_dataset =
    "The System has different dataset ID (107) than currently selected in preferences (108), ";
const std::string dataset_question = other_dataset + "load anyway?\r\n(Dataset ID is not changed.)";

TEST_F(Sync_Engine, Read_Loads_The_Tune) {
  CardByte = {};
  Debug_txt.Set("older");
  Read_Settings_Click();
  EXPECT_EQ(CardByte, test::Sample_Tune());
  EXPECT_EQ(Journal(), "Read started T|Read finished T|");
  EXPECT_EQ(Status(), "Read finished T");
  EXPECT_EQ(card_data_file, "Track day.kxs");
  EXPECT_EQ(refreshed_, "at");
  EXPECT_EQ(port_.Sent(), "vrd");
  EXPECT_EQ(rs232_text.Text().substr(14), "10:00:00");
}

TEST_F(Sync_Engine, Read_Keeps_The_Tune_That_It_Replaces) {
  CardByte[100] ^= 1;
  const Byte_Image mine = CardByte;
  Start_Keeping_Tunes();
  Read_Settings_Click();
  const auto kept = Earlier_Tunes();
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_EQ(kept[0].tune.image, mine);
  EXPECT_EQ(kept[0].tune.name, "Track day.kxs");
}

TEST_F(Sync_Engine, Read_Without_A_Box_Leaves_The_Port_Open_And_The_Next_One_Works) {
  port_stays_open_ = true;
  CardByte = {};
  Set_Faults("refuse");
  Debug_txt.Set("older|");
  Read_Settings_Click();
  EXPECT_EQ(Journal(), "older|Read aborted T|");
  EXPECT_EQ(Status(), "Read aborted T");
  EXPECT_EQ(CardByte, Byte_Image());
  EXPECT_TRUE(MSComm1.PortOpen());
  Set_Faults("");
  port_.Arrive("SC ID 107\r\n");  // old text must not be taken for the answer
  Read_Settings_Click();
  EXPECT_EQ(CardByte, test::Sample_Tune());
  port_stays_open_ = false;
}

/// A character that is missing or comes twice would shift the bytes behind it, one that is no digit spoils
/// its own.
TEST_F(Sync_Engine, A_Read_That_Fails_Keeps_The_Tune_But_Not_Its_File_Name) {
  Master(100) ^= 1;
  for (const char* knobs : {"drop=3", "drop=77", "duplicate=77", "no_marker", "corrupt=77,seed=7"}) {
    Set_Faults(std::string("on=rd,") + knobs);
    ask_.Expect("Could not read");
    Read_Settings_Click();
    EXPECT_EQ(CardByte, test::Sample_Tune()) << knobs;
    EXPECT_EQ(Journal(), "Read started T|Read aborted T|");
    EXPECT_EQ(Status(), "Read aborted T");
    EXPECT_EQ(card_data_file, "ReadFromBox.kxs");
    EXPECT_EQ(Title_Text(), "ReadFromBox.kxs");
  }
}

TEST_F(Sync_Engine, Read_Asks_About_Another_Dataset) {
  Box().Dataset = 107;
  CardByte[100] ^= 1;
  const Byte_Image before = CardByte;
  ask_.Expect(dataset_question, platform::Answer::cancel);
  Read_Settings_Click();
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(Journal(), "Read started T|Read aborted T|");
  EXPECT_EQ(card_data_file, "ReadFromBox.kxs");
  ask_.Expect(dataset_question, platform::Answer::ok);
  Read_Settings_Click();
  EXPECT_EQ(CardByte, test::Sample_Tune());
  EXPECT_EQ(DatasetID, 108);
}

TEST_F(Sync_Engine, A_View_That_Fails_Is_Reported_In_The_Status) {
  refresh_hooks.update_all = [] {
    const Undo_Busy_Scope filling;
    Fail_Overflow();
  };
  Read_Settings_Click();
  EXPECT_EQ(Status(), "< Error in updateing >");
  EXPECT_FALSE(Undo_Busy);
}

TEST_F(Sync_Engine, Verify_Lists_What_Differs_In_Bytes_0_To_250) {
  Verify_Settings_Click();
  EXPECT_EQ(Journal(), "Verify started T|No master miss match|Verify finished T|");
  EXPECT_EQ(Status(), "Verify finished T");
  EXPECT_EQ(port_.Sent(), "vvrd");
  for (const int i : {0, 46, 250, 251, 255}) Master(i) ^= 0xFF;
  Verify_Settings_Click();
  EXPECT_EQ(Journal(),
            "Verify started T|Master miss match 0|Master miss match 46|Master miss match 250|"
            "Some master miss match|Verify finished and failed T|");
  EXPECT_EQ(Status(), "Verify failed T");
  EXPECT_EQ(CardByte, test::Sample_Tune());
  Byte_Image marks;
  for (const int i : {0, 46, 250}) marks[i] = 255;
  EXPECT_EQ(Diff_Flags, marks);
  Box() = test::Sample_Box();
  Verify_Settings_Click();
  EXPECT_EQ(Diff_Flags, Byte_Image());
}

TEST_F(Sync_Engine, A_Comparison_Goes_By_Nothing_That_It_Has_Not_Read) {
  for (const std::string box : {"rd", "rs"}) {
    Box() = test::Sample_Box(true);
    CardByte = test::Sample_Tune();
    Set_Faults("");
    Verify_Settings_Click();
    EXPECT_EQ(Journal(), "Verify started T|No master miss match|No slave miss match|Verify finished T|");
    Master(77) ^= 1;
    CardByte[60] ^= 1;
    for (const char* fault : {",half", ",refuse", ",drop=300", ",duplicate=300"}) {
      Set_Faults("on=" + box + fault);
      ask_.Expect("Could not read");
      Verify_Settings_Click();
      EXPECT_EQ(Status(), "Verify aborted T") << box << fault;
      EXPECT_THAT(Journal(), testing::EndsWith("|Verify aborted T|"));
      EXPECT_EQ(Diff_Flags, Byte_Image());
    }
    port_.writes.clear();
    Set_Faults("on=" + box + ",refuse");
    ask_.Expect("Could not read");
    Write_Settings_Click();
    EXPECT_THAT(Journal(), testing::EndsWith("|Verify aborted T|Write aborted T|"));
    EXPECT_EQ(Status(), "Write aborted T");
    EXPECT_EQ(Written(), "");
  }
}

TEST_F(Sync_Engine, A_Read_Back_That_Reads_Nothing_Has_Failed) {
  for (const char* knobs :
       {"on=rd,from=2,refuse", "on=rs,from=2,half", "on=v,from=3,refuse", "on=v,from=4,refuse"}) {
    Box() = test::Sample_Box(true);
    CardByte[60] ^= 1;
    Set_Faults(knobs);
    ask_.Expect("Write verify failed!");
    Write_Settings_Click();
    EXPECT_THAT(Journal(), testing::EndsWith("|UE1 OK |UE2 OK |UE3 OK ||Write finished T")) << knobs;
    EXPECT_THAT(Journal(), testing::Not(HasSubstr("verify finished")));
    EXPECT_EQ(Status(), "Write finished T");
  }
}

TEST_F(Sync_Engine, Verify_Ends_When_Nobody_Answers) {
  Set_Faults("refuse");
  Verify_Settings_Click();
  EXPECT_EQ(Journal(), "Verify started T|Verify aborted T|");
  EXPECT_EQ(Status(), "Verify aborted T");
  Set_Faults("on=v,from=2,refuse");
  Verify_Settings_Click();
  EXPECT_EQ(Journal(), "Verify started T|Read aborted T|");
}

TEST_F(Sync_Engine, Write_Sends_Runs_Of_Differing_Bytes_And_Reads_Back) {
  for (const int i : {0, 1, 46, 47, 48, 200}) CardByte[i] ^= 0x11;
  Master(250) = 9;
  CardByte[map::reserved_low] = 1;
  CardByte[map::dataset] = 3;
  Write_Settings_Click();
  const auto hex = [](int i) { return dec2hex(CardByte[i], 2); };
  EXPECT_EQ(Written(), "bw00" + hex(0) + hex(1) + "$bw2E" + hex(46) + hex(47) + hex(48) + "$bwC8" + hex(200) +
                           "$bwFA00$");
  EXPECT_EQ(Journal(),
            "Write started T|Verify started T|Some master miss match|Write verify started T|"
            "No master miss match|Write verify finished T|UE1 OK |UE2 OK |UE3 OK ||Write finished T");
  EXPECT_EQ(Status(), "Write finished T");
  EXPECT_EQ(CardByte[map::dataset], 108);
  EXPECT_EQ(Box().Master, test::As_Sent(CardByte));
  // Four runs of three and one exchanges, two a byte, three ends; and two queries and a read on either side.
  EXPECT_EQ(line_.Counts().Exchanges, 4 * 4 + 7 * 2 + 3 + 2 * 3);
}

TEST_F(Sync_Engine, Write_Without_A_Difference_Sends_No_Byte) {
  Master(251) = 1;
  Write_Settings_Click();
  EXPECT_EQ(port_.Sent(), "vvrdueuevvrdue");
  EXPECT_EQ(Journal(),
            "Write started T|Verify started T|No master miss match|Verify finished T|Write verify started T|"
            "No master miss match|Write verify finished T|UE1 OK |UE2 OK |UE3 OK ||Write finished T");
}

TEST_F(Sync_Engine, Write_Is_Not_Shifted_By_What_The_Box_Says_Unasked) {
  struct Shift_Case {
    const char* knobs;
    double turn;  ///< seconds; a character takes 0.000087
  };
  const Shift_Case cases[] = {
      {"on=$,single", 0.00002}, {"single", 0.00002}, {"on=$,stale=xyz", 0.00015}, {"on=$,twice", 0.0005}};
  for (const Shift_Case& row : cases) {
    for (int i = 10; i < 200; i += 2) CardByte[i] ^= 0x3C;
    loop_.Set_Turn(row.turn);
    Set_Faults(row.knobs);
    Write_Settings_Click();
    EXPECT_EQ(Status(), "Write finished T") << row.knobs;
    EXPECT_THAT(Journal(), HasSubstr("|UE1 OK |UE2 OK |UE3 OK |")) << row.knobs;
    EXPECT_EQ(Box().Master, test::As_Sent(CardByte)) << row.knobs;
  }
}

TEST_F(Sync_Engine, A_Byte_Without_Its_Answer_Ends_The_Bytes) {
  CardByte[10] ^= 1;
  CardByte[20] ^= 1;
  for (const char* knobs : {"on=digit,corrupt=5", "on=digit,duplicate=4"}) {
    Box() = test::Sample_Box();
    Set_Faults(knobs);
    port_.writes.clear();
    ask_.Expect("Write verify failed!");
    Write_Settings_Click();
    EXPECT_EQ(ask_.last_box.icon, platform::Icon::critical);
    EXPECT_EQ(Written(), "bw0A" + dec2hex(CardByte[10], 2) + "$");
    EXPECT_EQ(Journal(),
              "Write started T|Verify started T|Some master miss match|Write verify started T|"
              "Master miss match 20|Some master miss match|Verify finished and failed T|"
              "Byte: 10  WRITE ERROR |UE1 OK |UE2 OK |UE3 OK ||Write finished T");
    EXPECT_EQ(Status(), "Write finished T");
  }
}

TEST_F(Sync_Engine, The_Last_End_Gives_The_Verdict) {
  Set_Faults("on=ue,from=1,times=2,refuse");
  Write_Settings_Click();
  EXPECT_THAT(Journal(), testing::EndsWith("|UE1 error |UE2 error |UE3 OK ||Write finished T"));
  Set_Faults("on=ue,from=3,garbage,seed=4");
  Write_Settings_Click();
  EXPECT_THAT(Journal(), HasSubstr("|UE1 OK |UE2 OK |UE3 error "));
  EXPECT_THAT(Journal(), testing::EndsWith("||Write aborted T"));
  EXPECT_EQ(Status(), "Write aborted T");
}

TEST_F(Sync_Engine, Write_Asks_Before_It_Makes_A_Slave) {
  CardByte[map::flags_a] |= map::slave_mode.mask;
  CardByte[map::dataset] = 3;
  ask_.Expect(slave_question, platform::Answer::no);
  Write_Settings_Click();
  EXPECT_EQ(Journal(), "Write started T|Write aborted T|");
  EXPECT_EQ(Status(), "Write aborted T");
  EXPECT_EQ(port_.Sent(), "");
  EXPECT_EQ(CardByte[map::dataset], 3);
  ask_.Expect(slave_question, platform::Answer::yes);
  Write_Settings_Click();
  EXPECT_EQ(Status(), "Write finished T");
  EXPECT_EQ(Master(1), 0x49);
}

TEST_F(Sync_Engine, Write_Ends_When_Nobody_Answers_Or_The_Port_Does_Not_Open) {
  Box_Info_OK = true;
  port_.refuse = [](const std::string&) { return platform::Port_Error{3, "Device is in use"}; };
  Write_Settings_Click();
  EXPECT_EQ(Journal(), "Write started T|Verify started T|< Failed to open COM9 >|Write aborted T|");
  EXPECT_THAT(rs232_tool_tip.Text(), HasSubstr("in use"));
  port_.refuse = nullptr;
  Set_Faults("refuse");
  Write_Settings_Click();
  EXPECT_EQ(Journal(), "Write started T|Verify started T|Verify aborted T|Write aborted T|");
  EXPECT_EQ(Status(), "Write aborted T");
}

TEST_F(Sync_Engine, A_Slave_Is_Compared_And_Repaired) {
  struct Slave_Case {
    std::size_t byte;  ///< of the slave that is changed
    std::uint8_t value;
    const char* found;  ///< journal of the comparison
  };
  for (const auto& [byte, value, found] : {Slave_Case{0, 99, "Slave miss match 0|"},
                                           {40, 0x15, "Slave miss match 40|"},
                                           {250, 9, "Slave miss match 250|"},
                                           {1, 0x41, "Slave need reset to slave |"},
                                           {1, 0x4D, "Slave miss match 1|"}}) {
    Box() = test::Sample_Box(true);
    Box().Slave[byte] = value;
    Verify_Settings_Click();
    EXPECT_EQ(Journal(), "Verify started T|No master miss match|" + std::string(found) +
                             "Some slave miss match|Verify finished and failed T|");
    port_.writes.clear();
    Write_Settings_Click();
    EXPECT_EQ(Status(), "Write finished T");
    const int offset = static_cast<int>(byte);
    EXPECT_EQ(Written(), "bw" + dec2hex(offset, 2) + dec2hex(CardByte[offset], 2) + "$");
    EXPECT_EQ(Box().Slave, sim::As_Slave(test::As_Sent(CardByte)));
    EXPECT_THAT(Journal(), HasSubstr("|No slave miss match|Write verify finished T|"));
  }
}

/// A write opens the port for its two queries, for the bytes, for the read-back and for the last end.
TEST_F(Sync_Engine, A_Port_That_Does_Not_Open_Again_Ends_A_Write) {
  for (const int refused : {2, 3, 4, 5}) {
    CardByte[60] ^= 1;
    port_.refuse = [opened = 0, refused](const std::string&) mutable {
      return ++opened < refused ? platform::Port_Error{} : platform::Port_Error{3, "Device is in use"};
    };
    if (refused == 4) ask_.Expect("Write verify failed!");
    if (refused > 3) ask_.Expect("Port not open");
    Write_Settings_Click();
    EXPECT_EQ(Status(), "Write aborted T") << refused;
    EXPECT_EQ(Master(60) == CardByte[60], refused > 3) << refused;
    Master(60) = CardByte[60];
  }
}

TEST_F(Sync_Engine, Write_Asks_About_Another_Dataset_Before_The_First_Byte) {
  Box().Dataset = 107;
  CardByte[60] ^= 1;
  const std::string question = other_dataset + "write anyway?";
  ask_.Expect(question, platform::Answer::cancel);
  Write_Settings_Click();
  EXPECT_EQ(ask_.last_box.buttons, platform::Buttons::ok_cancel);
  EXPECT_EQ(port_.Sent(), "vvrd");
  EXPECT_THAT(Journal(), testing::EndsWith("|Some master miss match|Write aborted T|"));
  EXPECT_EQ(Status(), "Write aborted T");
  ask_.Expect(question, platform::Answer::ok);
  Write_Settings_Click();
  EXPECT_EQ(Status(), "Write finished T");
  EXPECT_EQ(Master(60), CardByte[60]);
}

TEST_F(Sync_Engine, A_Write_Sends_What_Was_There_When_It_Began) {
  for (const int i : {20, 90, 200}) CardByte[i] ^= 1;
  const Byte_Image begun = CardByte;
  loop_.on_turn = [this] {
    if (port_.Sent().find("bw14") == std::string::npos) return;
    CardByte = {};
    DatasetID = 106;
  };
  Write_Settings_Click();
  EXPECT_EQ(CardByte, Byte_Image());
  EXPECT_EQ(Box().Master, test::As_Sent(begun));
  EXPECT_THAT(Journal(), HasSubstr("|No master miss match|Write verify finished T|"));
}

TEST_F(Sync_Engine, No_Command_Goes_Out_Into_An_Open_Run) {
  // v v rd bw 3C dd $: the end of the run is the eleventh character.
  for (const char* knobs : {"drop_received=11", "corrupt_received=11", "on=$,times=1,drop=1"}) {
    CardByte[60] ^= 1;
    Set_Faults(knobs);
    port_.writes.clear();
    Write_Settings_Click();
    EXPECT_EQ(Written(), "bw3C" + dec2hex(CardByte[60], 2) + "$$") << knobs;
    EXPECT_THAT(Journal(), HasSubstr("|UE1 OK |UE2 OK |UE3 OK |")) << knobs;
    EXPECT_EQ(Box().Master, test::As_Sent(CardByte)) << knobs;
  }
}

/// The box hears none of the ends of its run.
TEST_F(Sync_Engine, A_Run_Whose_End_Nobody_Hears_Ends_The_Write_And_The_Next_Read_Works) {
  const auto hear = port_.answer;
  port_.answer = [hear](const std::string& text) { return text == "$" ? std::string() : hear(text); };
  CardByte[60] ^= 1;
  Write_Settings_Click();
  EXPECT_EQ(Status(), "Write aborted T");
  EXPECT_EQ(Written(), "bw3C" + dec2hex(CardByte[60], 2) + "$$$");
  EXPECT_EQ(Box().Master, test::As_Sent(CardByte)) << "a command has become data";
  port_.answer = hear;
  Read_Settings_Click();
  EXPECT_EQ(Status(), "Read finished T");
}

}  // namespace
}  // namespace kx
