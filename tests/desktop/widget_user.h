// A person at the windows of the screens, who does what a script says by keys and clicks.
#pragma once

#include <vector>

#include "screen_window.h"
#include "script/screen_script.h"

namespace ostrand::testing {

class WidgetUser final : public ScreenHands, public desktop::ScreenWindows {
 public:
  // The script then plays at windows that `control` opens.
  WidgetUser(Ostrand& control, ScreenScript& script, desktop::QtForms& forms);

  bool MoveFocus(Screen& screen, Control* to) override;
  bool Type(Control& control, std::string_view text) override;
  void Enter(TextField& field) override;
  void Escape(TextField& field) override;
  bool Pick(Control& control, std::string_view item) override;
  bool Check(Control& control, bool on) override;
  bool Spin(Control& control, bool up) override;
  bool Press(Control& control) override;
  void Done(Screen& screen) override;
  void Cancel(Screen& screen) override;

 protected:
  void run(desktop::ScreenWindow& window) override;

 private:
  [[nodiscard]] desktop::BoundControl& bound(const Control& control) const;

  ScreenScript& script_;
};

// Fails the test for a widget that shows something else than its control.
void ExpectShown(const desktop::ScreenWindow& window);

}  // namespace ostrand::testing
