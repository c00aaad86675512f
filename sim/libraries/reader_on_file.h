#pragma once

#include <cstdint>
#include <string>

#include "sim/card_reader.h"

namespace kx::sim {

/// The one reader of a library, its card and knobs in the file that the environment names KXSIM_CARD (else
/// "simulated-card.kxs" in the working folder). The file is read before each call and written after one that
/// changed the card, so that it can be edited and looked at meanwhile; a new "faults" line starts the counts
/// anew. A call returns when its bytes have had their time. Without a readable file there is no card.
class Reader_On_File {
 public:
  /// Calls @p function with the reader between the two.
  template <typename Function>
  std::int32_t With(Function function) {
    Load();
    const std::size_t moved = reader_.Bytes_Moved();
    const std::int32_t status = function(reader_);
    Save();
    Take_Time(reader_.Bytes_Moved() - moved);
    return status;
  }

 private:
  void Load();
  void Save();
  void Take_Time(std::size_t bytes) const;

  Card_Reader reader_;
  std::string knobs_ = "none yet";
};

}  // namespace kx::sim
