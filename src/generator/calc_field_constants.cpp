// Declarations of the calculated fields.
#include "generator/calc_field_constants.h"

#include <algorithm>
#include <string>
#include <vector>

#include "generator/level_arrays.h"
#include "generator/savedld.h"
#include "model/names.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::size_t kNumberWidth = 4;

// A field as it is sorted: its name in upper case and its number in a separate column.
struct SortEntry {
  std::string key;
  int field;
  [[nodiscard]] std::string_view Name() const {
    return std::string_view(key).substr(0, key.size() - kNumberWidth);
  }
};

SortEntry entryOf(const CalcFieldGroup& group, int f) {
  const std::string number = NumberText(f);
  std::string key = Upper(Trim(group.Field[f].CalcField[1]));
  key.append(kNumberWidth - number.size(), ' ');
  return {key + number, f};
}

}  // namespace

Row<bool, 1, kCalcFields> CalcFieldRepeated(const CalcFieldGroup& group) {
  std::vector<SortEntry> entries;
  for (int f = 1; f <= group.CalcFieldCount; ++f) entries.push_back(entryOf(group, f));
  std::sort(entries.begin(), entries.end(),
            [](const SortEntry& left, const SortEntry& right) { return left.key < right.key; });
  Row<bool, 1, kCalcFields> repeated;
  for (std::size_t i = 1; i < entries.size(); ++i) {
    repeated[entries[i - 1].field] = entries[i - 1].Name() == entries[i].Name();
  }
  return repeated;
}

void SAVEDLD::CalcVarConstants() {
  const CalcFieldGroup& group = run_.store.CalcFields;
  const int count = group.CalcFieldCount;
  if (count <= 0) return;
  const auto repeated = CalcFieldRepeated(group);
  run_.PutEmpty();
  run_.PutSectionTitle(" CALC FIELD CONSTANTS ");
  run_.PutEmpty();
  run_.PutTitle("", " Calc Field ");
  for (int f = 1; f <= count; ++f) {
    if (repeated[f]) continue;
    const CalcFieldData& field = group.Field[f];
    const std::string& name = field.CalcField[1];
    const std::string& units = field.CalcField[3];
    const auto declare = [&](const auto&... statement) {
      run_.Put({statement...}, {"'Declare ", name, " as variable"});
    };
    VariableStatement(declare, field.Public != 0, name);
    const auto putUnits = [&](const auto&... statement) {
      run_.Put({statement...}, {"'", name, " Units"});
    };
    if (!units.empty()) UnitsStatement(putUnits, name, units);
  }
  for (int t = 1; t <= kTables; ++t) {
    for (int f = 1; f <= count; ++f) {
      const OutputSet& output = group.Field[f].Output;
      if (!IsSelected(output, t, kLevelCrossing)) continue;
      PutLevelArrays(run_, output, t, Joined({"Calc", f, t}), Joined({"'Formula", f}),
                     "'Data for array 2");
    }
  }
  for (int f = 1; f <= count; ++f) {
    for (int t = 1; t <= kTables; ++t) {
      if (!IsSelected(group.Field[f].Output, t, kLevelCrossing)) continue;
      run_.Put({"Dim ", CalcFieldLevelName(f, t), "(2)"},
               {"'Formula", f, " source for level crossing"});
    }
  }
}

}  // namespace ostrand
