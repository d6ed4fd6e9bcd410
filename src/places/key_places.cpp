#include "places/key_places.h"

#include <algorithm>
#include <array>

#include "controls/choice.h"
#include "model/units.h"
#include "places/key_table.h"
#include "projectfile/key.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using namespace key_table;
using ORVUS_GENFILE::Brackets;
using ORVUS_GENFILE::Key;

constexpr std::array<std::string_view, kOutputCodes> kOutputControls = {"Smp", "Max", "Min", "Avg",
                                                                        "Std", "Hst", "RFH", "LCr"};
constexpr int kBytePort = 9;  // ports 1 to 8 as one

// The numbers in the brackets of a key by their meaning; 0 for what it does not have.
struct Numbers {
  int item = 0;   // block, flag, port, or table of a table's own key
  int table = 0;  // that stores an item
  int other = 0;  // sensor, condition, state, instruction, column, level
};

// The first digit is the table, the others are the condition if there are any.
Numbers triggerNumbers(int joined) {
  if (joined < 10) return {joined, 0, 1};
  const int power = joined < 100 ? 10 : 100;
  return {joined / power, 0, joined % power};
}

Numbers numbersOf(Shape shape, const Key& key) {
  const auto& index = key.index;
  switch (shape) {
    case Shape::kNone:
    case Shape::kSlot:
      return {};
    case Shape::kNumbered:
    case Shape::kMask:
      return {0, 0, index[0]};
    case Shape::kItem:
      return {index[0], 0, 0};
    case Shape::kEvent:
      return {index[0], 0, static_cast<int>(key.brackets)};
    case Shape::kItemColumn:
    case Shape::kSensor:
      return {index[0], 0, index[1]};
    case Shape::kTableItem:
      return {index[1], index[0], 0};
    case Shape::kSelection:
      return {index[1], index[0], index[2]};
    case Shape::kLevel:
      return {index[1], index[0], index[2] + 1};
    case Shape::kTable:
      return {0, index[0], 0};
    case Shape::kTableValue:
      return {0, index[0], index[1]};
    case Shape::kTriggerRow:
      return triggerNumbers(index[0]);
    case Shape::kWriteRow:
      return {index[0], 0, key.count > 1 ? index[1] : 1};
    case Shape::kPortItem:
      return {index[1], 0, 0};
    case Shape::kPortState:
      return {index[2], 0, index[0] + 1};
    case Shape::kPortTable:
      return {0, index[1], 0};
    case Shape::kPortValue:
      return {0, index[1], index[3]};
  }
  return {};
}

int indicesOf(Shape shape) {
  switch (shape) {
    case Shape::kNone:
      return 0;
    case Shape::kItemColumn:
    case Shape::kSensor:
    case Shape::kTableItem:
    case Shape::kTableValue:
    case Shape::kPortItem:
      return 2;
    case Shape::kSelection:
    case Shape::kLevel:
    case Shape::kPortState:
    case Shape::kMask:
    case Shape::kPortTable:
      return 3;
    case Shape::kPortValue:
      return 4;
    default:
      return 1;
  }
}

bool hasShape(Shape shape, const Key& key) {
  if (shape == Shape::kEvent) return key.count == 1;
  if (shape == Shape::kWriteRow) {
    return key.Has(1) || key.Has(2, Brackets::kSpaced);
  }
  return key.Has(indicesOf(shape));
}

// Without the prefix of a level crossing's kind: "TmLevelCode".
std::string_view stemOf(std::string_view name) {
  constexpr std::size_t kPrefix = 2;
  if (name.size() <= kPrefix) return name;
  const std::string_view rest = name.substr(kPrefix);
  return rest.starts_with("Lev") || rest == "NumDims" ? rest : name;
}

const KeyRow* find(const SectionRow& section, const Key& key) {
  const std::string_view stem = stemOf(key.name);
  for (const KeyRow& row : kRows) {
    const bool same = (row.sections & In(section.section)) != 0 && row.key == stem;
    if (same && hasShape(row.shape, key)) return &row;
  }
  return nullptr;
}

std::string_view nameIn(const Names& names, int number) {
  const auto at = static_cast<std::size_t>(number - names.first);
  return number >= names.first && at < names.names.size() ? names.names[at] : std::string_view{};
}

std::string itemOf(const SectionRow& section, const Numbers& numbers) {
  if (numbers.item == 0) return {};
  const bool isPort = section.section == Section::kPortSetup;
  if (isPort && numbers.item == kBytePort) return "Ports 1-8 as a byte";
  return std::string(section.item) + " " + NumberText(numbers.item);
}

