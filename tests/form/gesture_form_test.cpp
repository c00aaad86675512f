#include <gtest/gtest.h>

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QStyleOptionSlider>
#include <QTabWidget>
#include <QTest>

#include "form_fixture.h"
#include "settings/history.h"
#include "settings/image.h"
#include "support/chosen_preset.h"
#include "widgets/table_grid.h"
#include "workspace/tables.h"

namespace kx {
namespace {

/// One gesture of the user's hands: what it changes, what follows it, and how much of the history it takes.
class Gestures : public Form_Fixture {
 protected:
  template <typename Widget>
  static Widget* In_Config(const char* name) {
    for (QWidget* form : QApplication::topLevelWidgets()) {
      if (form->objectName() == "KX_Config") return form->findChild<Widget*>(name);
    }
    return nullptr;
  }

  /// Brings the page of fuel options on show, which holds sliders.
  void Show_Fuel_Options() {
    Show(Table::fuel_rpm);
    Find<QTabWidget>("SSTab_Fuel")->setCurrentIndex(2);
    QApplication::processEvents();
  }

  static QPoint Handle_Of(QSlider* slider) {
    QStyleOptionSlider option;
    option.initFrom(slider);
    option.orientation = slider->orientation();
    option.minimum = slider->minimum();
    option.maximum = slider->maximum();
    option.sliderPosition = slider->sliderPosition();
    option.sliderValue = slider->value();
    option.upsideDown = slider->invertedAppearance();
    return slider->style()
        ->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, slider)
        .center();
  }

