#pragma once

#include <QButtonGroup>
#include <QComboBox>
#include <QWidget>
#include <string>

#include "boxlink/serial_port_list.h"

namespace kx {

/// "PC settings": the box's serial port and the way to a card. Nothing holds before Apply or OK. The ports
/// are looked for when the form is made and again each time it comes on show.
class KX_prefs : public QWidget {
  Q_OBJECT

 public:
  explicit KX_prefs(QWidget* parent = nullptr);

  /// Selects the option of the present card interface, or none.
  void Show_Interface();

  /// Apply and OK are off while something has the line: the port is not to change under it.
  void Enable_Apply(bool enabled);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  QWidget* Make_Port_List();
  QWidget* Make_Interface_Options();
  QWidget* Make_Buttons();
  void Show_Preferences();
  void ApplyButton_Click();

  clsSerialPortList ports_;     ///< in the order of the rows of Combo1
  std::string interface_word_;  ///< what the options stand for
  QComboBox* Combo1_;
  QButtonGroup* interface_options_;
};

}  // namespace kx
