#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/image.h"
#include "workspace/pages.h"

/// What sets two tunes apart, as a user reads it.
namespace kx {

/// A byte that differs in bits of @p mask.
struct Differing_Byte {
  int byte;
  std::uint8_t mask;  ///< bits that belong to the difference; 255 for a value that fills its byte
  std::uint8_t reference;
  std::uint8_t here;
  bool operator==(const Differing_Byte&) const = default;
};

/// One entry of a table, one control, or one byte that no control shows.
struct Difference {
  Page page = page::none;
  std::optional<Table> table = {};
  int row = 0;                    ///< entry of the table, 1 up
  std::string_view control = {};  ///< name of the control; empty for an entry and for a bare byte
  std::string name = {};          ///< where it stands and what it is
  std::string reference = {};     ///< what the reference shows, with unit
  std::string here = {};          ///< what the tune shows, with unit
  std::string change = {};        ///< from the reference to here, signed; empty where it is no number
  std::vector<Differing_Byte> bytes = {};
  bool other_meaning = false;  ///< the entry's bytes mean something else under the flags of the reference
  bool operator==(const Difference&) const = default;
};

/// All differences, in the order of the tabs; on a page entries, then lists and ticks, then sliders; behind
/// them the box settings and at last the bytes, or bits of them, that no control shows. A byte that several
/// controls show is in the list with each of them; of each differing bit at least one difference tells.
/// Places and units are those that @p here has; a reference whose flags give its bytes another meaning is
/// shown in its own.
[[nodiscard]] std::vector<Difference> Differences(const Byte_Image& reference, const Byte_Image& here);

/// @p here with the bits of @p taken as these tell the reference's, and nothing else: what the user sees is
/// what is taken, though the reference may have changed meanwhile.
[[nodiscard]] Byte_Image Taken(Byte_Image here, std::span<const Difference> taken);

}  // namespace kx
