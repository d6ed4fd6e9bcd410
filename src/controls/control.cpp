#include "controls/control.h"

#include "controls/screen.h"
#include "platform/guarded.h"

namespace ostrand {

Control::Control(Screen& screen, ControlKind kind, std::string_view name)
    : screen_(screen), kind_(kind), name_(name) {
  screen.add(*this);
}

Control::~Control() { screen_.remove(*this); }

void Control::fire(const std::function<void()>& handler, std::string_view event) {
  if (!handler) return;
  Guarded(screen_.Forms(), screen_.Name() + "." + name_ + "_" + std::string(event), handler);
}

bool Button::Press() {
  fire(OnPress, "Click");
  return true;
}

bool CheckBox::Check(bool on) {
  if (checked_ == on) return true;
  checked_ = on;
  fire(OnClick, "Click");
  return true;
}

}  // namespace ostrand
