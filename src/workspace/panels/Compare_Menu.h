#pragma once

#include <QActionGroup>
#include <QMenu>

#include "settings/reference_tune.h"

namespace kx {

/// The menu "Compare": what the tune is compared with, as exclusive ticks.
class Compare_Menu : public QMenu {
  Q_OBJECT

 public:
  explicit Compare_Menu(QWidget* parent = nullptr);

  /// Ticks and captions from the reference as it is.
  void Follow();

 private:
  QAction* Add_Source(const char* name, Reference_Source source, const char* tip);

  QActionGroup* sources_;
  QAction* box_;
  QAction* file_;
};

}  // namespace kx
