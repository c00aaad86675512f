#include <gtest/gtest.h>

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QSlider>
#include <QTest>
#include <QWheelEvent>

#include "form_fixture.h"
#include "settings/image.h"
#include "settings/presets.h"
#include "workspace/choice_controls.h"
#include "workspace/scalar_controls.h"

namespace kx {
namespace {

/// The controls that stand for single bytes and bits, on the main form and in the box settings.
class Control_Form : public Form_Fixture {
 protected:
  static QString Name(std::string_view name) {
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
  }

  /// The control of that name on either form.
  template <typename Widget>
  Widget* Anywhere(std::string_view name) {
    if (auto* found = form().findChild<Widget*>(Name(name))) return found;
    auto* found = Config()->findChild<Widget*>(Name(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }
  static QWidget* Config() {
    for (QWidget* widget : QApplication::topLevelWidgets()) {
      if (widget->objectName() == "KX_Config") return widget;
    }
    return nullptr;
  }
};

TEST_F(Control_Form, Every_Slider_Has_Its_Range_And_Texts_And_Writes_Its_Byte) {
  for (const Scalar_Row& row : Scalar_Rows()) {
    auto* slider = Anywhere<QSlider>(row.name);
    ASSERT_NE(slider, nullptr) << row.name;
    EXPECT_EQ(slider->maximum(), row.max) << row.name;
    EXPECT_EQ(slider->pageStep(), row.large_step) << row.name;
    const int position = slider->value() > 20 ? slider->value() - 1 : slider->value() + 1;
    slider->setValue(position);
    EXPECT_EQ(Scalar_Position(row), position) << row.name;
    for (const Scalar_Text_Row& text : Texts_Of(row)) {
      const std::string shown = Scalar_Text(row, text, position);
      if (text.control.ends_with("_label")) continue;
      EXPECT_EQ(Anywhere<QLineEdit>(text.control)->text().toStdString(), shown) << text.control;
    }
  }
}

TEST_F(Control_Form, Every_List_Check_And_Option_Is_There_And_Shows_The_Tune) {
  for (const Choice_Row& row : Choice_Rows()) {
    if (row.kind == Choice_Kind::list) {
      auto* list = Anywhere<QComboBox>(row.Name());
      ASSERT_EQ(list->count(), static_cast<int>(row.items.size())) << row.Name();
      for (int i = 0; i < list->count(); ++i) {
        EXPECT_EQ(list->itemText(i).toStdString(), row.items[static_cast<std::size_t>(i)]);
      }
      EXPECT_EQ(list->currentIndex(), Choice_Index(row)) << row.Name();
    } else if (row.kind == Choice_Kind::check) {
      EXPECT_EQ(Anywhere<QCheckBox>(row.Name())->text().toStdString(), row.label);
    } else {
      const auto chosen = row.controls[static_cast<std::size_t>(Choice_Index(row))];
      EXPECT_TRUE(Anywhere<QRadioButton>(chosen)->isChecked()) << chosen;
    }
  }
}

TEST_F(Control_Form, Frames_Labels_And_Entries_Are_There_By_Name) {
  for (const char* frame : {"config_frame_a", "config_frame_b", "Development_frame", "Frame3",
                            "Rpm_Res_Frame", "Rpm_Calc_Frame", "In_Boost_Frame", "Frame4", "VScroll1"}) {
    EXPECT_NE(Anywhere<QWidget>(frame), nullptr) << frame;
  }
  for (const char* frame :
       {"PWM_Load_Frame", "Fuel_Load_Base_Frame", "AE_Frame", "PWM_PID_Frame", "Inj_Cal_Frame",
        "Enrich_Mode_Frame", "Fuel_trim", "an2_limit_frame", "an2_func_set", "an2_activation_frame"}) {
    EXPECT_NE(Anywhere<QWidget>(frame), nullptr) << frame;
  }
  for (const char* control : {"uncoded", "PassBy_Mode_Button", "cmd_View_Advanced", "OKButton", "Mod_combo",
                              "an_gain", "an_offset", "Command12", "Coolant_Chart", "H_IA_Temp_label",
                              "L_IA_Temp_label", "Label25", "Label_BoostControl_Notification"}) {
    EXPECT_NE(Anywhere<QWidget>(control), nullptr) << control;
  }
  for (int n = 0; n < 12; ++n) {
    const std::string name = "Label3(" + std::to_string(n) + ")";
    EXPECT_FALSE(Anywhere<QLabel>(name)->text().isEmpty()) << name;
  }
  EXPECT_NE(Config()->findChild<QAction*>("Setting_Summary"), nullptr);
  EXPECT_NE(Config()->findChild<QAction*>("Help_file"), nullptr);
}

TEST_F(Control_Form, Clicks_Reach_The_Tune) {
  Anywhere<QCheckBox>("BoostControlPICheck")->click();
  EXPECT_EQ(Get_Field(map::boost_pid), 1);
  Anywhere<QRadioButton>("Res_250")->click();
  EXPECT_EQ(Grid_Of(Table::fuel_rpm).Rows(), 42);
  EXPECT_FALSE(Anywhere<QWidget>("An2out_frame")->isVisibleTo(&form()));
  Anywhere<QRadioButton>("PWM_nostock")->click();
  EXPECT_FALSE(Anywhere<QWidget>("Inj_Cal_Frame")->isEnabled());
  EXPECT_EQ(CardByte[map::mirror], CardByte[map::flags_c]);
  Anywhere<QRadioButton>("Ind_Trim_Option(1)")->click();
  EXPECT_TRUE(Anywhere<QWidget>("Fuel_trim")->isEnabled());
  EXPECT_TRUE(Anywhere<QWidget>("Fuel_trim")->isAncestorOf(Anywhere<QSlider>("scroll(36)")));
}

TEST_F(Control_Form, A_Refused_Preset_Goes_Back_And_An_Accepted_One_Holds) {
  CardByte[map::low_air_correction] = 100;
  Refresh_Whole_Image();
  auto* presets = Anywhere<QComboBox>("Mod_combo");
  ASSERT_GT(presets->count(), 1);
  const std::string question = Preset_Changes(1);
  Expect_Box(question, platform::Answer::cancel);
  presets->setCurrentIndex(1);
  emit presets->activated(1);
  EXPECT_EQ(presets->currentIndex(), 0);
  Expect_Box(question);
  presets->setCurrentIndex(1);
  emit presets->activated(1);
  EXPECT_EQ(presets->currentIndex(), 1);
  EXPECT_EQ(DatasetID, 107);
  EXPECT_TRUE(Find<QLabel>("preset_status")->text().startsWith("Preset changed bytes: 7"));
}

TEST_F(Control_Form, The_Rpm_Indicator_Shows_Whole_Numbers_And_Takes_Five_Characters) {
  CardByte[map::rpm_indicator] = 17;
  Refresh_Whole_Image();
  auto* typed = Anywhere<QLineEdit>("gear_shift");
  EXPECT_EQ(typed->text(), "1062.5");
  typed->clear();
  QTest::keyClicks(typed, "1234567");
  EXPECT_EQ(typed->text(), "12345");
  QTest::keyClick(typed, Qt::Key_Return);
  EXPECT_EQ(CardByte[map::rpm_indicator], 160);
}

/// Neither in passing nor on the control that has the focus; what is not accepted scrolls the page.
TEST_F(Control_Form, The_Wheel_Changes_No_Value) {
  Config()->show();
  const Byte_Image before = CardByte;
  const int dataset = DatasetID;
  for (const char* name : {"HScroll1", "Mod_combo", "boost_combo", "boost_limit_scroll"}) {
    auto* control = Anywhere<QWidget>(name);
    for (const bool focused : {false, true}) {
      focused ? control->setFocus() : control->clearFocus();
      for (const int by : {120, -120, -120}) {
        QWheelEvent wheel({5, 5}, control->mapToGlobal(QPointF(5, 5)), {}, {0, by}, Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(control, &wheel);
        EXPECT_FALSE(wheel.isAccepted()) << name;
      }
    }
  }
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(DatasetID, dataset);
}

/// Numbers that no view can show must not keep the program from starting.
TEST_F(Control_Form, A_Sensor_Beyond_All_Numbers_Does_Not_End_The_Program) {
  form_.reset();
  Write_File("KXBenchPro.ini",
             "Sens_Def=Huge\tLinear\t1e308\t0\t0\t255\tbar\t2\tV\r\nan_sel1=1\r\nan_sel4=1\r\n");
  form_ = std::make_unique<BoostProgMain>();
  EXPECT_EQ(form().windowTitle(), "TORNVIK  KXBenchPro - New1.kxs");
  EXPECT_EQ(Grid_Of(Table::ignition_load).Rows(), 34);
}

}  // namespace
}  // namespace kx
