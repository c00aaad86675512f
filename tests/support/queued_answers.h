#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/ask.h"

namespace kx::test {

/// Answers message boxes and file dialogs that a test has queued beforehand, in their order. A text that was
/// not queued, or one that is left over at the end, fails the test.
class Queued_Answers : public platform::Ask {
 public:
  Queued_Answers() = default;
  ~Queued_Answers() override { Expect_None_Left(); }
  Queued_Answers(const Queued_Answers&) = delete;
  Queued_Answers& operator=(const Queued_Answers&) = delete;

  /// The next box says @p text and gets @p answer; @p while_open runs before the answer is given.
  void Expect(std::string text, platform::Answer answer = platform::Answer::ok,
              std::function<void()> while_open = nullptr) {
    boxes_.push_back({std::move(text), answer, std::move(while_open)});
  }

  /// The next file dialog has the title @p title; nothing for @p name is the user's cancel.
  void Expect_Name(std::string title, std::optional<std::string> name) {
    names_.push_back({std::move(title), std::move(name)});
  }

  void Expect_None_Left() {
    for (const Box& box : boxes_) ADD_FAILURE() << "This box was not shown: " << box.text;
    for (const Name& name : names_) ADD_FAILURE() << "This dialog was not shown: " << name.title;
    boxes_.clear();
    names_.clear();
  }

  platform::Message last_box;             ///< as the program asked for it
  platform::File_Question last_question;  ///< likewise

  platform::Answer Show(const platform::Message& message) override {
    last_box = message;
    if (boxes_.empty() || boxes_.front().text != message.text) {
      ADD_FAILURE() << "Unexpected box: " << message.text
                    << (boxes_.empty() ? std::string() : "\nexpected: " + boxes_.front().text);
      return message.buttons == platform::Buttons::yes_no ? platform::Answer::no : platform::Answer::cancel;
    }
    const Box box = std::move(boxes_.front());
    boxes_.pop_front();
    if (box.while_open) box.while_open();
    return box.answer;
  }

  std::optional<std::string> Open_Name(const platform::File_Question& question) override {
    return Next_Name(question);
  }
  std::optional<std::string> Save_Name(const platform::File_Question& question) override {
    return Next_Name(question);
  }

 private:
  struct Box {
    std::string text;
    platform::Answer answer;
    std::function<void()> while_open;
  };
  struct Name {
    std::string title;
    std::optional<std::string> name;
  };

  std::optional<std::string> Next_Name(const platform::File_Question& question) {
    last_question = question;
    if (names_.empty() || names_.front().title != question.title) {
      ADD_FAILURE() << "Unexpected dialog: " << question.title;
      return std::nullopt;
    }
    auto name = std::move(names_.front().name);
    names_.pop_front();
    return name;
  }

  std::deque<Box> boxes_;
  std::deque<Name> names_;
};

}  // namespace kx::test
