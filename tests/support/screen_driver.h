// Drives screens like a user: hidden or disabled controls can't be used.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "controls/screen.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "model/options.h"
#include "model/variables.h"
#include "screens/all_screens.h"
#include "support/scripted_forms.h"

namespace ostrand::testing {

// Shows a screen by running an action of the test on it: always the same, or the next of its
// scenes.
class DrivenHost : public ScreenHost {
 public:
  ~DrivenHost() override { EXPECT_TRUE(scenes.empty()) << "a screen was not opened"; }
  void ShowModal(Screen& screen) override {
    ++shown;
    if (onShow) return onShow(screen);
    ASSERT_FALSE(scenes.empty()) << "nobody asked for " << screen.Name();
    const auto scene = std::move(scenes.front());
    scenes.erase(scenes.begin());
    scene(screen);
  }

  std::function<void(Screen&)> onShow;
  std::vector<std::function<void(Screen&)>> scenes;
  int shown = 0;
};

inline Control& Reach(Screen& screen, std::string_view name) {
  Control* control = screen.Find(name);
  if (control == nullptr) throw std::runtime_error("no control " + std::string(name));
  screen.MoveFocus(control);
  return *control;
}
inline Control& Usable(Screen& screen, std::string_view name) {
  Control& control = Reach(screen, name);
  EXPECT_TRUE(control.Usable()) << name;
  return control;
}
inline void Type(Screen& screen, std::string_view name, std::string_view keys) {
  EXPECT_TRUE(Usable(screen, name).TypeText(keys));
  screen.MoveFocus(nullptr);
}
inline void Spin(Screen& screen, std::string_view name, bool up) {
  EXPECT_TRUE(Usable(screen, name).Spin(up));
}
inline void Pick(Screen& screen, std::string_view name, std::string_view item) {
  EXPECT_TRUE(Usable(screen, name).Pick(item)) << name << " has no " << item;
}
inline void Check(Screen& screen, std::string_view name, bool on) {
  EXPECT_TRUE(Usable(screen, name).Check(on));
}
inline void Press(Screen& screen, std::string_view name) {
  EXPECT_TRUE(Usable(screen, name).Press());
}
inline std::string Shown(const Screen& screen, std::string_view name) {
  const Control* control = screen.Find(name);
  return control == nullptr ? "no such control" : control->Text();
}
inline bool IsUsable(const Screen& screen, std::string_view name) {
  const Control* control = screen.Find(name);
  return control != nullptr && control->Usable();
}
// Opens a screen by its name; false if it can't be opened.
inline bool Open(Screen& screen, std::string_view name, std::string_view argument = {}) {
  screen.MoveFocus(nullptr);
  for (Opener* opener : screen.Openers()) {
    if (opener->Opens() != name || !opener->IsFor(argument)) continue;
    return opener->Usable() && opener->Press();
  }
  return false;
}

// A new project with screens over it.
class ScreenTest : public ::testing::Test {
 protected:
  ScreenTest() {
    ORVUS_COMMON::SetLoggerConstants(*store);
    ORVUS_COMMON::SetAllDefaults(*store);
  }

  // Opens a screen from another and acts on it.
  void open(Screen& from, std::string_view name, std::string_view argument,
            const std::function<void(Screen&)>& actions) {
    host.onShow = actions;
    ASSERT_TRUE(Open(from, name, argument)) << name;
  }
  // Opens a screen, acts on it and leaves by Done.
  void edit(Screen& from, std::string_view name, std::string_view argument,
            const std::function<void(Screen&)>& actions) {
    open(from, name, argument, [&](Screen& screen) {
      actions(screen);
      if (screen.Result() == ModalResult::kNone) screen.Done();
      ASSERT_NE(screen.Result(), ModalResult::kNone);
    });
  }

  ScriptedForms forms;
  DrivenHost host;
  OptionValues options;
  std::vector<i32> kinds{kVariableKinds.begin(), kVariableKinds.end()};
  std::unique_ptr<ProjectStore> store = NewStore();
  ScreenContext context{*store,  forms, host, AllScreens(),
                        options, -1,    kinds};  // with all warnings
};

}  // namespace ostrand::testing
