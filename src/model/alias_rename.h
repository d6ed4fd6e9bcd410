// Aliases that got another name, and the texts of a project that name them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/store.h"

namespace ostrand {

// A sensor of a block with the alias that it had and the one that it has now; empty for none.
struct AliasRename {
  std::string array;  // of the block: "VBlk1"
  int index = 0;      // of the sensor, from 1
  bool only = false;  // the only sensor of its block, which the array's name alone means as well
  std::string before;
  std::string after;

  // The sensor as element of its array: "VBlk1(2)".
  [[nodiscard]] std::string Element() const;
};
using AliasRenames = std::vector<AliasRename>;

// Whether a start, stop or write condition of any table names one of the sensors as it was called.
bool ConditionsUse(const TableSetup& tables, const AliasRenames& renames);

// Gives all texts of a project that name the sensors their new names, all at once, so that two
// aliases can change places. A sensor without an alias is named by its element, the only one of a
// block by its array. Expressions and formulas that name an element go on to do so.
void RenameVariables(ProjectStore& store, const AliasRenames& renames);

// The same in the level crossings of one block or item, for a copy that a screen works on.
void RenameInLevels(OutputSet& output, const AliasRenames& renames);

}  // namespace ostrand
