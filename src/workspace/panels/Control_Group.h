#pragma once

#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <functional>
#include <map>
#include <string_view>
#include <vector>

#include "workspace/choice_controls.h"
#include "workspace/scalar_controls.h"

namespace kx {

/// Which widgets show which row of the control tables. One for all forms; the forms fill it while they are
/// made, and the core's refreshes go through it.
class Control_Index {
 public:
  void Add(const Scalar_Row& row, std::function<void()> show);
  void Add(const Choice_Row& row, std::function<void()> show);

  /// A control without a row in the tables, shown with all the others.
  void Add_Other(std::function<void()> show) { others_.push_back(std::move(show)); }

  /// Shows one control again from the tune; nothing for one that no form has.
  void Show(const Scalar_Row& row) const;
  void Show(const Choice_Row& row) const;

  /// Shows all controls, in the order of their tables.
  void Show_All() const;

  /// The read-only text control of that name, made at its first use. Several sliders may write one text.
  QWidget* Text_Control(std::string_view name);

 private:
  std::map<const void*, std::function<void()>> shows_;
  std::vector<std::function<void()>> others_;
  std::map<std::string_view, QWidget*> texts_;
};

/// Gives @p widgets the tip, and where the control of that name differs from the reference the words for it
/// in front, with a mark beside @p anchor.
void Show_Tips(std::string_view control, QWidget& anchor, const QString& tip,
               std::initializer_list<QWidget*> widgets);

/// A frame of rows: sliders with their texts, lists, check boxes and options, straight from the control
/// tables.
class Control_Group : public QGroupBox {
  Q_OBJECT

 public:
  Control_Group(const QString& name, const QString& title, Control_Index& index, QWidget* parent = nullptr);

  /// Adds a slider with its label and the first @p texts of its texts (all by default).
  void Scalar(std::string_view name, std::size_t texts = 3);

  /// Adds a list with its label, a check box, or option buttons one below the other.
  void Choice(std::string_view name);

  /// Adds any widget over the whole width.
  void Wide(QWidget* widget);

  /// Adds a wrapped text over the whole width.
  void Help(const QString& text);

 private:
  QWidget* Make_List(const Choice_Row& row, QLabel* label);
  QWidget* Make_Check(const Choice_Row& row);
  QWidget* Make_Options(const Choice_Row& row);

  Control_Index& index_;
  QGridLayout* layout_;
};

}  // namespace kx
