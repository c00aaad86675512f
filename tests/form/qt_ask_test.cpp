#include "platform/qt/qt_ask.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>

namespace kx::platform {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Qt_Ask, Converts_Filters) {
  EXPECT_THAT(Name_Filters("Box setting files  *.kxs | *.kxs| All files *.* | *.*"),
              ElementsAre("Box setting files  *.kxs (*.kxs)", "All files *.* (*)"));
  EXPECT_THAT(Name_Filters("3D-map image (*.bmp)|*.bmp|Both|*.kxs; *.kxl"),
              ElementsAre("3D-map image (*.bmp) (*.bmp)", "Both (*.kxs *.kxl)"));
  EXPECT_THAT(Name_Filters("All"), ElementsAre("All (*)"));
  EXPECT_THAT(Name_Filters(""), IsEmpty());
}

/// Lets @p act have the box or dialog @p name as soon as it is open.
template <typename Dialog>
void When_Open(const char* name, std::function<void(Dialog&)> act) {
  QTimer::singleShot(0, [name, act] {
    auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget());
    ASSERT_NE(dialog, nullptr);
    EXPECT_EQ(dialog->objectName(), name);
    act(*dialog);
  });
}

struct Box_Case {
  Buttons buttons;
  QMessageBox::StandardButton press;  ///< NoButton: Escape
  Answer answer;
};

TEST(Qt_Ask, Answers_With_The_Pressed_Button) {
  const Box_Case cases[] = {{Buttons::ok, QMessageBox::Ok, Answer::ok},
                            {Buttons::ok, QMessageBox::NoButton, Answer::ok},
                            {Buttons::ok_cancel, QMessageBox::Ok, Answer::ok},
                            {Buttons::ok_cancel, QMessageBox::Cancel, Answer::cancel},
                            {Buttons::ok_cancel, QMessageBox::NoButton, Answer::cancel},
                            {Buttons::yes_no, QMessageBox::Yes, Answer::yes},
                            {Buttons::yes_no, QMessageBox::No, Answer::no},
                            {Buttons::yes_no, QMessageBox::NoButton, Answer::no}};
  for (const Box_Case& row : cases) {
    When_Open<QMessageBox>("message_box", [&](QMessageBox& box) {
      row.press == QMessageBox::NoButton ? box.reject() : box.button(row.press)->click();
    });
    EXPECT_EQ(Qt_Ask().Show({"text", "", row.buttons, Icon::question}), row.answer);
  }
}

TEST(Qt_Ask, Shows_Texts_As_They_Are_Under_The_Programs_Name) {
  const QString name = QCoreApplication::applicationName();
  QCoreApplication::setApplicationName("Program");
  for (const auto& [given, shown] : {std::pair("", "Program"), std::pair("WARNING", "WARNING")}) {
    When_Open<QMessageBox>("message_box", [&](QMessageBox& box) {
      EXPECT_EQ(box.windowTitle(), shown);
      EXPECT_EQ(box.text(), "<b>4</b>");
      EXPECT_EQ(box.textFormat(), Qt::PlainText);
      EXPECT_EQ(box.icon(), QMessageBox::Warning);
      box.accept();
    });
    Qt_Ask().Show({"<b>4</b>", given, Buttons::ok, Icon::warning});
  }
  QCoreApplication::setApplicationName(name);
}

class Qt_Ask_Files : public testing::Test {
 protected:
  [[nodiscard]] std::string Path(const std::string& name) const {
    return folder_.path().toStdString() + "/" + name;
  }
  void Make(const std::string& name) const {
    ASSERT_TRUE(QFile(QString::fromStdString(Path(name))).open(QFile::WriteOnly));
  }
  [[nodiscard]] File_Question Question(const std::string& name = "") const {
    return {"Title", "Tunes|*.kxs", folder_.path().toStdString(), name, "kxs"};
  }

  /// Types @p name into the dialog that opens next and presses its accepting button.
  static void Type(const char* dialog_name, const QString& name) {
    When_Open<QFileDialog>(dialog_name, [name](QFileDialog& dialog) {
      dialog.findChild<QLineEdit*>("fileNameEdit")->setText(name);
      static_cast<QDialog&>(dialog).accept();
    });
  }

  QTemporaryDir folder_;
};

