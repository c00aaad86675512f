#include <gtest/gtest.h>

#include <QApplication>
#include <QScreen>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QWheelEvent>

#include "widgets/number_box.h"
#include "widgets/open_form.h"
#include "widgets/scroll_page.h"
#include "widgets/wheel_guard.h"

namespace kx {
namespace {

TEST(Form_Helpers, A_Form_Is_Moved_And_Shrunk_Into_The_Screen_Only_As_Far_As_Need_Be) {
  const QRect screen(0, 30, 1024, 570);
  const QMargins border(2, 20, 2, 2);
  const struct {
    QRect wanted;
    QRect inside;
  } cases[] = {{{100, 100, 400, 300}, {100, 100, 400, 300}},
               {{-50, 0, 400, 300}, {2, 50, 400, 300}},
               {{900, 500, 400, 300}, {622, 298, 400, 300}},
               {{-10, -10, 2000, 1500}, {2, 50, 1020, 548}}};
  for (const auto& row : cases) EXPECT_EQ(Inside_Screen(row.wanted, screen, border), row.inside);
}

TEST(Form_Helpers, A_Form_Opens_Over_The_Main_Form_And_Escape_Closes_It) {
  QWidget main_form;
  main_form.setGeometry(200, 150, 400, 300);
  main_form.show();
  QWidget form;
  form.resize(200, 100);
  Open_Form(form, main_form);
  ASSERT_TRUE(form.isVisible());
  EXPECT_LE((form.geometry().center() - main_form.geometry().center()).manhattanLength(), 2);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
  form.move(60, 70);
  QTest::simulateEvent(&form, true, Qt::Key_Escape, Qt::NoModifier, "", true);
  EXPECT_TRUE(form.isVisible()) << "held since it closed the form in front";
  QTest::keyClick(&form, Qt::Key_Escape);
  EXPECT_FALSE(form.isVisible());
  Open_Form(form, main_form);
  EXPECT_EQ(form.pos(), QPoint(60, 70)) << "where the user left it";
  form.resize(5000, 4000);
  Keep_Inside_Screen(form);
  EXPECT_TRUE(form.screen()->availableGeometry().contains(form.geometry()));
}

TEST(Form_Helpers, A_Number_Box_Takes_Both_Decimal_Signs_Inside_Its_Range_When_Done) {
  Number_Box box("gain_box", "Gain of the channel", {-10, 10, 2, "bar"});
  EXPECT_EQ(box.toolTip(), "Gain of the channel (-10.00 to 10.00 bar)");
  int changes = 0;
  QObject::connect(&box, &QDoubleSpinBox::valueChanged, [&changes] { ++changes; });
  box.show();
  box.selectAll();
  QTest::keyClicks(&box, "1,25");
  EXPECT_EQ(changes, 0) << "not before the user is done";
  QTest::keyClick(&box, Qt::Key_Return);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(box.value(), 1.25);
  EXPECT_EQ(box.text(), "1.25 bar");
  box.Set_Range({0, 1, 1, "V"});
  EXPECT_EQ(box.text(), "1.0 V");
}

/// A sent event does not travel from widget to widget as one of the system's does: one that is left
/// unaccepted would go on to the page.
TEST(Form_Helpers, The_Wheel_Passes_Guarded_Controls_By) {
  QWidget form;
  auto* box = new Number_Box("box", "Anything", {0, 9}, &form);
  auto* tabs = new QTabWidget(&form);
  tabs->addTab(new QWidget, "one");
  tabs->addTab(new QWidget, "two");
  Guard_Wheels_In(&form);
  form.show();
  for (QWidget* control : {static_cast<QWidget*>(box), static_cast<QWidget*>(tabs->tabBar())}) {
    control->setFocus();
    QWheelEvent wheel({5, 5}, control->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(control, &wheel);
    EXPECT_FALSE(wheel.isAccepted());
  }
  EXPECT_EQ(box->value(), 0);
  EXPECT_EQ(tabs->currentIndex(), 0);
}

TEST(Form_Helpers, A_Scrolled_Page_Asks_For_Its_Room_And_Is_Content_With_Less) {
  auto* content = new QWidget;
  content->setMinimumSize(500, 2000);
  const Scroll_Page page(content);
  EXPECT_GT(page.sizeHint().height(), 1999);
  EXPECT_LE(page.minimumSizeHint().height(), 200);
}

}  // namespace
}  // namespace kx
