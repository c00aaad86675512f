#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace kx {

/// The text of one control that the core writes, in UTF-8. The form that owns the control sets the hook and
/// copies the text into it; without a form it is just a text.
class Shown_Text {
 public:
  [[nodiscard]] const std::string& Text() const { return text_; }
  void Set(std::string_view text) {
    text_ = text;
    if (on_change_) on_change_();
    for (const auto& hook : further_) hook();
  }
  void Append(std::string_view text) { Set(text_ + std::string(text)); }

  /// What the user has typed: kept without telling the control, which shows it already.
  void Typed(std::string_view text) { text_ = text; }

  void On_Change(std::function<void()> hook) { on_change_ = std::move(hook); }

  /// For a control that shows a text which is not its own, beside the one that owns it.
  void Also_On_Change(std::function<void()> hook) { further_.push_back(std::move(hook)); }

 private:
  std::string text_;
  std::function<void()> on_change_;
  std::vector<std::function<void()>> further_;
};

}  // namespace kx
