#include "bench_folder.h"

#include <QFile>
#include <QSettings>
#include <stdexcept>

namespace kx::bench {
namespace {

void Require(bool holds, const QString& what) {
  if (!holds) throw std::runtime_error(what.toStdString());
}

/// The settings file with COM 9 as the box's port, and @p port as COM 9.
QByteArray With_Port(const QByteArray& settings, const QString& port) {
  QByteArray result;
  for (const QByteArray& line : settings.split('\n')) {
    if (!line.startsWith("comport1=") && !line.trimmed().isEmpty()) result += line.trimmed() + "\r\n";
  }
  return result + "comport1=9\r\ncom_device9=" + port.toUtf8() + "\r\n";
}

}  // namespace

void Enter_Bench_Folder(const QDir& data, const QDir& work, const QString& port) {
  Require(QDir().mkpath(work.path()), "cannot make " + work.path());
  Require(data.exists("KXBenchPro.ini"), "no shipped files in " + data.path());
  for (const QString& name : data.entryList(QDir::Files)) {
    QFile::remove(work.filePath(name));
    Require(QFile::copy(data.filePath(name), work.filePath(name)), "cannot copy " + name);
  }
  const QString ini_name = work.filePath("KXBenchPro.ini");
  QFile shipped(data.filePath("KXBenchPro.ini"));
  Require(shipped.open(QIODevice::ReadOnly), "cannot read " + shipped.fileName());
  const QByteArray settings = With_Port(shipped.readAll(), port);
  QFile::setPermissions(ini_name, QFile::ReadOwner | QFile::WriteOwner);
  QFile ini(ini_name);
  Require(ini.open(QIODevice::WriteOnly) && ini.write(settings) == settings.size(),
          "cannot write " + ini_name);
  for (const char* left : {"earlier-tunes", "desktop"}) QDir(work.filePath(left)).removeRecursively();
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, work.filePath("desktop"));
  Require(QDir::setCurrent(work.path()), "cannot enter " + work.path());
}

QDir Data_Folder(int argc, char** argv) {
  return QDir(argc > 1 ? QString::fromLocal8Bit(argv[1]) : QDir::current().absoluteFilePath("data"));
}

Box_Stand::Box_Stand(const QDir& data) {
  const std::string trouble = box_.Start();
  Require(trouble.empty(), QString::fromStdString(trouble));
  Enter_Bench_Folder(data, QDir(folder_.path()), QString::fromStdString(box_.Path()));
  seams_.Install();
}

}  // namespace kx::bench
