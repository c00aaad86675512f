#include <gmock/gmock.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>
#include <string_view>

#include "form/editing_child.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  if (argc == 3 && std::string_view(argv[1]) == "--edit-tune") return kx::test::Run_Editing_Child(argv[2]);
  // What Qt's own dialogs remember is the user's, too.
  const QTemporaryDir habits;
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, habits.path());
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
