#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "settings/image.h"

namespace kx {

enum class Choice_Kind {
  list,    ///< a drop-down list
  check,   ///< a check box: index 0 or 1
  options  ///< option buttons, one control an index
};

struct Choice_Row;

/// Where a choice departs from "the list index is the field's number".
struct Choice_Rules {
  int (*read)(const Choice_Row& row, const Byte_Image& image);  ///< index that the image holds
  void (*write)(const Choice_Row& row, int index);              ///< stores the index into the tune
  bool (*accepts)(int index);                                   ///< tells the user why when it is false
};

/// One list, check box or group of option buttons that stands for bits of the tune. A further control of this
/// kind is a further row.
struct Choice_Row {
  std::array<std::string_view, 3> controls;  ///< name of the list or check box; names of the options
  Choice_Kind kind;
  std::string_view label;                   ///< of the list or group; caption of a check box
  std::span<const std::string_view> items;  ///< texts of the list; captions of the options
  map::Field field;
  const Choice_Rules* rules;
  void (*afterwards)() = nullptr;  ///< runs once the field is stored
  bool captures = false;           ///< the choice can be undone
  std::string_view tip = {};       ///< tool tip
  map::Field more_bits = {};       ///< what the index is stored in besides field; no bits as a rule

  [[nodiscard]] constexpr std::string_view Name() const { return controls[0]; }
};

/// All such controls of the program.
[[nodiscard]] std::span<const Choice_Row> Choice_Rows();

/// Name of the label beside a list or slider: the numbered labels whose captions the report quotes; empty for
/// the others.
[[nodiscard]] std::string Label_Name(std::string_view control);

/// The row of a control, an option button of a group included. Throws Failure "Subscript out of range" when
/// there is none of that name.
[[nodiscard]] const Choice_Row& Choice_Row_Of(std::string_view name);

/// Number of indexes of a row.
[[nodiscard]] int Choice_Count(const Choice_Row& row);

/// Index that the control shows for a tune: list index, tick as 0 or 1, or option.
[[nodiscard]] int Choice_Index(const Choice_Row& row, const Byte_Image& image = CardByte);

/// Text of the list or option that a tune selects.
[[nodiscard]] std::string_view Choice_Text(const Choice_Row& row, const Byte_Image& image = CardByte);

/// The user has chosen @p index: refusals, history, the field, what follows, and the controls of the same
/// byte shown again from the tune, so that a refused choice goes back. While Undo_Busy is set, and where the
/// index was chosen already, they are only shown.
void Choice_Changed(const Choice_Row& row, int index);

}  // namespace kx
