// The controls of a screen, independent of a toolkit: what a user sees of them and what they do. A
// setter named after its property fires no events; one named after a user action (`Pick`, `Check`,
// `Press`) does.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace ostrand {

class Screen;

// How a host shows a control; also identifies its class.
enum class ControlKind {
  // Label
  kLabel,    // a text
  kFigure,   // a number or an interval that the screen works out
  kCode,     // a line of the program, in a font of fixed width
  kPicture,  // drawn from what it shows: a channel chart, a map
  // TextField, NumericField and ListField
  kText,
  kNumber,
  kEditList,  // typed into, or picked from a list
  // Choice
  kDropDown,  // one line, with a list to pick from
  kOptions,   // all items at once, as buttons
  kTable,     // a list whose items have columns
  // CheckBox
  kCheck,
  kLamp,  // on or off, read-only
  // Button
  kButton
};

// Destructors are out of line, since a screen contains those of its dozens of controls.

// A named part of a screen. A control belongs to the screen it was made for and lives as long.
// Hosts read text, caption and state again after each action.
class Control {
 public:
  Control(Screen& screen, ControlKind kind, std::string_view name);
  virtual ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;

  [[nodiscard]] ControlKind Kind() const { return kind_; }
  // Sets another kind of the same class.
  void Kind(ControlKind kind) { kind_ = kind; }
  [[nodiscard]] const std::string& Name() const { return name_; }

  // Shown beside or on the control; "&" marks an access key.
  std::string Caption;
  std::string ToolTip;
  // The heading of a group of controls.
  std::string Group;
  // Row number from 1 for repeated controls: the rows of a table named after their group, with a
  // column for each caption. 0 for a control that does not repeat.
  int Row = 0;
  // Why it cannot be used while it is disabled or hidden, as a sentence. Openers always say why.
  std::string WhyDisabled;
  bool Enabled = true;
  bool Visible = true;
  [[nodiscard]] bool Usable() const { return Enabled && Visible; }
  // Enables it, or disables or hides it for a reason.
  void Enable(bool enabled, std::string_view whyNot);
  void Show(bool visible, std::string_view whyNot);

  // What it shows: its text, the item picked, "on" or "off".
  [[nodiscard]] virtual std::string Text() const = 0;

  // User actions; false when this kind of control does not support the action. The control must
  // already have the focus.
  virtual bool TypeText(std::string_view /*keys*/) { return false; }
  virtual bool Pick(std::string_view /*item*/) { return false; }
  virtual bool Check(bool /*on*/) { return false; }
  virtual bool Spin(bool /*up*/) { return false; }
  virtual bool Press() { return false; }

  // Called when the focus arrives or is about to leave; false keeps it here.
  virtual void Enter() {}
  virtual bool Leave() { return true; }

 protected:
  [[nodiscard]] Screen& owner() const { return screen_; }
  // Runs the handler of an event; reports a failure under the names of screen, control and event.
  void fire(const std::function<void()>& handler, std::string_view event);

 private:
  Screen& screen_;
  ControlKind kind_;
  std::string name_;
};

// A text set by the screen.
class Label : public Control {
 public:
  Label(Screen& screen, std::string_view name) : Control(screen, ControlKind::kLabel, name) {}
  ~Label() override;
  [[nodiscard]] std::string Text() const override { return text_; }
  void Text(std::string_view text) { text_ = text; }

  // Blinks every 500 milliseconds as a warning.
  bool Flashes = false;

 private:
  std::string text_;
};

// Shows whether something holds: "on" or "off".
class Lamp : public Control {
 public:
  Lamp(Screen& screen, std::string_view name) : Control(screen, ControlKind::kLamp, name) {}
  ~Lamp() override;
  [[nodiscard]] std::string Text() const override { return on_ ? "on" : "off"; }
  [[nodiscard]] bool IsOn() const { return on_; }
  void On(bool on) { on_ = on; }

 private:
  bool on_ = false;
};

class Button : public Control {
 public:
  Button(Screen& screen, std::string_view name) : Control(screen, ControlKind::kButton, name) {}
  ~Button() override;
  std::function<void()> OnPress;

  [[nodiscard]] std::string Text() const override { return Caption; }
  bool Press() override;
};

// A button that opens another screen.
class Opener : public Button {
 public:
  // Distinguishes openers of the same screen.
  struct Which {
    std::string value;      // "2" for the second block; empty for a single opener
    std::string_view name;  // of a numbered opener: "block"
  };
  // `opens` is the name of the screen.
  Opener(Screen& screen, std::string_view name, std::string_view opens, Which which = {});
  ~Opener() override;

  [[nodiscard]] const std::string& Opens() const { return opens_; }
  [[nodiscard]] const Which& ForWhich() const { return which_; }
  // Whether this opener matches what the user named; always true for a single opener.
  [[nodiscard]] bool IsFor(std::string_view which) const;

 private:
  std::string opens_;
  Which which_;
};

class CheckBox : public Control {
 public:
  CheckBox(Screen& screen, std::string_view name) : Control(screen, ControlKind::kCheck, name) {}
  ~CheckBox() override;
  std::function<void()> OnClick;  // after a change

  [[nodiscard]] bool Checked() const { return checked_; }
  // Sets it without events.
  void Checked(bool on) { checked_ = on; }
  [[nodiscard]] std::string Text() const override { return checked_ ? "on" : "off"; }
  // Sets it like a click; fires nothing when the state does not change.
  bool Check(bool on) override;

 private:
  bool checked_ = false;
};

}  // namespace ostrand
