#include "tables/frm_level.h"

#include <algorithm>
#include <array>

#include "model/names.h"
#include "model/variables.h"
#include "tables/faces.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

struct KindTail {
  i32 kind;
  std::string_view tail;  // of the entry in the list
};
constexpr std::array<KindTail, 8> kTails = {{
    {kPulseVariables, " - PULSE BLOCK "},
    {kBridgeVariables, " - BRIDGE BLOCK "},
    {kVoltVariables, " - VOLT BLOCK "},
    {kTempVariables, " - TEMP BLOCK "},
    {kTK40MVariables, " - TK40M BLOCK "},
    {kCalcVariables, " - CALC FORMULA "},
    {kCanVariables, " - CAN ITEM "},
    {kTK40RefVariables, " - TK40M REFERENCE "},
}};

constexpr std::string_view kFewTitle = "NOT ENOUGH VALUES";
constexpr int kMinLevels = 2;

std::string valueText(float value) { return SignificantText(DecimalValue(value), 7); }

// The name by which the program reads one value: an element of an array, not the array.
std::string valueName(const PickVariable& variable) {
  const bool isArray = variable.name + "(1)" == variable.element;
  return isArray ? variable.element : std::string(Trim(variable.name));
}

}  // namespace

std::string LevelStem(const OutputSource& source) {
  return source.family == OutputFamily::kCalcField ? CalcFieldStem(source.n) : source.name;
}

std::string LevelCodeText(const HistoSet& histo, std::string_view stem, int table) {
  const std::string array = std::string(stem) + NumberText(table);
  const int second = histo.NumDims == 1 ? histo.LevNumTests : 1;
  return NumberText(int{histo.LevNumLevels}) + "," + NumberText(second) + "," + array + "LC1()," +
         array + "LC2()";
}

LevelList::LevelList(Screen& screen, std::string_view name, std::string_view toolTip)
    : Entry(screen, std::string("LevelVar").append(name), NumberType::kSingle),
      Add(screen, std::string("Add").append(name)),
      Items(screen, std::string("Levels").append(name)),
      Remove(screen, std::string("Remove").append(name)),
      screen_(screen) {
  Items.ToolTip = toolTip;
  Add.OnPress = [this] { add(); };
  Remove.OnPress = [this] { remove(); };
}

void LevelList::Load(const Row<float, 0, kLevels - 1>& values, int count) {
  values_.assign(values.begin(), values.begin() + std::clamp(count, 0, kLevels));
  std::sort(values_.begin(), values_.end());
  values_.erase(std::unique(values_.begin(), values_.end()), values_.end());
  show();
}

void LevelList::Keep(Row<float, 0, kLevels - 1>& values, i16& count) const {
  values.Fill(0);
  std::copy(values_.begin(), values_.end(), values.begin());
  count = static_cast<i16>(values_.size());
}

void LevelList::Enable(bool enabled) {
  Entry.Enabled = Add.Enabled = Items.Enabled = Remove.Enabled = enabled;
}

void LevelList::add() {
  const auto value = ToSingle(Entry.Text());
  if (!value) return screen_.Refuse("Type a level first.");
  if (std::find(values_.begin(), values_.end(), *value) != values_.end()) {
    return screen_.Refuse("The list has this level already.");
  }
  if (Count() >= kLevels) {
    return screen_.Refuse("There are at most " + NumberText(kLevels) + " levels.");
  }
  values_.insert(std::lower_bound(values_.begin(), values_.end(), *value), *value);
  Entry.Text({});
  show();
  if (OnEdit) OnEdit();
}

void LevelList::remove() {
  if (Items.Index() < 0) return screen_.Refuse("Pick a level in the list.");
  values_.erase(values_.begin() + Items.Index());
  show();
  if (OnEdit) OnEdit();
}

void LevelList::show() {
  Items.Items.clear();
  for (const float value : values_) Items.Add(valueText(value));
  Items.Index(-1);
}

