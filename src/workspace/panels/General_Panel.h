#pragma once

#include <QLabel>
#include <QPlainTextEdit>
#include <QWidget>

namespace kx {

/// Tab "General": what the tune is and where it comes from.
class General_Panel : public QWidget {
  Q_OBJECT

 public:
  explicit General_Panel(QWidget* parent = nullptr);

  /// File, folder and dataset of the tune.
  void Show_Values();

  /// The user is typing the description, whose text has an undo of its own.
  [[nodiscard]] bool Description_Has_Focus() const { return description_->hasFocus(); }

 private:
  QLabel* file_;
  QLabel* folder_;
  QLabel* dataset_;
  QPlainTextEdit* description_;
};

}  // namespace kx
