#include "boxlink/run_list.h"

#include "settings/numbers.h"

namespace kx {
namespace {

constexpr int number_length = 3;

std::string Entry(int number) { return "," + Format(number, "000"); }

/// Index behind the stretch of adjacent offsets that begins at @p first.
std::size_t End_Of_Stretch(const std::vector<int>& offsets, std::size_t first) {
  std::size_t end = first + 1;
  while (end < offsets.size() && offsets[end] == offsets[end - 1] + 1) ++end;
  return end;
}

}  // namespace

std::vector<int> Differing_Offsets(const Byte_Image& a, const Byte_Image& b) {
  std::vector<int> offsets;
  for (int i = 0; i <= last_timer_compared; ++i)
    if (a[i] != b[i]) offsets.push_back(i);
  return offsets;
}

std::string Offsets_Text(const std::vector<int>& offsets) {
  std::string text;
  for (const int offset : offsets) text += std::to_string(offset) + ",";
  return text;
}

std::string Master_Run_List(const std::vector<int>& offsets) {
  std::string list = Entry(map::flags_a) + Entry(1);
  for (std::size_t first = 0; first < offsets.size();) {
    const std::size_t end = End_Of_Stretch(offsets, first);
    list += Entry(offsets[first]) + Entry(static_cast<int>(end - first));
    first = end;
  }
  return list + ",";
}

std::string Slave_Run_List(const std::vector<int>& offsets) {
  std::string list;
  for (const int offset : offsets) list += Entry(offset) + Entry(1);
  return list;
}

int Run_List_Number(std::string_view list, int position) {
  return std::stoi(std::string(list.substr(static_cast<std::size_t>(position - 1), number_length)));
}

bool Runs_Left(std::string_view list, int position) { return position <= static_cast<int>(list.size()); }

}  // namespace kx
