#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <cmath>

#include "log_form_fixture.h"
#include "settings/image.h"
#include "widgets/cell_colours.h"
#include "widgets/heat_colours.h"
#include "widgets/heat_grid.h"
#include "widgets/table_grid.h"
#include "workspace/tables.h"

namespace kx {
namespace {

/// The hit map over the log window; its log pulls from 2000 rpm by 10 rpm a row, all inputs at 100 counts.
class Hit_Map_Form : public Log_Form_Fixture {
 protected:
  void SetUp() override {
    Log_Form_Fixture::SetUp();
    Choose("Log_Hit_Map");
    hits_ = Window("KX_Hit_Map");
    ASSERT_NE(hits_, nullptr);
    ASSERT_TRUE(hits_->isVisible());
  }
  Heat_Grid* Cells() { return Part<Heat_Grid>(hits_, "hit_grid"); }
  QString Cell(int load_entry, int rpm_entry, int role = Qt::DisplayRole) {
    return Cells()->model()->index(load_entry - 1, rpm_entry - 1).data(role).toString();
  }
  QString Summary() { return Part<QLabel>(hits_, "hit_summary")->text(); }
  void Pick_In(const char* list, int number) {
    auto* combo = Part<QComboBox>(hits_, list);
    combo->setCurrentIndex(combo->findData(number));
    emit combo->activated(combo->currentIndex());
  }

  QWidget* hits_ = nullptr;
};

constexpr int entry_of_100_counts = 14;  // 100 / 8 + 1 = 13.5, half way: the higher one

TEST_F(Hit_Map_Form, Follows_The_Log_And_What_Is_Chosen) {
  EXPECT_EQ(Summary(), "No log on screen. Open one, or start one with F9.");
  EXPECT_EQ(Cell(1, 1), "");
  Open_Log(101);  // 2000 to 3000 rpm
  EXPECT_TRUE(Summary().startsWith("101 of 101 rows in 3 cells.")) << Summary().toStdString();
  EXPECT_EQ(Cell(entry_of_100_counts, 5), "25");  // 2000 to 2240 rpm
  EXPECT_EQ(Cell(entry_of_100_counts, 6), "50");
  EXPECT_TRUE(Cell(entry_of_100_counts, 6, Qt::ToolTipRole).contains("50 rows, 2.50 s"));
  Pick_In("hit_signal", 0);
  Pick_In("hit_measure", 3);
  EXPECT_EQ(Cell(entry_of_100_counts, 5), "2240");
  Press("cmd_ZoomIn");
  auto* stretch = Part<QCheckBox>(hits_, "hit_stretch");
  stretch->click();
  EXPECT_TRUE(Summary().startsWith("51 of 101 rows")) << Summary().toStdString();
  Press("cmd_ZoomIn");
  EXPECT_FALSE(Summary().startsWith("51 of")) << "the map goes with the chart";
  stretch->click();
  Pick_In("hit_limit(0)", 0);
  Type(hits_, "hit_from(0)", "2505");
  EXPECT_TRUE(Summary().startsWith("50 of 101 rows")) << Summary().toStdString();
  Expect_Box("Limit of the hit map: not a number");
  Type(hits_, "hit_to(0)", "fast");
  EXPECT_EQ(Part<QLineEdit>(hits_, "hit_to(0)")->text(), "");
  Pick_In("hit_table", static_cast<int>(Table::fuel_load));
  Set_Field(map::fuel_rpm_250, 1);
  Refresh_Whole_Image();
  EXPECT_EQ(Cells()->model()->columnCount(), 41) << "the map goes with the tune";
  Escape(hits_);
  EXPECT_FALSE(hits_->isVisible());
}

TEST_F(Hit_Map_Form, A_Cell_Leads_To_Its_Entries) {
  Open_Log(101);
  Pick_In("hit_table", static_cast<int>(Table::pwm_load));
  Cells()->setCurrentIndex(Cells()->model()->index(13, 5));
  QTest::keyClick(Cells(), Qt::Key_Return);
  EXPECT_EQ(Active_Table(), Table::pwm_load);
  EXPECT_EQ(Grid_Of(Table::pwm_load).Row(), 14);
  EXPECT_EQ(Grid_Of(Table::pwm_rpm).Row(), 6);
  EXPECT_EQ(Grid_Of(Table::pwm_load).Sel_Count(), 0);
  Pick_In("hit_load", 1);
  Cells()->setCurrentIndex(Cells()->model()->index(20, 9));
  QTest::keyClick(Cells(), Qt::Key_Return);
  EXPECT_EQ(Active_Table(), Table::pwm_rpm) << "another input's entry is none of the table's";
  EXPECT_EQ(Grid_Of(Table::pwm_load).Row(), 14);
  EXPECT_EQ(Grid_Of(Table::pwm_rpm).Row(), 10);
}

TEST_F(Hit_Map_Form, Goes_To_Files_As_Numbers_And_Picture) {
  Open_Log(101);
  Expect_Save_Name(folder() + "pull_hits.csv");
  Part<QAbstractButton>(hits_, "hit_export")->click();
  EXPECT_TRUE(folder_.Read("pull_hits.csv").starts_with("Rows, AN"));
  Part<QAction>(Cells(), "grid_copy")->trigger();
  const QStringList lines = QApplication::clipboard()->text().split('\n');
  EXPECT_EQ(lines[0].trimmed().split('\t')[6], "2500");
  EXPECT_EQ(lines[entry_of_100_counts].split('\t')[6], "50") << "2250 to 2740 rpm";
  for (const char* kind : {"png", "bmp", "pdf"}) {
    const std::string name = std::string("pull_hits.") + kind;
    Expect_Save_Name(folder() + name);
    Part<QAbstractButton>(hits_, "hit_export")->click();
    EXPECT_GT(folder_.Read(name).size(), 5000U) << kind;
  }
  const QImage picture(Text(folder() + "pull_hits.png"));
  EXPECT_GT(picture.height(), 33 * hits_->fontMetrics().height()) << "all rows, in sight or not";
}

/// Numbers stay readable on every colour, and each colour is lighter than the one before.
TEST(Heat_Colours, Ink_Stands_Out_And_Light_Rises) {
  const QColor black(Qt::black);
  for (int i = 0; i <= 200; ++i) {
    const QColor colour = Heat_Colour(i / 200.0);
    EXPECT_GE(Contrast(Ink_On(colour), colour), 4.5) << i;
    EXPECT_GE(Contrast(colour, black), Contrast(Heat_Colour((i - 1) / 200.0), black)) << i;
  }
}

}  // namespace
}  // namespace kx
