#pragma once

#include <cstdint>
#include <string>

#include "workspace/table_meaning.h"

namespace kx {

/// Key codes that the line editor of a cell knows. Digits are 48 to 57, or 96 to 105 on the keypad.
namespace key {
constexpr int backspace = 8;
constexpr int enter = 13;
constexpr int delete_key = 46;
constexpr int letter_c = 67;
constexpr int keypad_point = 110;
constexpr int comma = 188;
constexpr int minus = 189;
constexpr int full_stop = 190;
constexpr int ctrl_state = 2;  ///< shift state with Ctrl held alone
}  // namespace key

/// True when the next digit typed replaces the cell's text. Set on entering a cell.
extern bool Fresh_Cell;

/// Text of a cell after a key; a key that edits nothing gives the same text.
[[nodiscard]] std::string KeyEdit(int key_code, const std::string& text);

/// A number typed into a cell: its text, which is the limit's when it breaks one, and its byte.
struct Typed_Cell {
  std::string text;
  std::uint8_t byte;
};

/// What typing @p text gives under @p meaning. Throws Failure "Overflow" when the number is no byte (volts
/// below 0).
[[nodiscard]] Typed_Cell Typed_Into(const Table_Meaning& meaning, const std::string& text);

/// Moves the cursor of @p grid one row down; false in its last row. The cell is fresh.
bool Go_Down(Grid& grid);

/// The cursor of a table's grid was moved by the user: the cell is fresh and its chart follows.
void Grid_Enter_Cell(Table table, int row, int row_sel);

/// A key pressed in a grid. Enter goes one row down; any other key edits the text of the current cell, and a
/// changed text is limited and stored at once. The cell stays as typed until the next Update_All. Throws
/// Failure "Overflow" when the number is no byte (volts below 0). Ctrl+C copies the bytes of the fuel load
/// table, on the other tables nothing; it edits nothing.
void Grid_Key_Down(Table table, int key_code, int shift_state);

}  // namespace kx
