#include "conditions/frm_fld_name.h"

#include <algorithm>
#include <array>
#include <utility>

#include "controls/faces.h"
#include "model/name_limits.h"
#include "model/names.h"
#include "platform/box.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using platform::Answer;
using platform::Buttons;

constexpr Face kFieldNameFaces[] = {
    {"AliasLight", "Will be saved", "Aliases"},
    {"UnitsLight", "Will be saved", "Units"},
    {"ScalingLight", "Will be saved", "Multipliers and offsets"},
    {"DefaultName", "All aliases", "Default"},
    {"DefaultUnits", "All units", "Default"},
    {"DefaultMult", "All multipliers", "Default"},
    {"DefaultOffset", "All offsets", "Default"},
    {"FieldName#", "Sensors", "FIELD NAME"},
    {"AliasName#", "Sensors", "ALIAS"},
    {"AliasUnits#", "Sensors", "UNITS"},
    {"AliasMult#", "Sensors", "MULT"},
    {"AliasOffset#", "Sensors", "OFFSET"},
    {"AliasGFactor#", "Sensors", "GAUGE FACT"},
    {"Solve#", "Sensors", "SOLVE"},
    {"Reset#", "Sensors", "Reset"},
};

struct SourceKind {
  OrvusDataObjTypes type;
  std::string_view kind;  // for the calculators
};
constexpr std::array<SourceKind, 5> kSourceKinds = {{
    {ORVUS_DOBJ_BLK_TEMP, "Temp"},
    {ORVUS_DOBJ_BLK_VOLT, "Volts"},
    {ORVUS_DOBJ_BLK_BRIDGE, "Brdg"},
    {ORVUS_DOBJ_BLK_PULSE, "Pulse"},
    {ORVUS_DOBJ_BLK_TK40M, "TK40M"},
}};

// The source of a calculator for one sensor of a block; without a kind for CAN items.
SolveSource sourceOf(const FieldNamesRequest& block) {
  SolveSource source = block.solveSource;
  source.blockKind = source.kind;
  source.kind = "FieldGrid";
  for (const SourceKind& row : kSourceKinds) {
    if (source.blockKind.empty() && row.type == block.kind) source.blockKind = row.kind;
  }
  return source;
}

std::string numbered(std::string_view name, int number) {
  return std::string(name) + NumberText(number);
}

}  // namespace

const frmFldName::Number frmFldName::kMult = {kMultByHand, &RepAlias::AliasMult,
                                              &DefaultScaling::Mult, &Sensor::AliasMult};
const frmFldName::Number frmFldName::kOffset = {kOffsetByHand, &RepAlias::AliasOffset,
                                                &DefaultScaling::Offset, &Sensor::AliasOffset};

frmFldName::Sensor::Sensor(Screen& screen, int number, bool gaugeFactor)
    : FieldName(screen, numbered("FieldName", number)),
      AliasName(screen, numbered("AliasName", number), NameText),
      AliasUnits(screen, numbered("AliasUnits", number)),
      AliasMult(screen, numbered("AliasMult", number), NumberType::kSingle),
      AliasOffset(screen, numbered(gaugeFactor ? "AliasGFactor" : "AliasOffset", number),
                  NumberType::kSingle),
      Solve(screen, numbered("Solve", number), "frmSolveList", {NumberText(number), "sensor"}),
      Reset(screen, numbered("Reset", number)) {}

frmFldName::frmFldName(const ScreenContext& context, FieldNamesRequest block)
    : Screen(context, "frmFldName"),
      AliasLight(*this, "AliasLight"),
      UnitsLight(*this, "UnitsLight"),
      ScalingLight(*this, "ScalingLight"),
      DefaultName(*this, "DefaultName"),
      DefaultUnits(*this, "DefaultUnits"),
      DefaultMult(*this, "DefaultMult"),
      DefaultOffset(*this, "DefaultOffset"),
      block_(std::move(block)),
      source_(sourceOf(block_)),
      rows_(block_.aliases.begin(), block_.aliases.end()) {
  Caption = "FIELD NAMES (" + block_.name + ")";
  AliasLight.ToolTip = "Green indicates that Aliases will be saved.";
  UnitsLight.ToolTip = "Green indicates that Units will be saved.";
  ScalingLight.ToolTip = "Green indicates that Multipliers and Offsets will be saved.";
  for (std::size_t at = 0; at < rows_.size(); ++at) {
    const int number = static_cast<int>(at) + 1;
    sensors_.push_back(std::make_unique<Sensor>(*this, number, block_.gaugeFactor));
    bindSensor(at);
  }
  bind();
  show();
  Describe(*this, kFieldNameFaces);
  if (block_.gaugeFactor) DefaultOffset.Group = "All gauge factors";
}

