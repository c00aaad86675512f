#include "cards/card_image.h"

#include <array>

#include "boxlink/link_texts.h"
#include "cards/card_texts.h"
#include "settings/history.h"
#include "settings/message.h"
#include "settings/text_encoding.h"
#include "settings/tune_origin.h"

namespace kx {

Shown_Text txt_Chipdrive_status;
Shown_Text txt_TodosStatus;
Shown_Text kx_crw_text;

namespace {

constexpr const char* loaded_from_card = "Settings loaded from card";

void Name_Source() {
  card_data_file = first_card_data_file;
  Set_Title(loaded_from_card);
  txt_File_Description.Set(loaded_from_card);
}

}  // namespace

std::uint8_t Card_Checksum(const Byte_Image& image) {
  unsigned sum = 0;
  for (int i = map::card_sum.first; i <= map::card_sum.Last(); ++i) sum += image[i];
  return static_cast<std::uint8_t>(1U - sum);  // 255 - sum + 2, less 256 when above 255
}

void Prepare_Card_Image() {
  Stamp_Image();
  CardByte[map::card_checksum] = Card_Checksum(CardByte);
}

void Warn_Of_Slave_Mode() {
  if (Get_Field(map::slave_mode) == 1) Tell("This setting will set ChargeMarshal to slave");
}

std::string Byte_Lines(std::span<const std::uint8_t> bytes) {
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i)
    text += std::to_string(i) + ": " + std::to_string(bytes[i]) + Crlf();
  return text;
}

std::string Byte_Lines(const Byte_Image& image) {
  std::array<std::uint8_t, Byte_Image::size> bytes{};
  for (int i = 0; i < Byte_Image::size; ++i) bytes.at(static_cast<std::size_t>(i)) = image[i];
  return Byte_Lines(std::span<const std::uint8_t>(bytes));
}

void Finish_Card_Read(Shown_Text& status) {
  Tune_Origin before;
  uncoded.Set(Byte_Lines(CardByte));
  status.Set(card_words::read_ok);
  Name_Source();
  if (Dataset_Accepted("File", CardByte[map::dataset])) {
    before.Taken();
  } else {
    Undo();
    status.Set(card_words::read_cancel);
  }
  Refresh_Whole_Image();
}

}  // namespace kx
