#pragma once

#include <QLabel>
#include <QPushButton>
#include <QTimer>
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

  /// The tune has changed, or one has been kept. Nothing happens while the window is hidden.
  void Show_Differences();

 private:
  QWidget* Make_Buttons();
  void Fill();
  void Fill_Again();
  void Count_Differences();
  [[nodiscard]] std::string Chosen_Path() const;
  void Open_Chosen();

  QLabel* text_;
  QTreeWidget* list_;
  QPushButton* open_;
  QPushButton* folder_;
  QTimer counting_;
  int changes_ = 0;                  ///< of the earlier tunes, when the list was filled
  std::vector<Earlier_Tune> tunes_;  ///< one a row
};

}  // namespace kx
