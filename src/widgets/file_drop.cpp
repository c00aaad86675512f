#include "widgets/file_drop.h"

#include <QApplication>
#include <QDropEvent>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <utility>

#include "settings/message.h"

namespace kx {

File_Drop::File_Drop(QList<QWidget*> windows, std::function<bool(const std::string&)> can_open,
                     std::function<void(const std::string&)> open, QObject* parent)
    : QObject(parent), windows_(std::move(windows)), can_open_(std::move(can_open)), open_(std::move(open)) {
  for (QWidget* window : windows_) window->setAcceptDrops(true);
  qApp->installEventFilter(this);
}

std::string File_Drop::File_In(const QDropEvent& event) const {
  for (const QUrl& url : event.mimeData()->urls()) {
    std::string path = url.toLocalFile().toStdString();
    if (!path.empty() && can_open_(path)) return path;
  }
  return {};
}

/// What is asked about the file must not keep the program waiting that it was dragged from.
void File_Drop::Answer(QDropEvent& event, bool dropped) {
  const std::string path = QApplication::activeModalWidget() == nullptr ? File_In(event) : std::string();
  if (path.empty()) return event.ignore();
  event.setDropAction(Qt::CopyAction);
  event.accept();
  if (dropped) QTimer::singleShot(0, this, [this, path] { Guarded([&] { open_(path); }); });
}

bool File_Drop::eventFilter(QObject* watched, QEvent* event) {
  const QEvent::Type type = event->type();
  const bool drop = type == QEvent::Drop;
  if (!drop && type != QEvent::DragEnter && type != QEvent::DragMove) return false;
  auto* widget = qobject_cast<QWidget*>(watched);
  if (widget == nullptr || !windows_.contains(widget->window())) return false;
  auto& dropping = static_cast<QDropEvent&>(*event);
  if (!dropping.mimeData()->hasUrls()) return false;
  Answer(dropping, drop);
  return true;
}

}  // namespace kx
