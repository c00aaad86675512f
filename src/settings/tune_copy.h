#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "settings/image.h"

/// A tune as the program keeps it for its user: a .kxs file like any other. Behind the end-of-text byte,
/// where no reader of such files looks, stands what the tune was known by.
namespace kx {

struct Tune_Copy {
  Byte_Image image;         ///< as a save would write it
  std::string description;  ///< UTF-8, as the file gives it back
  std::string time;         ///< local, "yyyy-mm-dd hh:mm:ss"
  std::string name;         ///< bare name of its file, also when it has not been saved yet
  std::string folder;       ///< directory in which a save would put it, "/" at its end
  std::string origin;       ///< where it came from, in words or as a folder
};

/// The tune as it stands.
[[nodiscard]] Tune_Copy Copy_Of_Tune();

/// The bytes of the tune alone, as a save would write them but for line ends at the end of the description:
/// each load adds one, and the copy of a copy is the same.
[[nodiscard]] std::string Content_Of_Tune();

/// The bytes of the file.
[[nodiscard]] std::string Print_Tune_Copy(const Tune_Copy& copy);

/// Reads such a file; one without a label leaves name, folder, origin and time empty. Nothing when it holds
/// no tune.
[[nodiscard]] std::optional<Tune_Copy> Parse_Tune_Copy(std::string_view bytes);

/// True when both are the same tune with the same description, whatever they are called.
[[nodiscard]] bool Same_Tune(const Tune_Copy& a, const Tune_Copy& b);

/// Number of bytes in which two tunes differ, 0 to 256.
[[nodiscard]] int Differing_Bytes(const Byte_Image& a, const Byte_Image& b);

}  // namespace kx
