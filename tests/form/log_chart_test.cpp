#include "widgets/log_chart.h"

#include <gtest/gtest.h>

#include <QShortcut>
#include <QSignalSpy>
#include <QTest>
#include <cmath>
#include <limits>
#include <vector>

namespace kx {
namespace {

/// 101 rows over 5 s: a line that rises by 1 a row, and one on the right axis with a gap in it.
class Log_Chart_Test : public testing::Test {
 protected:
  void SetUp() override {
    for (int i = 0; i <= 100; ++i) {
      time_.push_back(i * 0.05);
      rising_.push_back(i);
      broken_.push_back(i == 50 ? std::numeric_limits<double>::quiet_NaN() : 1000.0 - i);
    }
    chart_.resize(800, 400);
    chart_.show();
    Show(time_);
  }

  void Show(const std::vector<double>& x, const Fixed_Range& left = {}) {
    chart_.Show(x, "Time [s]", {{"rising [V]", 0, false, rising_}, {"broken [rpm]", 1, true, broken_}}, left,
                {}, "Select a signal to view");
    chart_.replot();
  }

  /// A place in the chart: share of the time axis, value on the left axis.
  [[nodiscard]] QPoint At(double share, double value) const {
    const QRect inner = chart_.axisRect()->rect();
    return {inner.left() + static_cast<int>(std::lround(share * inner.width())),
            static_cast<int>(std::lround(chart_.yAxis->coordToPixel(value)))};
  }

  void Drag(Qt::MouseButton button, double from, double to) {
    QTest::mousePress(&chart_, button, {}, At(from, 50));
    for (const double share : {from + (to - from) / 2, to}) {
      // The test library's own moves carry no button.
      QMouseEvent move(QEvent::MouseMove, At(share, 40), chart_.mapToGlobal(At(share, 40)), Qt::NoButton,
                       button, Qt::NoModifier);
      QCoreApplication::sendEvent(&chart_, &move);
    }
  }

  std::vector<double> time_;
  std::vector<double> rising_;
  std::vector<double> broken_;
  Log_Chart chart_{"MSChart1", Log_Chart::Gestures::stretch};
};

TEST_F(Log_Chart_Test, Axes_Fit_All_Lines_Or_Stand_As_They_Are_Fixed) {
  EXPECT_DOUBLE_EQ(chart_.xAxis->range().lower, 0);
  EXPECT_DOUBLE_EQ(chart_.xAxis->range().upper, 5);
  EXPECT_LE(chart_.yAxis->range().lower, 0);
  EXPECT_GE(chart_.yAxis->range().upper, 100);
  EXPECT_TRUE(chart_.yAxis2->visible());
  EXPECT_GE(chart_.yAxis2->range().upper, 1000);
  Show(time_, QCPRange(20, 30));
  EXPECT_EQ(chart_.yAxis->range(), QCPRange(20, 30));
  chart_.Show(time_, "", {}, {}, {}, "Select a signal to view");
  EXPECT_EQ(chart_.plottableCount(), 0);
  EXPECT_FALSE(chart_.yAxis2->visible());
}

TEST_F(Log_Chart_Test, Names_In_The_Legend_Are_Not_Cut_In_A_Narrower_Chart) {
  const QString name = "signal of the log [lambda]";
  const int needed = chart_.fontMetrics().horizontalAdvance(name) + chart_.legend->iconSize().width();
  std::vector<Log_Series> series;
  for (int row = 0; row < 7; ++row) series.push_back({name, row, false, rising_});
  chart_.Show(time_, "", series, {}, {}, "");
  for (const int width : {1200, 500}) {
    chart_.resize(width, 400);
    chart_.replot();
    for (int i = 0; i < chart_.plottableCount(); ++i) {
      const auto* item = chart_.legend->itemWithPlottable(chart_.plottable(i));
      EXPECT_GE(item->outerRect().width(), needed) << width << " " << i;
    }
  }
}

TEST_F(Log_Chart_Test, A_Drag_Chooses_A_Stretch_And_Escape_Takes_It_Back) {
  QSignalSpy chosen(&chart_, &Log_Chart::Stretch_Chosen);
  Drag(Qt::LeftButton, 0.75, 0.25);
  QTest::mouseRelease(&chart_, Qt::LeftButton, {}, At(0.25, 40));
  ASSERT_EQ(chosen.size(), 1);
  EXPECT_NEAR(chosen[0][0].toDouble(), 0.25, 0.002);
  EXPECT_NEAR(chosen[0][1].toDouble(), 0.75, 0.002);
  QShortcut close(Qt::Key_Escape, &chart_);  // as every form has
  QSignalSpy closed(&close, &QShortcut::activated);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&chart_));
  Drag(Qt::LeftButton, 0.2, 0.8);
  QTest::keyClick(&chart_, Qt::Key_Escape);
  EXPECT_EQ(closed.size(), 0) << "the key was for the drag";
  QTest::mouseRelease(&chart_, Qt::LeftButton, {}, At(0.8, 40));
  EXPECT_EQ(chosen.size(), 1);
}

