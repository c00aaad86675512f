#pragma once

#include <QGroupBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <vector>

namespace kx {

/// SSTab_Communication: the card side (tab 0) and the box side (tab 1).
class Communication_Panel : public QTabWidget {
  Q_OBJECT

 public:
  explicit Communication_Panel(QWidget* parent = nullptr);

  /// The frame of the chosen card interface.
  void Show_Values();

  /// The tab that the configuration asks for, without storing it again.
  void Show_Layout();

 private:
  QWidget* Make_Card_Tab();
  QWidget* Make_Box_Tab();
  QWidget* Make_Buttons();
  void Enable_Transfers(bool enabled);

  std::vector<QGroupBox*> card_frames_;         ///< in the order of interface_options
  std::vector<QPushButton*> transfer_buttons_;  ///< off while a transfer runs
};

}  // namespace kx
