#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "settings/image.h"

/// The .kxs file: 256 lines with a decimal number each, a blank before and behind it, then the description;
/// every line ends in CR LF, text is Windows-1252. No header and no checksum: what makes a file one of these
/// is only that its first 256 items read as numbers from 0 to 255.
namespace kx {

struct Setting_File {
  Byte_Image image;
  std::string description;  ///< UTF-8, CR LF behind every item
};

/// Reads a .kxs file. Numbers may be parted by blanks, line ends or a comma. The description is read item by
/// item: an item ends at a comma or a line end, quotes around an item drop, all else stays. Nothing when it
/// is no such file, which is found at the first wrong item, whatever the size of the file.
[[nodiscard]] std::optional<Setting_File> Parse_Setting_File(std::string_view bytes);

/// The bytes of a .kxs file. @p description in UTF-8 goes out with its own inner line ends.
[[nodiscard]] std::string Print_Setting_File(const Byte_Image& image, std::string_view description);

}  // namespace kx
