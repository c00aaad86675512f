#pragma once

#include <QMenu>

namespace kx {

/// "Recent files": up to ten, by the digits 1 to 9 and 0. Filled whenever it opens.
class Recent_Files_Menu : public QMenu {
  Q_OBJECT

 public:
  explicit Recent_Files_Menu(QWidget* parent);

 signals:
  /// A log has been opened from the list.
  void Log_Opened();

 private:
  void Fill();
  void Open(const std::string& path);
};

}  // namespace kx
