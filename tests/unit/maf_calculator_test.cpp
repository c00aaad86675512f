#include "logging/maf_calculator.h"

#include <gmock/gmock.h>

#include "logging/log_state.h"

namespace kx {
namespace {

using namespace testing;

class Maf_Calculator : public Test {
 protected:
  Maf_Calculator() {
    Reset_Log_State();
    Reset_Image_State();
    Init_MAF_Sim();
  }
  ~Maf_Calculator() override {
    maf_text = {};
    Reset_Log_State();
    Reset_Image_State();
  }
  static void Put(int row, double rpm, double map, double maf) {
    LogArray(row, 21) = rpm;
    LogArray(row, 31) = map;
    LogArray(row, 32) = maf;
  }
};

TEST_F(Maf_Calculator, Bins_By_Their_Upper_Edges) {
  const std::vector<std::pair<double, int>> bins = {{0, 0},        {191.9, 0},  {192, 1}, {9600, 10},
                                                    {57343.9, 15}, {57344, 17}, {1e6, 17}};
  for (const auto& [product, bin] : bins) EXPECT_EQ(Maf_Bin(product, MAF_Sim_Tab), bin) << product;
}

TEST_F(Maf_Calculator, Averages_The_Stretch_On_Show) {
  Put(1, 3000, 100, 7);  // not on show
  Put(2, 3000, 100, 128);
  Put(3, 3000.01, 100, 129);
  Put(4, 1000, 1, 51);
  Log_Chart_First = 2;
  Log_Chart_Last = 4;
  cmd_MAF_Sim_Click(0, 1);
  EXPECT_TRUE(maf_text.visible);
  EXPECT_THAT(maf_text.Text4, StartsWith("MAF-Simulation, calculator\r\n"
                                         "Select MAP and MAF in/output channel in box settings\r\n"
                                         "MAP-Input AN0   MAF-Input AN1\r\n"
                                         "SampleNo:   \tRPM\tMAP\tRpm*map\tMAFIn\r\n"
                                         "SampleNo: 2\t3000\t100\t9600\t128\r\n"
                                         "SampleNo: 3\t3000.01\t100\t9600.032\t129\r\n"
                                         "SampleNo: 4\t1000\t1\t32\t51\r\n"
                                         "Value\tBoarder\tSum\tSamples\tAvarage MAF\r\nRow0\t"));
  EXPECT_THAT(maf_text.Text4, HasSubstr("\t51\t1\t1V\r\nRow1\t"));
  EXPECT_THAT(maf_text.Text4, HasSubstr("\t257\t2\t2.51V\r\nRow11\t"));
  EXPECT_THAT(maf_text.Text4, EndsWith("\r\nRow17\t\t\t0\t0\t\r\n"));
  EXPECT_EQ(LogArray(3, 35), 9600.032);
  EXPECT_FALSE(LogArray.Has(1, 35));

  Log_Chart_First = 1;
  Log_Chart_Last = 0;  // a second press hides the text and starts its sums anew
  cmd_MAF_Sim_Click(0, 1);
  EXPECT_FALSE(maf_text.visible);
  EXPECT_THAT(maf_text.Text4, Not(HasSubstr("V\r\n")));
}

}  // namespace
}  // namespace kx