TEST_F(Qt_Ask_Files, Open_Takes_Names_With_And_Without_Extension) {
  Make("plain");
  Make("tune.kxs");
  Make("tune 1.5.kxs");
  Make("tune 1.6");
  for (const auto& [typed, opened] :
       {std::pair("plain", "plain"), std::pair("tune.kxs", "tune.kxs"), std::pair("tune", "tune.kxs"),
        std::pair("tune 1.5", "tune 1.5.kxs"), std::pair("tune 1.6", "tune 1.6")}) {
    Type("open_dialog", typed);
    EXPECT_EQ(Qt_Ask().Open_Name(Question()), Path(opened));
  }
}

TEST_F(Qt_Ask_Files, Save_Adds_The_Extension_To_Every_Name_That_Lacks_It) {
  File_Question both = Question();
  both.filter = "Image|*.bmp|Tunes|*.kxs; *.kxl";
  for (const auto& [typed, saved] :
       {std::pair("tune", "tune.kxs"), std::pair("tune 1.5", "tune 1.5.kxs"), std::pair("a.KXS", "a.KXS"),
        std::pair("b.kxs", "b.kxs"), std::pair("a.bmp", "a.bmp.kxs"), std::pair("dot.", "dot..kxs")}) {
    Type("save_dialog", typed);
    EXPECT_EQ(Qt_Ask().Save_Name(Question()), Path(saved));
  }
  Type("save_dialog", "a.bmp");
  EXPECT_EQ(Qt_Ask().Save_Name(both), Path("a.bmp"));
}

TEST_F(Qt_Ask_Files, Save_Takes_The_Extension_Of_The_Chosen_Filter) {
  File_Question export_question = Question("map_kxs");
  export_question.filter = "Picture|*.bmp|Text|*.csv|Page|*.htm; *.html|All|*.*";
  export_question.default_extension = "bmp";
  struct Row {
    const char *filter, *typed, *saved;
  };
  for (const Row& row : {Row{"", "map_kxs", "map_kxs.bmp"},
                         {"Text (*.csv)", "map_kxs", "map_kxs.csv"},
                         {"Text (*.csv)", "map 1.5", "map 1.5.csv"},
                         {"Text (*.csv)", "map.bmp", "map.bmp"},
                         {"Page (*.htm *.html)", "map", "map.htm"},
                         {"All (*)", "map", "map.bmp"}}) {
    When_Open<QFileDialog>("save_dialog", [&row](QFileDialog& dialog) {
      if (*row.filter != '\0') dialog.selectNameFilter(row.filter);
      dialog.findChild<QLineEdit*>("fileNameEdit")->setText(row.typed);
      static_cast<QDialog&>(dialog).accept();
    });
    EXPECT_EQ(Qt_Ask().Save_Name(export_question), Path(row.saved)) << row.filter << " " << row.typed;
  }
}

TEST_F(Qt_Ask_Files, Save_Asks_Before_It_Overwrites_What_The_Extension_Leads_To) {
  Make("tune 1.5.kxs");
  QString asked;
  When_Open<QFileDialog>("save_dialog", [&](QFileDialog& dialog) {
    auto* name = dialog.findChild<QLineEdit*>("fileNameEdit");
    EXPECT_EQ(dialog.windowTitle(), "Title");
    EXPECT_EQ(name->text(), "New1.kxs");
    name->setText("tune 1.5");
    QTimer::singleShot(0, [&] {
      auto* question = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      ASSERT_NE(question, nullptr);
      asked = question->text();
      question->button(QMessageBox::No)->click();
    });
    static_cast<QDialog&>(dialog).accept();
    EXPECT_TRUE(dialog.isVisible()) << "a refused overwrite must leave the dialog open";
    dialog.reject();
  });
  EXPECT_EQ(Qt_Ask().Save_Name(Question("New1.kxs")), std::nullopt);
  EXPECT_TRUE(asked.startsWith("tune 1.5.kxs already exists")) << asked.toStdString();
}

TEST_F(Qt_Ask_Files, Cancel_Gives_No_Name_And_A_Lost_Directory_Gives_The_Working_One) {
  File_Question question = Question();
  for (const std::string& directory : {std::string(), Path("gone")}) {
    question.directory = directory;
    When_Open<QFileDialog>("open_dialog", [](QFileDialog& dialog) {
      EXPECT_EQ(dialog.directory().absolutePath(), QDir::currentPath());
      dialog.reject();
    });
    EXPECT_EQ(Qt_Ask().Open_Name(question), std::nullopt);
  }
}

}  // namespace
}  // namespace kx::platform
