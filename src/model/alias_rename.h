// Renamed aliases, and the texts of a project that name them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/store.h"

namespace ostrand {

// A sensor of a block with its old and its new alias; empty for none.
struct AliasRename {
  std::string array;  // of the block: "VBlk1"
  int index = 0;      // of the sensor, from 1
  bool only = false;  // the only sensor of its block; the array's name alone means it too
  std::string before;
  std::string after;

  // The sensor as element of its array: "VBlk1(2)".
  [[nodiscard]] std::string Element() const;
};
using AliasRenames = std::vector<AliasRename>;

// Whether a start, stop or write condition of any table names one of the sensors by its old name.
bool ConditionsUse(const TableSetup& tables, const AliasRenames& renames);

// Renames the sensors in all texts of a project, all at once, so that two aliases can change
// places. A sensor without an alias is named by its element, the only one of a block by its array.
// Expressions and formulas that name an element are unchanged.
void RenameVariables(ProjectStore& store, const AliasRenames& renames);

// Renames in the level crossings of one block or item, for the copy of a screen.
void RenameInLevels(OutputSet& output, const AliasRenames& renames);

}  // namespace ostrand
