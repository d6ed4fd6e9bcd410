// A user of screens, for tests: does to controls what a person can do.
#pragma once

#include <gtest/gtest.h>

#include <deque>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "model/defaults.h"
#include "model/options.h"
#include "model/variables.h"
#include "setup/controls/screen.h"
#include "support/scripted_forms.h"

namespace ostrand::testing {

// Each screen that opens takes the next act.
class ActingHost : public ScreenHost {
 public:
  std::deque<std::function<void(Screen&)>> acts;

  ~ActingHost() override { EXPECT_TRUE(acts.empty()) << "A screen never came."; }

  void ShowModal(Screen& screen) override {
    if (acts.empty()) {
      ADD_FAILURE() << "Unexpected screen " << screen.Name();
      return;
    }
    const auto act = std::move(acts.front());
    acts.pop_front();
    act(screen);
  }
};

// A project of defaults, and what screens need to edit it.
struct ScreenUser : ::testing::Test {
  ScriptedForms forms;
  ActingHost host;
  OptionValues options;
  std::vector<i32> kinds{kVariableKinds.begin(), kVariableKinds.end()};
  std::unique_ptr<ProjectStore> store = NewStore();
  ScreenContext context{*store, forms, host, options, 0, kinds};

  ScreenUser() { ORVUS_COMMON::SetAllDefaults(*store); }
};

// The control, with the focus on it.
inline Control& at(Screen& screen, std::string_view name) {
  Control* control = screen.Find(name);
  if (control == nullptr) throw std::runtime_error("no control " + std::string(name));
  EXPECT_TRUE(control->Usable()) << name;
  EXPECT_TRUE(screen.MoveFocus(control)) << name;
  return *control;
}
inline void type(Screen& screen, std::string_view name, std::string_view keys) {
  EXPECT_TRUE(at(screen, name).TypeText(keys)) << name;
}
inline void pick(Screen& screen, std::string_view name, std::string_view item) {
  EXPECT_TRUE(at(screen, name).Pick(item)) << name << ": " << item;
}
inline void check(Screen& screen, std::string_view name, bool on) {
  EXPECT_TRUE(at(screen, name).Check(on)) << name;
}
inline void press(Screen& screen, std::string_view name) {
  EXPECT_TRUE(at(screen, name).Press()) << name;
}
inline std::string shown(const Screen& screen, std::string_view name) {
  const Control* control = screen.Find(name);
  return control == nullptr ? "no control " + std::string(name) : control->Text();
}

}  // namespace ostrand::testing
