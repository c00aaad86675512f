#include "workspace/differences.h"

#include <algorithm>
#include <utility>

#include "settings/byte_notes.h"
#include "workspace/analog2.h"
#include "workspace/difference_texts.h"

namespace kx {
namespace {

constexpr std::uint8_t whole_byte = 255;

/// The two sliders lie over entries of the Analog 2 table and mean something in one mode only.
bool In_Use(const Scalar_Row& row, const Byte_Image& image) {
  if (row.byte != map::an2_boost_activation && row.byte != map::an2_activation_level) return true;
  return Res500(image) && Field_Of(image, map::an2_mode) == an2_mode::boost_activated;
}

/// Collects the differences of two images and keeps which bits they have told of.
class Comparison {
 public:
  Comparison(const Byte_Image& reference, const Byte_Image& here)
      : reference_(reference), here_(here), mirrored_(Mirrored(reference) && Mirrored(here)) {}

  std::vector<Difference> All() {
    for (const Table_Row& row : table_rows) {
      if (In_Use(row.table, here_)) Add_Table(row);
    }
    for (const Choice_Row& row : Choice_Rows()) Add_Choice(row);
    for (const Scalar_Row& row : Scalar_Rows()) {
      if (Differs({row.byte, whole_byte}) && In_Use(row, here_)) Add_Scalar(row);
    }
    Add_Typed("an_gain", map::an_gain, "Curve generator gain", "%", Generator_Gain_Text);
    Add_Typed("an_offset", map::an_offset, "Curve generator offset", "V", Generator_Offset_Text);
    std::ranges::stable_sort(found_, {}, &Difference::page);
    for (int byte = 0; byte < Byte_Image::size; ++byte) Add_Rest(byte);
    return std::move(found_);
  }

 private:
  static bool Mirrored(const Byte_Image& image) { return image[map::mirror] == image[map::flags_c]; }

  [[nodiscard]] std::uint8_t Changed_Bits(int byte) const {
    return static_cast<std::uint8_t>(reference_[byte] ^ here_[byte]);
  }

  [[nodiscard]] bool Differs(const map::Field& field) const {
    return (Changed_Bits(field.byte) & field.mask) != 0;
  }

  [[nodiscard]] int Counts(int byte) const { return here_[byte] - reference_[byte]; }

  /// A mirror that is in step goes with the byte that it mirrors.
  void Add(Difference difference, std::initializer_list<map::Field> fields) {
    for (const map::Field& field : fields) {
      if (!Differs(field)) continue;
      Tell_Of(difference, field.byte, field.mask);
      if (field.byte == map::flags_c && mirrored_) Tell_Of(difference, map::mirror, field.mask);
    }
    found_.push_back(std::move(difference));
  }

  void Tell_Of(Difference& difference, int byte, std::uint8_t mask) {
    difference.bytes.push_back({byte, mask, reference_[byte], here_[byte]});
    told_.at(static_cast<std::size_t>(byte)) |= mask;
  }

  void Add_Table(const Table_Row& row) {
    std::optional<bool> other_meaning;  // the same for all entries
    for (int entry = row.first_row; entry <= Entries_Of(row.table, here_); ++entry) {
      const int byte = Edited_Byte(row.table, entry);
      if (!Differs({byte, whole_byte})) continue;
      if (!other_meaning) other_meaning = Means_Other(row.table);
      Add_Entry(row.table, entry, byte, *other_meaning);
    }
  }

  /// A table of another number of entries has them at other places of its axis.
  [[nodiscard]] bool Means_Other(Table table) const {
    return !In_Use(table, reference_) || Entries_Of(table, reference_) != Entries_Of(table, here_) ||
           Meaning_Of(table, reference_) != Meaning_Of(table, here_);
  }

  /// What the reference shows for an entry, and where, when its axis has the entry at another place.
  [[nodiscard]] std::string Told_By_Reference(Table table, int entry) const {
    std::string value = Entry_Value(table, entry, reference_);
    const int entries = Entries_Of(table, reference_);
    if (!In_Use(table, reference_) || entry > entries || entries == Entries_Of(table, here_)) return value;
    const std::string place = Entry_Place(table, entry, reference_);
    return place == Entry_Place(table, entry, here_) ? value : value + " at " + place;
  }

