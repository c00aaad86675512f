#include <gmock/gmock.h>

#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include "boxlink/comm_port.h"
#include "boxlink/link_texts.h"
#include "boxlink/preferences.h"
#include "boxlink/transfer.h"
#include "cards/Frm_TodosII.h"
#include "cards/card_image.h"
#include "cards/card_paths.h"
#include "form_fixture.h"
#include "platform/seams.h"
#include "settings/ini_file_adm.h"
#include "settings/session.h"
#include "sim/pty_box.h"
#include "support/simulated_readers.h"

namespace kx {
namespace {

using testing::Each;
using testing::ElementsAre;

/// The card side of the main form and the bench form, over a simulated reader.
class Card_Forms : public Form_Fixture {
 protected:
  void SetUp() override {
    Form_Fixture::SetUp();
    platform::seams.chipdrive = &chipdrive_;
    platform::seams.todos = &todos_;
    platform::seams.card_service = &service_;
    Find<QTabWidget>("SSTab_Communication")->setCurrentIndex(0);
    reader_.Card.Memory[map::dataset] = 108;
    reader_.Card.Memory[map::fuel_load.first] = 0x42;
  }
  void TearDown() override {
    Reset_Cards();
    Form_Fixture::TearDown();
  }

  QWidget* Bench() {
    Trigger("Todos_Settings");
    for (QWidget* form : QApplication::topLevelWidgets()) {
      if (form->objectName() == "frm_TodosII") return form;
    }
    ADD_FAILURE() << "no bench form";
    return nullptr;
  }
  template <typename Widget>
  static Widget* In(QWidget* form, const char* name) {
    auto* widget = form->findChild<Widget*>(name);
    EXPECT_NE(widget, nullptr) << name;
    return widget;
  }
  static void Press(QWidget* form, const char* button) {
    QTest::mouseClick(In<QPushButton>(form, button), Qt::LeftButton);
  }
  QString Line(const char* name) { return Find<QLineEdit>(name)->text(); }

  sim::Card_Reader reader_;
  test::Simulated_Chipdrive chipdrive_{reader_};
  test::Simulated_Todos todos_{reader_};
  test::Listed_Readers service_;
};

TEST_F(Card_Forms, The_Key_Takes_The_Next_Frame_And_Keeps_It) {
  std::vector<std::string> shown;
  for (int i = 0; i < 3; ++i) {
    QTest::keyClick(&form(), Qt::Key_T, Qt::ControlModifier);
    for (const Interface_Option& option : interface_options) {
      if (Find<QGroupBox>(option.frame)->isVisible()) shown.emplace_back(option.frame);
    }
    EXPECT_EQ(Read_Key("Default_Interface"), Default_Interface);
  }
  EXPECT_THAT(shown, ElementsAre("kx_crw_frame", "frame_Todos", "Frame1"));
}

TEST_F(Card_Forms, A_Card_Is_Read_And_Written_By_Clicks) {
  QTest::mousePress(Find<QPushButton>("Command1"), Qt::LeftButton);
  EXPECT_EQ(rs232_text.Text(), "<------>") << "while the button is down";
  QTest::mouseRelease(Find<QPushButton>("Command1"), Qt::LeftButton);
  EXPECT_EQ(Line("txt_Chipdrive_status"), "< Card Read OK >");
  EXPECT_EQ(CardByte[map::fuel_load.first], 0x42);
  EXPECT_TRUE(form().windowTitle().endsWith("Settings loaded from card"));
  Trigger("edit_undo");
  EXPECT_NE(CardByte[map::fuel_load.first], 0x42);
  Click("Command2");
  EXPECT_EQ(Line("txt_Chipdrive_status"), "< Card Write OK >");
  EXPECT_EQ(reader_.Card.Memory[static_cast<std::size_t>(map::card_checksum)], CardByte[map::card_checksum]);
  Trigger("toggle_interface");
  EXPECT_EQ(Line("kx_crw_text"), "< KX writer info >");
  Trigger("toggle_interface");
  Click("cmdReadTodos");
  EXPECT_EQ(Line("txt_TodosStatus"), "< Card Read OK >");
  Click("cmd_DisConnectTodos");
  EXPECT_EQ(Line("txt_TodosStatus"), "< Card Disconnected >");
}

TEST_F(Card_Forms, While_A_Card_Is_At_Work_Only_The_Ways_Out_Can_Be_Pressed) {
  std::vector<bool> others;
  std::vector<bool> ways_out;
  auto* bench = Bench();
  txt_Chipdrive_status.On_Change([&] {
    for (const char* name : {"Command1", "Command2", "Command4", "cmdReadTodos", "Read_Settings"})
      others.push_back(Find<QPushButton>(name)->isEnabled());
    others.push_back(In<QPushButton>(bench, "ComRead")->isEnabled());
    others.push_back(In<QPushButton>(bench, "ComChp")->isEnabled());
    for (const char* name : {"Stop_Card", "Com_knapp2"})
      ways_out.push_back(Find<QPushButton>(name)->isEnabled());
  });
  Click("Command2");
  txt_Chipdrive_status.On_Change(nullptr);
  EXPECT_THAT(others, Each(false));
  EXPECT_THAT(ways_out, Each(true));
  EXPECT_FALSE(others.empty());
  EXPECT_TRUE(Find<QPushButton>("Command1")->isEnabled());
  EXPECT_TRUE(In<QPushButton>(bench, "ComChp")->isEnabled());
}

TEST_F(Card_Forms, The_Bench_Lists_Readers_And_Goes_By_Its_Fields) {
  service_.names = std::string("Keyboard\0Todos Argos Mini II USB 00\0", 36);
  QWidget* bench = Bench();
  EXPECT_EQ(bench->windowTitle(), "TORNVIK  KXBenchPro - Todos II settings");
  auto* readers = In<QComboBox>(bench, "ReaderlistCombo");
  EXPECT_EQ(readers->currentText(), "Keyboard");
  QTest::keyClick(readers, Qt::Key_Down);
  EXPECT_EQ(todos::reader, 1);
  auto* length = In<QLineEdit>(bench, "ReadData");
  EXPECT_EQ(length->text(), "256");
  length->selectAll();
  QTest::keyClicks(length, "2");
  Press(bench, "ComRead");
  EXPECT_EQ(In<QLineEdit>(bench, "result")->text(), "< Read success! >");
  EXPECT_EQ(Line("txt_TodosStatus"), "< Read success! >");
  EXPECT_EQ(In<QPlainTextEdit>(bench, "output")->toPlainText(), "Read Data : \n0: 0\n1: 0\n");
  QTest::keyClick(bench, Qt::Key_Escape);
  EXPECT_FALSE(bench->isVisible());
}

TEST_F(Card_Forms, The_Kind_Of_Card_Decides_What_Its_Pin_Needs) {
  QWidget* bench = Bench();
  auto* kinds = In<QComboBox>(bench, "CardListCombo");
  std::vector<std::string> states;
  for (int kind = 0; kind < kinds->count(); ++kind) {
    std::string state = kinds->currentText().toStdString();
    for (const char* name : {"ComChp", "ReadPB", "WritePB", "Text1", "Text5"})
      state += In<QWidget>(bench, name)->isEnabled() ? " 1" : " 0";
    states.push_back(state);
    QTest::keyClick(kinds, Qt::Key_Down);
  }
  EXPECT_THAT(states, ElementsAre("SLE4442 1 1 1 1 1", "SLE4428 1 1 1 1 0", "I2C_1B_MC 0 0 0 1 1",
                                  "I2C_2B_MC 0 0 0 1 1"));
  EXPECT_FALSE(In<QLineEdit>(bench, "Text3")->isVisible());
  In<QCheckBox>(bench, "Check1")->click();
  EXPECT_TRUE(In<QLineEdit>(bench, "Text3")->isVisible());
  EXPECT_EQ(In<QLineEdit>(bench, "Text1")->text(), "A5");
}

/// Keys pressed while a card is at work reach no field, and the button has its focus back behind it.
TEST_F(Card_Forms, The_Focus_Stays_With_The_Button_That_Was_Pressed) {
  Bench();
  for (const auto& [name, rest] :
       {std::pair("comwrite", "result"), std::pair("Command2", "txt_Chipdrive_status")}) {
    SCOPED_TRACE(name);
    QWidget* window = name == std::string("comwrite") ? Bench() : &form();
    window->activateWindow();
    ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == window; }));
    auto* button = In<QPushButton>(window, name);
    button->setFocus();
    std::vector<QString> meanwhile;
    QTimer beat;
    QObject::connect(&beat, &QTimer::timeout, [&] {
      if (Transfer_Running()) meanwhile.push_back(window->focusWidget()->objectName());
    });
    beat.start(0);
    QTest::keyClick(button, Qt::Key_Space);
    EXPECT_THAT(meanwhile, Each(QString(rest)));
    EXPECT_FALSE(meanwhile.empty());
    EXPECT_EQ(window->focusWidget(), button);
  }
}

