// The places of the widgets of a screen, from the groups, rows and kinds of its controls.
#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "bind.h"

namespace ostrand::desktop {

// Shown while one of its controls is visible: a group under its heading, the header of a column.
struct LaidPart {
  QWidget* widget;
  std::vector<BoundControl*> controls;
};

struct Laid {
  QWidget* page;  // without a parent
  std::vector<LaidPart> parts;
  // Adds a later row of the last table: all cells of the row, in their order. Null when the page
  // has no table.
  std::function<void(const std::vector<BoundControl*>& cells)> addRow;
};

// Shows and hides the parts for their controls; returns whether any has changed.
bool ShowParts(const std::vector<LaidPart>& parts);

// Lays out all controls, each in one place, in their order. A page higher than `maxHeight` pixels
// gets two columns if they fit into `maxWidth`.
Laid LayOut(const std::vector<BoundControl*>& controls, int maxWidth, int maxHeight);

}  // namespace ostrand::desktop
