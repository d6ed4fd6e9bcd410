// Fields that are typed into.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "controls/control.h"

namespace ostrand {

// Whether a field may hold a text while it is being typed.
using KeyFilter = bool (*)(std::string_view text);
bool AnyText(std::string_view text);
bool OnlyDigits(std::string_view text);
// A letter first, then letters, digits and "_": names of tables and aliases.
bool NameText(std::string_view text);
// The same with "@#$" as well: names of units.
bool UnitNameText(std::string_view text);

// A line of text. What is typed takes effect when the focus goes or Enter is pressed.
class TextField : public Control {
 public:
  TextField(Screen& screen, std::string_view name, KeyFilter filter = AnyText)
      : TextField(screen, ControlKind::kText, name, filter) {}

  std::size_t MaxLetters = std::string::npos;
  // Whether the field may hold a text while it is typed, beside its own filter; where a key is
  // tested against what the rest of the screen shows.
  std::function<bool(std::string_view text)> MayHold;
  // Why it may not hold a text while it is typed, for the help line; empty when it may.
  std::function<std::string_view(std::string_view text)> WhyNot;
  std::function<void()> OnChange;  // after each key
  std::function<void()> OnTake;    // when it takes effect
  std::function<void(bool up)> OnSpin;

  [[nodiscard]] std::string Text() const override { return text_; }
  // Sets it without any event.
  void Text(std::string_view text);
  // The same while it is typed, from OnChange: it takes effect later.
  void Correct(std::string_view text) { text_ = text; }

  // Whether a user can make it hold this text: length, filter, `MayHold` and `WhyNot` together, and
  // whether a project file can keep it. An empty text always may.
  [[nodiscard]] bool MayBecome(std::string_view text) const { return !refusalOf(text); }
  // The whole text as a user has edited it: a letter put in anywhere, one deleted, a paste, an
  // undo. The host keeps cursor and selection. A text that the field may not hold beeps and is
  // refused, with the reason in the help line, if there is one: the result is false, and the text
  // stays.
  virtual bool Edit(std::string_view text);

  // One key at the end of the text, or in place of all of it when it has just got the focus. A key
  // that the filter refuses is dropped with a beep; so is one that no project file can keep, and
  // one that `WhyNot` is against, for which the help line gives the reason.
  virtual void Key(char letter);
  // The next key replaces all of the text.
  void SelectAll() { selected_ = true; }
  // Takes away all of the text.
  void Clear();
  // The text that was there when the focus came is back.
  void Escape();
  // What is typed takes effect; false when it can't be taken.
  bool Take();

  bool TypeText(std::string_view keys) override;
  // What was typed takes effect first.
  bool Spin(bool up) override;
  void Enter() override;
  // Takes what was typed, if anything was.
  bool Leave() override;

 protected:
  TextField(Screen& screen, ControlKind kind, std::string_view name, KeyFilter filter)
      : Control(screen, kind, name), filter_(filter) {}

  // Brings the text into its form before it takes effect; false when it can't be taken.
  virtual bool normalize(std::string& /*text*/) { return true; }
  // Whether the next key replaces all of the text.
  [[nodiscard]] bool isSelected() const { return selected_; }
  // Something was typed that has not taken effect yet.
  [[nodiscard]] bool isTyped() const { return typed_; }

 private:
  void change(std::string text);
  // Why a text is refused while it is typed, empty without words; nothing when it is not.
  [[nodiscard]] std::optional<std::string_view> refusalOf(std::string_view text) const;
  void refuse(std::string_view why);

  KeyFilter filter_;
  std::string text_;
  std::string before_;     // when the focus came
  std::string taken_;      // what took effect last
  bool selected_ = false;  // all of it: the next key replaces it
  bool typed_ = false;     // since it took effect
};

// The name of a unit. Blanks are dropped without a word.
class UnitField : public TextField {
 public:
  UnitField(Screen& screen, std::string_view name) : TextField(screen, name, UnitNameText) {}
  void Key(char letter) override;
  bool Edit(std::string_view text) override;
};

}  // namespace ostrand
