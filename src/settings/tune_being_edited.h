#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/file_lock.h"
#include "settings/tune_copy.h"

/// The tune being edited, as a file among the earlier tunes, for the case that the program does not live to
/// close: at most 30 s old, there as long as the tune stands in no file of the user's. Programs that run in
/// one folder have a file each, "being-edited.kxs", "being-edited-2.kxs" and so on, with a lock beside it; a
/// file whose lock is free was left by a program that did not end in order.
namespace kx {

/// Begins to keep the tune being edited, every 30 s and only when it has changed. A tick that comes while
/// @p line_is_busy says so waits for the line: a disk may take longer than a box that is asked for its name.
void Watch_Tune_Being_Edited(std::function<bool()> line_is_busy);

/// The tune stands in its file as it is on screen, or is the one that the program starts with: nothing is
/// lost with it.
void Note_Tune_On_File();

/// An orderly end: the file goes, and with it the lock.
void Remove_Tune_Being_Edited();

/// A file that a program has left, ours as long as this lives.
struct Left_Tune {
  std::string path;
  Tune_Copy tune;
  std::unique_ptr<platform::File_Lock> lock;
};

/// What programs have left in the folder that did not end in order. Files of running ones are not among them.
[[nodiscard]] std::vector<Left_Tune> Left_Tunes();

/// As if the program had been killed: what it keeps stays.
void Reset_Tune_Being_Edited();

}  // namespace kx
