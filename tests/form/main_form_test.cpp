#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>

#include "boxlink/transfer.h"
#include "form_fixture.h"
#include "settings/brand.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/ini_file_adm.h"
#include "settings/session.h"
#include "widgets/line_chart.h"
#include "widgets/table_grid.h"
#include "workspace/tables.h"

namespace kx {
namespace {

using Main_Form = Form_Fixture;

TEST_F(Main_Form, Has_Every_Control_By_Its_Name) {
  for (const Table_Row& row : table_rows) EXPECT_NE(Find<Table_Grid>(row.grid), nullptr) << row.grid;
  for (const std::string_view chart : chart_names) EXPECT_NE(Find<Line_Chart>(chart), nullptr) << chart;
  for (const char* tabs :
       {"sstab_Main", "SSTab_Ignition", "SSTab_Fuel", "SSTab_PWM", "SSTab_Analog", "SSTab_Communication"}) {
    EXPECT_NE(Find<QTabWidget>(tabs), nullptr) << tabs;
  }
  for (const char* button : {"plus", "minus", "steep", "flat", "set_table", "scale_table", "Read_Settings",
                             "Write_Settings", "Verify_Settings", "Connect_Info", "Command3"}) {
    EXPECT_NE(Find<QPushButton>(button), nullptr) << button;
  }
  for (const char* entry :
       {"File_open", "File_save", "File_save_As", "File_exit", "edit_undo", "edit_redo"}) {
    EXPECT_NE(Find<QAction>(entry), nullptr) << entry;
  }
  EXPECT_EQ(Find<QLineEdit>("rs232_text")->text(), "< COM-Port info >");
  EXPECT_EQ(form().windowTitle(), "TORNVIK  KXBenchPro - New1.kxs");
}

class Every_Grid : public Form_Fixture, public testing::WithParamInterface<Table_Row> {};

/// Keys, the panel and undo reach the right byte of each table through its real widgets, and grid, chart and
/// limits follow.
TEST_P(Every_Grid, Types_Steps_And_Draws) {
  const Table_Row& row = GetParam();
  Set_Field(map::maf_sim_enable, row.table == Table::maf_output || row.table == Table::maf_limit ? 1 : 0);
  Set_Field(map::maf_sim_limit, row.table == Table::maf_limit ? 1 : 0);
  Refresh_Whole_Image();
  Show(row.table);
  auto* grid = Find<Table_Grid>(row.grid);
  ASSERT_TRUE(grid->isVisible());
  ASSERT_TRUE(Find<QWidget>("tblctrl")->isVisible());

  const int last = grid->model()->rowCount();
  const int byte = Edited_Byte(row.table, last);
  Pick(row.table, last);
  QTest::keyClicks(grid, "2.5");
  const int typed = CardByte[byte];
  EXPECT_EQ(grid->model()->index(last - 1, row.text_column).data().toString(), "2.5");
  EXPECT_EQ(Grid_Of(row.table).Row(), last);
  Click("plus");
  EXPECT_GT(CardByte[byte], typed);
  Click("minus");
  const auto* chart = Find<Line_Chart>(chart_names[static_cast<std::size_t>(Chart_Beside(row.table))]);
  ASSERT_TRUE(chart->isVisible());
  EXPECT_EQ(chart->graph(1)->dataCount(), last);
  EXPECT_EQ(chart->graph(1)->data()->at(last - 1)->value,
            grid->model()->index(last - 1, row.text_column).data().toString().toDouble());
  EXPECT_EQ(chart->graph(0)->data()->at(0)->key, last) << "the current entry is marked";
  QTest::keyClick(&form(), Qt::Key_Z, Qt::ControlModifier);
  QTest::keyClick(&form(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(CardByte[byte], typed) << "undo of the two steps";
}

INSTANTIATE_TEST_SUITE_P(All, Every_Grid, testing::ValuesIn(table_rows),
                         [](const auto& row) { return std::string(row.param.grid); });

TEST_F(Main_Form, The_Transfer_Buttons_Rest_While_The_Line_Is_Taken) {
  const std::vector<const char*> names{"Read_Settings", "Write_Settings", "Verify_Settings", "Connect_Info",
                                       "Command3",      "Com_knapp3",     "Com_knapp4",      "Com_knapp5",
                                       "Open_Box_Port", "Export_Line_Log"};
  const auto enabled = [&] {
    return std::ranges::count_if(names, [&](auto* name) { return Find<QPushButton>(name)->isEnabled(); });
  };
  EXPECT_EQ(enabled(), std::ssize(names));
  Run_Transfer({}, [&] {
    EXPECT_EQ(enabled(), 0);
    EXPECT_TRUE(Find<QPushButton>("Com_knapp2")->isEnabled()) << "the way out";
  });
  EXPECT_EQ(enabled(), std::ssize(names));
}

TEST_F(Main_Form, The_Card_Side_Shows_The_Frame_Of_The_Chosen_Interface) {
  auto* sides = Find<QTabWidget>("SSTab_Communication");
  EXPECT_EQ(sides->currentIndex(), 1) << "the shipped settings begin with the box";
  Trigger("toggle_interface_box_chip");
  EXPECT_EQ(sides->tabText(sides->currentIndex()), "MapCard");
  EXPECT_EQ(Read_Key("Default_Com_interface"), "MapCard_Communication");
  const auto shown = [this] {
    QStringList frames;
    for (const char* name : {"Frame1", "kx_crw_frame", "frame_Todos"}) {
      if (Find<QGroupBox>(name)->isVisible()) frames << name;
    }
    return frames;
  };
  for (const char* frame : {"Frame1", "kx_crw_frame", "frame_Todos", "Frame1"}) {
    EXPECT_EQ(shown(), QStringList(frame));
    Trigger("toggle_interface");
  }
  Default_Interface = "Serial";
  Update_All();
  EXPECT_EQ(shown(), QStringList("kx_crw_frame")) << "a word without a frame leaves the one on show";
  sides->setCurrentIndex(1);
  EXPECT_EQ(Read_Key("Default_Com_interface"), "Box_Communication");
}

TEST_F(Main_Form, Rows_Are_Selected_By_Dragging_Shift_Arrows_And_The_Chart) {
  Show(Table::fuel_load);
  auto* grid = Find<Table_Grid>("Fuel_MAP_Grid");
  const auto centre = [grid](int row) { return grid->visualRect(grid->model()->index(row, 1)).center(); };
  QTest::mousePress(grid->viewport(), Qt::LeftButton, {}, centre(4));
  QTest::mouseMove(grid->viewport(), centre(6));
  QTest::mouseRelease(grid->viewport(), Qt::LeftButton, {}, centre(6));
  EXPECT_EQ(Grid_Of(Table::fuel_load).Sel_Start(), 5);
  EXPECT_EQ(Grid_Of(Table::fuel_load).Sel_Count(), 2);
  QTest::keyClick(grid, Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(Grid_Of(Table::fuel_load).Sel_Count(), 3);
  Click("plus");
  EXPECT_EQ(Grid_Of(Table::fuel_load).Sel_Count(), 3) << "the selection outlives the refresh";
  EXPECT_EQ(grid->selectionModel()->selectedRows().size(), 4);
  QTest::keyClick(grid, Qt::Key_Up);
  EXPECT_EQ(Grid_Of(Table::fuel_load).Sel_Count(), 0);

  auto* chart = Find<Line_Chart>("FuelMapChart");
  const auto at_entry = [chart](int row) {
    return QPoint(static_cast<int>(chart->xAxis->coordToPixel(row)), chart->height() / 2);
  };
  QTest::mouseClick(chart, Qt::LeftButton, {}, at_entry(20));
  EXPECT_EQ(Grid_Of(Table::fuel_load).Row(), 20);
}

TEST_F(Main_Form, Enter_Goes_Down_And_Keeps_The_Row_In_Sight) {
  form().resize(900, 420);
  Show(Table::ignition_load);
  auto* grid = Find<Table_Grid>("Ig_MAP_Grid");
  Pick(Table::ignition_load, 1);
  for (int i = 0; i < 32; ++i) {
    QTest::keyClicks(grid, "1");
    QTest::keyClick(grid, Qt::Key_Return);
  }
  EXPECT_EQ(grid->currentIndex().row(), 32);
  EXPECT_TRUE(grid->viewport()->rect().contains(grid->visualRect(grid->currentIndex()).center()));
  EXPECT_EQ(CardByte[map::ignition_load.Last() - 1], 10);
}

TEST_F(Main_Form, A_Failure_In_A_Handler_Shows_One_Box_And_The_Form_Lives) {
  Show(Table::analog1);
  Pick(Table::analog1, 4);
  Find<QLineEdit>("set_table_text")->setFocus();
  QTest::keyClicks(Find<QLineEdit>("set_table_text"), "abc");
  Expect_Box("Type mismatch");
  QTest::keyClick(Find<QLineEdit>("set_table_text"), Qt::Key_Return);
  QTest::keyClicks(Find<Table_Grid>("an1_out_grid"), "-");
  Expect_Box("Overflow");
  QTest::keyClicks(Find<Table_Grid>("an1_out_grid"), "1");
  EXPECT_EQ(CardByte[map::analog1.first + 3], 0);
  Find<QLineEdit>("set_table_text")->clear();
  QTest::keyClicks(Find<QLineEdit>("set_table_text"), "2");
  Click("set_table");
  EXPECT_EQ(CardByte[map::analog1.first + 3], 102);
}

TEST_F(Main_Form, Saves_And_Opens_With_The_Description) {
  Show(Table::ignition_load);
  Pick(Table::ignition_load, 11);
  Click("plus");
  Find<QPlainTextEdit>("txt_File_Description")->setPlainText("first line\nsecond, part");
  const Byte_Image saved = CardByte;
  Expect_Save_Name(folder() + "my.kxs");
  Trigger("File_save_As");
  EXPECT_EQ(form().windowTitle(), "TORNVIK  KXBenchPro - my.kxs");
  Trigger("edit_undo");
  EXPECT_NE(CardByte, saved);
  Find<QPlainTextEdit>("txt_File_Description")->clear();
  Expect_Open_Name(folder() + "my.kxs");
  Trigger("File_open");
  EXPECT_EQ(CardByte, saved);
  EXPECT_EQ(txt_File_Description.Text(), "first line\r\nsecond\r\n part\r\n");
}

TEST_F(Main_Form, A_Description_Comes_Back_Byte_For_Byte) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += " " + std::to_string(i == 255 ? 108 : 0) + " \r\n";
  bytes += "  a\tb \xA0\x81\x8D\x8F\x90\x9D\r\n\r\n\tend\r\n";
  Write_File("in.kxs", bytes);
  Expect_Open_Name(folder() + "in.kxs");
  Trigger("File_open");
  Expect_Save_Name(folder() + "out.kxs");
  Trigger("File_save_As");
  EXPECT_EQ(folder_.Read("out.kxs"), bytes + "\r\n") << "one more line end";
  QTest::keyClicks(Find<QPlainTextEdit>("txt_File_Description"), "x");
  Trigger("File_save");
  EXPECT_EQ(folder_.Read("out.kxs").substr(bytes.find("  a")), "x" + bytes.substr(bytes.find("  a")) + "\r\n")
      << "typing leaves the rest alone";
  const QString notice = Find<QLabel>("notice_text")->text();
  EXPECT_TRUE(notice.startsWith(QString::fromStdString("Saved " + folder() + "out.kxs ")))
      << notice.toStdString();
}

TEST_F(Main_Form, A_Refused_File_Leaves_Everything_As_It_Was) {
  Show(Table::ignition_load);
  Click("plus");
  txt_File_Description.Set("mine");
  const Byte_Image before = CardByte;
  const std::string ini = folder_.Read(Ini_File_Name);
  Write_File("short.kxs", " 1 \r\n 2 \r\n");
  Expect_Open_Name(folder() + "short.kxs");
  Expect_Box("Not a kxs-file");
  Trigger("File_open");
  std::string other;
  for (int i = 0; i < 256; ++i) other += " 7 \r\n";
  Write_File("other.kxs", other);
  Expect_Open_Name(folder() + "other.kxs");
  Expect_Box(
      "File has different dataset ID (7) than currently selected in preferences (108), load anyway?\r\n"
      "(Dataset ID is not changed.)",
      platform::Answer::cancel);
  Trigger("File_open");
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(form().windowTitle(), "TORNVIK  KXBenchPro - New1.kxs");
  EXPECT_EQ(card_data_file, "New1.kxs");
  EXPECT_EQ(folder_.Read(Ini_File_Name), ini) << "and no folder is noted";
  EXPECT_EQ(Find<QPlainTextEdit>("txt_File_Description")->toPlainText(), "mine");
}

TEST_F(Main_Form, Analog_Tabs_And_Frames_Follow_The_Tune) {
  auto* tabs = Find<QTabWidget>("SSTab_Analog");
  EXPECT_TRUE(tabs->isTabVisible(0));
  EXPECT_FALSE(tabs->isTabVisible(2));
  Set_Field(map::maf_sim_enable, 1);
  Refresh_Whole_Image();
  EXPECT_FALSE(tabs->isTabVisible(0));
  EXPECT_TRUE(tabs->isTabVisible(2));
  EXPECT_FALSE(tabs->isTabVisible(3));
  Set_Field(map::fuel_rpm_250, 1);
  Refresh_Whole_Image();
  Show(Table::analog2);
  EXPECT_FALSE(Find<QWidget>("An2out_frame")->isVisible());
  EXPECT_TRUE(Find<QLabel>("Label_Analog2_notification")->isVisible());
  EXPECT_FALSE(Find<QWidget>("tblctrl")->isVisible());
}

/// The all-zero image that redo can reach must show without a fault.
TEST_F(Main_Form, Redo_Into_An_Empty_Slot_Shows_The_Zero_Image) {
  Show(Table::pwm_rpm);
  Click("plus");
  Trigger("edit_undo");
  Trigger("edit_redo");
  EXPECT_EQ(CardByte, Byte_Image{});
  EXPECT_EQ(Grid_Of(Table::fuel_rpm).Text(2, 1), "-200");
}

TEST_F(Main_Form, Ctrl_T_Takes_The_Next_Card_Interface) {
  EXPECT_EQ(Default_Interface, "SC_Reader");
  QTest::keyClick(&form(), Qt::Key_T, Qt::ControlModifier);
  EXPECT_EQ(Default_Interface, "KX_MapCard");
  QTest::keyClick(&form(), Qt::Key_T, Qt::ControlModifier);
  QTest::keyClick(&form(), Qt::Key_T, Qt::ControlModifier);
  EXPECT_EQ(Default_Interface, "SC_Reader");
}

}  // namespace
}  // namespace kx
