#include <gmock/gmock.h>

#include <algorithm>
#include <random>

#include "boxlink/transfer.h"
#include "settings/history.h"
#include "settings/reference_tune.h"
#include "settings/refresh.h"
#include "support/workspace_fixture.h"
#include "workspace/cell_editing.h"
#include "workspace/compare.h"
#include "workspace/compare_commands.h"
#include "workspace/difference_list.h"
#include "workspace/scalar_controls.h"

namespace kx {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class Differences_Of_Tunes : public Workspace_Fixture {
 protected:
  /// The tune is as it stood at the start; the reference gets @p bytes in its place.
  static void Compare_With_Bytes(std::initializer_list<std::pair<int, int>> bytes) {
    const Byte_Image tune = CardByte;
    for (const auto& [byte, value] : bytes) CardByte[byte] = static_cast<std::uint8_t>(value);
    Note_Opened_Tune();
    CardByte = tune;
    Choose_Reference(Reference_Source::opened);
    Show_Reference();
  }

  [[nodiscard]] Byte_Image Random_Image(bool mirrored) {
    Byte_Image image;
    for (int i = 0; i < Byte_Image::size; ++i) image[i] = static_cast<std::uint8_t>(random_());
    if (mirrored) image[map::mirror] = image[map::flags_c];
    return image;
  }