void frmFldName::bind() {
  DefaultName.OnPress = [this] { forEach([this](std::size_t at) { rows_[at].AliasName = ""; }); };
  DefaultUnits.OnPress = [this] { forEach([this](std::size_t at) { takeUnits(at, ""); }); };
  DefaultMult.OnPress = [this] { forEach([this](std::size_t at) { takeNumber(at, kMult, ""); }); };
  DefaultOffset.OnPress = [this] {
    forEach([this](std::size_t at) { takeNumber(at, kOffset, ""); });
  };
}

void frmFldName::bindSensor(std::size_t at) {
  Sensor& sensor = *sensors_[at];
  sensor.FieldName.Text(elementOf(at));
  sensor.AliasName.WhyNot = [this, at](std::string_view name) {
    return whyNot(at, name, rows_[at].AliasUnits);
  };
  sensor.AliasName.OnTake = [this, at] { takeName(at); };
  sensor.AliasUnits.WhyNot = [this, at](std::string_view units) {
    return whyNot(at, rows_[at].AliasName, units);
  };
  sensor.AliasUnits.OnTake = [this, at, &sensor] {
    takeUnits(at, sensor.AliasUnits.Text());
    show();
  };
  for (const Number* column : {&kMult, &kOffset}) {
    NumericField& field = sensor.*column->field;
    field.OnTake = [this, at, column, &field] {
      takeNumber(at, *column, field.Text());
      show();
    };
  }
  sensor.Solve.Enable(whyNoCalculator().empty(), whyNoCalculator());
  sensor.Solve.OnPress = [this, at] { solve(at); };
  sensor.Reset.OnPress = [this, at] {
    rows_[at] = {};
    rows_[at].AliasExcept = "0";
    show();
  };
}

std::string_view frmFldName::whyNoCalculator() const {
  if (block_.gaugeFactor) return "No calculator finds a gauge factor.";
  if (source_.blockKind.empty()) return "The values of a CAN item are scaled already.";
  return {};
}

std::string frmFldName::elementOf(std::size_t at) const {
  return block_.name + "(" + NumberText(static_cast<int>(at) + 1) + ")";
}

// Why one of these sensors does not fit into the program; units of the block take no space.
std::string_view frmFldName::whyNot(std::size_t at, std::string_view alias,
                                    std::string_view units) const {
  ValueName value{
      .array = block_.name, .index = static_cast<int>(at) + 1, .only = rows_.size() == 1};
  if (block_.calibrated) {
    value.mult = MultName(block_.kind, block_.block);
    value.offset = OffsetName(block_.kind, block_.block);
  }
  const bool own = !SameText(units, block_.defaults.Units);
  return ValueFits(value, alias, own ? units : "") ? "" : kTooLongHelp;
}

float frmFldName::valueOf(const RepAlias& row, const Number& column) const {
  // Gauge factors not set by hand are padded with zeros.
  const bool filler = block_.gaugeFactor && column.byHand == kOffsetByHand &&
                      (ExceptionsOf(row) & kOffsetByHand) == 0;
  if (filler) return block_.defaults.Offset;
  return ToSingle(row.*column.entry).value_or(block_.defaults.*column.byDefault);
}

void frmFldName::showSensor(std::size_t at) {
  const RepAlias& row = rows_[at];
  Sensor& sensor = *sensors_[at];
  sensor.AliasName.Text(row.AliasName.empty() ? elementOf(at) : row.AliasName);
  sensor.AliasUnits.Text(row.AliasUnits.empty() ? block_.defaults.Units : row.AliasUnits);
  for (const Number* column : {&kMult, &kOffset}) {
    (sensor.*column->field).Value(DecimalValue(valueOf(row, *column)));
  }
}

