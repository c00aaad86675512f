#include "widgets/key_codes.h"

#include <QKeyEvent>

namespace kx {
namespace {

constexpr int ctrl_state = 2;
constexpr int code_of_c = 67;

/// Codes of the keys that type no character but are known to handlers.
int Code_Of_Special_Key(int key) {
  switch (key) {
    case Qt::Key_Backspace:
      return 8;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return 13;
    case Qt::Key_Shift:
      return 16;
    case Qt::Key_PageUp:
      return 33;
    case Qt::Key_PageDown:
      return 34;
    case Qt::Key_End:
      return 35;
    case Qt::Key_Home:
      return 36;
    case Qt::Key_Left:
      return 37;
    case Qt::Key_Up:
      return 38;
    case Qt::Key_Right:
      return 39;
    case Qt::Key_Down:
      return 40;
    case Qt::Key_Delete:
      return 46;
    default:
      return 0;
  }
}

int Code_Of_Character(QChar typed, bool keypad) {
  if (typed >= u'0' && typed <= u'9') return (keypad ? 96 : 48) + typed.digitValue();
  if (typed == u'.') return keypad ? 110 : 190;
  if (typed == u',') return keypad ? 110 : 188;
  if (typed == u'-') return keypad ? 109 : 189;
  const QChar upper = typed.toUpper();
  return upper >= u'A' && upper <= u'Z' ? upper.unicode() : 0;
}

}  // namespace

int Key_Code_Of(const QKeyEvent& event) {
  if (const int special = Code_Of_Special_Key(event.key()); special != 0) return special;
  if ((event.modifiers() & Qt::ControlModifier) != 0 && event.key() == Qt::Key_C) return code_of_c;
  if (event.text().isEmpty()) return 0;
  return Code_Of_Character(event.text().front(), (event.modifiers() & Qt::KeypadModifier) != 0);
}

int Shift_State_Of(const QKeyEvent& event) {
  const auto held = event.modifiers();
  return ((held & Qt::ShiftModifier) != 0 ? 1 : 0) + ((held & Qt::ControlModifier) != 0 ? ctrl_state : 0) +
         ((held & Qt::AltModifier) != 0 ? 4 : 0);
}

}  // namespace kx
