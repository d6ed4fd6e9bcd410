// How the controls of a screen are shown: headings, captions, kinds, as a table for each screen.
#pragma once

#include <optional>
#include <span>
#include <string_view>

#include "controls/screen.h"

namespace ostrand {

// A row of such a table. A name that ends in "#" means all controls of that stem followed by a
// number: the rows of a table, in numerical order. With a "#" in the group too, each control goes
// into the group of its number: "Include2" of "Include#", "CAO#" into "CAO2".
struct Face {
  std::string_view name;
  std::string_view group;
  std::string_view caption = {};                   // empty: the screen sets it
  std::optional<ControlKind> kind = std::nullopt;  // empty: that of the class
  std::string_view whyDisabled = {};               // empty: the screen sets it
};

// Applies the faces to the controls of the screen; the last one for a control wins. Faces of
// controls that the screen does not have are skipped.
void Describe(Screen& screen, std::span<const Face> faces);

}  // namespace ostrand
