#include "platform/qt/qt_desktop.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QSettings>
#include <QSysInfo>
#include <QUrl>

namespace kx::platform {

void Qt_Desktop::Set_Clipboard_Text(const std::string& text) {
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

std::string Qt_Desktop::Clipboard_Text() const { return QGuiApplication::clipboard()->text().toStdString(); }

void Qt_Desktop::Open_With_Handler(const std::string& address) {
  if (address.empty()) return;
  QDesktopServices::openUrl(QUrl::fromUserInput(QString::fromStdString(address), QDir::currentPath()));
}

namespace {

/// The user's own, whichever brand and edition the program has.
QSettings Place_For_Habits() {
  return QSettings(QSettings::NativeFormat, QSettings::UserScope, "KXBench", "KXBench");
}

}  // namespace

std::string Qt_Desktop::Remembered(const std::string& name) {
  return Place_For_Habits().value(QString::fromStdString(name)).toString().toStdString();
}

void Qt_Desktop::Remember(const std::string& name, const std::string& text) {
  Place_For_Habits().setValue(QString::fromStdString(name), QString::fromStdString(text));
}

std::string Qt_Desktop::System_Name() const { return QSysInfo::prettyProductName().toStdString(); }

}  // namespace kx::platform
