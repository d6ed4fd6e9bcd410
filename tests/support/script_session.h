// A session in memory, driven by screen scripts.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "model/new_store.h"
#include "script/screen_script.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/scripted_forms.h"
#include "support/test_surroundings.h"

namespace ostrand::testing {

class ScriptSession {
 public:
  // `project` is the text of its file.
  explicit ScriptSession(std::string project = "[GEN VERSION]\r\nVersion=6.0\r\n") {
    files.files["/new.VKG"] = std::move(project);
  }

  // Empty if the script ended, else the error that stopped it.
  std::string Play(std::string_view text) {
    Player player(control, forms, text);
    player.onEnd = onEnd;
    player.OnShow = [this](const std::string& shown) { shows += shown; };
    if (lenient) player.Lenient();
    // Opening it enables the buttons of the screens that a player has connected.
    if (control.CurrentFileName().empty()) {
      bool cancelled = true;
      control.OpenFile("/new.VKG", cancelled);
      EXPECT_FALSE(cancelled);
    }
    const Result<> played = player.Run();
    return played ? std::string() : played.ErrorText();
  }

  bool lenient = false;
  std::string shows;                                                // by "show"
  std::function<void(const Screen&)> onEnd = [](const Screen&) {};  // with each screen left

  MemoryFileSystem files;
  FixedClock clock;
  ScriptedForms inner;  // fails the test if a box reaches it
  ScriptForms forms{inner};
  TestSurroundings around{files, clock, forms, "/tmp/"};
  OstrandEvents nobodyListens;
  std::unique_ptr<ProjectStore> store = NewStore();
  Ostrand control{*store, around.all, nobodyListens};

 private:
  class Player : public ScreenScript {
   public:
    using ScreenScript::ScreenScript;
    void ShowModal(Screen& screen) override {
      ScreenScript::ShowModal(screen);
      onEnd(screen);
    }
    std::function<void(const Screen&)> onEnd;
  };
};

}  // namespace ostrand::testing
