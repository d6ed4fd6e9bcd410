// Where a key of the project file belongs: its place in the project and its value in words, and the
// control that sets it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "controls/screen.h"

namespace ostrand {

// One screen on the way to a control.
struct ScreenStep {
  std::string_view screen;      // by name
  std::string which = {};       // of several openers: "2" for the second block
  std::string_view pick = {};   // a choice to pick from when the screen is open
  int item = 0;                 // which item, from 0
  std::string_view press = {};  // then a button to press
  std::string_view open = {};   // and one that opens a part of the screen, where that is closed
};

// The screens from the main row on, and the control on the last of them. Without steps no screen
// sets the key: it is computed, or a calculator's, which opens from many blocks.
struct ScreenPlace {
  std::vector<ScreenStep> steps;
  // "AliasGFactor1|AliasOffset1" is the first of them that can be used.
  std::string control;
};

// What a key means. Sections have their brackets, keys their indices: "[VOLTAGE BLOCKS]" and
// "Range(2)".
struct KeyPlace {
  std::string place;     // "Voltage block 2, sensor 3"
  std::string item;      // "Voltage block 2"; empty for a key that belongs to none of several
  std::string words;     // "range"; the key itself for an unknown key
  bool derived = false;  // follows from other keys, which say it better
  ScreenPlace screen = {};
};
KeyPlace PlaceOfKey(std::string_view section, std::string_view key);

// A stored value as the screens show it: "on", "60 Hz". `isThere` is false for a key that the file
// does not have.
std::string ValueInWords(std::string_view section, std::string_view key, std::string_view value,
                         bool isThere);

// Picks and presses what a step needs on its screen, which has just been made. False if it can't.
bool TakeStep(Screen& screen, const ScreenStep& step);
// The button that opens the next screen, which may be disabled; null if there is none.
Opener* OpenerOf(const Screen& screen, const ScreenStep& next);
// The first control of these names, as in ScreenPlace, that the screen has; null if it has none.
Control* NamedControl(const Screen& screen, std::string_view names);
// The first control of these names that can be used, or, if there is none, the usable one before
// the first that the screen has, or else after it; null if the screen has none of them.
Control* UsableControl(const Screen& screen, std::string_view names);

}  // namespace ostrand
