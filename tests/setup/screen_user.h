// A person at a screen: goes to a control by its name and does what can be done with it. A control
// that can't be used fails the test.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "model/defaults.h"
#include "model/options.h"
#include "setup/controls/screen.h"
#include "support/scripted_forms.h"

namespace ostrand::testing {

// What was prepared runs on the next screen that opens.
class UserHost : public ScreenHost {
 public:
  std::function<void(Screen&)> next;
  int shown = 0;

  void ShowModal(Screen& screen) override {
    ++shown;
    const auto actions = std::move(next);
    next = nullptr;
    if (actions) actions(screen);
  }
};

class ScreenUserTest : public ::testing::Test {
 protected:
  ScreenUserTest() {
    ORVUS_COMMON::SetLoggerConstants(*store);
    ORVUS_COMMON::SetAllDefaults(*store);
  }

  ScreenContext context() { return {*store, forms, host, options, 0, kinds}; }

  static Control& at(Screen& screen, std::string_view name) {
    Control* control = screen.Find(name);
    if (control == nullptr) throw std::invalid_argument("no control " + std::string(name));
    return *control;
  }
  static Control& reach(Screen& screen, std::string_view name) {
    Control& control = at(screen, name);
    EXPECT_TRUE(control.Usable()) << name;
    EXPECT_TRUE(screen.MoveFocus(&control)) << name;
    return control;
  }
  static void type(Screen& screen, std::string_view name, std::string_view keys) {
    EXPECT_TRUE(reach(screen, name).TypeText(keys));
    EXPECT_TRUE(screen.MoveFocus(nullptr)) << name << ' ' << keys;
  }
  static void pick(Screen& screen, std::string_view name, std::string_view item) {
    EXPECT_TRUE(reach(screen, name).Pick(item)) << name << ' ' << item;
  }
  static void check(Screen& screen, std::string_view name, bool on) {
    EXPECT_TRUE(reach(screen, name).Check(on));
  }
  static void spin(Screen& screen, std::string_view name, bool up) {
    EXPECT_TRUE(reach(screen, name).Spin(up));
  }
  static void press(Screen& screen, std::string_view name) {
    EXPECT_TRUE(reach(screen, name).Press());
  }
  static std::string text(Screen& screen, std::string_view name) { return at(screen, name).Text(); }

  // Opens a screen from another and acts on it.
  void open(Screen& screen, std::string_view name, std::string_view argument,
            std::function<void(Screen&)> actions) {
    for (const Screen::Opener& opener : screen.Openers()) {
      if (opener.name != name) continue;
      host.next = std::move(actions);
      EXPECT_TRUE(opener.open(argument)) << name;
      EXPECT_EQ(host.next, nullptr) << name << " did not open";
      return;
    }
    ADD_FAILURE() << "no opener " << name;
  }
  // The same, closed by Done.
  void edit(Screen& screen, std::string_view name, std::string_view argument,
            const std::function<void(Screen&)>& actions) {
    open(screen, name, argument, [&](Screen& opened) {
      actions(opened);
      opened.Done();
      EXPECT_EQ(opened.Result(), ModalResult::kDone);
    });
  }

  ScriptedForms forms;
  UserHost host;
  OptionValues options;
  std::vector<i32> kinds;
  std::unique_ptr<ProjectStore> store = NewStore();
};

}  // namespace ostrand::testing
