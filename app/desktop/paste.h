// Cells of a spreadsheet, pasted into the table of a screen.
#pragma once

#include <QString>
#include <functional>
#include <vector>

#include "controls/screen.h"

namespace ostrand::desktop {

// Lines of cells.
using CellBlock = std::vector<std::vector<QString>>;

// Lines end in LF or CR LF, cells are separated by tabs; empty for an empty text.
CellBlock CellsOf(const QString& text);

// Fills the table with the cells, from this cell to the right and down; columns that only show are
// skipped. Each text is entered into its control as by the user. The first refusal ends it; the
// cells before stay. Returns the report for the help line, with the reason of a refusal as `reason`
// has it. The focus is then in the last cell that was reached.
QString PasteCells(Screen& screen, Control& from, const CellBlock& cells,
                   const std::function<QString()>& reason);

}  // namespace ostrand::desktop
