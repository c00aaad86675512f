#include "settings/image.h"

#include "settings/numbers.h"

namespace kx {

Byte_Image CardByte;
std::int16_t DatasetID = 0;
std::array<std::int16_t, map::image_size> Byte_Offset{};
std::array<double, map::image_size> Byte_Factor{};
std::array<std::string, map::image_size> Byte_Format;
Maf_Table MAF_Sim_Tab{};

namespace {

struct Byte_Def {
  int byte;
  std::uint8_t value;
  std::int16_t offset;
  double factor;
  std::string_view format;
};

constexpr double correction_step = 0.19608;    // % fuel a count
constexpr double temperature_step = 0.019608;  // V a count; shown through the sensor where there is one
constexpr double injector_step = 0.0256;       // ms a count

constexpr std::array byte_defs{
    Byte_Def{map::low_air_correction, 128, 128, correction_step, "0.0"},
    Byte_Def{map::low_air_limit, 255, 0, temperature_step, "0.0"},
    Byte_Def{map::high_air_correction, 128, 128, correction_step, "0.0"},
    Byte_Def{map::high_air_limit, 0, 0, temperature_step, "0.0"},
    Byte_Def{map::injector_offset_master_e, 128, 128, injector_step, "0.00"},
    Byte_Def{map::injector_offset_slave_a, 128, 128, injector_step, "0.00"},
    Byte_Def{map::injector_offset_slave_a + 1, 128, 128, injector_step, "0.00"},
    Byte_Def{map::injector_offset_slave_a + 2, 128, 128, injector_step, "0.00"},
    Byte_Def{map::injector_offset_slave_a + 3, 128, 128, injector_step, "0.00"},
    Byte_Def{map::injector_offset_slave_e, 128, 128, injector_step, "0.00"},
    Byte_Def{map::injector_offset_master_a, 128, 128, injector_step, "0.00"},
    Byte_Def{map::injector_offset_master_a + 1, 128, 128, injector_step, "0.00"},
    Byte_Def{map::injector_offset_master_a + 2, 128, 128, injector_step, "0.00"},
    Byte_Def{map::injector_offset_master_d, 128, 128, injector_step, "0.00"},
    Byte_Def{map::boost_init, 128, 0, 1, "0"},
    Byte_Def{map::boost_p, 1, 0, 1, "0"},
    Byte_Def{map::boost_i, 1, 0, 1, "0"},
    Byte_Def{map::boost_d, 1, 0, 1, "0"},
};

struct Byte_Default {
  int byte;
  std::uint8_t value;
};

/// Single bytes that reset to something other than 0 and have no slider of the generic kind.
constexpr std::array byte_defaults{
    Byte_Default{map::sensor_selects, 192},
    Byte_Default{map::in_boost_level, 255},
    Byte_Default{map::an_gain, 100},
    Byte_Default{map::an_offset, 128},
    Byte_Default{map::rpm_limit, 160},
    Byte_Default{map::rpm_open_injectors, 255},
    Byte_Default{map::volt_open_injectors, 255},
    Byte_Default{map::boost_limit, 255},
    Byte_Default{map::ae_threshold, 255},
    Byte_Default{map::rpm_indicator, 64},
    Byte_Default{map::injector_calibration, 128},
    Byte_Default{map::ignition_flags, 5},
};

constexpr std::array<double, 17> maf_break_points{0,    384,  512,   768,   1024,  1536,  2048,  3072, 4096,
                                                  6144, 8192, 12288, 16384, 24576, 32768, 49152, 65536};

void Reset_Tables() {
  CardByte.Fill(map::ignition_rpm, 192);
  CardByte.Fill(map::analog2, 255);
  CardByte.Fill(map::analog1, 255);
  CardByte.Fill(map::pwm_load, 128);
  CardByte.Fill(map::pwm_rpm, 128);
  // The first entry of both fuel tables differs from its neighbours on purpose.
  CardByte.Fill(map::fuel_load.first + 1, map::fuel_load.Last(), 128);
  CardByte[map::fuel_rpm.first] = 128;
  CardByte.Fill(map::fuel_rpm.first + 1, map::fuel_rpm.Last(), 192);
}

void Reset_Pulse_Counts(int start_mode) {
  if (start_mode != 0 && start_mode != 1) return;
  CardByte[map::rpm_calc] = start_mode == 0 ? 2 : 1;
  CardByte[map::rpm_calc_slave] = start_mode == 0 ? 2 : 20;
}

}  // namespace

void Reset_Image_State() {
  CardByte = {};
  DatasetID = 0;
  Byte_Offset = {};
  Byte_Factor = {};
  Byte_Format = {};
  MAF_Sim_Tab = {};
}

int Get_Byte_bit(std::uint8_t value, int bit) {
  if (bit < 0 || bit > 7) Fail_Subscript();
  return (value >> bit) & 1;
}

std::string dec2hex(int value, int digits) {
  if (digits == 0) return "0";
  const int count = digits >= 1 && digits <= 3 ? digits : 4;
  std::string text;
  for (int nibble = count - 1; nibble >= 0; --nibble)
    text += "0123456789ABCDEF"[(value >> (4 * nibble)) & 15];
  return text;
}

int Field_Of(const Byte_Image& image, const map::Field& field) {
  return (image[field.byte] & field.mask) / field.Lowest();
}

int Get_Field(const map::Field& field) { return Field_Of(CardByte, field); }

void Set_Field(const map::Field& field, int index) {
  if (index < 0 || index > field.mask / field.Lowest()) Fail_Overflow();
  CardByte[field.byte] = To_Byte((CardByte[field.byte] & ~field.mask & 255) + index * field.Lowest());
  if (field.byte == map::flags_c) Mirror_Flags_C();
}

void Mirror_Flags_C() { CardByte[map::mirror] = CardByte[map::flags_c]; }

void Set_Byte_Def(int byte_index, std::uint8_t value, std::int16_t offset, double factor,
                  std::string_view format) {
  CardByte[byte_index] = value;
  const auto index = static_cast<std::size_t>(byte_index);
  Byte_Offset[index] = offset;
  Byte_Factor[index] = factor;
  Byte_Format[index] = format;
}

void Init_Default_Settings(int start_mode) {
  CardByte = {};
  Reset_Tables();
  Reset_Pulse_Counts(start_mode);
  for (const Byte_Default& row : byte_defaults) CardByte[row.byte] = row.value;
  for (const Byte_Def& row : byte_defs) {
    Set_Byte_Def(row.byte, row.value, row.offset, row.factor, row.format);
  }
  CardByte[map::dataset] = static_cast<std::uint8_t>(DatasetID);
}

void Init_MAF_Sim() {
  MAF_Sim_Tab = {};
  for (std::size_t i = 0; i < maf_break_points.size(); ++i) {
    MAF_Sim_Tab[i][0] = maf_break_points[i];
    if (i > 0)
      MAF_Sim_Tab[i][1] = maf_break_points[i - 1] + (maf_break_points[i] - maf_break_points[i - 1]) / 2;
  }
}

Byte_Image Stamped(Byte_Image image) {
  image[map::reserved_low] = 0;
  image[map::reserved_high] = 0;
  image[map::dataset] = static_cast<std::uint8_t>(DatasetID);
  return image;
}

void Stamp_Image() { CardByte = Stamped(CardByte); }

}  // namespace kx
