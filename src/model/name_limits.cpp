#include "model/name_limits.h"

#include <algorithm>
#include <type_traits>

#include "model/name_statements.h"
#include "model/names.h"
#include "model/record_layout.h"
#include "text/number.h"

namespace ostrand {
namespace {

template <class Piece>
std::size_t lengthOf(const Piece& piece) {
  if constexpr (std::is_arithmetic_v<Piece>) {
    return NumberText(piece).size();
  } else {
    return std::string_view(piece).size();
  }
}

// Counts whether all statements put into it fit.
class Lines {
 public:
  template <class... Pieces>
  void operator()(const Pieces&... pieces) const {
    fit_ = fit_ && (lengthOf(pieces) + ...) <= kCommentColumn;
  }
  [[nodiscard]] bool Fit() const { return fit_; }

 private:
  mutable bool fit_ = true;
};

void putValue(const Lines& lines, const ValueName& value, std::string_view alias,
              std::string_view units) {
  std::string name(alias);
  if (alias.empty()) {
    name = value.only ? value.array : value.array + "(" + NumberText(value.index) + ")";
  } else {
    AliasStatement(lines, value.array, value.index, alias);
  }
  if (!units.empty()) UnitsStatement(lines, name, units);
  if (!value.mult.empty()) ScalingAliasStatement(lines, value.mult, value.index, "M$", name);
  if (!value.offset.empty()) ScalingAliasStatement(lines, value.offset, value.index, "O$", name);
}

void putLevels(const Lines& lines, const CanItemData& item) {
  for (int t = 1; t <= kTables; ++t) {
    if (!IsSelected(item.Output, t, kLevelCrossing)) continue;
    const std::string stem = item.Name + NumberText(t);
    const HistoSet& level = item.Output.Histo[t];
    LevelArrayStatement(lines, stem, 1, level.LevNumLevels);
    LevelArrayStatement(lines, stem, 2, level.LevNumTests);
    ItemLevelStatement(lines, item.Name, t);
    LevelSourceStatement(lines, "LC" + stem, 1, item.Name + "(1)");
    if (level.NumDims == 1) LevelSourceStatement(lines, "LC" + stem, 2, level.LevelMeasName);
  }
}

}  // namespace

bool ValueFits(const ValueName& value, std::string_view alias, std::string_view units) {
  const Lines lines;
  putValue(lines, value, alias, units);
  return lines.Fit();
}

bool UnitsFit(std::string_view array, std::string_view units) {
  const Lines lines;
  UnitsStatement(lines, array, units);
  return lines.Fit();
}

bool ItemFits(const CanItemData& item, int number) {
  const Lines lines;
  const std::string& name = item.Name;
  const std::string count = name + "NumVals";
  ItemConstantStatement(lines, name, "DataType", int{item.DataStyle});
  ItemConstantStatement(lines, name, "StartBit", int{item.StartBit});
  ItemConstantStatement(lines, name, "NumBits", int{item.NumBits});
  ItemConstantStatement(lines, name, "NumVals", int{item.Reps});
  ItemConstantStatement(lines, name, "Mult", item.DefaultMult);
  ItemConstantStatement(lines, name, "OSet", item.DefaultOffset);
  ItemArrayStatement(lines, true, name, count);
  ItemArrayStatement(lines, false, MultName(ORVUS_DOBJ_BLK_QBCAN, number), count);
  ItemArrayStatement(lines, false, OffsetName(ORVUS_DOBJ_BLK_QBCAN, number), count);
  if (!item.Units.empty()) UnitsStatement(lines, name, item.Units);
  putLevels(lines, item);
  const int values = std::clamp<int>(item.Reps, 0, kCanValues);
  for (int r = 1; r <= values; ++r) {
    const RepAlias& alias = item.Alias[r];
    putValue(lines, {.array = name, .index = r, .only = values == 1}, alias.AliasName,
             alias.AliasUnits);
  }
  return lines.Fit();
}

bool CalcFieldFits(std::string_view name, std::string_view units) {
  const Lines lines;
  VariableStatement(lines, true, name);
  if (!units.empty()) UnitsStatement(lines, name, units);
  return lines.Fit();
}

}  // namespace ostrand
