#include "sim/libraries/reader_on_file.h"

#include <chrono>
#include <cstdlib>
#include <thread>

namespace kx::sim {
namespace {

std::string Path() {
  const char* const path = std::getenv("KXSIM_CARD");
  return path == nullptr ? "simulated-card.kxs" : path;
}

bool Same(const Smart_Card& a, const Smart_Card& b) {
  return a.Memory == b.Memory && a.Protected == b.Protected && a.Secret == b.Secret && a.Tries == b.Tries;
}

}  // namespace

void Reader_On_File::Load() {
  const Loaded_Card loaded = Read_Card(Path());
  const std::string knobs = loaded.Error.empty() ? loaded.Faults : "no_card";
  if (loaded.Error.empty() && !Same(loaded.Card, reader_.Card)) reader_.Card = loaded.Card;
  reader_.Card.Needs_Pin = loaded.Card.Needs_Pin;
  if (knobs == knobs_) return;
  Reader_Faults faults;
  if (!Parse_Reader_Faults(knobs, faults).empty()) faults.No_Reader = true;
  reader_.Set_Faults(faults);
  knobs_ = knobs;
}

void Reader_On_File::Save() {
  const Loaded_Card loaded = Read_Card(Path());
  if (!loaded.Error.empty() || Same(loaded.Card, reader_.Card)) return;
  (void)Write_Card(Path(), reader_.Card, loaded.Faults);
}

void Reader_On_File::Take_Time(std::size_t bytes) const {
  const unsigned milliseconds = reader_.Faults().Byte_Time.value_or(0);
  if (milliseconds > 0) std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds) * bytes);
}

}  // namespace kx::sim
