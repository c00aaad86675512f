#include <gtest/gtest.h>

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QRadioButton>
#include <QSlider>
#include <QTabWidget>
#include <QTableView>
#include <QTest>
#include <algorithm>
#include <cmath>

#include "boxlink/transfer.h"
#include "form_fixture.h"
#include "sensors/load_axes.h"
#include "sensors/sensor_store.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/notice.h"
#include "settings/reference_tune.h"
#include "widgets/difference_mark.h"
#include "widgets/table_grid.h"
#include "workspace/choice_controls.h"
#include "workspace/compare.h"
#include "workspace/pages.h"
#include "workspace/scalar_controls.h"

namespace kx {
namespace {

/// The tune beside what a box holds: marks where it differs, and the list.
class Compare_Form : public Form_Fixture {
 protected:
  static QWidget* Other_Form(const char* name) {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (widget->objectName() == name) return widget;
    ADD_FAILURE() << name;
    return nullptr;
  }

  /// The control of that name on the main form or in the box settings.
  QWidget* Anywhere(std::string_view name) {
    const auto text = QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size()));
    if (auto* found = form().findChild<QWidget*>(text)) return found;
    return Other_Form("KX_Config")->findChild<QWidget*>(text);
  }

  /// As behind a verify of a box that holds the tune but for @p bytes.
  static void Box_Holds(std::initializer_list<std::pair<int, int>> bytes) {
    Byte_Image box = CardByte;
    for (const auto& [byte, value] : bytes) box[byte] = static_cast<std::uint8_t>(value);
    Note_Box_Image(box, DatasetID);
    Update_All();
    QApplication::processEvents();
  }

  QTableView* Open_List() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == &form(); }));
    QTest::keyClick(&form(), Qt::Key_F8);
    QApplication::processEvents();
    EXPECT_TRUE(Other_Form("KX_Compare")->isVisible());
    return Other_Form("KX_Compare")->findChild<QTableView*>("difference_list");
  }

  static QString Cell(const QTableView* list, int row, int column) {
    return list->model()->index(row, column).data().toString();
  }

  static void Double_Click(QTableView* list, int row) {
    const QPoint cell = list->visualRect(list->model()->index(row, 0)).center();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, cell);
    QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, cell);
    QApplication::processEvents();
  }

  bool Marked(const char* name) {
    auto* mark = Anywhere(Mark_Name(name).toStdString());
    return mark != nullptr && !mark->isHidden();
  }
};

TEST_F(Compare_Form, Cells_Controls_And_Tabs_Are_Marked_And_Say_What_The_Box_Holds) {
  CardByte[46] = 40;
  Box_Holds({{46, 35}, {map::rpm_limit, 150}, {map::load_base, 4}, {15, 0x41}});
  auto* grid = Find<Table_Grid>("Ig_MAP_Grid");
  const QModelIndex cell = grid->model()->index(0, 2);
  EXPECT_EQ(cell.data(Qt::ToolTipRole), "Box 3.5 Deg, here 4.0 Deg (+0.5)");
  EXPECT_EQ(cell.data(Qt::BackgroundRole).value<QColor>(), Difference_Ground(grid->palette()));
  EXPECT_FALSE(grid->model()->index(0, 1).data(Qt::BackgroundRole).isValid()) << "the axis is no value";
  EXPECT_FALSE(grid->model()->index(1, 2).data(Qt::BackgroundRole).isValid());
  EXPECT_EQ(Find<QTabWidget>("sstab_Main")->tabText(1), "Ignition (2)");
  EXPECT_EQ(Find<QTabWidget>("SSTab_Ignition")->tabText(0), "Ignition Load (2)");
  EXPECT_EQ(Find<QTabWidget>("SSTab_Ignition")->tabText(1), "Ignition RPM");
  EXPECT_EQ(Find<QTabWidget>("SSTab_Fuel")->tabText(2), "Fuel options (1)");
  EXPECT_EQ(Find<QTabWidget>("sstab_Main")->tabText(4), "Analog");
  EXPECT_TRUE(Anywhere("rpm_limit_scroll")
                  ->toolTip()
                  .startsWith("Box 9375 RPM, here 10000 RPM (+625)\nEngine speed above which fuel is cut"));
  EXPECT_TRUE(Anywhere("ig_pos_combo")->toolTip().startsWith("Box Analog2 in, here Analog1 in\n"));
  for (const char* name : {"rpm_limit_scroll", "ig_pos_combo", "an_sync_check(0)", "Sequential_Fuel_opt"})
    EXPECT_TRUE(Marked(name)) << name;
  for (const char* name : {"rpm_openinj_scroll", "ig_neg_combo", "an_sync_check(1)", "Res_500"})
    EXPECT_FALSE(Marked(name)) << name;
  EXPECT_EQ(Find<QLabel>("compare_status")->text(), "Box: 5 differences");
  EXPECT_TRUE(Find<QAction>("Compare_box")->isChecked());
}

