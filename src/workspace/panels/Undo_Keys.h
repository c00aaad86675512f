#pragma once

#include <QKeyCombination>
#include <QObject>
#include <QWidget>
#include <functional>

namespace kx {

inline constexpr QKeyCombination undo_keys = Qt::CTRL | Qt::Key_Z;
inline constexpr QKeyCombination redo_keys = Qt::CTRL | Qt::Key_Y;

/// Whose the keys of undo and redo are. A box for text would take them for its own text; they are the tune's,
/// but where what is typed is not the tune's.
class Undo_Keys : public QObject {
 public:
  /// What @p is_apart says of the widget that has the focus leaves the keys to that one; elsewhere they are
  /// the tune's while @p of_the_tune says so, and else go where keys go.
  Undo_Keys(std::function<bool(const QWidget& focus)> is_apart, std::function<bool()> of_the_tune,
            QObject* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::function<bool(const QWidget& focus)> is_apart_;
  std::function<bool()> of_the_tune_;
};

}  // namespace kx
