#include <gmock/gmock.h>

#include <QClipboard>
#include <QMenu>
#include <QTest>

#include "boxlink/transfer.h"
#include "form_fixture.h"
#include "platform/seams.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/notice.h"
#include "settings/numbers.h"
#include "widgets/cell_colours.h"
#include "widgets/line_chart.h"
#include "widgets/table_grid.h"
#include "workspace/table_operations.h"
#include "workspace/tables.h"

namespace kx {
namespace {

using testing::ElementsAre;

/// Hands in grid and chart of the ignition load table, whose first entries are 10.0, 11.0, 12.0, ... Deg.
class Table_Gesture_Form : public Form_Fixture {
 protected:
  void SetUp() override {
    Form_Fixture::SetUp();
    for (int i = 0; i < 10; ++i)
      CardByte[map::ignition_load.first + i] = static_cast<std::uint8_t>(100 + 10 * i);
    Update_All();
    Show(Table::ignition_load);
    grid_ = Find<Table_Grid>("Ig_MAP_Grid");
    chart_ = Find<Line_Chart>("IgMapChart");
    QApplication::setActiveWindow(form_.get());
    Reset_History();
    before_ = CardByte;
  }
  void Select(int row, int row_sel) {
    Pick(Table::ignition_load, row);
    for (int i = row; i < row_sel; ++i) QTest::keyClick(grid_, Qt::Key_Down, Qt::ShiftModifier);
    Reset_History();  // keys in this grid are captured
  }
  [[nodiscard]] static std::vector<int> Bytes(int row, int count) {
    std::vector<int> bytes;
    for (int i = 0; i < count; ++i) bytes.push_back(CardByte[map::ignition_load.first + row - 1 + i]);
    return bytes;
  }
  [[nodiscard]] QPoint Point(int row) const {
    const double value = CardByte[map::ignition_load.first + row - 1] / 10.0;
    return QPointF(chart_->xAxis->coordToPixel(row), chart_->yAxis->coordToPixel(value)).toPoint();
  }
  /// Pixels of the chart that stand for @p degrees.
  [[nodiscard]] int Pixels(double degrees) const {
    return qRound(chart_->yAxis->coordToPixel(0) - chart_->yAxis->coordToPixel(degrees));
  }
  /// Presses on the point of @p row and moves it up by @p degrees; the first pixels only tell a drag from a
  /// click.
  void Hold_And_Move(int row, double degrees) {
    start_ = Point(row) - QPoint(0, degrees > 0 ? 4 : -4);
    QTest::mousePress(chart_, Qt::LeftButton, {}, Point(row));
    QTest::mouseMove(chart_, start_);
    QTest::mouseMove(chart_, start_ - QPoint(0, Pixels(degrees)));
  }
  void Let_Go() { QTest::mouseRelease(chart_, Qt::LeftButton, {}, start_); }
  [[nodiscard]] QString Value_Beside_Pointer() const {
    for (int i = 0; i < chart_->itemCount(); ++i) {
      auto* label = qobject_cast<QCPItemText*>(chart_->item(i));
      if (label != nullptr && label->visible()) return label->text();
    }
    return {};
  }
  QAction* Entry(const char* name) { return grid_->findChild<QAction*>(name); }

