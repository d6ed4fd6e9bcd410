// Scripts that use the screens like a person, line by line.
#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/screen.h"
#include "script/script_forms.h"
#include "session/ostrand.h"
#include "text/result.h"

namespace ostrand {

// Plays a script on the screens of a control. Lines: see `ScriptHelp`.
class ScreenScript : public ScreenHost {
 public:
  // `text` is in UTF-8. The control shows its boxes through `forms`.
  ScreenScript(Ostrand& control, ScriptForms& forms, std::string_view text);

  // Plays the whole script; an error begins with the number of the line that failed or did not have
  // the expected result.
  Result<> Run();

  void ShowModal(Screen& screen) override;

  // Whether an option screen was opened, which may have changed the settings.
  [[nodiscard]] bool OpenedOptions() const { return openedOptions_; }

 private:
  struct Word {
    std::string text;
    bool quoted;
  };
  using Words = std::vector<Word>;
  struct Verb;
  struct Looks;

  static std::optional<Words> wordsOf(std::string_view line);
  void play(Screen* screen);
  void playLine(Screen* screen, std::string_view line);
  void fail(const std::string& why);
  bool failForBox();
  Control* usable(Screen* screen, const Word& name);
  static std::string keptFocus(const Screen& screen);

  void open(Screen* screen, const Words& words);
  bool openOptions(std::string_view name);
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
  void expectItem(const Control& control, std::span<const Word> words);
  bool expectLooks(const Looks& looks, std::span<const Word> words);
  void shows(const std::string& what, const std::string& text, std::string_view expected);
  static bool isWord(const Word& word, std::string_view meaning);

  Ostrand& control_;
  ScriptForms& forms_;
  std::string text_;  // in UTF-8
  std::string_view rest_;
  int line_ = 0;
  int actionLine_ = 0;  // the last line that did something
  // A refused way out that the script has not acknowledged yet.
  std::string refusal_;
  int refusalLine_ = 0;
  bool refusalAnswered_ = false;  // it raised a question that the script had answered
  std::string failure_;
  bool openedOptions_ = false;
};

// Help on the lines of a script and their effects.
std::string_view ScriptHelp();

}  // namespace ostrand
