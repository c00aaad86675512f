#include <gmock/gmock.h>

#include <QApplication>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "boxlink/KX_prefs.h"
#include "form_fixture.h"
#include "platform/seams.h"
#include "settings/ini_file_adm.h"
#include "settings/session.h"
#include "support/listed_devices.h"

namespace kx {
namespace {

class Prefs_Form : public Form_Fixture {
 protected:
  void SetUp() override {
    Form_Fixture::SetUp();
    platform::seams.port_devices = &devices_;
    devices_.rows = {{"/dev/ttyACM9", "ttyACM9", "Far adapter", true},
                     {"/dev/ttyS0", "ttyS0", "", false},
                     {"/dev/ttyACM3", "ttyACM3", "Near adapter", true}};
    Com_Port_Number = 16;
    prefs_ = std::make_unique<KX_prefs>();
  }
  void TearDown() override {
    prefs_.reset();
    Form_Fixture::TearDown();
  }

  template <typename Widget>
  Widget* Part(const char* name) {
    auto* widget = prefs_->findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  QComboBox* Ports() { return Part<QComboBox>("Combo1"); }
  QStringList Rows() {
    QStringList rows;
    for (int row = 0; row < Ports()->count(); ++row) rows << Ports()->itemText(row);
    return rows;
  }
  void Press(const char* button) { Part<QAbstractButton>(button)->click(); }

  /// Objects names of the options that are down.
  QStringList Chosen() {
    QStringList names;
    for (const auto* option : prefs_->findChildren<QRadioButton*>())
      if (option->isChecked()) names << option->objectName();
    return names;
  }

  test::Listed_Devices devices_;
  std::unique_ptr<KX_prefs> prefs_;
};

TEST_F(Prefs_Form, Shows_What_There_Is_Under_Its_Given_Names) {
  EXPECT_EQ(Rows(),
            QStringList({"COM1  /dev/ttyS0", "COM16  Near adapter", "Not available! COM17  Far adapter"}));
  EXPECT_EQ(Ports()->currentIndex(), 1);
  EXPECT_EQ(Part<QPushButton>("ApplyButton")->text(), "&Apply");
  EXPECT_EQ(Part<QPushButton>("OKButton")->text(), "&OK");
  EXPECT_EQ(Part<QGroupBox>("Interface_Frame")->title(), "Card interface (Ctrl+T to toggle)");
  EXPECT_EQ(Part<QRadioButton>("interface_option_a")->text(), "Chipdrive Card Reader / Writer");
  EXPECT_EQ(Part<QRadioButton>("interface_option_c")->text(), "Box as Card Reader / Writer");
  EXPECT_EQ(Part<QRadioButton>("interface_option_d")->text(), "TodosII Card Reader / Writer");
  EXPECT_EQ(Chosen(), QStringList("interface_option_a"));
  EXPECT_EQ(Part<QLabel>("Label_OS")->text().toStdString(), platform::seams.desktop->System_Name());
}

TEST_F(Prefs_Form, Looks_For_Ports_Each_Time_It_Comes_On_Show) {
  devices_.rows.erase(devices_.rows.begin() + 1, devices_.rows.end());
  prefs_->show();
  EXPECT_EQ(Rows(), QStringList("Not available! COM17  Far adapter"));
  EXPECT_EQ(Ports()->currentIndex(), -1);
  prefs_->hide();
  devices_.rows.push_back({"/dev/ttyACM3", "ttyACM3", "Plugged in", true});
  prefs_->show();
  EXPECT_EQ(Ports()->currentText(), "COM16  Plugged in");
}

TEST_F(Prefs_Form, Apply_Keeps_The_Choice_And_OK_Hides_Too) {
  prefs_->show();
  Ports()->setCurrentIndex(2);
  Press("interface_option_c");
  EXPECT_EQ(Com_Port_Number, 16);
  EXPECT_EQ(Default_Interface, "SC_Reader");
  Press("ApplyButton");
  EXPECT_TRUE(prefs_->isVisible());
  EXPECT_EQ(Com_Port_Number, 17);
  EXPECT_EQ(Read_Key("comport1"), "17");
  EXPECT_EQ(Read_Key("Default_Interface"), "KX_MapCard");
  EXPECT_FALSE(Find<QGroupBox>("kx_crw_frame")->isHidden()) << "the main form follows";
  Ports()->setCurrentIndex(0);
  Press("interface_option_d");
  Press("OKButton");
  EXPECT_FALSE(prefs_->isVisible());
  EXPECT_EQ(Com_Port_Number, 1);
  EXPECT_EQ(Read_Key("Default_Interface"), "TodosII_Reader");
}

TEST_F(Prefs_Form, What_Is_Not_In_Its_Lists_Stays_As_It_Was) {
  Com_Port_Number = 9;
  Default_Interface = "Serial";
  Write_Key("comport1", "9");
  prefs_->show();
  EXPECT_EQ(Ports()->currentIndex(), -1);
  EXPECT_EQ(Chosen(), QStringList());
  Press("OKButton");
  EXPECT_EQ(Com_Port_Number, 9);
  EXPECT_EQ(Read_Key("comport1"), "9");
  EXPECT_EQ(Read_Key("Default_Interface"), "Serial");
}

TEST_F(Prefs_Form, A_Choice_That_Was_Not_Applied_Is_Forgotten) {
  prefs_->show();
  Press("interface_option_d");
  prefs_->hide();
  prefs_->show();
  EXPECT_EQ(Chosen(), QStringList("interface_option_a"));
  Press("interface_option_d");
  Default_Interface = "KX_MapCard";
  prefs_->Show_Interface();
  EXPECT_EQ(Chosen(), QStringList("interface_option_c"));
  Press("ApplyButton");
  EXPECT_EQ(Default_Interface, "KX_MapCard");
}

/// Nothing is cut off at its smallest size, at normal and at double size of letters.
TEST_F(Prefs_Form, Its_Layout_Holds_At_Double_Size) {
  for (const int scale : {1, 2}) {
    QFont font = QApplication::font();
    font.setPointSizeF(font.pointSizeF() * scale);
    prefs_->setFont(font);
    prefs_->show();
    prefs_->resize(prefs_->minimumSizeHint());
    QApplication::processEvents();
    for (const auto* control : prefs_->findChildren<QAbstractButton*>()) {
      EXPECT_GE(control->width(), control->minimumSizeHint().width())
          << control->text().toStdString() << scale;
      EXPECT_TRUE(prefs_->rect().contains(QRect(control->mapTo(prefs_.get(), QPoint()), control->size())));
    }
    EXPECT_LE(prefs_->minimumSizeHint().width(), 1366);
  }
}

}  // namespace
}  // namespace kx
