#include "workspace/difference_list.h"

#include <algorithm>
#include <functional>

#include "boxlink/box_info.h"
#include "boxlink/transfer.h"
#include "settings/reference_tune.h"
#include "settings/text_encoding.h"
#include "settings/tune_copy.h"
#include "workspace/compare.h"

namespace kx {
namespace {

std::string Counted(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string Bytes_Text(const Difference& difference) {
  std::string text;
  for (const Differing_Byte& part : difference.bytes) {
    text += (text.empty() ? "" : "; ") + std::to_string(part.byte) + ": " + std::to_string(part.reference) +
            " -> " + std::to_string(part.here);
  }
  return text;
}

/// Only the box tells what "Write" would send.
bool Left_By_Write(const Difference& difference) {
  if (Shown_Source() != Reference_Source::box) return false;
  const std::vector<int> sent = Bytes_To_Write(Reference()->image, CardByte);
  return std::ranges::none_of(difference.bytes, [&sent](const Differing_Byte& part) {
    return std::ranges::binary_search(sent, part.byte);
  });
}

std::string Note(const Difference& difference) {
  std::string note = difference.other_meaning ? "read otherwise in the reference" : "";
  if (Left_By_Write(difference)) note += std::string(note.empty() ? "" : "; ") + "not sent by Write";
  return note;
}

std::string Other_Dataset(const Reference_Tune& reference) {
  if (reference.dataset == DatasetID) return {};
  return ", of another dataset: " + std::to_string(reference.dataset) + ", here " + std::to_string(DatasetID);
}

/// A slave has bytes of its own to catch up with, which nobody knows before it is read.
std::string What_Write_Sends(const Reference_Tune& reference) {
  if (Shown_Source() != Reference_Source::box) return {};
  if (!Box_Image_Certain()) return ", read it again to see what it holds";
  const std::size_t count = Bytes_To_Write(reference.image, CardByte).size();
  return ", a Write would send " + Counted(count, "byte") +
         (Slave_Present ? " and what the slave lacks" : "");
}

std::string Joined(std::span<const Difference> rows,
                   const std::function<std::string(const Difference_Cells&)>& line) {
  std::string text = line(Difference_Headings()) + Crlf();
  for (const Difference& row : rows) text += line(Difference_Row(row)) + Crlf();
  return text;
}

std::string In_Quotes(const std::string& cell) {
  if (cell.find_first_of(",\"\r\n") == std::string::npos) return cell;
  std::string quoted = "\"";
  for (const char c : cell) quoted += c == '"' ? "\"\"" : std::string(1, c);
  return quoted + "\"";
}

}  // namespace

Difference_Cells Difference_Headings() {
  const Reference_Tune* reference = Reference();
  return {"Place", reference == nullptr ? "Reference" : reference->name, "Here", "Change", "Bytes", "Note"};
}

Difference_Cells Difference_Row(const Difference& difference) {
  return {difference.name,   difference.reference,   difference.here,
          difference.change, Bytes_Text(difference), Note(difference)};
}

std::string Compare_Title() {
  const Reference_Tune* reference = Reference();
  if (reference == nullptr) return "Compare: choose in the menu Compare what with";
  const std::string head = "Compare with " + reference->name + Other_Dataset(*reference) + ": ";
  if (Shown_Differences().empty()) return head + "no difference" + What_Write_Sends(*reference);
  return head + Counted(Shown_Differences().size(), "difference") + " in " +
         Counted(static_cast<std::size_t>(Differing_Bytes(reference->image, CardByte)), "byte") +
         What_Write_Sends(*reference);
}

std::string Compare_Status() {
  const Reference_Tune* reference = Reference();
  if (reference == nullptr) return {};
  const std::size_t count = Shown_Differences().size();
  return reference->name + ": " + (count == 0 ? "no difference" : Counted(count, "difference"));
}

std::string Difference_Lines(std::span<const Difference> rows) {
  return Joined(rows, [](const Difference_Cells& cells) {
    std::string line;
    for (const std::string& cell : cells) line += (&cell == &cells.front() ? "" : "\t") + cell;
    return line;
  });
}

std::string Difference_Csv(std::span<const Difference> rows) {
  return To_Windows_1252(Joined(rows, [](const Difference_Cells& cells) {
    std::string line;
    for (const std::string& cell : cells) line += (&cell == &cells.front() ? "" : ",") + In_Quotes(cell);
    return line;
  }));
}

}  // namespace kx