  void Add_Entry(Table table, int entry, int byte, bool other_meaning) {
    Difference difference{.page = Page_Of(table),
                          .table = table,
                          .row = entry,
                          .name = Entry_Name(table, entry, here_),
                          .reference = Told_By_Reference(table, entry),
                          .here = Entry_Value(table, entry, here_),
                          .other_meaning = other_meaning};
    if (!other_meaning) difference.change = Change_Text(difference.reference, difference.here, Counts(byte));
    Add(std::move(difference), {{byte, whole_byte}});
  }

  void Add_Choice(const Choice_Row& row) {
    const bool more = row.more_bits.mask != 0 && Differs(row.more_bits);
    if (!Differs(row.field) && !more) return;
    Difference difference{.page = Place_Of(row.Name()).page,
                          .control = row.Name(),
                          .name = Control_Name(row.Name(), row.label),
                          .reference = Control_Value(row, reference_),
                          .here = Control_Value(row, here_)};
    if (difference.reference == difference.here) {  // the field may hold more numbers than the list has
      difference.reference += ", stored as " + std::to_string(Field_Of(reference_, row.field));
      difference.here += ", stored as " + std::to_string(Field_Of(here_, row.field));
    }
    more ? Add(std::move(difference), {row.field, row.more_bits}) : Add(std::move(difference), {row.field});
  }

  void Add_Scalar(const Scalar_Row& row) {
    Difference difference{.page = Place_Of(row.name).page,
                          .control = row.name,
                          .name = Control_Name(row.name, row.label),
                          .reference = Control_Value(row, reference_),
                          .here = Control_Value(row, here_)};
    difference.change = Change_Text(difference.reference, difference.here, Counts(row.byte));
    Add(std::move(difference), {{row.byte, whole_byte}});
  }

  void Add_Typed(std::string_view control, int byte, std::string_view label, const std::string& unit,
                 std::string (*text)(const Byte_Image& image)) {
    if (!Differs({byte, whole_byte})) return;
    Difference difference{.page = Place_Of(control).page,
                          .control = control,
                          .name = Control_Name(control, label),
                          .reference = text(reference_) + " " + unit,
                          .here = text(here_) + " " + unit};
    difference.change = Change_Text(difference.reference, difference.here, Counts(byte));
    Add(std::move(difference), {{byte, whole_byte}});
  }

  /// What nothing else has told of: the byte, or those of its bits.
  void Add_Rest(int byte) {
    if (byte == map::mirror && mirrored_) return;
    const std::uint8_t told = told_.at(static_cast<std::size_t>(byte));
    const auto rest = static_cast<std::uint8_t>(Changed_Bits(byte) & ~told);
    if (rest == 0) return;
    Difference difference{.name = "Byte " + std::to_string(byte)};
    if (const std::string name = Byte_Name(byte); name != std::to_string(byte))
      difference.name += ", " + name;
    if (told != 0) {
      difference.reference = Bits_Text(reference_[byte], rest);
      difference.here = Bits_Text(here_[byte], rest);
    } else {
      difference.reference = std::to_string(reference_[byte]);
      difference.here = std::to_string(here_[byte]);
      difference.change = Change_Text(difference.reference, difference.here, Counts(byte));
    }
    Add(std::move(difference), {{byte, told != 0 ? rest : whole_byte}});
  }

  static std::string Bits_Text(std::uint8_t value, std::uint8_t mask) {
    std::string text;
    for (int bit = 0; bit < 8; ++bit) {
      if (Get_Byte_bit(mask, bit) == 0) continue;
      text += (text.empty() ? "bit " : ", bit ") + std::to_string(bit) + " = " +
              std::to_string(Get_Byte_bit(value, bit));
    }
    return text;
  }

  const Byte_Image& reference_;
  const Byte_Image& here_;
  bool mirrored_;  ///< byte 0 follows flags C in both
  std::array<std::uint8_t, Byte_Image::size> told_{};
  std::vector<Difference> found_;
};

}  // namespace

std::vector<Difference> Differences(const Byte_Image& reference, const Byte_Image& here) {
  if (reference == here) return {};
  return Comparison(reference, here).All();
}

Byte_Image Taken(Byte_Image here, std::span<const Difference> taken) {
  for (const Difference& difference : taken) {
    for (const Differing_Byte& part : difference.bytes) {
      const int kept = here[part.byte] & ~part.mask;
      here[part.byte] = static_cast<std::uint8_t>(kept | (part.reference & part.mask));
    }
  }
  return here;
}

}  // namespace kx
