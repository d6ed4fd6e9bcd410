// A person at the screens, written down line by line.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/forms.h"
#include "session/ostrand.h"
#include "setup/controls/screen.h"
#include "text/result.h"

namespace ostrand {

// The boxes, beeps and help lines of a session that a script drives. A box needs an answer given
// beforehand; one that only tells may also be looked at afterwards.
class ScriptForms : public platform::Forms {
 public:
  explicit ScriptForms(platform::Forms& inner) : inner_(inner) {}

  struct Box {
    std::string title;
    std::string text;
  };

  void Prepare(std::string title, platform::Answer answer);
  void PrepareFile(std::string path) { file_ = std::move(path); }

  // Forgets beeps and boxes that were looked at, for the next action.
  void StartAction();
  // Takes a box of that title that has come, if there is one.
  std::optional<Box> Claim(std::string_view title);
  [[nodiscard]] bool Beeped() const { return beeped_; }
  [[nodiscard]] const std::string& HelpLine() const { return helpLine_; }
  // What must not be: a box that nobody foresaw, told in words. Empty for nothing.
  [[nodiscard]] std::string Unforeseen() const;
  // A question among them, which has got the answer that changes least.
  [[nodiscard]] bool AskedInVain() const { return !unanswered_.empty(); }
  // Titles of answers that no box has come for.
  [[nodiscard]] std::vector<std::string> Unused() const;

  platform::Answer ShowBox(const platform::MessageBox& box) override;
  std::optional<std::string> AskOpen(const platform::FileDialog& dialog) override;
  std::optional<std::string> AskSave(const platform::FileDialog& dialog) override;
  void SetHelpLine(const std::string& text) override { helpLine_ = text; }
  void SetPointer(platform::Pointer shape) override { inner_.SetPointer(shape); }
  void Beep() override { beeped_ = true; }
  void DoEvents() override { inner_.DoEvents(); }

 private:
  struct Prepared {
    std::string title;
    platform::Answer answer;
  };
  std::optional<std::string> takeFile();

  platform::Forms& inner_;
  std::deque<Prepared> answers_;
  std::optional<std::string> file_;
  std::vector<Box> told_;   // boxes with OK only that nobody has looked at yet
  std::vector<Box> seen_;   // answered ones of the present action
  std::string unanswered_;  // a question without an answer
  std::string helpLine_;
  bool beeped_ = false;
};

// Plays a script on the screens of a control. Lines: see `ScriptHelp`.
class ScreenScript : public ScreenHost {
 public:
  // `text` is in UTF-8. The control shows its boxes through `forms`.
  ScreenScript(Ostrand& control, ScriptForms& forms, std::string_view text);

  // Plays it from the first line to the last; the error begins with the number of the line that
  // could not be done or that was not as expected.
  Result<> Run();

  void ShowModal(Screen& screen) override;

 private:
  struct Word {
    std::string text;
    bool quoted;
  };
  using Words = std::vector<Word>;
  struct Verb;

  static std::optional<Words> wordsOf(std::string_view line);
  void play(Screen* screen);
  void playLine(Screen* screen, std::string_view line);
  void fail(const std::string& why);
  bool failForBox();
  Control* usable(Screen* screen, const Word& name);

  void open(Screen* screen, const Words& words);
  void answer(Screen* screen, const Words& words);
  void choose(Screen* screen, const Words& words);
  void type(Screen* screen, const Words& words);
  void typeOnMainScreen(const Words& words);
  void key(Screen* screen, const Words& words);
  void pick(Screen* screen, const Words& words);
  void check(Screen* screen, const Words& words);
  void spin(Screen* screen, const Words& words);
  void press(Screen* screen, const Words& words);
  void end(Screen* screen, const Words& words);
  void expect(Screen* screen, const Words& words);
  void expectBox(const Words& words);
  void expectControl(Screen* screen, const Words& words);

  Ostrand& control_;
  ScriptForms& forms_;
  std::string text_;  // in Windows-1252
  std::string_view rest_;
  int line_ = 0;
  int actionLine_ = 0;  // the last line that did something
  std::string failure_;
};

// The lines of a script and what they do, for people.
std::string_view ScriptHelp();

// All screens with their controls and what can be done with them, found by opening each one on a
// sample project in the control's store.
std::string ScreenCatalog(Ostrand& control);

}  // namespace ostrand
