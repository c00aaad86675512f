#pragma once

#include <QDir>
#include <QWidget>
#include <functional>

namespace kx::bench {

/// The part of the tour that sets two tunes side by side. Throws std::runtime_error with the reason when
/// something does not hold.
class Compare_Tour {
 public:
  /// Pictures and files go to @p out; @p answer_with tells what the next file dialog gives.
  Compare_Tour(const QDir& out, std::function<void(const QString&)> answer_with);

  /// Compares the tune with another one from a file, with tables, controls and flags that differ, takes one
  /// table across and back, and exports the list. Leaves pictures of the marks and of the list; the tune is
  /// as before.
  void Compare_And_Take(QWidget& main_form);

 private:
  void Write_Other_Tune() const;
  void Take_A_Table_And_Undo(const QWidget& main_form);
  void Export_List();
  void Take_Picture(QWidget& form, const char* name) const;

  QDir out_;
  std::function<void(const QString&)> answer_with_;
};

}  // namespace kx::bench
