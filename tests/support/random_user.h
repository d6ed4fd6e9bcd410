// A user who does anything at all on any screen, and writes down what.
#pragma once

#include <cstdint>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "controls/screen.h"

namespace ostrand::testing {

// Opens screens, types, picks, checks, spins and presses at random, and leaves by Done or Cancel.
// Boxes are answered at random. The same seed does the same on the same screens.
class RandomUser : public platform::Forms, public ScreenHost {
 public:
  explicit RandomUser(std::uint32_t seed) : random_(seed) {}

  // A number from 0 to one below the limit.
  int Below(std::size_t limit) { return static_cast<int>(random_() % limit); }

  // What the user does with the screens to come.
  enum class Mood {
    kEdits,  // anything
    kLooks,  // opens every screen there is, picks what is picked, agrees to nothing and leaves by
             // Done, or by Cancel where Done is refused; calculators, whose Done is an edit, by
             // Cancel
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
  std::vector<std::string> log;            // the actions, as lines of a screen script
  std::set<std::string> screens;           // names of all that were shown
  std::set<std::string> titles;            // of all boxes
  ModalResult ended = ModalResult::kNone;  // how the last screen of the main row did
  std::string trouble;                     // what was reported as a failure of the system
  std::string stuck;                       // the screen that could not be left
  std::string unexplained;                 // openers that can't be used, and give no reason

 private:
  void edit(Screen& screen);
  void pickAgain(Screen& screen);
  void look(Screen& screen);
  void act(Screen& screen);
  void openAny(Screen& screen);
  void checkOpeners(const Screen& screen);
  void openAll(Screen& screen);
  void use(Control& control);
  std::string textFor(const Control& control);
  void leave(Screen& screen);
  void moveFocus(Screen& screen, Control* next);
  void note(std::string line);

  std::mt19937 random_;
  int depth_ = 0;  // screens open
};

}  // namespace ostrand::testing