void frmFldName::show() {
  bool names = false;
  int byHand = 0;
  for (std::size_t at = 0; at < rows_.size(); ++at) {
    showSensor(at);
    names = names || !rows_[at].AliasName.empty();
    byHand |= ExceptionsOf(rows_[at]);
  }
  AliasLight.On(names);
  UnitsLight.On((byHand & kUnitsByHand) != 0);
  ScalingLight.On((byHand & (kMultByHand | kOffsetByHand)) != 0);
}

void frmFldName::forEach(const std::function<void(std::size_t)>& change) {
  for (std::size_t at = 0; at < rows_.size(); ++at) change(at);
  show();
}

void frmFldName::takeName(std::size_t at) {
  const std::string& name = sensors_[at]->AliasName.Text();
  rows_[at].AliasName = SameText(name, elementOf(at)) ? std::string() : name;
  show();
}

void frmFldName::takeUnits(std::size_t at, std::string_view units) {
  const bool byHand = !units.empty() && units != block_.defaults.Units;
  rows_[at].AliasUnits = byHand ? units : std::string_view();
  MarkByHand(rows_[at], kUnitsByHand, byHand);
}

// An empty text means the default.
void frmFldName::takeNumber(std::size_t at, const Number& column, const std::string& text) {
  const std::optional<float> value = ToSingle(text);
  const bool byHand = value && *value != block_.defaults.*column.byDefault;
  rows_[at].*column.entry = byHand ? text : std::string();
  MarkByHand(rows_[at], column.byHand, byHand);
}

void frmFldName::solve(std::size_t at) {
  const RepAlias& row = rows_[at];
  const DefaultScaling before = {row.AliasUnits.empty() ? block_.defaults.Units : row.AliasUnits,
                                 valueOf(row, kMult), valueOf(row, kOffset)};
  SolveRequest request{source_, before};
  if (!SolveScaling(context(), request)) return;
  const DefaultScaling& scaling = request.scaling;
  if (scaling.Units != before.Units) {
    const std::string_view why = whyNot(at, row.AliasName, scaling.Units);
    if (why.empty()) {
      takeUnits(at, scaling.Units);
    } else {
      Refuse(std::string(why));
    }
  }
  if (scaling.Mult != before.Mult) takeNumber(at, kMult, NumberText(scaling.Mult));
  if (scaling.Offset != before.Offset) takeNumber(at, kOffset, NumberText(scaling.Offset));
  show();
}

AliasRenames frmFldName::renames() const {
  AliasRenames found;
  for (std::size_t at = 0; at < rows_.size(); ++at) {
    const std::string& before = block_.aliases[at].AliasName;
    const std::string& after = rows_[at].AliasName;
    if (before == after) continue;
    found.push_back({block_.name, static_cast<int>(at) + 1, rows_.size() == 1, before, after});
  }
  return found;
}

// Asks only when a condition is affected.
bool frmFldName::agreedTo(const AliasRenames& renames) {
  if (!ConditionsUse(store().Tables, renames)) return true;
  return Ask(Forms(), "ALIAS CHANGE IMPACTS TRIGGER CONDITIONS",
             JoinLines({"The Alias changes made here will also be applied to",
                        "the affected output table trigger conditions.",
                        "Do you wish to continue with this change?"}),
             Buttons::kYesNo) == Answer::kYes;
}

bool frmFldName::onDone() {
  const AliasRenames changed = renames();
  if (!agreedTo(changed)) return false;
  RenameVariables(store(), changed);
  if (block_.onRename) block_.onRename(changed);
  std::copy(rows_.begin(), rows_.end(), block_.aliases.begin());
  return true;
}

bool frmFldName::onCancel() {
  if (std::equal(rows_.begin(), rows_.end(), block_.aliases.begin())) return true;
  const Answer answer = Ask(Forms(), "FIELD NAME EXCEPTIONS",
                            "Edits were made one or more of the exception values.  Save changes "
                            "before exiting screen?",
                            Buttons::kYesNoCancel);
  if (answer == Answer::kYes) Done();
  return answer == Answer::kNo;
}

}  // namespace ostrand
