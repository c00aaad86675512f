#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QPushButton>
#include <QWidget>
#include <vector>

#include "widgets/form_helpers.h"

class QGridLayout;

namespace kx {

/// "Todos II settings": a bench for synchronous cards in a Todos reader, and the fields by which the main
/// form reads and writes there. The readers are listed each time it comes on show.
class frm_TodosII : public QWidget {
  Q_OBJECT

 public:
  explicit frm_TodosII(QWidget* parent = nullptr);

  /// Off while a transfer or a card operation runs.
  void Enable_Buttons(bool enabled);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  /// A button that not every kind of card has a use for.
  struct Button_By_Type {
    QPushButton* button;
    bool (*of_use)();
  };

  QWidget* Make_Card_Frame();
  QWidget* Make_Read_Frame();
  QWidget* Make_Write_Frame();
  QWidget* Make_Pin_Frame();
  QWidget* Make_Protect_Frame();
  QWidget* Make_Outcome();
  QPushButton* Add_Button(const char* name, const char* caption, const char* tip, void (*handler)());
  void Show_Readers();
  void Show_Type();

  std::vector<QPushButton*> buttons_;
  std::vector<Button_By_Type> by_type_;
  std::vector<QWidget*> third_pin_bytes_;
  bool idle_ = true;
  QComboBox* ReaderlistCombo_;
  QComboBox* CardListCombo_;
  QWidget* new_pin_;
  QLineEdit* result_;
  Resting_Focus focus_;
};

}  // namespace kx
