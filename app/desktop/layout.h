// Where the widgets of a screen stand, from the groups, rows and kinds of its controls.
#pragma once

#include <memory>
#include <vector>

#include "bind.h"

namespace ostrand::desktop {

using BoundControls = std::vector<std::unique_ptr<BoundControl>>;

// Shown while one of its controls is: a group under its heading, the header of a column.
struct LaidPart {
  QWidget* widget;
  std::vector<BoundControl*> controls;
};

struct Laid {
  QWidget* page;  // without a parent
  std::vector<LaidPart> parts;
};

// Shows and hides the parts for their controls.
void ShowParts(const std::vector<LaidPart>& parts);

// Lays out all controls, each in one place, in the order in which they come. `maxHeight` and
// `maxWidth` are pixels: groups that would be higher come in two columns, if these fit.
Laid LayOut(const BoundControls& controls, int maxWidth, int maxHeight);

}  // namespace ostrand::desktop
