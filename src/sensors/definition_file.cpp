#include "sensors/definition_file.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "sensors/load_axes.h"
#include "sensors/sensor_store.h"
#include "settings/brand.h"
#include "settings/ini_file_adm.h"
#include "settings/notice.h"
#include "settings/numbers.h"
#include "settings/presets.h"
#include "settings/session.h"

namespace kx {
namespace {

/// What the lines of the file that cannot be used were told of with.
std::string told_faults;

/// The whole number at the head of a key's value when it is one from @p least to @p greatest.
std::optional<int> Number_Key(const std::string& key, int least, int greatest) {
  const auto text = Read_Key(key);
  const std::size_t first = text ? text->find_first_not_of(' ') : std::string::npos;
  if (first == std::string::npos || (*text)[first] < '0' || (*text)[first] > '9') return {};
  const double whole = Round_Whole(Val_Any(*text));
  if (!(whole >= least && whole <= greatest)) return {};
  return static_cast<int>(whole);
}

int Last_Index(std::size_t count) { return static_cast<int>(count) - 1; }

void Read_Port() {
  constexpr int greatest = std::numeric_limits<std::int16_t>::max();
  Com_Port_Number = static_cast<std::int16_t>(Number_Key("comport1", 1, greatest).value_or(first_com_port));
}

std::vector<Ini_Fault> Read_Sensors() {
  std::vector<Ini_Fault> faults;
  Clear_Sensors();
  for (const Ini_Value& line : Read_Keys("Sens_Def")) {
    if (Add_Sensor(line.text)) continue;
    faults.push_back({line.line, "the sensor kind \"" + Sens_Def.back().kind +
                                     "\" is unknown; the sensor "
                                     "converts nothing."});
  }
  return faults;
}

/// The preset of the name @p chosen stays in use wherever it stands now; the dataset is that of the preset in
/// use. Gives a sentence when there is no such preset any more.
std::string Keep_Preset(const std::string& chosen) {
  const auto same = std::ranges::find(Preset_List, chosen, &Preset::name);
  const bool outside = User_Preset > Last_Index(Preset_List.size());
  if (outside || Selected_Preset().name != chosen) {
    if (same != Preset_List.end()) User_Preset = static_cast<int>(same - Preset_List.begin());
    if (same == Preset_List.end() && outside) User_Preset = 0;
  }
  Apply_Preset_Mask();
  if (same != Preset_List.end()) return {};
  return "The preset \"" + chosen + "\" has gone from the file; \"" + Selected_Preset().name +
         "\" is in use.";
}

void Read_Selection() {
  for (std::size_t input = 1; input < Sensor_Selection.size(); ++input) {
    const auto sensor = Number_Key("an_sel" + std::to_string(input), 0, Last_Index(Sens_Def.size()));
    Sensor_Selection[input] = sensor.value_or(0);
  }
}

void Read_Start_Preset() {
  const int last = Last_Index(Preset_List.size());
  const int wanted =
      Read_Key("User_Preset") ? Number_Key("User_Preset", 0, last).value_or(0) : Default_Preset;
  User_Preset = wanted <= last ? wanted : 0;
  DatasetID = static_cast<std::int16_t>(Mask_Dataset(Selected_Preset().mask));
}

/// One sentence for each fault, in the order of the file. A file that is all wrong must not fill the screen.
std::string Sentences(std::vector<Ini_Fault> faults) {
  constexpr std::size_t most = 10;
  std::ranges::sort(faults, {}, &Ini_Fault::line);
  std::string text;
  for (std::size_t i = 0; i < std::min(most, faults.size()); ++i) {
    if (i > 0) text += '\n';
    text += Ini_File_Name + ", line " + std::to_string(faults[i].line) + ": " + faults[i].text;
  }
  if (faults.size() > most)
    text += "\n" + std::to_string(faults.size() - most) + " more lines are like that.";
  return text;
}

void Append(std::vector<Ini_Fault>& all, const std::vector<Ini_Fault>& more) {
  all.insert(all.end(), more.begin(), more.end());
}

std::vector<Ini_Fault> Read_Lists() {
  Reset_Load_Axes_State();
  std::vector<Ini_Fault> faults = Read_Sensors();
  Append(faults, Read_Load_Axes(Read_Keys("map_lst")));
  Append(faults, Read_Presets(Read_Keys("preset_list")));
  return faults;
}

}  // namespace

void Init_ini_file() {
  Forget_Ini_Text();
  const bool missing = Ini_Missing();
  Read_Port();
  card_data_dir = With_Separator(Read_Key("card_data_dir").value_or(""));
  Remember_Key("start_dir", start_dir);
  Check_Ini_Writable();
  told_faults = Sentences(Read_Lists());
  Read_Selection();
  Read_Start_Preset();
  Show_Notice(missing ? start_dir + Ini_File_Name + " is missing: there are no sensors and no presets."
                      : told_faults);
}

void Read_Definitions() {
  Check_Ini_Readable();
  const std::string preset = Selected_Preset().name;
  const std::string faults = Sentences(Read_Lists());
  const std::string lost = Keep_Preset(preset);
  // What the status line says about anything else stays.
  const bool about_faults = notice_text.Text() == told_faults;
  if (const std::string before = std::exchange(told_faults, faults); before != faults) {
    if (!faults.empty() || about_faults) Show_Notice(faults);
  }
  if (!lost.empty()) Show_Notice(lost);
}

}  // namespace kx
