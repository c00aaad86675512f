#pragma once

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QStackedWidget>

#include "logging/panels/Setting_Controls.h"

namespace kx {

/// The file panel of KX_Log: drives, folders and logs, and below them what the log on show, or the one that
/// was clicked, says of itself.
class Log_File_Panel : public QWidget {
  Q_OBJECT

 public:
  explicit Log_File_Panel(Setting_Controls& settings, QWidget* parent = nullptr);

  void Show_Folder();
  void Show_File();
  void Show_Preview();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* Make_Lists();
  QWidget* Make_Info(Setting_Controls& settings);
  QWidget* Make_Preview();
  void Open(const QListWidgetItem* item);

  QComboBox* Drive1_;
  QListWidget* Dir1_;
  QListWidget* File1_;
  QStackedWidget* info_;
  QLineEdit* txt_File_;
  QLineEdit* length_;
  QPlainTextEdit* remarks_;
};

}  // namespace kx