frmLevel::frmLevel(const ScreenContext& context, const HistoTarget& target)
    : HistoScreen(context, "frmLevel", target),
      NumDims(*this, "NumDims"),
      Levels(*this, "One", "A sorted list of all the level crossing values."),
      Tests(*this, "Two", "A sorted list of all the second dimension test levels."),
      LevelMeas(*this, "LevelMeas"),
      Code(*this, "Code"),
      stem_(target.stem) {
  Caption = "LEVEL CROSSING";
  NumDims.SetItems({"One Dimension", "Two Dimensions"});
  Describe(*this, kLevelFaces);
  fillMeasurements();
  load();
  const auto onEdit = [this] { edit(); };
  NumDims.OnPick = onEdit;
  LevelMeas.OnPick = onEdit;
  Levels.OnEdit = onEdit;
  Tests.OnEdit = onEdit;
}

void frmLevel::fillMeasurements() {
  const auto& kinds = context().UserVarListTypes;
  const VarPickList list(store(), kinds.empty() ? std::span<const i32>(kVariableKinds) : kinds);
  for (const PickVariable& variable : list.Variables()) {
    const auto* tail = std::find_if(kTails.begin(), kTails.end(), [&](const KindTail& entry) {
      return entry.kind == variable.kind;
    });
    if (tail == kTails.end()) continue;
    measurements_.push_back(valueName(variable));
    LevelMeas.Add(measurements_.back() + std::string(tail->tail));
  }
}

void frmLevel::load() {
  const Loading loading(*this);
  const HistoSet& histo = target().histo;
  NumDims.PickAt(histo.NumDims == 1 ? 1 : 0);
  Levels.Load(histo.LevelVarOne, histo.LevNumLevels);
  Tests.Load(histo.LevelVarTwo, histo.LevNumTests);
  pickMeasurement();
  edit();
  touched_ = false;
}

// Picks the stored measurement. An unlisted one is added, so that viewing loses nothing.
void frmLevel::pickMeasurement() {
  const std::string_view name = Trim(target().histo.LevelMeasName);
  if (name.empty()) return;
  const VarPickList list(store());
  std::string wanted(name);
  for (const PickVariable& variable : list.Variables()) {
    const bool isIt = SameText(variable.name, name) || SameText(variable.element, name);
    if (isIt) wanted = valueName(variable);
  }
  auto at = std::find_if(measurements_.begin(), measurements_.end(),
                         [&](const std::string& listed) { return SameText(listed, wanted); });
  if (at == measurements_.end()) {
    measurements_.emplace_back(name);
    LevelMeas.Add(name);
    at = measurements_.end() - 1;
  }
  LevelMeas.PickAt(static_cast<int>(at - measurements_.begin()));
}

void frmLevel::edit() {
  touched_ = true;
  Tests.Enable(isTwo());
  LevelMeas.Enabled = isTwo();
  Code.Text(codeLine("Source", LevelCodeText(edited(), stem_, target().table)));
}

HistoSet frmLevel::edited() const {
  HistoSet histo = target().histo;
  histo.NumDims = isTwo() ? 1 : 0;
  Levels.Keep(histo.LevelVarOne, histo.LevNumLevels);
  Tests.Keep(histo.LevelVarTwo, histo.LevNumTests);
  if (LevelMeas.Index() >= 0) {
    histo.LevelMeas = static_cast<i16>(LevelMeas.Index());
    histo.LevelMeasName = measurements_[static_cast<std::size_t>(LevelMeas.Index())];
  }
  histo.LevelCode = LevelCodeText(histo, stem_, target().table);
  return histo;
}

bool frmLevel::onDone() {
  if (isTwo() && LevelMeas.Index() < 0) {
    return refuse("MISSING 2ND DIM", "Two Dimensional Level Crossing requires a 2nd Dim Selection.",
                  LevelMeas);
  }
  if (Levels.Count() < kMinLevels) {
    return refuse(kFewTitle, "There must be at least 2 values in Level Crossing Values.",
                  Levels.Entry);
  }
  if (isTwo() && Tests.Count() < kMinLevels) {
    return refuse(kFewTitle, "There must be at least 2 values in 2nd Dim Boundaries.", Tests.Entry);
  }
  // An unedited text stays as written.
  if (touched_ || target().histo.LevelCode.empty()) target().histo = edited();
  UserCancelled = false;
  return true;
}

}  // namespace ostrand
