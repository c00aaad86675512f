#pragma once

#include <string>
#include <string_view>

#include "settings/reference_tune.h"
#include "settings/refresh.h"
#include "settings/session.h"

namespace kx {

/// What the tune on screen was read from, in words, or the folder of its file; empty as long as it is a new
/// one. Written by whatever replaces the tune and by the save; an undo leaves it, as it leaves the name.
extern std::string tune_source;

/// Where the present tune came from, as the user sees it: put back at the end of the scope unless another
/// tune was taken in its place. The tune itself is the history's matter.
class Tune_Origin {
 public:
  Tune_Origin() = default;
  ~Tune_Origin();
  Tune_Origin(const Tune_Origin&) = delete;
  Tune_Origin& operator=(const Tune_Origin&) = delete;

  /// The tune in the image stays: it is the one that the user has opened.
  void Taken() {
    taken_ = true;
    Note_Opened_Tune();
  }

 private:
  void Restore() const;

  std::string file_ = card_data_file;
  std::string directory_ = card_data_dir;
  std::string title_ = Title_Text();
  std::string description_ = txt_File_Description.Text();
  std::string source_ = tune_source;
  bool taken_ = false;
};

/// True when @p found, the dataset that a tune names itself, is the selected one, or the user takes the tune
/// all the same. @p source begins the question.
[[nodiscard]] bool Dataset_Accepted(std::string_view source, int found);

}  // namespace kx
