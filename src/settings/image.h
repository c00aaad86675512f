#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "settings/failure.h"
#include "settings/image_map.h"

namespace kx {

/// 256 bytes whose every access is bounds checked: an index outside is a programming fault and throws Failure
/// "Subscript out of range".
class Byte_Image {
 public:
  static constexpr int size = map::image_size;

  std::uint8_t& operator[](int index) { return bytes_[Checked(index)]; }
  std::uint8_t operator[](int index) const { return bytes_[Checked(index)]; }
  void Fill(int first, int last, std::uint8_t value) {
    for (int i = first; i <= last; ++i) (*this)[i] = value;
  }
  void Fill(const map::Run& run, std::uint8_t value) { Fill(run.first, run.Last(), value); }
  bool operator==(const Byte_Image&) const = default;

 private:
  static std::size_t Checked(int index) {
    if (index < 0 || index >= size) Fail_Subscript();
    return static_cast<std::size_t>(index);
  }
  std::array<std::uint8_t, size> bytes_{};
};

/// The tune. Written by every control and edit command, replaced as a whole by loads and reads.
extern Byte_Image CardByte;

/// Layout generation of the box firmware that the tune is meant for, 0 to 255. Set from the mask of the
/// selected preset; copied into the image whenever it leaves the program.
extern std::int16_t DatasetID;

/// How the slider of a byte is shown: (byte - Byte_Offset) x Byte_Factor in
/// Byte_Format. Filled by Set_Byte_Def; an empty format gives the default
/// number text.
extern std::array<std::int16_t, map::image_size> Byte_Offset;
extern std::array<double, map::image_size> Byte_Factor;
extern std::array<std::string, map::image_size> Byte_Format;

/// Break points of the MAF-simulation output. Column 0 "Value" (rows 0 to 16), column 1 "Boarder" (rows 1 to
/// 16, the midpoint to the row before), columns 2 and 3 are the MAF calculator's sums and counts.
using Maf_Table = std::array<std::array<double, 4>, 23>;
extern Maf_Table MAF_Sim_Tab;

/// Brings all of the above to what it is before the start.
void Reset_Image_State();

/// 1 if bit @p bit (0 to 7) of @p value is set, else 0.
[[nodiscard]] int Get_Byte_bit(std::uint8_t value, int bit);

/// The @p digits lowest upper-case hex digits of @p value: 1, 2, 3 or 4; 0 gives "0", anything else four.
[[nodiscard]] std::string dec2hex(int value, int digits);

/// List index that a field holds in @p image.
[[nodiscard]] int Field_Of(const Byte_Image& image, const map::Field& field);

/// List index that a field holds in the tune.
[[nodiscard]] int Get_Field(const map::Field& field);

/// Writes a list index into a field of the tune, other bits untouched, and keeps the mirror byte equal to
/// flags C. Throws Failure "Overflow" when the index does not fit the field.
void Set_Field(const map::Field& field, int index);

/// After a write of flags C by other means.
void Mirror_Flags_C();

/// Sets the image's byte and how its slider is shown.
void Set_Byte_Def(int byte_index, std::uint8_t value, std::int16_t offset, double factor,
                  std::string_view format);

/// Resets the tune for DatasetID. @p start_mode is the build's: 0 gives 2 and 2 ignition pulses (master,
/// slave), 1 gives 1 and 20, others leave both at 0.
void Init_Default_Settings(int start_mode);

/// Fills the break points of the MAF-simulation output.
void Init_MAF_Sim();

/// @p image as it leaves the program: reserved bytes 0, dataset byte = DatasetID.
[[nodiscard]] Byte_Image Stamped(Byte_Image image);

/// Marks the tune as leaving the program.
void Stamp_Image();

}  // namespace kx
