// A person in front of the table screens.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "model/defaults.h"
#include "model/options.h"
#include "setup/controls/screen.h"
#include "support/scripted_forms.h"

namespace ostrand::testing {

// Plays the next of its scenes on each screen that is opened.
class SceneHost : public ScreenHost {
 public:
  ~SceneHost() override { EXPECT_TRUE(scenes.empty()) << "a screen was not opened"; }
  void ShowModal(Screen& screen) override {
    ASSERT_FALSE(scenes.empty()) << "nobody asked for " << screen.Name();
    const std::function<void(Screen&)> scene = std::move(scenes.front());
    scenes.erase(scenes.begin());
    scene(screen);
  }

  std::vector<std::function<void(Screen&)>> scenes;
};

class TableScreens : public ::testing::Test {
 protected:
  TableScreens() { ORVUS_COMMON::SetAllDefaults(*store); }

  // What a person does with a control by its name; the next control to be used takes the focus.
  static Control& control(Screen& screen, std::string_view name) {
    Control* found = screen.Find(name);
    if (found == nullptr) throw std::runtime_error("no control " + std::string(name));
    screen.MoveFocus(found);
    return *found;
  }
  static void type(Screen& screen, std::string_view name, std::string_view keys) {
    EXPECT_TRUE(control(screen, name).Usable()) << name;
    control(screen, name).TypeText(keys);
    screen.MoveFocus(nullptr);
  }
  static void pick(Screen& screen, std::string_view name, std::string_view item) {
    EXPECT_TRUE(control(screen, name).Usable()) << name;
    EXPECT_TRUE(control(screen, name).Pick(item)) << name << " " << item;
  }
  static void check(Screen& screen, std::string_view name, bool on) {
    EXPECT_TRUE(control(screen, name).Usable()) << name;
    EXPECT_TRUE(control(screen, name).Check(on)) << name;
  }
  static void press(Screen& screen, std::string_view name) {
    EXPECT_TRUE(control(screen, name).Usable()) << name;
    EXPECT_TRUE(control(screen, name).Press()) << name;
  }
  static std::string shown(Screen& screen, std::string_view name) {
    const Control* found = screen.Find(name);
    return found == nullptr ? "no control" : found->Text();
  }
  static bool usable(Screen& screen, std::string_view name) {
    const Control* found = screen.Find(name);
    return found != nullptr && found->Usable();
  }

  ScriptedForms forms;
  SceneHost host;
  OptionValues options;
  std::vector<i32> kinds;
  std::unique_ptr<ProjectStore> store = NewStore();
  ScreenContext context{*store, forms, host, options, -1, kinds};
};

}  // namespace ostrand::testing
