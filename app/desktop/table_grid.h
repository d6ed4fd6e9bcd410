// The rows of a table: a header, then a line for each row with its number.
#pragma once

#include <QVBoxLayout>
#include <memory>
#include <vector>

#include "layout.h"

namespace ostrand::desktop {

// A table that can get further rows.
class TableGrid {
 public:
  virtual ~TableGrid() = default;
  // `cells` are those of one row, in the order of the columns.
  virtual void AddRow(const std::vector<BoundControl*>& cells) = 0;
};

// Adds the table of these cells to `box`: a column for each caption. A table wider than `maxWidth`
// pixels continues below with its further columns.
std::shared_ptr<TableGrid> LayOutTable(const std::vector<BoundControl*>& cells, QVBoxLayout& box,
                                       int maxWidth, std::vector<LaidPart>& parts);

}  // namespace ostrand::desktop
