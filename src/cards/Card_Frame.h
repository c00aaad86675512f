#pragma once

#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <vector>

#include "cards/card_paths.h"

namespace kx {

/// The frame of one way to a card: its buttons and its status line.
class Card_Frame : public QGroupBox {
  Q_OBJECT

 public:
  Card_Frame(const QString& name, const QString& title, const Card_Path& path, QWidget* parent = nullptr);

  /// The buttons that start an operation.
  [[nodiscard]] const std::vector<QPushButton*>& Transfer_Buttons() const { return transfer_buttons_; }

  /// The line of its status, which does nothing with keys.
  [[nodiscard]] QWidget* Status_Line() const { return status_; }

 private:
  QPushButton* Make_Button(const Card_Button& row);

  QLineEdit* status_;
  std::vector<QPushButton*> transfer_buttons_;
};

}  // namespace kx