TEST_F(Card_Forms, Every_Control_Of_The_Bench_Has_A_Tip) {
  QWidget* bench = Bench();
  for (QWidget* control : bench->findChildren<QWidget*>()) {
    const bool input = qobject_cast<QAbstractButton*>(control) != nullptr ||
                       qobject_cast<QComboBox*>(control) != nullptr ||
                       qobject_cast<QLineEdit*>(control) != nullptr;
    const QString name = control->objectName();
    if (!input || name.isEmpty() || name.startsWith("qt_")) continue;
    EXPECT_FALSE(control->toolTip().isEmpty()) << name.toStdString();
  }
}

/// The buttons behind which the program waits.
class Card_Forms_Closing : public Card_Forms, public testing::WithParamInterface<const char*> {};

TEST_P(Card_Forms_Closing, The_Window_Closes_In_The_Middle_And_Nothing_Is_Changed) {
  sim::Box_Contents contents;
  contents.Card_Present = true;
  sim::Pty_Box box{sim::Line(sim::Box(contents))};
  ASSERT_EQ(box.Start(), "");
  Com_Port_Number = 9;
  Write_Key("com_device9", box.Path());
  Prepare_Card_Image();  // which a write does to the tune before it waits
  const Byte_Image tune = CardByte;
  QTimer beat;
  int beats = 0;
  QObject::connect(&beat, &QTimer::timeout, [&] {
    if (Transfer_Running() && ++beats == 3) form().close();
  });
  beat.start(0);
  Find<QPushButton>(GetParam())->click();
  EXPECT_EQ(beats, 3) << "closed while it ran";
  EXPECT_FALSE(form().isVisible());
  EXPECT_FALSE(Transfer_Running());
  EXPECT_FALSE(MSComm1.PortOpen());
  EXPECT_EQ(CardByte, tune);
  EXPECT_EQ(Todos_Powered, 0);
}

INSTANTIATE_TEST_SUITE_P(All, Card_Forms_Closing,
                         testing::Values("Command1", "Command2", "Command4", "Command5", "Command6",
                                         "cmdReadTodos", "cmd_WriteTodos", "cmd_FindTodos"));

}  // namespace
}  // namespace kx
