#pragma once

#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <vector>

#include "settings/earlier_tunes.h"

namespace kx {

/// "Earlier tunes": what was on screen before, newest first, with what sets each apart from the tune of now.
class KX_Earlier_Tunes : public QWidget {
  Q_OBJECT

 public:
  explicit KX_Earlier_Tunes(QWidget* parent = nullptr);

  /// Reads the folder anew.
  void Show_List();

  /// The tune has changed. Nothing happens while the window is hidden.
  void Show_Differences();

 private:
  QWidget* Make_Buttons();
  void Count_Differences();
  void Open_Chosen();

  QLabel* text_;
  QTreeWidget* list_;
  QPushButton* open_;
  std::vector<Earlier_Tune> tunes_;  ///< one a row
};

}  // namespace kx
