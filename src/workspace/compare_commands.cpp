#include "workspace/compare_commands.h"

#include "platform/files.h"
#include "platform/seams.h"
#include "settings/message.h"
#include "settings/notice.h"
#include "settings/refresh.h"
#include "settings/session.h"
#include "workspace/difference_list.h"

namespace kx {
namespace {

constexpr const char* tune_filter = "Box setting files  *.kxs | *.kxs| All files *.* | *.*";
constexpr const char* csv_filter = "As text file (*.csv)|*.csv|All (*.*)|*.*";
constexpr const char* name_end = "_differences";

void Choose_File() {
  const auto name = platform::seams.ask->Open_Name({"Open", tune_filter, card_data_dir, "", "kxs"});
  if (!name) return;
  const std::string reason = Load_Reference_File(*name);
  if (!reason.empty()) Tell(reason, platform::Icon::critical);
}

}  // namespace

void Compare_With(Reference_Source source) {
  source == Reference_Source::file ? Choose_File() : Choose_Reference(source);
  Show_Reference();
}

void Copy_Differences(std::span<const Difference> rows) {
  if (!rows.empty()) platform::seams.desktop->Set_Clipboard_Text(Difference_Lines(rows));
}

void Export_Differences(std::span<const Difference> rows) {
  const std::string suggested = card_data_file.substr(0, card_data_file.rfind('.')) + name_end;
  const auto name = platform::seams.ask->Save_Name({"Save As", csv_filter, card_data_dir, suggested, "csv"});
  if (!name || name->empty()) return;
  const auto result = platform::Replace_File(*name, Difference_Csv(rows));
  if (!result.Ok()) return Tell(result.reason, platform::Icon::critical);
  Show_Notice("Saved " + *name);
}

}  // namespace kx