TEST_F(Log_Chart_Test, A_Click_Picks_The_Nearest_Row_And_Other_Gestures_Are_Told_Apart) {
  QSignalSpy picked(&chart_, &Log_Chart::Point_Picked);
  QSignalSpy chosen(&chart_, &Log_Chart::Stretch_Chosen);
  QSignalSpy zoomed_out(&chart_, &Log_Chart::Zoom_Out_Asked);
  QSignalSpy stepped(&chart_, &Log_Chart::Row_Step_Asked);
  QSignalSpy dragged(&chart_, &Log_Chart::Dragged);
  QTest::mouseClick(&chart_, Qt::LeftButton, {}, At(0.3, 90));
  ASSERT_EQ(picked.size(), 1);
  EXPECT_EQ(picked[0][0].toUInt(), 30U);
  QTest::mouseClick(&chart_, Qt::RightButton, {}, At(0.3, 90));
  EXPECT_EQ(zoomed_out.size(), 1);
  QTest::keyClick(&chart_, Qt::Key_Left);
  QTest::keyClick(&chart_, Qt::Key_Right);
  ASSERT_EQ(stepped.size(), 2);
  EXPECT_EQ(stepped[0][0].toInt(), -1);
  EXPECT_EQ(stepped[1][0].toInt(), 1);
  Drag(Qt::MiddleButton, 0.5, 0.6);
  QTest::mouseRelease(&chart_, Qt::MiddleButton, {}, At(0.6, 40));
  double share = 0;
  for (const auto& one : dragged) share += one[0].toDouble();
  EXPECT_NEAR(share, 0.1, 0.003);
  EXPECT_EQ(chosen.size(), 0);
  EXPECT_EQ(picked.size(), 1);
}

TEST_F(Log_Chart_Test, Over_Another_Signal_The_Nearest_Point_On_Any_Line_Is_Picked) {
  Log_Chart chart("MSChart2", Log_Chart::Gestures::read_out);
  chart.resize(800, 400);
  chart.show();
  const std::vector<double> rpm{1000, 3000, 5000, 3000, 1000};  // up and back again
  const std::vector<double> power{10, 60, 100, 20, 5};
  chart.Show(rpm, "RPM", {{"POWER [hp]", 21, false, power}}, {}, {}, "");
  chart.replot();
  QSignalSpy picked(&chart, &Log_Chart::Point_Picked);
  const auto click = [&chart](double x, double y) {
    QTest::mouseClick(
        &chart, Qt::LeftButton, {},
        {static_cast<int>(chart.xAxis->coordToPixel(x)), static_cast<int>(chart.yAxis->coordToPixel(y))});
  };
  click(3000, 58);
  click(3000, 22);
  ASSERT_EQ(picked.size(), 2);
  EXPECT_EQ(picked[0][0].toUInt(), 1U);
  EXPECT_EQ(picked[1][0].toUInt(), 3U);
}

}  // namespace
}  // namespace kx
