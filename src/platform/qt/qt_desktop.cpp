#include "platform/qt/qt_desktop.h"

#include <QClipboard>
#include <QDesktopServices>
#include <QDir>
#include <QGuiApplication>
#include <QSysInfo>
#include <QUrl>

namespace kx::platform {

void Qt_Desktop::Set_Clipboard_Text(const std::string& text) {
  QGuiApplication::clipboard()->setText(QString::fromStdString(text));
}

void Qt_Desktop::Open_With_Handler(const std::string& address) {
  if (address.empty()) return;
  QDesktopServices::openUrl(QUrl::fromUserInput(QString::fromStdString(address), QDir::currentPath()));
}

std::string Qt_Desktop::System_Name() const { return QSysInfo::prettyProductName().toStdString(); }

}  // namespace kx::platform