std::string placeOf(const SectionRow& section, const KeyRow& row, const Numbers& numbers) {
  std::string place = itemOf(section, numbers);
  if (place.empty()) place = section.group;
  if (row.shape == Shape::kSensor) {
    const bool isCan = section.section == Section::kCanItems;
    place += (isCan ? ", value " : ", sensor ") + NumberText(numbers.other);
  }
  if (numbers.table != 0) place += ", table " + NumberText(numbers.table);
  return place;
}

std::string wordsOf(const KeyRow& row, const Numbers& numbers) {
  switch (row.shape) {
    case Shape::kNumbered:
    case Shape::kItemColumn:
    case Shape::kMask:
    case Shape::kSelection:
    case Shape::kTableValue:
    case Shape::kPortValue:
      return std::string(nameIn(row.names, numbers.other));
    case Shape::kTriggerRow:
    case Shape::kWriteRow:
    case Shape::kLevel:
      return std::string(row.words) + " " + NumberText(numbers.other);
    case Shape::kPortState:
      return std::string(row.words) + " of state " + NumberText(numbers.other);
    case Shape::kEvent:
      if (numbers.other == static_cast<int>(Brackets::kStart)) return "grouping of the start";
      if (numbers.other == static_cast<int>(Brackets::kStop)) return "grouping of the stop";
      return std::string(row.words);
    default:
      return std::string(row.words);
  }
}

// ---- The way to the control ---------------------------------------------------------------------

// The opener of a single value's outputs on the screen of its section.
std::string_view outputsOpener(Section section) {
  if (section == Section::kPowerOut) return "BatteryOutput";
  return section == Section::kTcRef ? "PanelOutput" : "";
}

void addSetup(std::vector<ScreenStep>& steps, const SectionRow& section, const Numbers& numbers) {
  switch (section.section) {
    case Section::kTableSetup:
      steps.back().pick = "Table";
      steps.back().item = numbers.item - 1;
      return;
    case Section::kCanItems:
      steps.back().pick = "Item";
      steps.back().item = numbers.item - 1;
      return;
    case Section::kCalcFields:
      steps.back().pick = "Formulas";
      steps.back().item = numbers.item - 1;
      return;
    case Section::kPowerOut:
    case Section::kTK40MRef:
    case Section::kTcRef:
      steps.push_back({section.setup, std::string(outputsOpener(section.section))});
      return;
    default:
      if (!section.setup.empty()) steps.push_back({section.setup, NumberText(numbers.item)});
  }
}

// Blocks have their outputs on their setup; items, fields and ports open them.
void addOutputs(std::vector<ScreenStep>& steps, const Numbers& numbers) {
  if (!steps.back().screen.ends_with("Setup") && steps.back().screen != "frmPortTables") {
    steps.push_back({"frmPortTables"});
  }
  if (numbers.table == 0) return;
  steps.back().pick = "Table";
  steps.back().item = numbers.table - 1;
}

// Of a row with a control for each column: "NewName/Formula".
std::string_view columnOf(std::string_view controls, int column) {
  for (; column > 1 && controls.find('/') != std::string_view::npos; --column) {
    controls = After(controls, "/");
  }
  return Before(controls, "/");
}

std::string controlOf(const KeyRow& row, const Numbers& numbers) {
  std::string control;
  for (const char letter : columnOf(row.control, numbers.other)) {
    if (letter == '#') {
      control += NumberText(numbers.item);
    } else if (letter == '@') {
      control += NumberText(row.shape == Shape::kMask ? numbers.other + 1 : numbers.other);
    } else {
      control += letter;
    }
  }
  if (!control.empty()) return control;
  const auto at = static_cast<std::size_t>(numbers.other - 1);
  return at < kOutputControls.size() ? std::string(kOutputControls[at]) : std::string();
}

std::string_view screenOf(Where where) {
  switch (where) {
    case Where::kHistogram:
      return "frmHistogram";
    case Where::kRainflow:
      return "frmRainHisto";
    case Where::kLevels:
      return "frmLevel";
    case Where::kTrigger:
      return "frmTrigTable";
    case Where::kWriteIf:
      return "frmWriteIf";
    case Where::kNames:
      return "frmFldName";
    case Where::kAdvanced:
      return "frmCanAdv";
    default:
      return {};
  }
}

