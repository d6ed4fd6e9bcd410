#include "script/script_forms.h"

#include <algorithm>
#include <utility>

#include "text/strings.h"

namespace ostrand {

using platform::Answer;
using platform::Buttons;

namespace {

// The answers that a script can give, as words of its line.
std::string answersOf(Buttons buttons) {
  switch (buttons) {
    case Buttons::kOkCancel:
      return "ok|cancel";
    case Buttons::kYesNo:
      return "yes|no";
    case Buttons::kYesNoCancel:
      return "yes|no|cancel";
    case Buttons::kOverwriteCancel:
      return "cancel";
    case Buttons::kOk:
      break;
  }
  return "ok";
}

}  // namespace

void ScriptForms::Prepare(std::string title, Answer answer) {
  answers_.push_back({std::move(title), answer});
}

void ScriptForms::StartAction() {
  beeps_ = 0;
  helpGiven_ = false;
  seen_.clear();
}

Answer ScriptForms::ShowBox(const platform::MessageBox& box) {
  const auto prepared = std::find_if(answers_.begin(), answers_.end(), [&](const Prepared& row) {
    return SameText(row.title, box.title);
  });
  if (prepared != answers_.end()) {
    const Answer answer = prepared->answer;
    answers_.erase(prepared);
    seen_.push_back({box.title, box.text});
    return answer;
  }
  if (box.buttons == platform::Buttons::kOk) {
    informed_.push_back({box.title, box.text, box.diskError});
    return Answer::kOk;
  }
  if (unanswered_.empty()) {
    unanswered_ = Quoted(box.title) + ": " + box.text;
    remedy_ = "answer " + Quoted(box.title) + " " + answersOf(box.buttons);
  }
  return box.buttons == platform::Buttons::kYesNo ? Answer::kNo : Answer::kCancel;
}

std::optional<ScriptForms::Box> ScriptForms::Claim(std::string_view title) {
  for (std::vector<Box>* boxes : {&informed_, &seen_}) {
    const auto found = std::find_if(boxes->begin(), boxes->end(),
                                    [&](const Box& box) { return SameText(box.title, title); });
    if (found == boxes->end()) continue;
    Box box = *found;
    boxes->erase(found);
    return box;
  }
  return std::nullopt;
}

std::string ScriptForms::Unforeseen() const {
  if (!unanswered_.empty()) return "no answer to the box " + unanswered_;
  if (informed_.empty()) return {};
  if (!informed_.front().diskError.empty()) return informed_.front().diskError;
  return "unexpected box " + Quoted(informed_.front().title) + ": " + informed_.front().text;
}

std::string ScriptForms::Remedy() const {
  if (!remedy_.empty() || informed_.empty() || !informed_.front().diskError.empty()) return remedy_;
  return "answer " + Quoted(informed_.front().title) + " ok";
}

std::vector<std::string> ScriptForms::Unused() const {
  std::vector<std::string> titles;
  titles.reserve(answers_.size());
  for (const Prepared& row : answers_) titles.push_back(row.title);
  return titles;
}

std::optional<std::string> ScriptForms::takeFile() { return std::exchange(file_, std::nullopt); }

std::optional<std::string> ScriptForms::AskOpen(const platform::FileDialog&) { return takeFile(); }

std::optional<std::string> ScriptForms::AskSave(const platform::FileDialog&) { return takeFile(); }

}  // namespace ostrand
