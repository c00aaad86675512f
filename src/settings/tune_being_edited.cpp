#include "settings/tune_being_edited.h"

#include <utility>

#include "platform/folders.h"
#include "platform/seams.h"
#include "settings/earlier_tunes.h"

namespace kx {
namespace {

constexpr int tick_milliseconds = 30'000;
constexpr int busy_tick_milliseconds = 1'000;

/// Programs in one folder that can keep a tune each.
constexpr int most_programs = 9;

std::string on_file;  ///< content of the tune that needs no copy
std::string kept;     ///< content of the file that this program has made; empty without one
std::string own_path;
std::unique_ptr<platform::File_Lock> own_lock;
std::unique_ptr<platform::Interval_Timer> timer;

std::string Path_Of(int program) {
  const std::string number = program == 1 ? "" : "-" + std::to_string(program);
  return Earlier_Tunes_Folder() + "being-edited" + number + ".kxs";
}

std::unique_ptr<platform::File_Lock> Lock_Of(const std::string& path) {
  auto lock = std::make_unique<platform::File_Lock>();
  return lock->Take(path + ".lock").Ok() ? std::move(lock) : nullptr;
}

/// Takes a name that no program uses and that holds nothing: what another one has left is still to be
/// offered.
void Take_Path() {
  for (int program = 1; program <= most_programs && !own_lock; ++program) {
    own_path = Path_Of(program);
    if (platform::Exists(own_path)) continue;
    own_lock = Lock_Of(own_path);
    if (platform::Exists(own_path)) own_lock.reset();
  }
}

platform::File_Result Write_Copy() {
  if (auto made = platform::Make_Folder(Earlier_Tunes_Folder()); !made.Ok()) return made;
  if (!own_lock) Take_Path();
  if (!own_lock) return {Earlier_Tunes_Folder() + ": no file for the tune being edited"};
  return platform::Replace_File(own_path, Print_Tune_Copy(Copy_Of_Tune()));
}

void Remove_Copy() {
  if (!std::exchange(kept, {}).empty()) static_cast<void>(platform::Remove_File(own_path));
}

/// At a failure the next tick tries again.
void Tick() {
  std::string content = Content_Of_Tune();
  if (content == on_file) return Remove_Copy();
  if (content != kept && Tell_Unless_Kept(Write_Copy())) kept = std::move(content);
}

}  // namespace

void Watch_Tune_Being_Edited(std::function<bool()> line_is_busy) {
  timer = platform::seams.event_loop->Make_Timer();
  timer->Set_Interval(tick_milliseconds);
  timer->On_Tick([busy = std::move(line_is_busy)] {
    const bool waits = busy();
    timer->Set_Interval(waits ? busy_tick_milliseconds : tick_milliseconds);
    if (!waits) Tick();
  });
  timer->Set_Enabled(true);
}

void Note_Tune_On_File() {
  on_file = Content_Of_Tune();
  Remove_Copy();
}

void Remove_Tune_Being_Edited() {
  timer.reset();
  Remove_Copy();
  own_lock.reset();
}

std::vector<Left_Tune> Left_Tunes() {
  std::vector<Left_Tune> left;
  for (int program = 1; program <= most_programs; ++program) {
    const std::string path = Path_Of(program);
    std::string bytes;
    if (!platform::Exists(path)) continue;
    auto lock = Lock_Of(path);
    if (!lock || !platform::Read_Whole_File(path, bytes).Ok()) continue;
    if (auto tune = Parse_Tune_Copy(bytes)) left.push_back({path, std::move(*tune), std::move(lock)});
  }
  return left;
}

void Reset_Tune_Being_Edited() {
  timer.reset();
  own_lock.reset();
  on_file.clear();
  kept.clear();
}

}  // namespace kx