ScreenPlace screenOf(const SectionRow& section, const KeyRow& row, const Numbers& numbers) {
  ScreenPlace place;
  if (row.where == Where::kNowhere || section.screen.empty()) return place;
  place.steps.push_back({section.screen});
  const bool isMain = row.where == Where::kMain || row.where == Where::kAdvanced;
  const bool ofTable = section.section == Section::kTableSetup && numbers.item != 0;
  if (!isMain || ofTable) addSetup(place.steps, section, numbers);
  const bool edits = row.where == Where::kSetup && section.section == Section::kCalcFields;
  if (edits) place.steps.back().press = "Edit";
  if (row.where == Where::kZeroPanel) place.steps.back().open = "ZeroPanel";
  const bool stores = row.where == Where::kOutputs || row.where == Where::kHistogram ||
                      row.where == Where::kRainflow || row.where == Where::kLevels;
  if (stores) addOutputs(place.steps, numbers);
  if (!screenOf(row.where).empty()) place.steps.push_back({screenOf(row.where)});
  place.control = controlOf(row, numbers);
  return place;
}

}  // namespace

KeyPlace PlaceOfKey(std::string_view section, std::string_view key) {
  const SectionRow* group = RowOfSection(section);
  const Key parsed = ORVUS_GENFILE::ParseKey(key);
  const KeyRow* row = group == nullptr ? nullptr : find(*group, parsed);
  if (row == nullptr) {
    return {std::string(group == nullptr ? section : group->group), {}, std::string(key)};
  }
  const Numbers numbers = numbersOf(row->shape, parsed);
  const bool isWhole = row->shape == Shape::kEvent && parsed.brackets == Brackets::kCommas;
  return {placeOf(*group, *row, numbers), itemOf(*group, numbers), wordsOf(*row, numbers),
          row->derived || isWhole, screenOf(*group, *row, numbers)};
}

std::string ValueInWords(std::string_view section, std::string_view key, std::string_view value,
                         bool isThere) {
  const SectionRow* group = RowOfSection(section);
  const KeyRow* row = group == nullptr ? nullptr : find(*group, ORVUS_GENFILE::ParseKey(key));
  const std::string_view text = Trim(value);
  const Values values = row == nullptr ? Values::kPlain : row->values;
  if (values == Values::kSwitch) return isThere && Val(text) != 0 ? "on" : "off";
  if (!isThere || text.empty()) return "none";
  const auto number = ToInt16(text);
  if (number && values == Values::kFlag) return *number == 0 ? "none" : std::string(text);
  if (number && values == Values::kThermocouple && !ThermocoupleLetter(*number).empty()) {
    return std::string(ThermocoupleLetter(*number));
  }
  if (number && values == Values::kNames && !nameIn(row->names, *number).empty()) {
    return std::string(nameIn(row->names, *number));
  }
  return std::string(text);
}

// ---- Screens ------------------------------------------------------------------------------------

bool TakeStep(Screen& screen, const ScreenStep& step) {
  const auto press = [&](std::string_view name) {
    Control* button = screen.Find(name);
    return button != nullptr && button->Usable() && screen.MoveFocus(button) && button->Press();
  };
  if (!step.pick.empty()) {
    auto* choice = dynamic_cast<Choice*>(screen.Find(step.pick));
    if (choice == nullptr || !screen.MoveFocus(choice) || !choice->ClickAt(step.item)) return false;
  }
  if (!step.open.empty()) press(step.open);
  return step.press.empty() || press(step.press);
}

Opener* OpenerOf(const Screen& screen, const ScreenStep& next) {
  for (Opener* opener : screen.Openers()) {
    if (SameText(opener->Opens(), next.screen) && opener->IsFor(next.which)) return opener;
  }
  return nullptr;
}

namespace {

// The first control of these names that the screen has and that is wanted; null if there is none.
template <class IsWanted>
Control* findNamed(const Screen& screen, std::string_view names, IsWanted isWanted) {
  for (; !names.empty(); names = After(names, "|")) {
    Control* named = screen.Find(Before(names, "|"));
    if (named != nullptr && isWanted(*named)) return named;
  }
  return nullptr;
}

}  // namespace

Control* NamedControl(const Screen& screen, std::string_view names) {
  return findNamed(screen, names, [](const Control&) { return true; });
}

Control* UsableControl(const Screen& screen, std::string_view names) {
  const auto isUsable = [](const Control& control) { return control.Usable(); };
  if (Control* named = findNamed(screen, names, isUsable)) return named;
  const Control* wanted = NamedControl(screen, names);
  if (wanted == nullptr) return nullptr;
  Control* usable = nullptr;
  bool passed = false;
  for (Control* control : screen.Controls()) {
    if (control->Usable() && control->Kind() > ControlKind::kPicture) usable = control;
    passed = passed || control == wanted;
    if (passed && usable != nullptr) return usable;
  }
  return usable;
}

}  // namespace ostrand
