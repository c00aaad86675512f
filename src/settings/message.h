#pragma once

#include <functional>
#include <string>

#include "platform/ask.h"

namespace kx {

/// Shows a box with OK only.
void Tell(const std::string& text, platform::Icon icon = platform::Icon::none, const std::string& title = "");

/// OK and Cancel; true on OK.
[[nodiscard]] bool Confirm(const std::string& text);

/// Yes and No; true on Yes.
[[nodiscard]] bool Ask_Yes_No(const std::string& text, const std::string& title = "");

/// The last guard around every handler of a form: a failure ends @p handler, the views are refreshed and its
/// text is shown in one box; the image stays as the handler left it and the program goes on.
void Guarded(const std::function<void()>& handler);

}  // namespace kx
