#include "places.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "session/main_buttons.h"
#include "text/number.h"
#include "text/strings.h"
#include "texts.h"
#include "verify/project_keys.h"

namespace ostrand::desktop {
namespace {

// What a main button edits, by a key that each of its items has; "#" is the number of the item.
struct ItemKey {
  int button;
  std::string_view section;
  std::string_view key;
  char kind = 0;  // of a ProgramBlock
};
constexpr std::array<ItemKey, 13> kItemKeys = {{
    {kConfigurationButton, project_keys::kConfigurationSection, "AutoChan"},
    {kExecutionButton, project_keys::kScanSetupSection, "ExecutionTime"},
    {kThermocoupleButton, project_keys::kTempBlocksSection, "Reps(#)", 'T'},
    {kVoltageButton, project_keys::kVoltBlocksSection, "Reps(#)", 'V'},
    {kBridgeButton, project_keys::kBridgeBlocksSection, "Reps(#)", 'B'},
    {kPulseButton, project_keys::kPulseBlocksSection, "Reps(#)", 'P'},
    {kTK40MButton, project_keys::kTK40MBlocksSection, "Reps(#)", 'A'},
    {kTablesButton, project_keys::kTableSetupSection, "TableOn(#)"},
    {kCanButton, project_keys::kCanItemsSection, "Name(#)", 'C'},
    {kCalcFieldsButton, project_keys::kCalcFieldsSection, "DataResolution(#)", 'F'},
    {kFlagsButton, project_keys::kFlagControlSection, "FlagInclude(#)"},
    {kPortsButton, project_keys::kPortSetupSection, "Include(0,#)"},
    {kExciteButton, project_keys::kExciteControlSection, "Include(#)"},
}};

KeyPlace placeOf(const ItemKey& row, int item) {
  const std::string key(Before(row.key, "#"));
  if (key == row.key) return PlaceOfKey(row.section, key);
  return PlaceOfKey(row.section, key + NumberText(item) + std::string(After(row.key, "#")));
}

const ItemKey* rowOf(int button) {
  const auto* row = std::find_if(kItemKeys.begin(), kItemKeys.end(),
                                 [&](const ItemKey& one) { return one.button == button; });
  return row == kItemKeys.end() ? nullptr : row;
}

}  // namespace

ScreenPlace PlaceOfButton(int button) {
  const ItemKey* row = rowOf(button);
  if (row == nullptr) return {};
  return {{{placeOf(*row, 1).screen.steps.front().screen}}, {}};
}

ScreenPlace PlaceOfItem(int button, int item) {
  const ItemKey* row = rowOf(button);
  if (row == nullptr) return {};
  ScreenPlace place = placeOf(*row, item).screen;
  ScreenStep& last = place.steps.back();
  // A screen of the item alone begins with its first field.
  if (place.steps.size() > 1 || !last.pick.empty()) place.control.clear();
  last.press = {};
  return place;
}

ScreenPlace PlaceOfSensor(int button, int block, int sensor) {
  const ItemKey* row = rowOf(button);
  if (row == nullptr) return {};
  const std::string numbers = NumberText(block) + "," + NumberText(sensor);
  return PlaceOfKey(row->section, "AliasName(" + numbers + ")").screen;
}

ProgramBlock BlockOfItem(int button, int item) {
  const ItemKey* row = rowOf(button);
  return row == nullptr || row->kind == 0 ? ProgramBlock{} : ProgramBlock{row->kind, item};
}

ScreenPlace PlaceOfBlock(ProgramBlock block) {
  for (const ItemKey& row : kItemKeys) {
    if (row.kind == block.kind && block.kind != 0) return placeOf(row, block.number).screen;
  }
  return {};
}

QString BlockOf(const Screen& screen) {
  const int block = ToInt16(Before(screen.Caption, " ")).value_or(0);
  for (const ItemKey& row : kItemKeys) {
    const KeyPlace place = placeOf(row, block);
    const std::vector<ScreenStep>& steps = place.screen.steps;
    if (steps.size() > 1 && steps.back().screen == screen.Name()) return FromProject(place.item);
  }
  return {};
}

}  // namespace ostrand::desktop
