#include "workspace/log_settings_export.h"

#include <algorithm>
#include <string>

#include "logging/log_dataset.h"
#include "logging/log_state.h"
#include "settings/earlier_tunes.h"
#include "settings/history.h"
#include "settings/image.h"
#include "settings/message.h"
#include "settings/presets.h"
#include "settings/reference_tune.h"
#include "settings/refresh.h"
#include "settings/text_encoding.h"

namespace kx {
namespace {

/// Name of the first preset of the dataset; empty when there is none.
std::string Dataset_Name(int dataset) {
  const auto preset = std::ranges::find_if(
      Preset_List, [dataset](const Preset& one) { return Mask_Dataset(one.mask) == dataset; });
  return preset == Preset_List.end() ? std::string() : preset->name;
}

bool Accept_Dataset(int found) {
  if (found == DatasetID) return true;
  return Confirm("File has different dataset ID (" + std::to_string(found) +
                 ") than currently selected in preferences (" + std::to_string(DatasetID) +
                 "), load anyway?" + Crlf() + Dataset_Name(found) + Crlf() + "(Dataset ID is not changed.)");
}

}  // namespace

void cmd_Export_Log_kxs_settings_Click() {
  const auto image = Log_Dataset_Image(Log_Dataset_Text);
  if (!image) return Tell("This log file does not include any valid box settings");
  if (!Accept_Dataset((*image)[map::dataset])) return;
  Capture_History();
  Replace_Tune(*image, "Box settings of the log " + Log_File_Name);
  Note_Opened_Tune();
  Refresh_Whole_Image();
}

}  // namespace kx
