#include <gmock/gmock.h>

#include <QApplication>
#include <cstdlib>
#include <string_view>

#include "link/live_log_child.h"

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  if (argc == 5 && std::string_view(argv[1]) == "--live-log") {
    return kx::test::Run_Live_Log_Child(argv[2], argv[3], std::atoi(argv[4]));
  }
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
