#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/ask.h"
#include "settings/wait.h"

namespace kx::test {

/// Lets a while pass in each box, as a user does, and answers all of them alike.
class Patient_User : public platform::Ask {
 public:
  bool accept = false;
  int open = 0;
  std::vector<std::string> texts;

  platform::Answer Show(const platform::Message& message) override {
    ++open;
    texts.push_back(message.text);
    const Wait_Limit look(0.03);
    while (!look.Passed()) Do_Events();
    --open;
    return accept ? platform::Answer::ok : platform::Answer::cancel;
  }
  std::optional<std::string> Open_Name(const platform::File_Question&) override { return std::nullopt; }
  std::optional<std::string> Save_Name(const platform::File_Question&) override { return std::nullopt; }
};

}  // namespace kx::test
