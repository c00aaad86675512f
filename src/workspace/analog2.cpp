#include "workspace/analog2.h"

#include "settings/image.h"
#include "settings/message.h"
#include "settings/numbers.h"
#include "settings/refresh.h"
#include "workspace/curve_generator.h"
#include "workspace/table_meaning.h"

namespace kx {

Shown_Text an_gain;
Shown_Text an_offset;

namespace {

constexpr double most_volts = 5;
constexpr double most_gain = 255;
constexpr double most_offset = 2.49;  ///< V either way in the byte of the offset

bool Is_Limit(int mode) { return mode == an2_mode::limit || mode == an2_mode::limit_trim; }

void Compute_Curve() {
  const double gain = Required_Number(an_gain.Text());
  const double offset = Required_Number(an_offset.Text()) * counts_a_volt;
  for (int entry = 1; entry <= An2Points(); ++entry) {
    CardByte[map::analog2.first + entry - 1] = To_Byte(Generator_Counts(entry, gain, offset));
  }
}

void Store_Gain() {
  if (Required_Number(an_gain.Text()) > most_gain) an_gain.Set("255");
  if (Required_Number(an_gain.Text()) < 0) {
    Tell("Negative numbers in Gain not alowed in MODE 1");
    an_gain.Set("0");
  }
  CardByte[map::an_gain] = To_Byte(Required_Number(an_gain.Text()));
}

void Store_Offset() {
  const double offset = Required_Number(an_offset.Text());
  if (offset > most_offset || offset < -most_offset) {
    Tell("In MODE 1, Offset must be between -2,5 to +2,49 Volt");
    an_offset.Set("0");
  }
  CardByte[map::an_offset] = To_Byte(Required_Number(an_offset.Text()) * counts_a_volt + signed_zero);
}

}  // namespace

Analog2_Frames Analog2_Frames_Shown() {
  const int mode = Get_Field(map::an2_mode);
  const bool activated = mode == an2_mode::boost_activated;
  return {Is_Limit(mode), mode == an2_mode::curve, activated, !activated};
}

double Generator_Offset(const Byte_Image& image) { return image[map::an_offset] - signed_zero; }

std::string Generator_Gain_Text(const Byte_Image& image) { return Number_Text(image[map::an_gain]); }

std::string Generator_Offset_Text(const Byte_Image& image) {
  return Format(Generator_Offset(image) / counts_a_volt, "0.00");
}

void Fill_Curve_Boxes() {
  an_gain.Set(Generator_Gain_Text(CardByte));
  an_offset.Set(Generator_Offset_Text(CardByte));
}

void Command12_Click() {
  if (an_gain.Text().empty()) {
    return Tell("Please specify base percentage and offset for preset calculation");
  }
  if (an_offset.Text().empty()) an_offset.Set("0");
  if (Required_Number(an_offset.Text()) > most_volts) an_offset.Set("5");
  const int mode = Get_Field(map::an2_mode);
  if (mode == an2_mode::curve) Compute_Curve();
  if (Is_Limit(mode)) {
    Store_Gain();
    Store_Offset();
  }
  Update_All();
}

void Reset_Analog2_State() {
  an_gain.Set("");
  an_offset.Set("");
}

}  // namespace kx
