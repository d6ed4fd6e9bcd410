// A user with prepared answers. An unexpected box or dialog fails the test, and so does an expected
// one that never comes.
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/forms.h"

namespace ostrand::testing {

class ScriptedForms : public platform::Forms {
 public:
  ~ScriptedForms() override;

  // The next box has this title and text and gets this answer.
  void ExpectBox(std::string title, std::string text,
                 platform::Answer answer = platform::Answer::kOk);
  // The next box has this title, contains `part` and gets this answer.
  void ExpectBoxWith(std::string title, std::string part,
                     platform::Answer answer = platform::Answer::kOk);
  // Unexpected boxes are kept in `shown` from now on and answered with OK, for tests that check
  // them afterwards.
  void CollectBoxes() { collecting_ = true; }
  // The next open or save dialog gets this answer; nothing means Cancel.
  void ExpectOpen(std::optional<std::string> answer);
  void ExpectSave(std::optional<std::string> answer);

  platform::Answer ShowBox(const platform::MessageBox& box) override;
  std::optional<std::string> AskOpen(const platform::FileDialog& dialog) override;
  std::optional<std::string> AskSave(const platform::FileDialog& dialog) override;
  void SetHelpLine(const std::string& text) override { helpLines.push_back(text); }
  void SetPointer(platform::Pointer shape) override { pointer = shape; }
  void Beep() override { ++beeps; }
  void DoEvents() override { meanwhile(); }

  platform::FileDialog dialog;              // the last one asked
  std::vector<platform::MessageBox> shown;  // collected boxes
  std::vector<std::string> helpLines;
  platform::Pointer pointer = platform::Pointer::kNormal;
  int beeps = 0;
  std::function<void()> meanwhile = [] {};  // actions of the user in each of them
  std::function<void()> onBox = [] {};      // before a box is shown

 private:
  struct Box {
    std::string title;
    std::string text;
    bool whole;  // the whole text, or only a part
    platform::Answer answer;
  };
  struct Dialog {
    bool save;
    std::optional<std::string> answer;
  };
  std::optional<std::string> ask(const platform::FileDialog& asked, bool save);

  bool collecting_ = false;
  std::deque<Box> boxes_;
  std::deque<Dialog> dialogs_;
};

}  // namespace ostrand::testing
