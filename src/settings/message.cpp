#include "settings/message.h"

#include <exception>

#include "platform/seams.h"
#include "settings/refresh.h"

namespace kx {

using platform::Answer;
using platform::Buttons;
using platform::Icon;

namespace {

/// No box opens once the program is unloading: nobody is there to answer it.
Answer Show(const platform::Message& message) {
  return Closing ? Answer::cancel : platform::seams.ask->Show(message);
}

}  // namespace

void Tell(const std::string& text, Icon icon, const std::string& title) {
  Show({text, title, Buttons::ok, icon});
}

bool Confirm(const std::string& text) {
  return Show({text, "", Buttons::ok_cancel, Icon::question}) == Answer::ok;
}

bool Ask_Yes_No(const std::string& text, const std::string& title) {
  return Show({text, title, Buttons::yes_no, Icon::question}) == Answer::yes;
}

void Guarded(const std::function<void()>& handler) {
  std::string reason;
  try {
    handler();
    return;
  } catch (const std::exception& failure) {
    reason = failure.what();
  }
  try {
    Refresh_Whole_Image();
  } catch (const std::exception& failure) {
    reason += std::string("\n") + failure.what();
  }
  Tell(reason, Icon::critical);
}

}  // namespace kx
