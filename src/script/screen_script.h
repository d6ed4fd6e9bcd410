// Scripts that use the screens like a person, line by line.
#pragma once

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "controls/screen.h"
#include "script/objections.h"
#include "script/script_forms.h"
#include "session/ostrand.h"
#include "text/result.h"

namespace ostrand {

// Carries out the actions of a script: on the controls themselves, or at the windows of a host.
class ScreenHands {
 public:
  virtual ~ScreenHands() = default;
  // False if the focused field keeps the focus.
  virtual bool MoveFocus(Screen& screen, Control* to) { return screen.MoveFocus(to); }
  // These act on the control that has the focus; false if it does not support the action.
  virtual bool Type(Control& control, std::string_view text) { return control.TypeText(text); }
  virtual void Enter(TextField& field) { static_cast<void>(field.Leave()); }  // the focus stays
  virtual void Escape(TextField& field) { field.Escape(); }
  virtual bool Pick(Control& control, std::string_view item) { return control.Pick(item); }
  virtual bool Check(Control& control, bool on) { return control.Check(on); }
  virtual bool Spin(Control& control, bool up) { return control.Spin(up); }
  virtual bool Press(Control& control) { return control.Press(); }
  virtual void Done(Screen& screen) { screen.Done(); }
  virtual void Cancel(Screen& screen) { screen.Cancel(); }
};

// Plays a script on the screens of a control. Lines: see `ScriptHelp`.
class ScreenScript : public ScreenHost {
 public:
  // `text` is in UTF-8. The control shows its boxes through `forms`.
  ScreenScript(Ostrand& control, ScriptForms& forms, std::string_view text);
  // Acts through `hands`, which must outlive the script.
  void By(ScreenHands& hands) { hands_ = &hands; }
  // Goes on after refused keys, changed values, spins without effect and screens that stay open.
  // Otherwise each of them ends the script, unless the lines after it expect just that.
  void Lenient() { strict_ = false; }
  // Receives what the script shows, in lines of CR LF.
  std::function<void(const std::string& text)> OnShow;

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
  bool failForObjection();
  bool readWords(std::string_view line, Words& words);
  bool convert(Words& words);
  Control* usable(Screen* screen, const Word& name);
  static std::string keptFocus(const Screen& screen);
  bool moveFocus(Screen& screen, Control* to);
  void enterTyped();
  void lookAtTyped(int beepsBefore);
  void object(int line, const Control* control, std::string text, int beepsBefore);
  [[nodiscard]] std::string help() const;

  void open(Screen* screen, const Words& words);
  bool openOptions(std::string_view name);
  void answer(Screen* screen, const Words& words);
  void choose(Screen* screen, const Words& words);
  void type(Screen* screen, const Words& words);
  void typeOnMainScreen(const Words& words);
  void key(Screen* screen, const Words& words);
  void pick(Screen* screen, const Words& words);
  void pickItem(Control& control, const std::string& item);
  void check(Screen* screen, const Words& words);
  void spin(Screen* screen, const Words& words);
  void press(Screen* screen, const Words& words);
  void end(Screen* screen, const Words& words);
  void show(Screen* screen, const Words& words);
  void expect(Screen* screen, const Words& words);
  void expectBox(const Words& words);
  void expectControl(Screen* screen, const Words& words);
  void expectItem(const Control& control, std::span<const Word> words);
  bool expectLooks(const Looks& looks, std::span<const Word> words);
  void shows(const std::string& what, const std::string& text, std::string_view expected);
  static bool isWord(const Word& word, std::string_view meaning);

  Ostrand& control_;
  ScriptForms& forms_;
  ScreenHands controls_;  // acts on the controls directly
  ScreenHands* hands_ = &controls_;
  std::string text_;  // in UTF-8
  std::string_view rest_;
  int line_ = 0;
  int actionLine_ = 0;        // the last line that did something
  std::string actionScreen_;  // the screen that it was for; empty for the main screen
  bool strict_ = true;
  Objections objections_;
  // A text that has not taken effect yet.
  struct Typed {
    TextField* field = nullptr;
    std::string text;
    int line = 0;
  };
  Typed typed_;
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