TEST_F(Compare_Form, Marks_Follow_Each_Edit_And_Go_With_The_Last_Difference) {
  Box_Holds({{map::rpm_limit, 150}});
  auto* slider = qobject_cast<QSlider*>(Anywhere("rpm_limit_scroll"));
  slider->setValue(151);
  EXPECT_TRUE(slider->toolTip().startsWith("Box 9375 RPM, here 9437.5 RPM (+62.5)"));
  slider->setValue(150);
  EXPECT_TRUE(slider->toolTip().startsWith("Engine speed"));
  EXPECT_FALSE(Marked("rpm_limit_scroll"));
  EXPECT_EQ(Find<QTabWidget>("sstab_Main")->tabText(2), "Fuel");
  Show(Table::ignition_load);
  Pick(Table::ignition_load, 3);
  Click("plus");
  EXPECT_EQ(Find<QTabWidget>("sstab_Main")->tabText(1), "Ignition (1)");
  Trigger("edit_undo");
  EXPECT_EQ(Find<QTabWidget>("sstab_Main")->tabText(1), "Ignition");
  EXPECT_EQ(Find<QLabel>("compare_status")->text(), "Box: no difference");
  qobject_cast<QCheckBox*>(Anywhere("an_sync_check(2)"))->click();
  EXPECT_TRUE(Marked("an_sync_check(2)"));
  Trigger("Compare_none");
  EXPECT_FALSE(Marked("an_sync_check(2)"));
  EXPECT_TRUE(Find<QAction>("Compare_none")->isChecked());
  Expect_Open_Name(folder() + "missing.kxs");
  Expect_Box(folder() + "missing.kxs: No such file or directory");
  Trigger("Compare_file");
  EXPECT_TRUE(Find<QAction>("Compare_none")->isChecked()) << "the tick goes back";
}

TEST_F(Compare_Form, Every_Control_Stands_On_The_Page_That_The_List_Says) {
  std::vector<std::string_view> names{"an_gain", "an_offset"};
  for (const Scalar_Row& row : Scalar_Rows()) names.push_back(row.name);
  for (const Choice_Row& row : Choice_Rows()) names.push_back(row.Name());
  auto* tabs = Find<QTabWidget>("sstab_Main");
  for (const std::string_view name : names) {
    const Page place = Place_Of(name).page;
    const QWidget* page = Other_Form("KX_Config");
    if (place != page::box_settings)
      page = qobject_cast<QTabWidget*>(tabs->widget(place.tab))->widget(place.sub_tab);
    ASSERT_NE(Anywhere(name), nullptr) << name;
    EXPECT_TRUE(page->isAncestorOf(Anywhere(name))) << name;
  }
}

TEST_F(Compare_Form, The_List_Filters_Takes_And_Follows) {
  Box_Holds({{46, 35}, {47, 36}, {100, 140}, {map::rpm_limit, 150}, {12, 9}});
  QTableView* list = Open_List();
  ASSERT_EQ(list->model()->rowCount(), 5);
  EXPECT_EQ(Other_Form("KX_Compare")->windowTitle(),
            "Compare with Box: 5 differences in 5 bytes, a Write would send 5 bytes");
  EXPECT_EQ(Cell(list, 0, 0), "Ignition Load, 0.10 bar");
  EXPECT_EQ(Cell(list, 4, 4), "12: 9 -> 0");
  auto* filter = Other_Form("KX_Compare")->findChild<QLineEdit*>("difference_filter");
  QTest::keyClicks(filter, "deg IGN");
  EXPECT_EQ(list->model()->rowCount(), 2);
  list->selectRow(1);
  QTest::keyClick(list, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(),
            "Place\tBox\tHere\tChange\tBytes\tNote\r\nIgnition Load, 0.18 bar\t3.6 Deg\t0.0 "
            "Deg\t-3.6\t47: 36 -> 0\t\r\n");
  const int before_taking = Undo_Index;
  QTest::mouseClick(Other_Form("KX_Compare")->findChild<QPushButton*>("take_from_reference"), Qt::LeftButton);
  EXPECT_EQ(CardByte[47], 36);
  EXPECT_EQ(CardByte[46], 0);
  EXPECT_EQ(Undo_Index, before_taking + 1);
  EXPECT_EQ(list->model()->rowCount(), 1);
  filter->clear();
  EXPECT_EQ(list->model()->rowCount(), 4);
  list->selectRow(0);
  QTest::mouseClick(Other_Form("KX_Compare")->findChild<QPushButton*>("take_table"), Qt::LeftButton);
  EXPECT_EQ(CardByte[46], 35);
  EXPECT_EQ(list->model()->rowCount(), 3);
  list->selectRow(1);
  EXPECT_FALSE(Other_Form("KX_Compare")->findChild<QPushButton*>("take_table")->isEnabled());
  Undo();
  Undo();
  EXPECT_EQ(list->model()->rowCount(), 5);
  EXPECT_EQ(CardByte[46], 0);
}

