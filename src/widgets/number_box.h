#pragma once

#include <QDoubleSpinBox>
#include <QLineEdit>

#include "settings/shown_text.h"

namespace kx {

/// What a number may be, in the unit that the user sees.
struct Number_Range {
  double low;
  double high;
  int decimals = 0;
  QString unit = {};
};

/// "@p what (low to high unit)": the tip of a control that holds a number.
[[nodiscard]] QString Range_Tip(const QString& what, const Number_Range& range);

/// A box for one number: takes "." and "," as decimal sign, refuses what is outside its range, shows the
/// unit, tells its range in the tip and is not touched by the wheel. `valueChanged` comes when the user is
/// done: on Enter, on leaving the box, and at each arrow key.
class Number_Box : public QDoubleSpinBox {
  Q_OBJECT

 public:
  /// @p what opens the tip: what the number is for.
  Number_Box(const QString& name, const QString& what, const Number_Range& range, QWidget* parent = nullptr);

  /// Another range, as when a unit changes; the value is brought inside.
  void Set_Range(const Number_Range& range);

  QValidator::State validate(QString& text, int& position) const override;
  double valueFromText(const QString& text) const override;
  QString textFromValue(double value) const override;

 private:
  QString what_;
};

/// A one-line box for a number that the core reads from @p text as typed; @p tip names unit and range.
[[nodiscard]] QLineEdit* Typed_Number(const QString& name, Shown_Text& text, const QString& tip);

}  // namespace kx