  /// Drags the handle by @p pixels in ten moves.
  static void Drag(QSlider* slider, int pixels) {
    const QPoint start = Handle_Of(slider);
    QTest::mousePress(slider, Qt::LeftButton, {}, start);
    for (int step = 1; step <= 10; ++step) QTest::mouseMove(slider, start + QPoint(pixels * step / 10, 0));
    QTest::mouseRelease(slider, Qt::LeftButton, {}, start + QPoint(pixels, 0));
  }
};

TEST_F(Gestures, A_Drag_Is_One_Undo_And_So_Is_Each_Key) {
  Show_Fuel_Options();
  for (const auto& [name, filled] : {std::pair{"rpm_openinj_scroll", 1}, {"rpm_limit_scroll", 2}}) {
    auto* slider = Find<QSlider>(name);
    Reset_History();
    const Byte_Image before = CardByte;
    Drag(slider, -40);
    EXPECT_NE(CardByte, before) << name;
    EXPECT_EQ(Undo_Index, filled) << name;
    QTest::keyClick(slider, Qt::Key_Left);
    QTest::keyClick(slider, Qt::Key_PageDown);
    EXPECT_EQ(Undo_Index, 3 * filled) << name;
    for (int i = 0; i < 3 * filled; ++i) Trigger("edit_undo");
    EXPECT_EQ(CardByte, before) << name;
  }
}

TEST_F(Gestures, What_Is_Chosen_Already_And_Keys_That_Edit_Nothing_Leave_The_History_Alone) {
  Find<QRadioButton>("Ext_stock")->click();
  Reset_History();
  const Byte_Image before = CardByte;
  Find<QRadioButton>("Ext_stock")->click();
  auto* list = Find<QComboBox>("ig_pos_combo");
  emit list->activated(list->currentIndex());
  for (const Table table : {Table::fuel_load, Table::ignition_load}) {
    Show(table);
    auto* grid = Find<Table_Grid>(Row_Of(table).grid);
    for (const int key : {Qt::Key_Control, Qt::Key_Alt, Qt::Key_Meta}) QTest::keyClick(grid, Qt::Key(key));
    QTest::keyClick(grid, Qt::Key_C, Qt::ControlModifier);
  }
  EXPECT_EQ(Undo_Index, 0);
  EXPECT_EQ(CardByte, before);
  EXPECT_TRUE(QApplication::clipboard()->text().startsWith("0")) << "the fuel load bytes";
}

/// One bit of the tune is the tick of max_ret and the resolution of the fuel RPM table; AR_Enable clears it.
TEST_F(Gestures, What_Shares_A_Bit_Follows_At_Once) {
  Show(Table::analog2);
  for (const auto& [control, fine] : {std::pair{"max_ret", true}, {"AR_Enable", false}}) {
    Find<QCheckBox>(control)->click();
    EXPECT_EQ(Find<QWidget>("An2out_frame")->isVisible(), !fine) << control;
    EXPECT_EQ(Find<QWidget>("tblctrl")->isVisible(), !fine) << control;
    EXPECT_EQ(In_Config<QRadioButton>("Res_250")->isChecked(), fine) << control;
    EXPECT_EQ(Find<QCheckBox>("max_ret")->isChecked(), fine) << control;
    EXPECT_EQ(Find<Table_Grid>("Fuel_RPM_Grid")->model()->rowCount(), fine ? 41 : 21) << control;
  }
  In_Config<QRadioButton>("Res_250")->click();
  EXPECT_TRUE(Find<QCheckBox>("max_ret")->isChecked());
}

/// The handle goes where the key or the mouse points, and the value that grows to the left goes down.
TEST_F(Gestures, A_Reversed_Slider_Goes_One_Way_By_Key_And_Mouse) {
  Show(Table::fuel_load);
  Find<QTabWidget>("SSTab_Fuel")->setCurrentIndex(3);
  QApplication::processEvents();
  auto* slider = Find<QSlider>("scroll(8)");
  slider->setValue(128);
  const int middle = Handle_Of(slider).x();
  struct Move {
    Qt::Key key;
    bool right;
  };
  for (const Move& move : {Move{Qt::Key_Right, true},
                           {Qt::Key_Left, false},
                           {Qt::Key_PageUp, true},
                           {Qt::Key_PageDown, false},
                           {Qt::Key_End, true},
                           {Qt::Key_Home, false}}) {
    slider->setValue(128);
    slider->setPageStep(16);
    QTest::keyClick(slider, move.key);
    EXPECT_EQ(CardByte[map::low_air_limit] < 128, move.right) << move.key;
    if (slider->value() == 0 || slider->value() == 255) {
      EXPECT_EQ(Handle_Of(slider).x() > middle, move.right) << move.key;
    }
  }
  slider->setValue(128);
  Drag(slider, 30);
  EXPECT_LT(CardByte[map::low_air_limit], 128);
}

TEST_F(Gestures, The_Rpm_Indicator_Is_Taken_On_Leaving_And_On_Ok_And_A_Paste_Keeps_The_Length) {
  QWidget* config = In_Config<QPushButton>("OKButton")->window();
  config->show();
  QApplication::setActiveWindow(config);
  auto* typed = In_Config<QLineEdit>("gear_shift");
  const auto type = [typed](const char* text) {
    typed->setFocus();
    typed->selectAll();
    QTest::keyClicks(typed, text);
  };
  type("3000");
  In_Config<QSlider>("rpm_calc_scroll")->setFocus();
  EXPECT_EQ(CardByte[map::rpm_indicator], 48);
  type("4000");
  In_Config<QPushButton>("OKButton")->click();
  EXPECT_EQ(CardByte[map::rpm_indicator], 64);
  EXPECT_FALSE(config->isVisible());

  config->show();
  QApplication::setActiveWindow(config);
  typed->setFocus();
  typed->selectAll();
  QApplication::clipboard()->setText("12345678");
  typed->paste();
  EXPECT_EQ(typed->text(), "12345");
  type("abc");
  Expect_Box("Type mismatch");
  In_Config<QSlider>("rpm_calc_scroll")->setFocus();
  EXPECT_EQ(CardByte[map::rpm_indicator], 64);
  EXPECT_EQ(typed->text(), "4000");
}

TEST_F(Gestures, The_Boost_Level_Stays_Enabled_Where_The_Mask_Disables_The_Advanced_Settings) {
  test::Choose_Preset("6C216E66");
  Refresh_Whole_Image();
  EXPECT_FALSE(In_Config<QWidget>("config_frame_b")->isEnabled());
  EXPECT_FALSE(In_Config<QWidget>("io_combo")->isEnabled());
  EXPECT_TRUE(In_Config<QWidget>("In_Boost_Frame")->isEnabled());
  EXPECT_TRUE(In_Config<QWidget>("inboostlevel")->isEnabled());
}

TEST_F(Gestures, Redo_Into_An_Empty_Slot_Says_So_Until_The_Next_Step) {
  Show(Table::pwm_rpm);
  Click("plus");
  Trigger("edit_undo");
  Trigger("edit_redo");
  EXPECT_EQ(Find<QLabel>("history_status")->text(), "Empty history step: all bytes 0. Ctrl+Z goes back.");
  Trigger("edit_undo");
  EXPECT_EQ(Find<QLabel>("history_status")->text(), "");
}

}  // namespace
}  // namespace kx
