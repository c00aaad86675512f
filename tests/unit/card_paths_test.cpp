#include <algorithm>

#include "settings/earlier_tunes.h"
#include "settings/message.h"
#include "settings/tune_origin.h"
#include "support/card_fixture.h"
#include "workspace/shut_down.h"

namespace kx {
namespace {

using platform::Answer;

enum Way { chipdrive, box, todos_reader };

/// What every way to a card must hold to.
class Card_Paths : public test::Card_Fixture, public testing::WithParamInterface<Way> {
 protected:
  [[nodiscard]] static const Card_Path& Path() { return card_paths.at(GetParam()); }
  [[nodiscard]] static std::string Word() { return Path().status->Text(); }
  [[nodiscard]] sim::Smart_Card& Card() { return GetParam() == box ? Box().Socket.Card : reader_.Card; }

  void Read() {
    if (GetParam() == box) line_.The_Box().Start_With_Card();
    Guarded(Path().read);
  }

  /// Byte 0 of a card is never written through the box.
  [[nodiscard]] static int First() { return GetParam() == box ? 1 : 0; }

  /// What a read is to bring: a box reads its card when it is switched on, if one is there.
  [[nodiscard]] const sim::Image& Box_Or_Card() { return GetParam() == box ? Box().Master : Card().Memory; }

  /// Every fault of a reader, at random bytes.
  std::vector<std::string> Random_Faults() {
    std::vector<std::string> all{"", "no_reader", "no_card", "garbage", "throws", "wrong_pin", "locked"};
    for (const char* at :
         {"pull=", "pull=", "pull=", "write_fault=", "write_fault=", "lost_write=", "lost_write="})
      all.push_back(at + std::to_string(1 + random_() % 255));
    return all;
  }

  /// A random tune, a random card, and a fault with the box that tells of it.
  void Prepare(const std::string& knobs) {
    Set_Faults("");
    Reader_Found = true;
    Card() = {};
    Card().Memory = test::As_Sent(Random_Tune());
    Card().Memory[map::dataset] = static_cast<std::uint8_t>(DatasetID);
    CardByte = Random_Tune();
    Set_Reader_Faults(knobs);
    Box().Socket.Set_Faults(reader_.Faults());
    if (knobs == "throws" || knobs == "no_reader")
      Expect_Box_For(todos_reader, "Could not Initialize the specified reader!");
    if (knobs == "no_card")
      Expect_Box_For(todos_reader, "Could not connect to card by the specified reader!");
  }

