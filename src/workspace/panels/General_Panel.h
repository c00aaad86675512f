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

 private:
  QLabel* file_;
  QLabel* folder_;
  QLabel* dataset_;
  QPlainTextEdit* description_;
};

}  // namespace kx