  std::mt19937 random_{20260};
};

TEST_F(Differences_Of_Tunes, Of_Random_Tunes_Every_Differing_Bit_Is_Told_And_No_Other) {
  for (int round = 0; round < 300; ++round) {
    const Byte_Image reference = Random_Image(round % 2 == 0);
    Byte_Image here = Random_Image(round % 2 == 0);
    if (round % 3 == 0) {  // a few bytes only
      here = reference;
      for (int i = 0; i < 5; ++i)
        here[static_cast<int>(random_() % 256)] ^= static_cast<std::uint8_t>(1U << (random_() % 8));
    }
    const auto found = Differences(reference, here);
    Byte_Image told;
    for (const Difference& difference : found) {
      ASSERT_FALSE(difference.bytes.empty()) << difference.name;
      for (const Differing_Byte& part : difference.bytes) {
        ASSERT_NE((part.reference ^ part.here) & part.mask, 0) << difference.name;
        ASSERT_EQ(part.reference, reference[part.byte]);
        ASSERT_EQ(part.here, here[part.byte]);
        told[part.byte] |= part.mask;
      }
      ASSERT_TRUE(difference.table || !difference.control.empty() || difference.page == page::none);
    }
    for (int i = 0; i < Byte_Image::size; ++i) {
      const int differing = reference[i] ^ here[i];
      ASSERT_EQ(differing & ~told[i], 0) << "byte " << i << " round " << round;
      ASSERT_TRUE(differing != 0 || told[i] == 0) << "byte " << i << " round " << round;
    }
    ASSERT_TRUE(std::ranges::is_sorted(found, {}, &Difference::page));
    ASSERT_EQ(Taken(here, found), reference);
  }
}

TEST_F(Differences_Of_Tunes, Of_Random_Rows_These_Bits_Are_Taken_And_Undo_Brings_Them_Back) {
  for (int round = 0; round < 50; ++round) {
    const Byte_Image reference = Random_Image(true);
    const Byte_Image here = Random_Image(true);
    const auto all = Differences(reference, here);
    std::vector<Difference> chosen;
    std::ranges::sample(all, std::back_inserter(chosen), 7, random_);
    Byte_Image bits;
    for (const Difference& row : chosen)
      for (const Differing_Byte& part : row.bytes) bits[part.byte] |= part.mask;
    const Byte_Image taken = Taken(here, chosen);
    for (int i = 0; i < Byte_Image::size; ++i) {
      ASSERT_EQ(taken[i], (here[i] & ~bits[i]) | (reference[i] & bits[i])) << i;
    }
    ASSERT_EQ(taken[map::mirror], taken[map::flags_c]);
  }
  Compare_With_Bytes({{46, 35}, {47, 36}, {100, 140}, {map::rpm_limit, 100}});
  const Byte_Image before = CardByte;
  const int slots = Undo_Index;
  Take_Table_From_Reference(Table::ignition_load);
  EXPECT_EQ(Undo_Index, slots + 1);
  EXPECT_EQ(CardByte[46], 35);
  EXPECT_EQ(CardByte[47], 36);
  EXPECT_EQ(CardByte[100], before[100]);
  EXPECT_EQ(Grid_Of(Table::ignition_load).Text(1, 2), "3.5");
  ASSERT_EQ(Shown_Differences().size(), 2U);
  const std::vector<Difference> rest = Shown_Differences();
  Take_From_Reference(rest);
  EXPECT_TRUE(Shown_Differences().empty());
  Take_From_Reference(rest);
  EXPECT_EQ(Undo_Index, slots + 2) << "a step for nothing";
  Undo();
  Undo();
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(Shown_Differences().size(), 4U);
}

/// One byte of the reference against the start's tune, and how the list tells it.
struct Told {
  std::initializer_list<std::pair<int, int>> reference;
  std::initializer_list<std::pair<int, int>> here;
  const char* row;  ///< name | reference | here | change
};

TEST_F(Differences_Of_Tunes, Are_Told_By_Place_And_In_The_Units_Of_Either_Side) {
  const Byte_Image start = CardByte;
  const Told cases[] = {
      {{{46, 35}}, {{46, 40}}, "Ignition Load, 0.10 bar|3.5 Deg|4.0 Deg|+0.5"},
      {{{46, 36}, {44, 0x15}}, {{46, 40}}, "Ignition Load, 0.10 bar|28 %|4.0 Deg|"},
      {{{44, 0x15}},
       {},
       "Box settings, Degres or [%] in Ignition tables|Degrees in RPM table, Percent in Load table|Degrees "
       "in "
       "Load table, Percent in RPM table|"},
      {{{135, 128}}, {{135, 64}}, "Fuel RPM, 1000 RPM|00 %|-100 %|-100"},
      {{{135, 128}, {1, 0x40}}, {{135, 64}}, "Fuel RPM, 1000 RPM|00 % at 500 RPM|-100 %|"},
      {{{196, 6}}, {{196, 7}}, "PWM Load, 0.10 bar|05 %|05 %|+1 count"},
      {{{154, 51}}, {{154, 102}}, "Analog2 out, 000 RPM|1.00 V|2.00 V|+1.00"},
      {{{80, 102}, {0, 0x10}, {22, 0x10}, {2, 0x80}},
       {{80, 192}},
       "Ignition RPM, 500 RPM|MAF-Sim limit 2.00 V|100 %|"},
      {{{173, 51}, {0, 6}, {22, 6}},
       {{173, 102}, {0, 6}, {22, 6}},
       "Analog2 out, Boost activation level|0.60 bar|1.10 bar|+0.50"},
      {{{172, 51}, {0, 2}, {22, 2}},
       {{172, 102}, {0, 2}, {22, 2}},
       "Byte 172, Analog 2 table, entry 19; fuel RPM table at 250 RPM, entry 40|51|102|+51"},
      {{{map::rpm_limit, 150}}, {}, "Fuel options, Fuel cut RPM|9375 RPM|10000 RPM|+625"},
      {{{map::rpm_indicator, 170}},
       {{map::rpm_indicator, 200}},
       "Box settings, RPM Indicator (Led 2)|10000 RPM|10000 RPM|+30 counts"},
      {{{map::injector_offset_slave_a, 129}},
       {},
       "Fuel options, Injector pulse offset, slave, Inj A|0.03 ms|0.00 ms|-0.03"},
      {{{map::an_gain, 90}}, {}, "Analog2 out, Curve generator gain|90 %|100 %|+10"},
      {{{15, 2}}, {}, "Box settings, An2 sync|on|off|"},
      {{{44, 2}},
       {{44, 3}},
       "Box settings, Ignition mode (master)|Ignition advance and retard, stored as 2|Ignition advance and "
       "retard, stored as 3|"},
      {{{2, 4}},
       {},
       "Box settings, KX Digital I/O mode|Mode5, 4 fuel, 1 ign. PWM on IgnB|Mode1, 4 fuel, 2 ign, PWM on pin "
       "5|"},
      {{{1, 1}}, {}, "Byte 1, Flags A|1|0|-1"},
      {{{1, 0x0B}}, {{1, 0}}, "Byte 1, Flags A|bit 0 = 1, bit 1 = 1|bit 0 = 0, bit 1 = 0|"},
      {{{map::card_checksum, 3}}, {}, "Byte 254, Card checksum|3|0|-3"},
  };
  for (const Told& told : cases) {
    Byte_Image reference = start;
    Byte_Image here = start;
    for (const auto& [byte, value] : told.reference) reference[byte] = static_cast<std::uint8_t>(value);
    for (const auto& [byte, value] : told.here) here[byte] = static_cast<std::uint8_t>(value);
    std::vector<std::string> rows;
    for (const Difference& row : Differences(reference, here))
      rows.push_back(row.name + "|" + row.reference + "|" + row.here + "|" + row.change);
    EXPECT_THAT(rows, testing::Contains(told.row));
  }
}

TEST_F(Differences_Of_Tunes, A_Shared_Bit_Is_Told_By_Each_Control_And_Counts_Once_And_A_Mirror_Goes_Along) {
  Compare_With_Bytes({{map::flags_a, 0x40}, {map::flags_c, 0x06}, {map::mirror, 0x06}});
  std::vector<std::string> controls;
  for (const Difference& difference : Shown_Differences()) controls.emplace_back(difference.control);
  EXPECT_THAT(controls, ElementsAre("max_ret", "an2_combo", "Res_500"));
  EXPECT_EQ(Compare_Title(), "Compare with Opened: 3 differences in 3 bytes");
  const Difference& mode = Shown_Differences()[1];
  ASSERT_EQ(mode.bytes.size(), 2U);
  EXPECT_EQ(Difference_Row(mode)[4], "22: 6 -> 0; 0: 6 -> 0");
  EXPECT_EQ(Difference_Tip("an2_combo"),
            "Opened Mode4, Boost sensor activated output, here Mode1, Analog2 limit (default)");
  EXPECT_EQ(Differences_On_Tab(main_tab::ignition), 1);
  EXPECT_EQ(With_Count("Ignition", 1), "Ignition (1)");
  Take_From_Reference(std::vector<Difference>{mode});
  EXPECT_EQ(CardByte[map::flags_c], 0x06);
  EXPECT_EQ(CardByte[map::mirror], 0x06);
}

TEST_F(Differences_Of_Tunes, Grids_And_Charts_Carry_Them_And_Follow_Each_Edit) {
  Compare_With_Bytes({{46, 35}, {81, 60}});
  const Grid& grid = Grid_Of(Table::ignition_load);
  EXPECT_EQ(grid.Mark(1), "Opened 3.5 Deg, here 0.0 Deg (-3.5)");
  EXPECT_EQ(grid.Mark(2), "");
  EXPECT_EQ(Chart_Of(Chart_Id::IgMapChart).reference.values.front(), 3.5);
  EXPECT_TRUE(Chart_Of(Chart_Id::FuelMapChart).reference.values.empty());
  Show_Tab(main_tab::ignition, 0);
  Grid_Of(Table::ignition_load).Select(1, 1);
  Fresh_Cell = true;
  for (const int code : {int{'3'}, key::full_stop, int{'5'}}) Grid_Key_Down(Table::ignition_load, code, 0);
  EXPECT_EQ(grid.Mark(1), "");
  EXPECT_TRUE(Chart_Of(Chart_Id::IgMapChart).reference.values.empty());
  Scalar_Changed(Scalar_Row_Of("rpm_limit_scroll"), 150);
  EXPECT_EQ(Difference_Tip("rpm_limit_scroll"), "Opened 10000 RPM, here 9375 RPM (-625)");
  Compare_With(Reference_Source::none);
  EXPECT_TRUE(Shown_Differences().empty());
  EXPECT_EQ(Difference_Tip("rpm_limit_scroll"), "");
}

TEST_F(Differences_Of_Tunes, Entries_At_Other_Places_Of_The_Axis_Are_No_Curve_Beside_The_Curve) {
  Compare_With_Bytes({{135, 64}});
  EXPECT_FALSE(Chart_Of(Chart_Id::FuelRpmChart).reference.values.empty());
  Compare_With_Bytes({{135, 64}, {map::flags_a, 0x40}});
  EXPECT_TRUE(Chart_Of(Chart_Id::FuelRpmChart).reference.values.empty());
  EXPECT_NE(Grid_Of(Table::fuel_rpm).Mark(3), "");
}

TEST_F(Differences_Of_Tunes, The_Byte_On_Show_Is_Taken_Though_The_Box_Was_Read_Meanwhile) {
  Byte_Image box = CardByte;
  box[46] = 35;
  Note_Box_Image(box, DatasetID);
  Show_Reference();
  box[46] = 99;
  Note_Box_Image(box, DatasetID);
  Take_From_Reference(std::vector<Difference>(Shown_Differences()));
  EXPECT_EQ(CardByte[46], 35);
}

TEST_F(Differences_Of_Tunes, Copy_And_Export_Hold_The_Rows) {
  Compare_With_Bytes({{46, 35}});
  Copy_Differences(Shown_Differences());
  EXPECT_EQ(Clipboard(),
            "Place\tOpened\tHere\tChange\tBytes\tNote\r\nIgnition Load, 0.10 bar\t3.5 Deg\t0.0 "
            "Deg\t-3.5\t46: 35 -> 0\t\r\n");
  ask_.Expect_Name("Save As", folder_.Path("list.csv"));
  Export_Differences(Shown_Differences());
  EXPECT_EQ(folder_.Read("list.csv"),
            "Place,Opened,Here,Change,Bytes,Note\r\n\"Ignition Load, 0.10 bar\",3.5 Deg,0.0 Deg,-3.5,46: 35 "
            "-> 0,\r\n");
}

}  // namespace
}  // namespace kx
