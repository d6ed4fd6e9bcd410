// A user who does anything at all, on the screens of any project.
#pragma once

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <string>

#include "setup/controls/choice.h"
#include "setup/controls/screen.h"
#include "support/scripted_forms.h"
#include "text/number.h"

namespace ostrand::testing {

class AnyUser {
 public:
  explicit AnyUser(std::uint32_t seed) : random_(seed) {}

  void Act(Screen& screen, int actions) {
    for (int n = 0; n < actions && screen.Result() == ModalResult::kNone; ++n) act(screen);
  }
  int Below(std::size_t limit) { return static_cast<int>(random_() % limit); }

 private:
  void act(Screen& screen) {
    if (Below(8) == 0) {
      for (const Screen::Opener& opener : screen.Openers()) opener.open(NumberText(1 + Below(4)));
      return;
    }
    const auto& controls = screen.Controls();
    Control& control = *controls[static_cast<std::size_t>(Below(controls.size()))];
    if (!control.Usable()) return;
    // A field that can't be left is as it was before.
    if (!screen.MoveFocus(&control)) static_cast<TextField*>(screen.Focused())->Escape();
    if (auto* choice = dynamic_cast<Choice*>(&control)) {
      if (choice->Items.empty()) return;
      choice->Pick(choice->Items[static_cast<std::size_t>(Below(choice->Items.size()))].Text);
    } else if (control.Kind() == ControlKind::kCheck) {
      control.Check(Below(2) == 0);
    } else if (control.Kind() == ControlKind::kButton) {
      control.Press();
    } else if (Below(2) == 0) {
      control.Spin(Below(3) != 0);
    } else {
      constexpr std::string_view kTexts[] = {"0",  "1",  "2",  "3",  "4",    "7",      "12",
                                             "19", "40", "",   "-5", "5000", "1e9",    "2.5",
                                             "Hz", "-",  "99", "e",  "250",  "100000", "Counts"};
      // The project file does not keep that units are blank.
      const bool units = control.Name() == "Units";
      control.TypeText(units ? "Counts" : kTexts[Below(std::size(kTexts))]);
    }
  }

  std::mt19937 random_;
};

// Answers all boxes by chance and keeps their texts.
class AnyAnswers : public ScriptedForms {
 public:
  AnyAnswers(std::uint32_t seed, std::set<std::string>& texts) : random_(seed), texts_(texts) {}

  platform::Answer ShowBox(const platform::MessageBox& box) override {
    texts_.insert(box.text);
    if (box.buttons == platform::Buttons::kOk) return platform::Answer::kOk;
    return random_() % 2 == 0 ? platform::Answer::kYes : platform::Answer::kNo;
  }

 private:
  std::mt19937 random_;
  std::set<std::string>& texts_;
};

}  // namespace ostrand::testing
