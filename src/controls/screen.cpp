#include "controls/screen.h"

#include "platform/guarded.h"
#include "text/strings.h"

namespace ostrand {

Screen::Screen(const ScreenContext& context, std::string_view name)
    : context_(context), name_(name) {}

Screen::~Screen() = default;

Control* Screen::Find(std::string_view name) const {
  for (Control* control : controls_) {
    if (SameText(control->Name(), name)) return control;
  }
  return nullptr;
}

void Screen::remove(const Control& control) {
  std::erase(controls_, &control);
  if (focused_ == &control) focused_ = nullptr;
}

bool Screen::MoveFocus(Control* control) {
  if (control == focused_) return true;
  if (focused_ != nullptr && !focused_->Leave()) return false;
  focused_ = control;
  if (control != nullptr) control->Enter();
  return true;
}

void Screen::Done() {
  if (!MoveFocus(nullptr)) return;
  if (!DoneEnabled) return context_.forms.Beep();
  bool ended = false;
  guarded("Done", [&] { ended = onDone(); });
  if (ended) result_ = ModalResult::kDone;
}

void Screen::Cancel() {
  bool ended = true;
  guarded("Cancel", [&] { ended = onCancel(); });
  if (ended) result_ = ModalResult::kCancel;
}

void Screen::Refuse(const std::string& why) const {
  Forms().SetHelpLine(why);
  Forms().Beep();
}

bool Screen::showModal(Screen& screen) {
  context_.host.ShowModal(screen);
  return screen.Result() == ModalResult::kDone;
}

bool Screen::guarded(std::string_view routine, const std::function<void()>& body) {
  return Guarded(context_.forms, name_ + "." + std::string(routine), body);
}

}  // namespace ostrand
