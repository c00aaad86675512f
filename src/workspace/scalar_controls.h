#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "settings/image.h"

namespace kx {

constexpr double rpm_a_count = 62.5;  ///< of the RPM limits

/// One read-only text beside a slider.
struct Scalar_Text_Row {
  std::string_view control;  ///< name of the text control; empty in an unused row
  std::string (*text)(int byte, int position, const Byte_Image& image) = nullptr;  ///< flags from image
};

/// One slider: everything that there is to know about it. A further control of this kind is a further row.
struct Scalar_Row {
  std::string_view name;  ///< of the slider, "scroll(7)" for an element of the array
  int byte;
  int large_step;
  std::string_view label;
  std::array<Scalar_Text_Row, 3> texts;
  std::string_view unit = {};      ///< of the first text, where neither the text nor the label names it
  std::string_view tip = {};       ///< tool tip
  int max = 255;                   ///< the position runs from 0
  bool reversed = false;           ///< the largest position stands at the left
  int captures = 0;                ///< history slots that one move fills with the state before it
  double counts_a_step = 1;        ///< byte = position x this, nearest, ties to even
  void (*afterwards)() = nullptr;  ///< runs once the byte is stored
};

/// All sliders of the program, in the order in which Update_All fills them.
[[nodiscard]] std::span<const Scalar_Row> Scalar_Rows();

/// The row of a slider. Throws Failure "Subscript out of range" when there is none of that name.
[[nodiscard]] const Scalar_Row& Scalar_Row_Of(std::string_view name);

/// The texts of a row that are in use.
[[nodiscard]] std::span<const Scalar_Text_Row> Texts_Of(const Scalar_Row& row);

/// Position that the slider has for a tune's byte.
[[nodiscard]] int Scalar_Position(const Scalar_Row& row, const Byte_Image& image = CardByte);

/// What a text control beside the slider says with the slider at @p position, under the flags of @p image.
[[nodiscard]] std::string Scalar_Text(const Scalar_Row& row, const Scalar_Text_Row& text, int position,
                                      const Byte_Image& image = CardByte);

/// The first text for the tune's byte, as the setting summary prints it: with its unit.
[[nodiscard]] std::string Scalar_Summary(const Scalar_Row& row);

/// The slider was moved to @p position: history, byte, what follows, and the control shown again. While
/// Undo_Busy is set the control is only shown.
void Scalar_Changed(const Scalar_Row& row, int position);

/// The user presses and releases the handle of a slider. What moves in between is one gesture and fills the
/// history slots of the row once; keys and page steps come without a press and count one by one.
void Scalar_Pressed();
void Scalar_Released();

/// Shows element @p index of the slider array with its text, from the tune.
void Scroll_Refresh(int index);

/// Element @p index of the slider array was moved.
void Scroll_Change(int index, int position);

/// Longest time in s that acceleration enrichment lasts after one event, for two slider positions.
[[nodiscard]] double Max_Ae_Time(int gain, int sustain);

/// The same for the tune's gain and sustain.
[[nodiscard]] double Calc_max_AE_time();

/// Characters that gear_shift takes.
constexpr int gear_shift_length = 5;

/// Enter in gear_shift: at most 10000 RPM is taken and the RPM indicator's slider moves there. Throws Failure
/// "Type mismatch" when @p text is no number and "Overflow" when it lies below the slider's range.
void gear_shift_Entered(std::string_view text);

}  // namespace kx
