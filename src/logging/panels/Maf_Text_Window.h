#pragma once

#include <QPlainTextEdit>
#include <QWidget>

namespace kx {

/// The working of the MAF-simulation calculator, to be read and copied. Its button in KX_Log shows and hides
/// it.
class Maf_Text_Window : public QWidget {
  Q_OBJECT

 public:
  explicit Maf_Text_Window(QWidget* parent = nullptr);

  /// cmd_MAF_Sim: works the text out anew for the stretch on show, or hides the window.
  void Toggle(QWidget& over);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  QPlainTextEdit* Text4_;
};

}  // namespace kx
