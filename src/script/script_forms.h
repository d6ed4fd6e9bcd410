// The part of a session besides its screens: boxes, beeps, file dialogs, the help line.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forms.h"

namespace ostrand {

// A text in double quotes.
inline std::string Quoted(std::string_view text) { return "\"" + std::string(text) + "\""; }

// The boxes, beeps and help lines of a session driven by a script. A question needs an answer given
// beforehand; a box that only informs may also be checked afterwards.
class ScriptForms : public platform::Forms {
 public:
  explicit ScriptForms(platform::Forms& inner) : inner_(&inner) {}

  struct Box {
    std::string title;
    std::string text;
    std::string diskError = {};  // of MessageBox
  };

  void Prepare(std::string title, platform::Answer answer);
  void PrepareFile(std::string path) { file_ = std::move(path); }

  // Forgets checked beeps and boxes, before the next action.
  void StartAction();
  // Takes a box with that title that has been shown, if any.
  std::optional<Box> Claim(std::string_view title);
  [[nodiscard]] bool Beeped() const { return beeps_ > 0; }
  // Beeps of the present action.
  [[nodiscard]] int Beeps() const { return beeps_; }
  // Whether the present action has set the help line.
  [[nodiscard]] bool HelpGiven() const { return helpGiven_; }
  // Whether the present action asked a question that had an answer.
  [[nodiscard]] bool Answered() const { return !seen_.empty(); }
  [[nodiscard]] const std::string& HelpLine() const { return helpLine_; }
  // An error text for a box that the script does not expect; empty for none. For a disk failure it
  // contains path and reason.
  [[nodiscard]] std::string Unforeseen() const;
  // The line of a script that would have answered that box; empty for none.
  [[nodiscard]] std::string Remedy() const;
  // Whether one of them was a question, which got the answer that changes nothing.
  [[nodiscard]] bool AskedInVain() const { return !unanswered_.empty(); }
  // Titles of answers without a matching box.
  [[nodiscard]] std::vector<std::string> Unused() const;

  platform::Answer ShowBox(const platform::MessageBox& box) override;
  std::optional<std::string> AskOpen(const platform::FileDialog& dialog) override;
  std::optional<std::string> AskSave(const platform::FileDialog& dialog) override;
  void SetHelpLine(const std::string& text) override {
    helpLine_ = text;
    helpGiven_ = !text.empty();
  }
  void ShowWaiting(const std::string& text) override { inner_->ShowWaiting(text); }
  void SetPointer(platform::Pointer shape) override { inner_->SetPointer(shape); }
  void Beep() override { ++beeps_; }
  void DoEvents() override { inner_->DoEvents(); }

 private:
  struct Prepared {
    std::string title;
    platform::Answer answer;
  };
  std::optional<std::string> takeFile();

  platform::Forms* inner_;
  std::deque<Prepared> answers_;
  std::optional<std::string> file_;
  std::vector<Box> informed_;  // boxes with OK only, not checked yet
  std::vector<Box> seen_;      // answered boxes of the present action
  std::string unanswered_;     // a question without an answer
  std::string remedy_;         // the lines that would answer it
  std::string helpLine_;
  bool helpGiven_ = false;
  int beeps_ = 0;
};

}  // namespace ostrand