TEST_F(Compare_Form, A_Further_Click_Takes_Nothing_That_Was_Not_Selected) {
  const int axis = Sensor_On_Input(Get_Field(map::ignition_load_input) + 1);
  MAP_tab.at(static_cast<std::size_t>(axis))[0] = 0;  // no decimals: many entries of one name
  Box_Holds({{46, 35}, {47, 36}, {100, 140}});
  QTableView* list = Open_List();
  ASSERT_EQ(Cell(list, 0, 0), Cell(list, 1, 0));
  auto* take = Other_Form("KX_Compare")->findChild<QPushButton*>("take_from_reference");
  list->selectRow(0);
  for (int click = 0; click < 2; ++click) QTest::mouseClick(take, Qt::LeftButton);
  EXPECT_EQ(CardByte[46], 35);
  EXPECT_EQ(CardByte[47], 0);
  auto* take_table = Other_Form("KX_Compare")->findChild<QPushButton*>("take_table");
  list->selectRow(0);
  for (int click = 0; click < 2; ++click) QTest::mouseClick(take_table, Qt::LeftButton);
  EXPECT_EQ(CardByte[47], 36);
  EXPECT_NE(CardByte[100], 140);
}

TEST_F(Compare_Form, A_Double_Click_And_Enter_Lead_To_The_Place) {
  Box_Holds({{229, 10}, {map::pulse_open_injectors, 9}, {map::in_boost_level, 3}, {12, 9}});
  QTableView* list = Open_List();
  ASSERT_EQ(list->model()->rowCount(), 4);
  Double_Click(list, 1);
  EXPECT_EQ(Find<QTabWidget>("sstab_Main")->currentIndex(), main_tab::pwm);
  EXPECT_EQ(Find<QTabWidget>("SSTab_PWM")->currentIndex(), 1);
  EXPECT_EQ(Grid_Of(Table::pwm_rpm).Row(), 1);
  EXPECT_EQ(form().focusWidget(), Find<Table_Grid>("PWM_RPM_Grid"));
  list = Open_List();
  EXPECT_EQ(list->currentIndex().row(), 1) << "where it was left";
  list->selectRow(0);
  QTest::keyClick(list, Qt::Key_Return);
  QApplication::processEvents();
  EXPECT_EQ(Find<QTabWidget>("SSTab_Fuel")->currentIndex(), 2);
  EXPECT_EQ(form().focusWidget(), Anywhere("pulse_openinj_scroll"));
  list = Open_List();
  Double_Click(list, 2);
  EXPECT_TRUE(Other_Form("KX_Config")->isVisible());
  EXPECT_TRUE(Anywhere("inboostlevel")->isVisible()) << "it stands among the advanced settings";
  EXPECT_EQ(Other_Form("KX_Config")->focusWidget(), Anywhere("inboostlevel"));
  Other_Form("KX_Config")->close();
  form().activateWindow();
  list = Open_List();
  Double_Click(list, 3);
  EXPECT_EQ(notice_text.Text(), "No control shows Byte 12, Unused.");
}

/// Relative luminance of a colour, 0 to 1.
double Luminance(const QColor& colour) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
  const auto [low, high] = std::minmax({Luminance(one), Luminance(other)});
  return (high + 0.05) / (low + 0.05);
}

TEST(Difference_Mark, Text_And_Mark_Stand_Out_From_Their_Ground_In_Light_And_In_Dark) {
  for (const QColor& base : {QColor(Qt::white), QColor(35, 35, 35), QColor(Qt::black)}) {
    QPalette palette;
    palette.setColor(QPalette::Base, base);
    const QColor text = base.lightness() < 128 ? Qt::white : Qt::black;
    EXPECT_GE(Contrast(text, Difference_Ground(palette)), 7) << base.lightness();
    EXPECT_GE(Contrast(Difference_Colour(palette), Difference_Ground(palette)), 3) << base.lightness();
    EXPECT_GE(Contrast(Difference_Colour(palette), base), 3) << base.lightness();
  }
}

TEST_F(Compare_Form, The_List_Fits_A_Small_Screen_And_Closes_By_Escape) {
  Open_List();
  auto* compare = qobject_cast<QMainWindow*>(Other_Form("KX_Compare"));
  EXPECT_LE(compare->minimumSizeHint().width(), 1000);
  EXPECT_LE(compare->minimumSizeHint().height(), 540);
  for (const auto* button : compare->findChildren<QPushButton*>())
    EXPECT_FALSE(button->toolTip().isEmpty()) << button->objectName().toStdString();
  QTest::keyClick(compare, Qt::Key_Escape);
  EXPECT_FALSE(compare->isVisible());
}

}  // namespace
}  // namespace kx
