// How the controls of a screen are shown: headings, captions, kinds, as a table for each screen.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "controls/screen.h"

namespace ostrand {

// A row of such a table. A name that ends in "#" stands for all controls of that stem with a number
// after it: they are the rows of a table, in the order of their numbers. Where the group has a "#"
// too, each is in the group of its number instead: "Include2" of "Include#", "CAO#" is in "CAO2".
struct Face {
  std::string_view name;
  std::string_view group;
  std::string_view caption = {};                   // empty: the screen sets it
  std::optional<ControlKind> kind = std::nullopt;  // that of the class where it is left out
  std::string_view whyDisabled = {};               // empty: the screen sets it
};

// Gives the controls of the screen their faces; the last one of a control holds. A face without a
// control, in a screen that has it in some cases only, is passed over.
void Describe(Screen& screen, std::span<const Face> faces);

}  // namespace ostrand
