#include "workspace/panels/Recent_Files_Menu.h"

#include "settings/recent_files.h"
#include "widgets/form_helpers.h"
#include "workspace/file_habits.h"

namespace kx {
namespace {

constexpr int folder_width_in_characters = 50;

/// "&1  name  -  folder", the folder cut where it is long; an "&" of the name's own is no key.
QString Caption(const QString& path, int number, const QFontMetrics& metrics) {
  const qsizetype bare = path.lastIndexOf('/') + 1;
  const QString folder = metrics.elidedText(path.left(bare), Qt::ElideMiddle,
                                            metrics.averageCharWidth() * folder_width_in_characters);
  const QString text = path.mid(bare) + "  -  " + folder;
  return "&" + QString::number(number % static_cast<int>(most_recent_files)) + "  " +
         QString(text).replace('&', "&&");
}

}  // namespace

Recent_Files_Menu::Recent_Files_Menu(QWidget* parent) : QMenu("&Recent files", parent) {
  setObjectName("Recent_files");
  setToolTipsVisible(true);
  connect(this, &QMenu::aboutToShow, this, &Recent_Files_Menu::Fill);
}

void Recent_Files_Menu::Fill() {
  clear();
  int number = 0;
  for (const std::string& path : Recent_Files()) {
    QAction* entry = addAction(Caption(Text(path), ++number, fontMetrics()));
    entry->setObjectName(QString("recent_file(%1)").arg(number));
    entry->setToolTip(Text(path));
    On_Trigger(entry, [this, path] { Open(path); });
  }
  if (number == 0) addAction("None yet")->setEnabled(false);
}

void Recent_Files_Menu::Open(const std::string& path) {
  if (Open_Recent_File(path)) emit Log_Opened();
}

}  // namespace kx
