#include "controls/control.h"

#include "controls/screen.h"
#include "platform/guarded.h"
#include "text/strings.h"

namespace ostrand {

Control::Control(Screen& screen, ControlKind kind, std::string_view name)
    : screen_(screen), kind_(kind), name_(name) {
  screen.add(*this);
}

Control::~Control() { screen_.remove(*this); }

Label::~Label() = default;
Lamp::~Lamp() = default;
Button::~Button() = default;
CheckBox::~CheckBox() = default;

void Control::Enable(bool enabled, std::string_view whyNot) {
  Enabled = enabled;
  WhyDisabled = Usable() ? std::string_view() : whyNot;
}

void Control::Show(bool visible, std::string_view whyNot) {
  Visible = visible;
  WhyDisabled = Usable() ? std::string_view() : whyNot;
}

void Control::fire(const std::function<void()>& handler, std::string_view event) {
  if (!handler) return;
  Guarded(screen_.Forms(), screen_.Name() + "." + name_ + "_" + std::string(event), handler);
}

bool Button::Press() {
  fire(OnPress, "Click");
  return true;
}

Opener::Opener(Screen& screen, std::string_view name, std::string_view opens, Which which)
    : Button(screen, name), opens_(opens), which_(std::move(which)) {
  screen.openers_.push_back(this);
}

Opener::~Opener() { std::erase(owner().openers_, this); }

bool Opener::IsFor(std::string_view which) const {
  return which_.value.empty() || SameText(which_.value, Trim(which));
}

bool CheckBox::Check(bool on) {
  if (checked_ == on) return true;
  checked_ = on;
  fire(OnClick, "Click");
  return true;
}

}  // namespace ostrand
