#include <QApplication>

#include "platform/qt/qt_seams.h"
#include "widgets/open_form.h"
#include "workspace/BoostProgMain.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName("KXBench");
  kx::platform::Qt_Seams seams;
  seams.Install();
  kx::BoostProgMain main_form;
  kx::Open_Main_Form(main_form, {1280, 720});
  return QApplication::exec();
}
