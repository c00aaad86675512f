#pragma once

#include <optional>
#include <string>

#include "settings/image.h"

/// The tune beside the tune: what the present one is compared with. It is looked at only; nothing of it
/// reaches the tune, the dataset, the history or a file. Kept for the run.
namespace kx {

enum class Reference_Source {
  none,
  box,    ///< what the last good read, verify or write has read from the master
  file,   ///< a .kxs file that is not loaded
  opened  ///< the tune as it came in: from a file, a box or a card, or as the program started with it
};

struct Reference_Tune {
  Byte_Image image;
  std::string name;  ///< the word in front of its values
  int dataset = 0;   ///< layout that its bytes are meant for
};

/// The source on show. Until the user has chosen one it is the box, as soon as one was read.
[[nodiscard]] Reference_Source Shown_Source();

/// The reference of Shown_Source; null when there is nothing to compare with.
[[nodiscard]] const Reference_Tune* Reference();

/// There is something to compare with from @p source.
[[nodiscard]] bool Reference_Known(Reference_Source source);

/// The user's choice, for the rest of the run. A source of which nothing is known yet is left alone.
void Choose_Reference(Reference_Source source);

/// Takes the .kxs file @p path as reference and chooses it. Returns why it cannot be one, or an empty text;
/// then nothing has changed.
[[nodiscard]] std::string Load_Reference_File(const std::string& path);

/// The master's bytes, whole and sound as they came over the line, and the box's own dataset. Called by both
/// transfer engines.
void Note_Box_Image(const Byte_Image& read, int dataset);

/// Why what was read from a box says nothing of the one on the line.
enum class Box_Doubt {
  written,   ///< a byte is on its way to its master
  other_box  ///< another box has answered
};

/// What was read from the box before holds no more, until a box is read again. True when the reference says
/// something new by that. Called by the box link.
bool Doubt_Box_Image(Box_Doubt doubt);

/// The box's bytes are known: nothing was sent to it, and no other box has answered, since they were read.
[[nodiscard]] bool Box_Image_Certain();

/// The present tune has just come in whole; called before a preset works on it.
void Note_Opened_Tune();

/// The tune as opened, for who puts another into its place for a while and brings it back.
[[nodiscard]] const std::optional<Reference_Tune>& Opened_Tune();
void Restore_Opened_Tune(std::optional<Reference_Tune> tune);

void Reset_Reference_State();

}  // namespace kx
