#include "logging/log_rows.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "logging/log_settings.h"
#include "logging/log_signals.h"
#include "logging/log_state.h"
#include "sensors/log_sensors.h"
#include "settings/numbers.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

constexpr std::size_t rpm_length = 6;
constexpr std::size_t field_length = 3;
constexpr std::string_view overflow_text = "A.0000";
constexpr double overflow_value = 10;
constexpr int no_number = 1 << 12;
constexpr int most_counts_of_field = 255;

bool Is_Digit(char c) { return c >= '0' && c <= '9'; }

/// The part of @p row from @p at on, as far as it is there.
std::string_view Part(std::string_view row, std::size_t at, std::size_t length) {
  return row.substr(std::min(at, row.size()), length);
}

/// The number of a field of digits with blanks before them only; no_number or more for any other.
int Plain_Number(const char* field) {
  const auto digit = [](char c) { return Is_Digit(c) ? c - '0' : no_number; };
  const int last = digit(field[2]);
  if (field[1] == ' ') return field[0] == ' ' ? last : no_number;
  return (field[0] == ' ' ? 0 : digit(field[0]) * 100) + digit(field[1]) * 10 + last;
}

double Rpm_Number(std::string_view field) {
  std::string text(field);
  std::replace(text.begin(), text.end(), ',', '.');
  return text == overflow_text ? overflow_value : Val_Any(text);
}

/// Position of a slot's first character.
std::size_t Row_Place(int slot) { return static_cast<std::size_t>(4 * slot - 1); }

bool Converts(const Log_Sensor& sensor) { return Log_Sensor_Value(sensor, 0).has_value(); }

void Put(double& cell, double value) {
  if (std::isfinite(value)) cell = value;
}

}  // namespace

bool Is_Header_Or_Remark(std::string_view line) {
  return line.find('l') != std::string_view::npos || line.find("RPM") != std::string_view::npos;
}

bool Is_Sound_Row(std::string_view line, std::size_t length) {
  return line.size() >= length && !Is_Header_Or_Remark(line);
}

std::string_view Next_Line(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

std::string_view First_Data_Row(std::string_view rows) {
  while (!rows.empty()) {
    const std::string_view line = Next_Line(rows);
    if (!line.empty() && !Is_Header_Or_Remark(line)) return line;
  }
  return {};
}

int Field_Count_Of(std::string_view row) {
  return static_cast<int>(std::min<std::ptrdiff_t>(std::count(row.begin(), row.end(), ' '), INT16_MAX));
}

/// Four decimals over 10000 is the same double as the text's.
double Rpm_Field_Of(std::string_view row) {
  if (row.size() >= rpm_length && (row[1] == '.' || row[1] == ',')) {
    const std::array<char, 5> digits{row[0], row[2], row[3], row[4], row[5]};
    if (std::all_of(digits.begin(), digits.end(), Is_Digit)) {
      int number = 0;
      for (const char c : digits) number = number * 10 + (c - '0');
      return number / 10000.0;
    }
  }
  return Rpm_Number(Part(row, 0, rpm_length));
}

std::optional<double> Counts_Field_Of(std::string_view row, int slot) {
  if (slot < 2 || Row_Place(slot) + field_length > row.size()) return {};
  const int number = Plain_Number(row.data() + Row_Place(slot));
  return number <= most_counts_of_field ? std::optional<double>(number) : std::nullopt;
}

Row_Decoder::Row_Decoder(Log_Array& target, int field_count)
    : target_(target), last_slot_(std::min(field_count, log_slot_count)), time_(target.Column(0).data()) {
  const Log_Sensor* rpm_sensor = Find_Log_Sensor(Signal_Row(0).sensor);
  if (rpm_sensor != nullptr && Rpm_Sensor_Value(*rpm_sensor, 0)) {
    rpm_ = target.Column(1).data();
    rpm_gain_ = rpm_sensor->Gain();
    rpm_offset_ = rpm_sensor->Offset();
  }
  for (int slot = 2; slot <= last_slot_; ++slot) Add_Slot(slot);
}

void Row_Decoder::Add_Slot(int slot) {
  const int number = Signal_Row(slot - 1).sensor;
  const Log_Sensor* sensor = Find_Log_Sensor(number);
  if (sensor == nullptr || !Converts(*sensor)) return;
  const int copy_slot = Raw_Copy_Slot(slot);
  double* copy = copy_slot == no_slot ? nullptr : target_.Column(copy_slot).data();
  slots_.push_back({Row_Place(slot), target_.Column(slot).data(), copy, Values_Of(number, *sensor), sensor});
}

const double* Row_Decoder::Values_Of(int number, const Log_Sensor& sensor) {
  const auto [entry, is_new] = values_.try_emplace(number);
  if (is_new) {
    for (std::size_t raw = 0; raw < entry->second.size(); ++raw) {
      entry->second[raw] = Log_Sensor_Value(sensor, static_cast<double>(raw)).value_or(Log_Array::empty);
    }
  }
  return entry->second.data();
}

void Row_Decoder::Write_Names() {
  for (int slot = 1; slot <= last_slot_; ++slot) {
    target_.Set_Name(slot, From_Windows_1252(Signal_Sensor_Name(slot - 1)));
  }
}

void Row_Decoder::Decode(std::string_view row, int n) {
  if (n < 1 || n > log_capacity) return;
  const auto at = static_cast<std::size_t>(n);
  time_[at] = (n - 1) * log_row_seconds;
  if (rpm_ != nullptr) Put(rpm_[at], rpm_offset_ + rpm_gain_ * Rpm_Field_Of(row));
  for (const Slot& slot : slots_) {
    const int number = slot.at + field_length <= row.size() ? Plain_Number(row.data() + slot.at) : no_number;
    if (slot.at >= row.size()) break;
    if (number < 256) {
      Put(slot.column[at], slot.byte_values[number]);
      if (slot.raw_copy != nullptr) slot.raw_copy[at] = number;
    } else {
      Store(slot, at, Part(row, slot.at, field_length));
    }
  }
}

void Row_Decoder::Store(const Slot& slot, std::size_t n, std::string_view field) {
  const double number = Val_Any(field);
  Put(slot.column[n], Log_Sensor_Value(*slot.sensor, number).value_or(Log_Array::empty));
  if (slot.raw_copy != nullptr) slot.raw_copy[n] = number;
}

void Calculate_Data(std::string_view row_text, int row_no) {
  Row_Decoder decoder(LogArray, Log_Field_Count);
  if (row_no == 0) return decoder.Write_Names();
  decoder.Decode(row_text, row_no);
}

}  // namespace kx
