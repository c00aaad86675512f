#pragma once

#include <QAction>
#include <QMenu>
#include <QObject>
#include <vector>

namespace kx {

class Tables_Panel;

/// The marks of the engine in the tables while a log runs, and "Follow the engine". They move up to 20 times
/// a second, so nothing else is shown anew.
class Engine_Marks : public QObject {
  Q_OBJECT

 public:
  /// Adds the menu entry Follow_Engine to @p log_menu.
  Engine_Marks(const std::vector<Tables_Panel*>& tables, QMenu* log_menu, QObject* parent = nullptr);
  ~Engine_Marks() override;

  /// Puts the marks into the table on show; for when another table has come on show, too.
  void Show();

 private:
  const std::vector<Tables_Panel*>& tables_;
  QAction* follow_;
};

}  // namespace kx
