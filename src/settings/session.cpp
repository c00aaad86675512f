#include "settings/session.h"

namespace kx {
namespace {

constexpr const char* first_interface = "SC_Reader";

}  // namespace

std::string start_dir;
std::string card_data_file = first_card_data_file;
std::string card_data_dir;
Shown_Text txt_File_Description;
std::string Default_Interface = first_interface;
std::int16_t Com_Port_Number = first_com_port;

std::string With_Separator(std::string_view directory) {
  std::string result(directory);
  if (!result.empty() && result.back() != '/') result += '/';
  return result;
}

void Reset_Session_State() {
  start_dir.clear();
  card_data_file = first_card_data_file;
  card_data_dir.clear();
  txt_File_Description = {};
  Default_Interface = first_interface;
  Com_Port_Number = first_com_port;
}

}  // namespace kx
