#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What the bytes of the tune mean in a dataset, from DatasetID<id>.txt in start_dir: a description line a
/// byte in index order, each followed by "bit n ..." lines for single bits. The file is optional.
namespace kx {

struct Bit_Note {
  int bit;           ///< digit of the line, 0 to 9; a byte has bits 0 to 7 only
  std::string text;  ///< the whole line
};

struct Byte_Note {
  std::string text;
  std::vector<Bit_Note> bits;
};

/// Notes of the first 256 descriptions in the bytes of such a file; fewer when it is shorter. Bit lines
/// before any description are left out.
[[nodiscard]] std::vector<Byte_Note> Parse_Byte_Notes(std::string_view bytes);

/// Notes of the present DatasetID; empty without a file. Read once for each dataset.
[[nodiscard]] const std::vector<Byte_Note>& Byte_Notes();

/// Description of a byte in the present dataset, or its number when there is none.
[[nodiscard]] std::string Byte_Name(int byte_index);

/// Forgets the file that was read.
void Reset_Byte_Notes_State();

}  // namespace kx
