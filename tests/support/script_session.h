// A session in memory, driven by screen scripts.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <string_view>

#include "script/screen_script.h"
#include "support/scripted_forms.h"
#include "support/user_session.h"

namespace ostrand::testing {

inline const std::string kNewProject = "[GEN VERSION]\r\nVersion=6.0\r\n";

struct InnerForms {
  ScriptedForms inner;  // fails the test if a box reaches it
};

class ScriptSession : public InnerForms, public UserSession<ScriptForms> {
 public:
  // `project` is the text of its file.
  explicit ScriptSession(std::string project = kNewProject)
      : UserSession(inner), project_(std::move(project)) {}

  // Empty if the script ended, else the error that stopped it.
  std::string Play(std::string_view text) {
    Player player(control, forms, text);
    player.onEnd = onEnd;
    player.OnShow = [this](const std::string& shown) { shows += shown; };
    if (lenient) player.Lenient();
    // Opening it enables the buttons of the screens that a player has connected.
    if (control.CurrentFileName().empty()) Open(project_);
    const Result<> played = player.Run();
    return played ? std::string() : played.ErrorText();
  }

  bool lenient = false;
  std::string shows;                                                // by "show"
  std::function<void(const Screen&)> onEnd = [](const Screen&) {};  // with each screen left

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

  std::string project_;
};

}  // namespace ostrand::testing