  Table_Grid* grid_ = nullptr;
  Line_Chart* chart_ = nullptr;
  Byte_Image before_;
  QPoint start_;
};

TEST_F(Table_Gesture_Form, Copy_And_Paste_By_Keys_Are_A_Spreadsheets) {
  Select(2, 3);
  QTest::keyClick(grid_, Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
  const QString copied = QApplication::clipboard()->text();
  EXPECT_TRUE(copied.endsWith("\t12.0\r\n") || copied.endsWith("\t12.0\n")) << copied.toStdString();
  EXPECT_EQ(copied.count('\t'), 4);
  Pick(Table::ignition_load, 32);
  Reset_History();
  QTest::keyClick(grid_, Qt::Key_V, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_THAT(Bytes(32, 2), ElementsAre(110, 120));
  EXPECT_EQ(grid_->model()->index(32, 2).data().toString(), "12.0");
  Trigger("edit_undo");
  EXPECT_EQ(CardByte, before_);
  Reset_History();
  QApplication::clipboard()->setText(QString(10'000'000, '7'));
  Expect_Box("Line 1, \"77777777777777777777...\", is not a number. Nothing was pasted.");
  Entry("table_paste")->trigger();
  EXPECT_EQ(CardByte, before_);
  EXPECT_EQ(Undo_Index, 0);
}

TEST_F(Table_Gesture_Form, The_Menu_Opens_By_Right_Button_And_Key_And_Works_On_The_Selection) {
  auto* menu = grid_->findChild<QMenu*>("table_menu");
  Select(2, 5);
  set_table_text.Set("x");
  scale_table_text.Set("110");
  const auto press_at = [this](int row) {
    const QPoint place = grid_->visualRect(grid_->model()->index(row - 1, 1)).center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, place, grid_->viewport()->mapToGlobal(place));
    QApplication::sendEvent(grid_->viewport(), &event);
  };
  press_at(4);
  ASSERT_TRUE(menu->isVisible());
  EXPECT_EQ(Grid_Of(Table::ignition_load).Sel_Count(), 3) << "inside the selection";
  EXPECT_TRUE(Entry("table_interpolate")->isEnabled());
  EXPECT_FALSE(Entry("table_set")->isEnabled()) << "its box holds no number";
  EXPECT_EQ(Entry("table_scale")->text(), "Sc&ale % 110");
  menu->close();
  CardByte[map::ignition_load.first + 2] = 200;
  Update_All();
  Entry("table_interpolate")->trigger();
  EXPECT_THAT(Bytes(2, 4), ElementsAre(110, 120, 130, 140));
  press_at(8);
  EXPECT_EQ(Grid_Of(Table::ignition_load).Row(), 8);
  EXPECT_EQ(Grid_Of(Table::ignition_load).Sel_Count(), 0);
  EXPECT_FALSE(Entry("table_smooth")->isEnabled());
  menu->close();
  QTest::keyClick(grid_, Qt::Key_F10, Qt::ShiftModifier);
  EXPECT_TRUE(menu->isVisible());
  menu->close();
  QTest::keyClick(grid_, Qt::Key_Up, Qt::ControlModifier);
  EXPECT_THAT(Bytes(8, 1), ElementsAre(171));
}

TEST_F(Table_Gesture_Form, A_Point_Is_Dragged_With_Its_Selection_In_One_Undo_Step) {
  Select(3, 5);
  QTest::mouseMove(chart_, Point(1));
  EXPECT_NE(chart_->cursor().shape(), Qt::SizeVerCursor) << "not selected";
  QTest::mouseMove(chart_, Point(4));
  EXPECT_EQ(chart_->cursor().shape(), Qt::SizeVerCursor);
  Hold_And_Move(4, 3);
  const auto moved = Bytes(2, 5);
  EXPECT_NEAR(moved[2], 160, 1) << "a pixel is about a step";
  const int steps = moved[2] - 130;
  EXPECT_THAT(moved, ElementsAre(110, 120 + steps, 130 + steps, 140 + steps, 150));
  EXPECT_EQ(Value_Beside_Pointer(), QString("%1 Deg (+%2)").arg(moved[2] / 10.0).arg(steps / 10.0));
  Let_Go();
  EXPECT_EQ(Value_Beside_Pointer(), "");
  EXPECT_TRUE(grid_->hasFocus());
  EXPECT_EQ(Undo_Index, 1);
  Trigger("edit_undo");
  EXPECT_EQ(CardByte, before_);
}

TEST_F(Table_Gesture_Form, Escape_And_A_Return_To_The_Start_Leave_No_Trace) {
  Select(3, 3);
  Hold_And_Move(3, 5);
  EXPECT_NE(CardByte, before_);
  QTest::keyClick(chart_, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_NE(CardByte, before_) << "keys are the drag's";
  QTest::keyClick(chart_, Qt::Key_Escape);
  EXPECT_EQ(CardByte, before_);
  QTest::mouseMove(chart_, start_ - QPoint(60, 60));
  EXPECT_EQ(CardByte, before_) << "the button is still down";
  EXPECT_EQ(Grid_Of(Table::ignition_load).Row_Sel(), 3);
  Let_Go();
  Hold_And_Move(3, 5);
  QTest::mouseMove(chart_, start_);
  Let_Go();
  EXPECT_EQ(CardByte, before_);
  EXPECT_EQ(Undo_Index, 0);
}

TEST_F(Table_Gesture_Form, A_Drag_Elsewhere_Or_Sideways_Selects_And_A_Click_Picks) {
  const Grid& grid = Grid_Of(Table::ignition_load);
  Select(3, 6);
  QTest::mousePress(chart_, Qt::LeftButton, {}, Point(4));
  QTest::mousePress(chart_, Qt::RightButton, {}, Point(1));
  QTest::mouseRelease(chart_, Qt::LeftButton, {}, Point(4));
  EXPECT_EQ(grid.Row(), 4);
  EXPECT_EQ(grid.Row_Sel(), 4);
  for (const QPoint& from : {Point(4), Point(4) + QPoint(0, 40)}) {
    QTest::mousePress(chart_, Qt::LeftButton, {}, from);
    QTest::mouseMove(chart_, from + QPoint(10, 0));
    QTest::mouseMove(chart_, QPoint(Point(9).x(), from.y()));
    QTest::mouseRelease(chart_, Qt::LeftButton, {}, QPoint(Point(9).x(), from.y()));
    EXPECT_EQ(grid.Row(), 4);
    EXPECT_EQ(grid.Row_Sel(), 9);
    Select(4, 4);
  }
  EXPECT_EQ(CardByte, before_);
}

TEST_F(Table_Gesture_Form, What_Comes_Between_Ends_A_Drag_And_Keeps_It) {
  const auto interruptions = {
      std::function<void()>([this] { grid_->setFocus(); }),
      std::function<void()>([] { Run_Transfer({.goes_on = [] { return true; }}, [] {}); }),
      std::function<void()>([this] { chart_->setEnabled(false); }),
      std::function<void()>([this] { Show(Table::pwm_load); }),
  };
  for (const auto& interrupt : interruptions) {
    Show(Table::ignition_load);
    Select(3, 3);
    Hold_And_Move(3, 1);
    const Byte_Image moved = CardByte;
    interrupt();
    QTest::mouseMove(chart_, start_ - QPoint(0, 90));
    EXPECT_EQ(CardByte, moved);
    EXPECT_EQ(Undo_Index, 1);
    EXPECT_EQ(Value_Beside_Pointer(), "");
    Let_Go();
    End_Transfer();
    chart_->setEnabled(true);
  }
}

TEST_F(Table_Gesture_Form, A_Curve_That_Leaves_Its_Axis_Is_Followed) {
  Select(3, 3);
  Hold_And_Move(3, 1);
  for (int i = 1; i <= 40; ++i) QTest::mouseMove(chart_, start_ - QPoint(0, Pixels(1) + 20 * i));
  EXPECT_EQ(CardByte[map::ignition_load.first + 2], 255);
  EXPECT_GE(chart_->yAxis->range().upper, 25.5);
  Let_Go();
}

TEST_F(Table_Gesture_Form, The_Colour_Scale_Is_Readable_In_Light_And_Dark_And_Off_At_The_Start) {
  const auto paper = [this](int row) { return grid_->model()->index(row - 1, 2).data(Qt::BackgroundRole); };
  EXPECT_FALSE(paper(1).isValid());
  Trigger("Colour_scale");
  EXPECT_EQ(platform::seams.desktop->Remembered("colour_scale"), "1");
  EXPECT_EQ(paper(10).value<QColor>(), Scale_Colour(1, false)) << "19.0 is the largest";
  EXPECT_NE(paper(1), paper(5));
  EXPECT_FALSE(grid_->model()->index(0, 0).data(Qt::BackgroundRole).isValid()) << "the axis has none";
  for (const auto& [base, text] :
       {std::pair{Qt::white, Qt::black}, {Qt::black, Qt::white}, {Qt::white, Qt::darkGray}}) {
    QPalette colours = grid_->palette();
    colours.setColor(QPalette::Base, base);
    colours.setColor(QPalette::Text, text);
    grid_->setPalette(colours);
    for (int row = 1; row <= 33; ++row) {
      const auto ink = grid_->model()->index(row - 1, 2).data(Qt::ForegroundRole).value<QColor>();
      EXPECT_GE(Contrast(paper(row).value<QColor>(), ink), 4.5) << row;
    }
  }
  CardByte.Fill(map::ignition_load, 50);
  Update_All();
  EXPECT_FALSE(paper(1).isValid()) << "all alike";
  Trigger("Colour_scale");
}

}  // namespace
}  // namespace kx
