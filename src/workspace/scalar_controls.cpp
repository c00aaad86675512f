#include "workspace/scalar_controls.h"

#include <algorithm>

#include "settings/history.h"
#include "settings/image.h"
#include "settings/numbers.h"
#include "settings/refresh.h"
#include "workspace/compare.h"
#include "workspace/view_hooks.h"

namespace kx {
namespace {

constexpr double most_indicator_rpm = 10000;
constexpr int gain_counts_a_step = 16;  ///< gain counts that make one step of 15 fuel counts
constexpr int fuel_counts_a_step = 15;
constexpr double sample_time = 0.05;  ///< s between two samples of the box

/// Of the slider whose handle is held down: none, held and not moved, held and moved.
enum class Gesture { none, begun, captured } gesture = Gesture::none;

void Capture_Once_A_Gesture(const Scalar_Row& row) {
  if (gesture == Gesture::captured) return;
  if (gesture == Gesture::begun) gesture = Gesture::captured;
  for (int i = 0; i < row.captures; ++i) Capture_History();
}

}  // namespace

const Scalar_Row& Scalar_Row_Of(std::string_view name) {
  const auto rows = Scalar_Rows();
  const auto found = std::ranges::find(rows, name, &Scalar_Row::name);
  if (found == rows.end()) Fail_Subscript();
  return *found;
}

std::span<const Scalar_Text_Row> Texts_Of(const Scalar_Row& row) {
  const auto* const unused = std::ranges::find(row.texts, nullptr, &Scalar_Text_Row::text);
  return {row.texts.begin(), unused};
}

int Scalar_Position(const Scalar_Row& row, const Byte_Image& image) {
  return std::min(static_cast<int>(Round_Whole(image[row.byte] / row.counts_a_step)), row.max);
}

std::string Scalar_Text(const Scalar_Row& row, const Scalar_Text_Row& text, int position,
                        const Byte_Image& image) {
  return text.text(row.byte, position, image);
}

std::string Scalar_Summary(const Scalar_Row& row) {
  const std::string text = Scalar_Text(row, row.texts[0], Scalar_Position(row));
  return row.unit.empty() ? text : text + " " + std::string(row.unit);
}

void Scalar_Changed(const Scalar_Row& row, int position) {
  if (!Undo_Busy && position >= 0 && position <= row.max) {
    Capture_Once_A_Gesture(row);
    CardByte[row.byte] = To_Byte(position * row.counts_a_step);
    if (row.afterwards) row.afterwards();
    Follow_Differences();
  }
  if (view_hooks.show_scalar) view_hooks.show_scalar(row);
}

void Scalar_Pressed() { gesture = Gesture::begun; }

void Scalar_Released() { gesture = Gesture::none; }

void Scroll_Refresh(int index) {
  const Scalar_Row& row = Scalar_Row_Of("scroll(" + std::to_string(index) + ")");
  if (view_hooks.show_scalar) view_hooks.show_scalar(row);
}

void Scroll_Change(int index, int position) {
  Scalar_Changed(Scalar_Row_Of("scroll(" + std::to_string(index) + ")"), position);
}

double Max_Ae_Time(int gain, int sustain) {
  int samples = 1;
  for (int fuel = gain / gain_counts_a_step * fuel_counts_a_step * sustain / 256; fuel > 0; ++samples) {
    fuel = fuel * sustain / 256;
  }
  return sample_time * samples;
}

double Calc_max_AE_time() { return Max_Ae_Time(CardByte[map::ae_gain], CardByte[map::ae_sustain]); }

void gear_shift_Entered(std::string_view text) {
  const auto number = Whole_Number_Text(text);
  if (!number) Fail_Type_Mismatch();
  const double position = Round_Whole(std::min(*number, most_indicator_rpm) / rpm_a_count);
  if (position < 0) Fail_Overflow();
  Scalar_Changed(Scalar_Row_Of("HScroll3"), static_cast<int>(position));
}

}  // namespace kx
