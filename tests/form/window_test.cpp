#include <gtest/gtest.h>

#include <QAbstractSlider>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLineEdit>
#include <QMap>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QTest>

#include "boxlink/link_texts.h"
#include "boxlink/transfer.h"
#include "form_fixture.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/session.h"
#include "widgets/line_chart.h"
#include "widgets/table_grid.h"
#include "workspace/analog2.h"
#include "workspace/box_settings.h"

namespace kx {
namespace {

/// What the user's hands meet: keys, focus, room, tips.
class Window : public Form_Fixture {
 protected:
  void Key(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers held = {}) {
    QTest::keyClick(widget, key, held);
    QApplication::processEvents();
  }
  static QWidget* Other_Form(const char* name) {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (widget->objectName() == name) return widget;
    ADD_FAILURE() << name;
    return nullptr;
  }
};

TEST_F(Window, Keys_Select_What_They_Say_And_The_Marked_Cell_Is_The_One_That_Changes) {
  const Table table = Table::fuel_load;
  Show(table);
  auto* grid = Find<Table_Grid>("Fuel_MAP_Grid");
  const int last = grid->model()->rowCount();
  const int page = grid->viewport()->height() / grid->rowHeight(0) - 1;
  const auto shift = Qt::ShiftModifier;
  const auto ctrl = Qt::ControlModifier;
  const struct {
    Qt::Key key;
    Qt::KeyboardModifiers held;
    int row, row_sel;
  } cases[] = {{Qt::Key_A, ctrl, 1, last},
               {Qt::Key_End, ctrl | shift, 10, last},
               {Qt::Key_Home, ctrl | shift, 10, 1},
               {Qt::Key_Home, ctrl, 1, 1},
               {Qt::Key_End, ctrl, last, last},
               {Qt::Key_PageDown, shift, 10, std::min(last, 10 + page)},
               {Qt::Key_PageUp, shift, 10, std::max(1, 10 - page)},
               {Qt::Key_PageDown, {}, std::min(last, 10 + page), std::min(last, 10 + page)},
               {Qt::Key_Up, shift, 10, 9}};
  for (const auto& row : cases) {
    Pick(table, 10);
    Key(grid, row.key, row.held);
    EXPECT_EQ(Grid_Of(table).Row(), row.row) << row.key;
    EXPECT_EQ(Grid_Of(table).Row_Sel(), row.row_sel) << row.key;
    EXPECT_EQ(grid->selectionModel()->selectedRows().size(), std::abs(row.row_sel - row.row) + 1);
    EXPECT_EQ(grid->currentIndex().row(), row.row - 1) << "the mark";
    const Byte_Image before = CardByte;
    QTest::keyClicks(grid, "7");
    for (int entry = 1; entry <= last; ++entry)
      EXPECT_TRUE(entry == row.row ||
                  CardByte[Edited_Byte(table, entry)] == before[Edited_Byte(table, entry)])
          << entry;
  }
}

TEST_F(Window, A_Click_Below_The_Last_Row_Selects_Nothing) {
  Set_Field(map::maf_sim_enable, 1);
  Set_Field(map::maf_sim_limit, 1);
  Refresh_Whole_Image();
  form().resize(1366, 900);
  Show(Table::maf_output);
  auto* grid = Find<Table_Grid>("MAFsim_out_grid");
  Pick(Table::maf_output, 3);
  ASSERT_EQ(grid->rowAt(grid->viewport()->height() - 2), -1);
  const QPoint below(20, grid->viewport()->height() - 2);
  QTest::mousePress(grid->viewport(), Qt::LeftButton, {}, below);
  QTest::mouseMove(grid->viewport(), below - QPoint(0, 1));
  QTest::mouseRelease(grid->viewport(), Qt::LeftButton, {}, below);
  EXPECT_EQ(Grid_Of(Table::maf_output).Row(), 3);
  EXPECT_EQ(Grid_Of(Table::maf_output).Row_Sel(), 3);
}

TEST_F(Window, Undo_Is_The_Tunes_But_In_The_Description) {
  Show(Table::ignition_load);
  Pick(Table::ignition_load, 4);
  const Byte_Image before = CardByte;
  auto* typed = Find<QLineEdit>("set_table_text");
  typed->setFocus();
  typed->selectAll();
  QTest::keyClicks(typed, "12");
  Key(typed, Qt::Key_Return);
  ASSERT_NE(CardByte, before);
  EXPECT_EQ(typed->selectedText(), "12") << "the next digit starts a new number";
  Key(typed, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(CardByte, before);
  EXPECT_EQ(typed->text(), "12") << "the box's own text is not undone";

  Click("plus");
  const Byte_Image stepped = CardByte;
  Trigger("Box_Settings");
  auto* config = Other_Form("KX_Config");
  ASSERT_TRUE(QTest::qWaitForWindowActive(config));
  Key(config->findChild<QLineEdit*>("gear_shift"), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(CardByte, before) << "from the box settings, too";
  config->close();

  form().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form()));
  Find<QTabWidget>("sstab_Main")->setCurrentIndex(0);
  auto* notes = Find<QPlainTextEdit>("txt_File_Description");
  notes->setFocus();
  QTest::keyClicks(notes, "abc");
  CardByte = stepped;
  Key(notes, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(CardByte, stepped);
  EXPECT_EQ(notes->toPlainText(), "");
}

TEST_F(Window, Ctrl_Up_And_Down_Step_The_Selection_And_Alt_Digits_Choose_Tabs) {
  Key(&form(), Qt::Key_2, Qt::AltModifier);
  EXPECT_EQ(Find<QTabWidget>("sstab_Main")->currentIndex(), 1);
  auto* grid = Find<Table_Grid>("Ig_MAP_Grid");
  Pick(Table::ignition_load, 4);
  grid->setFocus();
  const int byte = Edited_Byte(Table::ignition_load, 4);
  const int before = CardByte[byte];
  Key(grid, Qt::Key_Up, Qt::ControlModifier);
  Key(grid, Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(CardByte[byte], before + 2);
  Key(grid, Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(CardByte[byte], before + 1);
  EXPECT_EQ(Grid_Of(Table::ignition_load).Row(), 4);
  Key(&form(), Qt::Key_5, Qt::AltModifier);
  EXPECT_EQ(Find<QTabWidget>("sstab_Main")->currentIndex(), 4);
}

TEST_F(Window, A_Button_That_A_Transfer_Disables_Does_Not_Hand_Its_Focus_To_Close_Port) {
  form().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&form()));
  for (const char* name : {"Write_Settings", "Open_Box_Port"}) {
    Find<QPushButton>(name)->setFocus();
    Run_Transfer({}, [&] { EXPECT_EQ(QApplication::focusWidget(), Find<QLineEdit>("rs232_text")) << name; });
  }
}

TEST_F(Window, The_Link_Tells_Failure_By_Colour_And_What_Helps_In_Sight) {
  auto* status = Find<QLineEdit>("rs232_text");
  const auto ink = [&] { return status->palette().color(QPalette::Text); };
  const QColor plain = ink();
  rs232_text.Set("Read finished 10:00:00");
  const QColor success = ink();
  rs232_text.Set("Read aborted 10:00:00");
  const QColor failure = ink();
  EXPECT_NE(success, plain);
  EXPECT_NE(failure, plain);
  EXPECT_NE(failure, success);
  rs232_text.Set("< COM-Port info >");
  EXPECT_EQ(ink(), plain);
  auto* help = Find<QLabel>("rs232_help");
  EXPECT_FALSE(help->isVisible());
  rs232_tool_tip.Set("join the group dialout");
  EXPECT_TRUE(help->isVisible());
  EXPECT_EQ(help->text(), "join the group dialout");
  Text1.Set("Com port 1 not ok   1 - gone\r\nCom port 9 ok\r\n");
  EXPECT_EQ(Find<QLabel>("ports_that_work")->text(), "Ports that work: COM9");
  EXPECT_TRUE(Find<QLabel>("ports_that_work")->isVisible());
}

TEST_F(Window, Every_Control_Has_A_Tip) {
  for (QWidget* top : {static_cast<QWidget*>(&form()), Other_Form("KX_Config")}) {
    for (const QWidget* control : top->findChildren<QWidget*>()) {
      const bool tells = qobject_cast<const QSlider*>(control) != nullptr ||
                         qobject_cast<const QComboBox*>(control) != nullptr ||
                         qobject_cast<const QCheckBox*>(control) != nullptr ||
                         qobject_cast<const QRadioButton*>(control) != nullptr ||
                         qobject_cast<const Table_Grid*>(control) != nullptr;
      EXPECT_TRUE(!tells || !control->toolTip().isEmpty()) << control->objectName().toStdString();
    }
  }
  EXPECT_EQ(Find<QSlider>("rpm_limit_scroll")->toolTip(),
            "Engine speed above which fuel is cut (0 to 15937.5 RPM)");
}

TEST_F(Window, Fits_A_Small_Screen_Whatever_The_Font_And_The_Paths) {
  const QFont usual = QApplication::font();
  for (const int points : {9, 11, 14}) {
    QFont font = usual;
    font.setPointSize(points);
    QApplication::setFont(font);
    form_.reset();
    form_ = std::make_unique<BoostProgMain>();
    card_data_dir = "/" + std::string(300, 'x') + "/";
    Refresh_Whole_Image();
    preset_status.Set("Preset changed bytes: " + std::string(300, '7'));
    form().resize(1016, 560);
    form().show();
    QApplication::processEvents();
    EXPECT_LE(form().width(), 1016) << points;
    EXPECT_LE(form().height(), 560) << points;
    EXPECT_EQ(Find<QLabel>("preset_status")->text().size(), 322) << "whole in the text, cut on screen";
  }
  QApplication::setFont(usual);
}

TEST_F(Window, Box_Settings_Stand_In_Two_Columns_When_Wide_And_Show_What_Is_Opened) {
  Trigger("Box_Settings");
  QWidget* config = Other_Form("KX_Config");
  ASSERT_TRUE(config->isVisible());
  const auto left_of = [config](const char* frame) {
    return config->findChild<QWidget*>(frame)->mapTo(config, QPoint()).x();
  };
  config->resize(2400, 560);
  QApplication::processEvents();
  EXPECT_GT(left_of("Boost_Frame"), left_of("Frame3") + 100);
  config->resize(700, 560);
  QApplication::processEvents();
  EXPECT_EQ(left_of("Boost_Frame"), left_of("Frame3"));
  auto* bar = config->findChild<QScrollArea*>("VScroll1")->verticalScrollBar();
  ASSERT_EQ(bar->value(), 0);
  QTest::mouseClick(config->findChild<QPushButton*>("cmd_View_Advanced"), Qt::LeftButton);
  QApplication::processEvents();
  EXPECT_GT(bar->value(), 0);
  Key(config, Qt::Key_Escape);
  EXPECT_FALSE(config->isVisible());
}

TEST_F(Window, Mnemonics_Of_A_Form_Do_Not_Clash) {
  Show(Table::analog1);  // with the table panel
  Trigger("Box_Settings");
  QTest::mouseClick(Other_Form("KX_Config")->findChild<QPushButton*>("cmd_View_Advanced"), Qt::LeftButton);
  Trigger("PC_Settings");
  Trigger("Setting_Summary");
  EXPECT_FALSE(form().windowIcon().isNull());
  for (QWidget* top : QApplication::topLevelWidgets()) {
    if (!top->isVisible()) continue;
    QMap<QString, QString> owners;
    const auto take = [&](const QString& caption) {
      const QString keys = QKeySequence::mnemonic(caption).toString();
      if (keys.isEmpty()) return;
      EXPECT_FALSE(owners.contains(keys)) << (caption + " and " + owners[keys]).toStdString();
      owners[keys] = caption;
    };
    for (const QPushButton* button : top->findChildren<QPushButton*>()) {
      if (button->isVisible()) take(button->text());
    }
    for (const QMenuBar* bar : top->findChildren<QMenuBar*>())
      for (const QAction* menu : bar->actions()) take(menu->text());
  }
}

TEST_F(Window, A_Grid_With_The_Focus_Looks_Different) {
  Show(Table::fuel_load);
  auto* grid = Find<Table_Grid>("Fuel_MAP_Grid");
  Pick(Table::fuel_load, 5);
  const auto colours = [grid] {
    const QImage picture = grid->viewport()->grab().toImage();
    const QRect cell = grid->visualRect(grid->model()->index(4, 0));
    return std::pair(picture.pixelColor(0, picture.height() / 2),
                     picture.pixelColor(cell.left() + 4, cell.bottom() - 2));
  };
  grid->setFocus();
  const auto with = colours();
  Find<QWidget>("set_table_text")->setFocus();
  const auto without = colours();
  EXPECT_EQ(with.first, grid->palette().color(QPalette::Highlight)) << "the frame";
  EXPECT_NE(without.first, with.first);
  EXPECT_NE(without.second, with.second) << "the selection";
}

TEST_F(Window, Rows_Headings_And_Read_Outs_Stand_Where_They_Belong) {
  const auto place = [this](std::string_view name) {
    auto* control = Find<QWidget>(name);
    return QRect(control->mapTo(&form(), QPoint()), control->size());
  };
  form().resize(1280, 720);
  Find<QTabWidget>("sstab_Main")->setCurrentIndex(2);
  Find<QTabWidget>("SSTab_Fuel")->setCurrentIndex(2);
  for (const char* mode : {"Ind_Trim_Option(1)", "Ind_Trim_Option(0)"}) {
    Find<QRadioButton>(mode)->click();
    QApplication::processEvents();
    const bool individual = Get_Field(map::individual_trim) == 1;
    EXPECT_EQ(place("scroll(36)").center().y() == place("scroll(25)").center().y(), individual) << mode;
    for (int n = 37; n <= 39; ++n) {
      const auto master = place("scroll(" + std::to_string(n) + ")");
      EXPECT_EQ(master.center().y(), place("scroll(" + std::to_string(n - 11) + ")").center().y()) << n;
      EXPECT_EQ(master.left(), place("scroll(24)").left()) << n;
    }
    if (individual) {
      EXPECT_EQ(place("scroll(36)").left(), place("scroll(37)").left());
      EXPECT_EQ(place("scroll_text(36)").left(), place("scroll_text(37)").left());
    }
    EXPECT_EQ(Find<QWidget>("Injector_Trim_Frame")->isAncestorOf(Find<QWidget>("scroll(36)")), individual);
  }
  Set_Field(map::an2_mode, an2_mode::curve);
  Refresh_Whole_Image();
  Show(Table::analog2);
  auto* chart = Find<Line_Chart>("an2_out_chart");
  ASSERT_TRUE(chart->isVisible());
  chart->replot();
  EXPECT_LE(chart->plotLayout()->element(0, 0)->outerRect().bottom(), chart->axisRect()->outerRect().top())
      << "the read-out, above the curve and its legend";
  EXPECT_TRUE(chart->legend->visible());
  EXPECT_FALSE(chart->legend->outerRect().intersects(chart->axisRect()->rect()));
  EXPECT_GT(chart->axisRect()->outerRect().height(), 60);
  QLabel* caption = nullptr;
  for (QLabel* label : Find<QWidget>("Curve_Generator_Frame")->findChildren<QLabel*>())
    if (label->text() == "Offset") caption = label;
  ASSERT_NE(caption, nullptr);
  EXPECT_EQ(caption->mapTo(&form(), QPoint()).x(), place("an_offset").left());
}

TEST_F(Window, Frames_Beside_Each_Other_Go_Below_Each_Other_When_The_Page_Is_Narrow) {
  Show(Table::ignition_load);
  const auto page = [this] {
    QWidget* grid = Find<Table_Grid>("Ig_MAP_Grid");
    while (qobject_cast<QScrollArea*>(grid) == nullptr || grid->objectName() == "Ig_MAP_Grid")
      grid = grid->parentWidget();
    return qobject_cast<QScrollArea*>(grid);
  }();
  for (const int width : {1016, 1600}) {
    form().resize(width, 600);
    QApplication::processEvents();
    EXPECT_EQ(page->horizontalScrollBar()->maximum(), 0) << width;
    const int base = Find<QWidget>("Ignition_Load_Base_Frame")->y();
    EXPECT_EQ(Find<QWidget>("Retard_Frame")->y() == base, width == 1600) << width;
  }
  EXPECT_TRUE(Find<QWidget>("Ig_MAP_Grid")->toolTip().startsWith("Type a value: 0 to 25.5 Deg"));
}

}  // namespace
}  // namespace kx
