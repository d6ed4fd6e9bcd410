// The values that data tables store, in the order of a record. The program and its description list
// the same outputs, so that the numbers of the fields are those of the columns.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/enums.h"
#include "model/store.h"

namespace ostrand {

inline constexpr i16 kPcCard = 2;  // TableLocation of a table on the PC card

// Families of outputs, in the order of a record.
enum class OutputFamily {
  kBattery,
  kPanel,
  kTK40MRef,
  kTemp,
  kVolt,
  kBridge,
  kPulse,
  kTK40M,
  kCan,
  kPort,
  kCalcField
};
inline constexpr int kOutputFamilies = static_cast<int>(OutputFamily::kCalcField) + 1;

// One source of outputs: a block, an item, a field or a single value. It points into the store.
struct OutputSource {
  OutputFamily family;
  OrvusDataObjTypes kind = ORVUS_DOBJ_SYS_BATT;  // kind of a block, for its names
  int n = 1;              // number of the block, item or calculated field, from 1
  std::string name = {};  // in the program, without parentheses: TBlk1
  std::string_view resolution = {};
  const OutputSet* output = nullptr;
  int lastCode = kLevelCrossing;  // the last instruction that can store the source
  // Number of values stored by the instructions up to the standard deviation, by histogram and
  // rainflow, and by level crossing.
  int reps = 1;
  int histoReps = 1;
  int levelReps = 1;
  bool numbered = false;                   // its values are elements of an array in the program
  std::span<const RepAlias> aliases = {};  // of the first repetitions; later ones have none
  std::string_view units = {};
};

// All sources that a table can store, selected or not: those in use, with the blocks of a family by
// number, and pulse slot 0 before slot 1.
std::vector<OutputSource> OutputSourcesOf(const ProjectStore& store);

// Whether the item is written to table `t`, from 1, by that instruction.
inline bool IsSelected(const OutputSet& output, int table, int code) {
  return output.OutputSelect[table][code] != 0;
}

// Renames the arrays of an item's level crossings from one stem to another: the item's name,
// "Calc3". Codes that name other arrays are unchanged.
void RenameLevelArrays(OutputSet& output, std::string_view before, std::string_view after);

// The first table in use that stores anything of an item, or else the first one in use, or else 1;
// no table stores an item without outputs.
i16 FirstTableUsed(const ProjectStore& store, const OutputSet* output);

// Values of a source that one instruction stores, each in separate columns.
int OutputValues(const OutputSource& source, int code);

// The level code in the program: an output of other than one dimension has 1 for its second size.
std::string LevelArguments(const HistoSet& histo);

// Columns of one value in a record of table `t`, from 1, by that instruction.
i32 OutputColumns(const OutputSet& output, int t, int code);

}  // namespace ostrand
