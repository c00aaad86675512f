#pragma once

#include <QObject>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <string>

class QDropEvent;

namespace kx {

/// Opens what is dropped on a window, whichever control lies under the pointer: a text box there would take
/// the file's name as text. Of several files the first that can be opened counts; the pointer refuses all
/// others.
class File_Drop : public QObject {
 public:
  /// @p can_open is asked while a file is held over @p windows, @p open is called behind the drop.
  File_Drop(QList<QWidget*> windows, std::function<bool(const std::string&)> can_open,
            std::function<void(const std::string&)> open, QObject* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  [[nodiscard]] std::string File_In(const QDropEvent& event) const;
  void Answer(QDropEvent& event, bool dropped);

  QList<QWidget*> windows_;
  std::function<bool(const std::string&)> can_open_;
  std::function<void(const std::string&)> open_;
};

}  // namespace kx
