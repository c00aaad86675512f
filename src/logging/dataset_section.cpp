#include "logging/dataset_section.h"

#include "logging/log_state.h"
#include "settings/image.h"
#include "settings/text_encoding.h"

namespace kx {

void Update_Log_Dataset() {
  Log_Dataset_Text = "[log_dataset]" + Crlf();
  for (int i = 0; i < Byte_Image::size; ++i) Log_Dataset_Text += std::to_string(CardByte[i]) + Crlf();
  Log_Dataset_Text += "[end log_dataset]";
}

}  // namespace kx
