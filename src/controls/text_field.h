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

// A line of text. Typed text takes effect when the focus leaves or Enter is pressed.
class TextField : public Control {
 public:
  TextField(Screen& screen, std::string_view name, KeyFilter filter = AnyText)
      : TextField(screen, ControlKind::kText, name, filter) {}
  ~TextField() override;

  std::size_t MaxLetters = std::string::npos;
  // Whether the field may hold a text while it is typed, in addition to its filter; for checks
  // against the rest of the screen.
  std::function<bool(std::string_view text)> MayHold;
  // Why the field may not hold a text while it is typed, for the help line; empty when it may.
  std::function<std::string_view(std::string_view text)> WhyNot;
  std::function<void()> OnChange;  // after each key
  std::function<void()> OnTake;    // when it takes effect
  std::function<void(bool up)> OnSpin;
  // Why a text that took effect was changed; empty for no reason but those of its class.
  std::function<std::string()> WhyChanged;

  [[nodiscard]] std::string Text() const override { return text_; }
  // Sets it without events.
  void Text(std::string_view text);
  // The same from OnChange, while the user types: the text takes effect later.
  void Correct(std::string_view text) { text_ = text; }

  // Whether a user can enter this text: length, filter, `MayHold`, `WhyNot`, and whether a project
  // file can store it. Always true for an empty text.
  [[nodiscard]] bool MayBecome(std::string_view text) const { return !refusalOf(text); }
  // Replaces the whole text after an edit by the user: insertion, deletion, paste or undo. The host
  // keeps cursor and selection. A text that the field may not hold is refused with a beep and the
  // reason, if any, in the help line; the result is then false and the text stays.
  virtual bool Edit(std::string_view text);
  [[nodiscard]] KeyFilter Filter() const { return filter_; }

  // Types one key at the end of the text, or in place of all of it when the field has just got the
  // focus. Keys that the filter refuses, that no project file can store or that `WhyNot` rejects
  // are dropped with a beep; the help line shows the reason of `WhyNot`.
  virtual void Key(char letter);
  // The next key replaces the whole text.
  void SelectAll() { selected_ = true; }
  // Clears the text.
  void Clear();
  // Restores the text from before the field got the focus.
  void Escape();
  // Whether the text differs from that one.
  [[nodiscard]] bool IsEdited() const { return text_ != before_; }
  // Makes the typed text take effect; false when it is not valid.
  bool Take();

  bool TypeText(std::string_view keys) override;
  // Typed text takes effect first.
  bool Spin(bool up) override;
  void Enter() override;
  // Accepts typed text, if any.
  bool Leave() override;

 protected:
  TextField(Screen& screen, ControlKind kind, std::string_view name, KeyFilter filter)
      : Control(screen, kind, name), filter_(filter) {}

  // Normalizes the text before it takes effect; false when it is not valid.
  virtual bool normalize(std::string& /*text*/) { return true; }
  // Whether the next key replaces the whole text.
  [[nodiscard]] bool isSelected() const { return selected_; }
  // Typed text has not taken effect yet.
  [[nodiscard]] bool isTyped() const { return typed_; }

 private:
  void change(std::string text);
  // Why a text is refused while it is typed; an empty reason for a bare beep, nothing when it is
  // accepted.
  [[nodiscard]] std::optional<std::string_view> refusalOf(std::string_view text) const;
  void refuse(std::string_view why);

  KeyFilter filter_;
  std::string text_;
  std::string before_;     // when the focus arrived
  std::string taken_;      // that took effect last
  bool selected_ = false;  // all of it: the next key replaces it
  bool typed_ = false;     // since it took effect
};

// The name of a unit. Blanks are dropped silently.
class UnitField : public TextField {
 public:
  UnitField(Screen& screen, std::string_view name) : TextField(screen, name, UnitNameText) {}
  void Key(char letter) override;
  bool Edit(std::string_view text) override;
};

}  // namespace ostrand
