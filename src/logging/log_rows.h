#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "logging/log_array.h"

/// From the box's rows to numbers.
///
/// A row is text of fixed width, characters counted from 1: the RPM field in 1 to 6, then from slot 2 on
/// three characters at 4 x slot, parted by blanks. A row of the present box has 20 fields and ends in a
/// blank.
namespace kx {

struct Log_Sensor;

/// True for a line that is no row: a header, or one with a remark behind its data.
[[nodiscard]] bool Is_Header_Or_Remark(std::string_view line);

/// True for a line that a reader decodes: no header or remark, and no shorter than the first row's @p length.
[[nodiscard]] bool Is_Sound_Row(std::string_view line, std::size_t length);

/// The next line of @p text, which is taken off with its LF; a CR before that does not count.
[[nodiscard]] std::string_view Next_Line(std::string_view& text);

/// The first row of @p rows that is neither empty nor a header or remark: it tells how many fields the rows
/// have and how long they are. Nothing (a null view) when there is none.
[[nodiscard]] std::string_view First_Data_Row(std::string_view rows);

/// Highest slot that the row carries: its number of blanks.
[[nodiscard]] int Field_Count_Of(std::string_view row);

/// The number of the RPM field of a row.
[[nodiscard]] double Rpm_Field_Of(std::string_view row);

/// Raw counts, 0 to 255, of the field of @p slot, from slot 2 on. Nothing when the row does not reach it or
/// there is no plain number.
[[nodiscard]] std::optional<double> Counts_Field_Of(std::string_view row, int slot);

/// Decodes rows into one array, by the sensors that the settings give to the slots when this is made; it
/// must not outlive a change of those.
class Row_Decoder {
 public:
  /// @p field_count is the highest slot to read.
  Row_Decoder(Log_Array& target, int field_count);

  /// Names of the slots that rows carry, into row 0.
  void Write_Names();

  /// Row number @p n, from 1; a number beyond 6000 is passed over. A slot that the row does not reach, or
  /// without a sensor that converts, stays as it is. Text that is no number counts as 0.
  void Decode(std::string_view row, int n);

 private:
  using Byte_Values = std::array<double, 256>;
  struct Slot {
    std::size_t at;             ///< of its first character, from 0
    double* column;             ///< row 0 of the slot
    double* raw_copy;           ///< likewise, where the number itself goes; null for most
    const double* byte_values;  ///< value of each number from 0 to 255
    const Log_Sensor* sensor;
  };

  void Add_Slot(int slot);
  [[nodiscard]] const double* Values_Of(int number, const Log_Sensor& sensor);
  static void Store(const Slot& slot, std::size_t n, std::string_view field);

  Log_Array& target_;
  int last_slot_;
  double* time_;
  double* rpm_ = nullptr;  ///< null: no sensor converts the field
  double rpm_gain_ = 0;
  double rpm_offset_ = 0;
  std::vector<Slot> slots_;
  std::map<int, Byte_Values> values_;  ///< by sensor number
};

/// Decodes one row of the live log or writes the names (row 0), with the present settings and
/// Log_Field_Count. Many rows are decoded faster by one Row_Decoder.
void Calculate_Data(std::string_view row_text, int row_no);

}  // namespace kx
