#include "widgets/number_box.h"

#include "widgets/form_helpers.h"
#include "widgets/wheel_guard.h"

namespace kx {

QString Range_Tip(const QString& what, const Number_Range& range) {
  const auto number = [&](double value) { return QString::number(value, 'f', range.decimals); };
  const QString unit = range.unit.isEmpty() ? QString() : " " + range.unit;
  return what + " (" + number(range.low) + " to " + number(range.high) + unit + ")";
}

Number_Box::Number_Box(const QString& name, const QString& what, const Number_Range& range, QWidget* parent)
    : QDoubleSpinBox(parent), what_(what) {
  setObjectName(name);
  setLocale(QLocale::c());
  setAlignment(Qt::AlignRight);
  setButtonSymbols(NoButtons);
  setKeyboardTracking(false);
  setCorrectionMode(CorrectToNearestValue);
  Set_Range(range);
  Guard_Wheel(this);
}

void Number_Box::Set_Range(const Number_Range& range) {
  setDecimals(range.decimals);
  setRange(range.low, range.high);
  setSuffix(range.unit.isEmpty() ? QString() : " " + range.unit);
  setToolTip(Range_Tip(what_, range));
}

QValidator::State Number_Box::validate(QString& text, int& position) const {
  text.replace(',', '.');
  return QDoubleSpinBox::validate(text, position);
}

double Number_Box::valueFromText(const QString& text) const {
  return QDoubleSpinBox::valueFromText(QString(text).replace(',', '.'));
}

QString Number_Box::textFromValue(double value) const { return QString::number(value, 'f', decimals()); }

QLineEdit* Typed_Number(const QString& name, Shown_Text& text, const QString& tip) {
  auto* box = new QLineEdit;
  box->setObjectName(name);
  box->setAlignment(Qt::AlignRight);
  box->setToolTip(tip);
  Bind_Text(box, text);
  return box;
}

}  // namespace kx
