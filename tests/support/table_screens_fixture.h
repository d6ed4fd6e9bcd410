// The screen driver with its routines as members, for the tests of tables.
#pragma once

#include "support/screen_driver.h"

namespace ostrand::testing {

class TableScreens : public ScreenTest {
 protected:
  static Control& control(Screen& screen, std::string_view name) { return Reach(screen, name); }
  static void type(Screen& screen, std::string_view name, std::string_view keys) {
    Usable(screen, name).TypeText(keys);  // the test checks a refused key
    screen.MoveFocus(nullptr);
  }
  static void pick(Screen& screen, std::string_view name, std::string_view item) {
    Pick(screen, name, item);
  }
  static void check(Screen& screen, std::string_view name, bool on) { Check(screen, name, on); }
  static void press(Screen& screen, std::string_view name) { Press(screen, name); }
  static std::string shown(Screen& screen, std::string_view name) { return Shown(screen, name); }
  static bool usable(Screen& screen, std::string_view name) { return IsUsable(screen, name); }
};

}  // namespace ostrand::testing
