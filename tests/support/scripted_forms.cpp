#include "support/scripted_forms.h"

#include <gtest/gtest.h>

#include <utility>

namespace ostrand::testing {

using platform::Answer;

ScriptedForms::~ScriptedForms() {
  for (const Box& box : boxes_) ADD_FAILURE() << "The box never came: " << box.title;
  if (!dialogs_.empty()) ADD_FAILURE() << dialogs_.size() << " dialogs never came.";
}

void ScriptedForms::ExpectBox(std::string title, std::string text, Answer answer) {
  boxes_.push_back({std::move(title), std::move(text), true, answer});
}

void ScriptedForms::ExpectBoxWith(std::string title, std::string part, Answer answer) {
  boxes_.push_back({std::move(title), std::move(part), false, answer});
}

void ScriptedForms::ExpectOpen(std::optional<std::string> answer) {
  dialogs_.push_back({false, std::move(answer)});
}

void ScriptedForms::ExpectSave(std::optional<std::string> answer) {
  dialogs_.push_back({true, std::move(answer)});
}

Answer ScriptedForms::ShowBox(const platform::MessageBox& box) {
  onBox();
  if (boxes_.empty() && collecting_) {
    shown.push_back(box);
    return Answer::kOk;
  }
  if (boxes_.empty()) {
    ADD_FAILURE() << "Unexpected box " << box.title << ": " << box.text;
    return box.buttons == platform::Buttons::kYesNo ? Answer::kNo : Answer::kCancel;
  }
  const Box expected = std::move(boxes_.front());
  boxes_.pop_front();
  EXPECT_EQ(box.title, expected.title) << box.text;
  if (expected.whole) {
    EXPECT_EQ(box.text, expected.text);
  } else {
    EXPECT_NE(box.text.find(expected.text), std::string::npos)
        << '"' << box.text << "\" does not hold \"" << expected.text << '"';
  }
  return expected.answer;
}

std::optional<std::string> ScriptedForms::AskOpen(const platform::FileDialog& asked) {
  return ask(asked, false);
}

std::optional<std::string> ScriptedForms::AskSave(const platform::FileDialog& asked) {
  return ask(asked, true);
}

std::optional<std::string> ScriptedForms::ask(const platform::FileDialog& asked, bool save) {
  dialog = asked;
  if (dialogs_.empty()) {
    ADD_FAILURE() << "Unexpected dialog " << asked.title;
    return std::nullopt;
  }
  Dialog expected = std::move(dialogs_.front());
  dialogs_.pop_front();
  EXPECT_EQ(save, expected.save) << asked.title;
  return std::move(expected.answer);
}

}  // namespace ostrand::testing
