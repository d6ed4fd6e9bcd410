// A user who acts at random on any screen.
#pragma once

#include <cstdint>
#include <random>
#include <set>
#include <string>

#include "controls/screen.h"

namespace ostrand::testing {

// Opens screens, types, picks, checks, spins and presses at random, and leaves by Done or Cancel.
// Boxes are answered at random. The same seed gives the same actions on the same screens.
class RandomUser : public platform::Forms, public ScreenHost {
 public:
  explicit RandomUser(std::uint32_t seed) : random_(seed) {}

  // A random number from 0 to `limit` - 1.
  int Below(std::size_t limit) { return static_cast<int>(random_() % limit); }

  // The actions on the next screens.
  enum class Mood {
    kEdits,  // anything
    kLooks,  // opens every screen, picks the current items, refuses all questions and leaves by
             // Done, or by Cancel if Done is refused or, as with calculators, is an edit
  };
  Mood mood = Mood::kEdits;

  void ShowModal(Screen& screen) override;
  platform::Answer ShowBox(const platform::MessageBox& box) override;
  std::optional<std::string> AskOpen(const platform::FileDialog& dialog) override;
  std::optional<std::string> AskSave(const platform::FileDialog& dialog) override;
  void SetHelpLine(const std::string&) override {}
  void SetPointer(platform::Pointer) override {}
  void Beep() override {}
  void DoEvents() override {}

  int actions = 0;                         // so far
  std::set<std::string> screens;           // names of all that were shown
  std::set<std::string> titles;            // of all boxes
  ModalResult ended = ModalResult::kNone;  // result of the last screen opened from the main row
  std::string trouble;                     // reported failures of the system
  std::string stuck;                       // a screen that could not be left
  std::string unexplained;                 // a control that does not say why it is disabled

 private:
  void edit(Screen& screen);
  void pickAgain(Screen& screen);
  void look(Screen& screen);
  void act(Screen& screen);
  void openAny(Screen& screen);
  void checkReasons(const Screen& screen);
  void openAll(Screen& screen);
  void use(Control& control);
  std::string textFor(const Control& control);
  void leave(Screen& screen);
  void moveFocus(Screen& screen, Control* next);

  std::mt19937 random_;
  int depth_ = 0;  // screens open
};

}  // namespace ostrand::testing
