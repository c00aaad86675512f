#include "settings/tune_origin.h"

#include <exception>

#include "settings/image.h"
#include "settings/message.h"
#include "settings/text_encoding.h"

namespace kx {

std::string tune_source;

Tune_Origin::~Tune_Origin() {
  if (taken_) return;
  try {
    Restore();
  } catch (const std::exception&) {
    // What ended the load is told already; a second failure must not end the program.
  }
}

void Tune_Origin::Restore() const {
  card_data_file = file_;
  card_data_dir = directory_;
  tune_source = source_;
  txt_File_Description.Set(description_);
  Set_Title(title_);
}

bool Dataset_Accepted(std::string_view source, int found) {
  if (found == DatasetID) return true;
  return Confirm(std::string(source) + " has different dataset ID (" + std::to_string(found) +
                 ") than currently selected in preferences (" + std::to_string(DatasetID) +
                 "), load anyway?" + Crlf() + "(Dataset ID is not changed.)");
}

}  // namespace kx
