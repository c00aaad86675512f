#pragma once

#include <QGridLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTabWidget>
#include <vector>

#include "cards/Card_Frame.h"
#include "widgets/form_helpers.h"

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

 signals:
  /// A transfer, a card operation or a log has taken the line or given it back.
  void Transfers_Enabled(bool enabled);

 private:
  QWidget* Make_Card_Tab();
  QWidget* Make_Box_Tab();
  QWidget* Make_Main_Buttons();
  QWidget* Make_Further_Buttons();
  template <typename Rows>
  void Add_Buttons(QGridLayout* layout, const Rows& rows, int a_row);
  void Enable_Transfers(bool enabled);
  void Rest_Focus();

  std::vector<Card_Frame*> card_frames_;  ///< in the order of interface_options
  QLineEdit* status_line_;
  std::vector<QPushButton*> transfer_buttons_;  ///< off while a transfer runs
  Resting_Focus focus_;
};

}  // namespace kx
