#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/files.h"
#include "settings/tune_copy.h"

/// The tunes that were on screen before: each is kept when another one takes its place or the program closes,
/// without a question, as a file in the folder "earlier-tunes" of the working folder. A tune with its
/// description is there once, under its newest name; the newest ones stay. Their number in the file name, and
/// not the time, tells their order: the clock of a computer in a car may be wrong.
///
/// What cannot be kept is told once, and the work goes on.
namespace kx {

inline constexpr int earlier_tunes_kept = 50;

struct Earlier_Tune {
  std::string path;  ///< full name of its file
  Tune_Copy tune;
};

/// The folder, "/" at its end; it need not be there.
[[nodiscard]] std::string Earlier_Tunes_Folder();

/// What is kept, newest first. A file that is no tune is left out.
[[nodiscard]] std::vector<Earlier_Tune> Earlier_Tunes();

/// Grows when this program has kept a tune: what Earlier_Tunes has given before is out of date.
[[nodiscard]] int Earlier_Tunes_Changes();

/// Puts @p image in place of the tune, which is kept before. The one way in for every tune that comes as a
/// whole: from a file, a box, a card, a log. @p source is what it comes from, see tune_source. @p take_name,
/// between the two, gives the new one its name and description; what it throws leaves the image as it is.
/// Other callers name it behind.
void Replace_Tune(const Byte_Image& image, const std::string& source,
                  const std::function<void()>& take_name = {});

/// Keeps the tune as it stands; false when it could not be. For Replace_Tune, the end of the program, and the
/// commands that work over the whole tune where it stands.
bool Keep_Earlier_Tune();

/// Moves the file @p path, which holds @p tune, among the earlier tunes, as the newest one.
bool Move_Among_Earlier_Tunes(const std::string& path, const Tune_Copy& tune);

/// Name to save a tune under that is opened from the folder of earlier tunes: never over what is kept, nor
/// over the file that it once came from. Full name, with the time in it.
[[nodiscard]] std::string Name_For_Earlier_Tune(const Tune_Copy& tune);

/// Tunes are kept from now on. Before, at the start of the program, none is anybody's work yet.
void Start_Keeping_Tunes();

[[nodiscard]] bool Keeping_Tunes();

/// True for success; a failure is told, the first time.
bool Tell_Unless_Kept(const platform::File_Result& result);

void Reset_Earlier_Tunes();

}  // namespace kx