  /// The one box that a missing Chipdrive or Todos card brings up.
  void Expect_Box_For(Way way, const char* text) {
    if (GetParam() == way) ask_.Expect(text);
  }
};

INSTANTIATE_TEST_SUITE_P(All, Card_Paths, testing::Values(chipdrive, box, todos_reader));

void Expect_Same(const sim::Image& card, const Byte_Image& tune, int first = 1) {
  for (int i = first; i < Byte_Image::size; ++i) {
    ASSERT_EQ(card[static_cast<std::size_t>(i)], tune[i]) << "byte " << i;
  }
}

TEST_P(Card_Paths, Random_Tunes_Go_To_The_Card_And_Back) {
  for (int round = 0; round < 5; ++round) {
    CardByte = Random_Tune();
    const Byte_Image tune = As_Card(CardByte);
    Guarded(Path().write);
    EXPECT_EQ(Word(), "< Card Write OK >");
    EXPECT_EQ(CardByte, tune) << "the tail stands in the tune as well";
    Expect_Same(Card().Memory, tune, First());
    CardByte = {};
    Read();
    Expect_Same(test::As_Sent(CardByte), tune);
  }
}

TEST_P(Card_Paths, A_Read_Keeps_The_Tune_That_It_Replaces) {
  const Byte_Image mine = Stamped(CardByte);
  Start_Keeping_Tunes();
  Read();
  const auto kept = Earlier_Tunes();
  ASSERT_EQ(kept.size(), 1U);
  EXPECT_EQ(kept[0].tune.image, mine);
  EXPECT_NE(CardByte, mine);
  EXPECT_TRUE(tune_source.starts_with("Read from ")) << tune_source;
}

TEST_P(Card_Paths, An_Undo_After_A_Write_Brings_Back_The_Tune_Before_It) {
  const Byte_Image before = CardByte = Other_Tune();
  CardByte[map::card_checksum] = 0;
  Guarded(Path().write);
  EXPECT_EQ(Undo_Index, 1);
  Undo();
  EXPECT_EQ(CardByte[map::card_checksum], 0);
  EXPECT_EQ(CardByte[map::fuel_load.first], before[map::fuel_load.first]);
}

TEST_P(Card_Paths, Nothing_Else_Is_Entered_While_One_Works) {
  bool tried = false;
  loop_.on_turn = [&] {
    if (tried || !Transfer_Running()) return;
    tried = true;
    const Byte_Image tune = CardByte;
    for (const Card_Path& path : card_paths) {
      path.read();
      path.write();
    }
    EXPECT_EQ(CardByte, tune);
  };
  Guarded(Path().write);
  EXPECT_TRUE(tried);
  EXPECT_EQ(Word(), "< Card Write OK >");
  EXPECT_EQ(Undo_Index, 1);
}

TEST_P(Card_Paths, No_Card_Is_Said_And_Nothing_Is_Written) {
  Set_Reader_Faults("no_card");
  Box().Card_Present = false;
  const sim::Image before = Card().Memory;
  Expect_Box_For(todos_reader, "Could not connect to card by the specified reader!");
  Guarded(Path().write);
  static constexpr std::array words{"< No Card >", "< No MapCard present >", "< No card >"};
  EXPECT_EQ(Word(), words.at(GetParam()));
  EXPECT_TRUE(Card().Asked.empty());
  EXPECT_EQ(Card().Memory, before);
}

/// Whatever goes wrong: the card is asked for bytes of the tune alone, each once at most and in their order,
/// no PIN is presented, and a card that is called written holds the tune.
TEST_P(Card_Paths, Nothing_But_The_Tune_Reaches_A_Card) {
  for (const std::string& knobs : Random_Faults()) {
    SCOPED_TRACE(knobs);
    Prepare(knobs);
    sim::Image expected = Card().Memory;
    Guarded(Path().write);
    int next = First();
    for (const auto& [address, value] : Card().Asked) {
      ASSERT_GE(static_cast<int>(address), next);
      ASSERT_EQ(value, CardByte[static_cast<int>(address)]) << "byte " << address;
      next = static_cast<int>(address) + 1;
      expected.at(address) = value;
    }
    EXPECT_EQ(Card().Tries, knobs == "locked" ? 0 : sim::Smart_Card::All_Tries);
    if (Word() == "< Card Write OK >") {
      EXPECT_EQ(next, Byte_Image::size);
      EXPECT_EQ(Card().Memory, expected);
    }
    if (knobs.empty() || knobs == "wrong_pin") {
      EXPECT_EQ(Word(), "< Card Write OK >");
    }
  }
}

/// Whatever goes wrong: the tune is what the card holds, to the byte, or as it was, and the card was asked to
/// store nothing.
TEST_P(Card_Paths, What_Is_Read_Is_The_Card_Or_Nothing) {
  int whole = 0;
  for (const std::string& knobs : Random_Faults()) {
    SCOPED_TRACE(knobs);
    Prepare(knobs);
    const sim::Image before = test::As_Sent(CardByte);
    if (GetParam() == box && random_() % 2 == 0)
      Set_Faults("on=rd,drop=" + std::to_string(5 + random_() % 512));
    Read();
    const bool read = Word() == "< Card Read OK >" || Word().starts_with("< KX read ");
    whole += read ? 1 : 0;
    Expect_Same(read ? Box_Or_Card() : before, CardByte, 0);
    EXPECT_TRUE(Card().Asked.empty());
  }
  EXPECT_GT(whole, 0);
}

TEST_P(Card_Paths, Protected_Bytes_That_Differ_Are_Seen_And_Equal_Ones_Are_Fine) {
  Guarded(Path().write);
  Card().Protected.fill(true);
  Guarded(Path().write);
  EXPECT_EQ(Word(), "< Card Write OK >");
  CardByte[map::load_base] ^= 0x11;
  Guarded(Path().write);
  EXPECT_NE(Word(), "< Card Write OK >");
}

/// At every turn of the loop that an operation takes: nothing is changed but by what had ended before, no box
/// comes up, and the next run of the program finds all in order.
TEST_P(Card_Paths, The_Closing_Program_Ends_All_At_Once) {
  std::vector<void (*)()> clicks;
  for (const Card_Button& button : Path().buttons) {
    if (button.handler != nullptr) clicks.push_back(button.handler);
  }
  for (void (*const click)() : clicks) {
    bool ended_early = true;
    for (int turn = 1; ended_early; turn += 1 + turn / 4) {
      SCOPED_TRACE(turn);
      Prepare("");
      Reader_Found = false;
      const Byte_Image before = CardByte = As_Card(CardByte);
      int turns = 0;
      loop_.on_turn = [&] {
        if (++turns == turn) Begin_Shutdown();
      };
      Guarded(click);
      loop_.on_turn = nullptr;
      ended_early = turns >= turn;
      EXPECT_LE(turns, turn + 1);
      EXPECT_FALSE(Transfer_Running());
      if (ended_early) {
        EXPECT_EQ(CardByte, before);
        EXPECT_FALSE(MSComm1.PortOpen());
        EXPECT_TRUE(Word() != "< Card Write OK >" && Word() != "< Card Read OK >") << Word();
      }
      Closing = false;
    }
  }
  Guarded(Path().write);
  EXPECT_EQ(Word(), "< Card Write OK >");
}

/// The ways through a reader of the PC, which tell what the tune came from.
class Reader_Paths : public Card_Paths {};
INSTANTIATE_TEST_SUITE_P(All, Reader_Paths, testing::Values(chipdrive, todos_reader));

TEST_P(Reader_Paths, A_Read_Names_Its_Source_And_Can_Be_Undone) {
  card_data_file = "Track day.kxs";
  const Byte_Image before = CardByte;
  Read();
  EXPECT_EQ(Word(), "< Card Read OK >");
  EXPECT_EQ(CardByte, Other_Tune());
  EXPECT_EQ(card_data_file, "New1.kxs");
  EXPECT_EQ(Title_Text(), "Settings loaded from card");
  EXPECT_EQ(txt_File_Description.Text(), "Settings loaded from card");
  EXPECT_TRUE(uncoded.Text().starts_with("0: " + std::to_string(CardByte[0]) + "\r\n1: "));
  Undo();
  EXPECT_EQ(CardByte, before);
}

TEST_P(Reader_Paths, A_Card_Of_Another_Dataset_Is_Asked_About) {
  const std::string question =
      "File has different dataset ID (104) than currently selected in preferences (108), load anyway?\r\n"
      "(Dataset ID is not changed.)";
  Card().Memory[map::dataset] = 104;
  card_data_file = "Track day.kxs";
  Set_Title("Track day.kxs");
  txt_File_Description.Set("wet");
  const Byte_Image before = CardByte;
  ask_.Expect(question, Answer::cancel);
  Read();
  EXPECT_EQ(Word(), "< Card Read cancel >");
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(card_data_file + "|" + Title_Text() + "|" + txt_File_Description.Text(),
            "Track day.kxs|Track day.kxs|wet");
  EXPECT_EQ(Undo_Index, 0);
  ask_.Expect(question, Answer::ok);
  Read();
  EXPECT_EQ(Word(), "< Card Read OK >");
  EXPECT_EQ(CardByte[map::dataset], 104);
  EXPECT_EQ(DatasetID, 108);
}

TEST_P(Reader_Paths, A_Tune_That_Makes_A_Slave_Is_Warned_Of_Once) {
  Set_Field(map::slave_mode, 1);
  ask_.Expect("This setting will set ChargeMarshal to slave");
  Guarded(Path().write);
  EXPECT_EQ(Word(), "< Card Write OK >");
}

}  // namespace
}  // namespace kx
