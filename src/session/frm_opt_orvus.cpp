#include "session/frm_opt_orvus.h"

#include <utility>

#include "controls/faces.h"
#include "model/variables.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr i32 kVariableCheckBits = kWarnVariablesAfterEdits | kWarnVariablesOnSave;

constexpr std::string_view kDefaults = "Defaults of new items";
constexpr std::string_view kChecks = "Checks and messages";
constexpr std::string_view kOrder = "Order of variables in lists";
constexpr Face kSettingFaces[] = {
    {"DefaultScanInterval", kDefaults, "Scan interval"},
    {"DefaultScanIntervalUnits", kDefaults, "Scan interval unit"},
    {"DefaultNumFlags", kDefaults, "Number of flags"},
    {"DefaultDataType", kDefaults, "Resolution", ControlKind::kOptions},
    {"DefaultIntegrationCode", kDefaults, "Integration", ControlKind::kOptions},
    {"DefaultInputType", kDefaults, "Input type", ControlKind::kOptions},
    {"DefaultTableAutoSize", kDefaults, "Table auto size"},
    {"DefaultTableNumRecs", kDefaults, "Table records"},
    {"VariableChecks", kChecks, "Variable checks", ControlKind::kOptions},
    {"WarnMeasTime", kChecks, "Measurement time"},
    {"WarnFloatingGround", kChecks, "Floating ground"},
    {"WarnTableIntervals", kChecks, "Table intervals"},
    {"ShowCompileResult", kChecks, "Always show compile result"},
    {"UserVarListTypes", kOrder, "Kinds of variables"},
    {"MoveUp", kOrder, "Move &up", {}, "Needs a kind below the first one."},
    {"MoveDown", kOrder, "Move &down", {}, "Needs a kind above the last one."},
};

}  // namespace

frmOptOrvus::frmOptOrvus(const ScreenContext& context, Settings& settings)
    : Screen(context, "frmOptOrvus"),
      DefaultScanInterval(*this, "DefaultScanInterval", NumberType::kLong),
      DefaultScanIntervalUnits(*this, "DefaultScanIntervalUnits"),
      DefaultNumFlags(*this, "DefaultNumFlags", NumberType::kLong),
      DefaultDataType(*this, "DefaultDataType"),
      DefaultIntegrationCode(*this, "DefaultIntegrationCode"),
      DefaultInputType(*this, "DefaultInputType"),
      DefaultTableAutoSize(*this, "DefaultTableAutoSize"),
      DefaultTableNumRecs(*this, "DefaultTableNumRecs", NumberType::kLong),
      VariableChecks(*this, "VariableChecks"),
      WarnMeasTime(*this, "WarnMeasTime"),
      WarnFloatingGround(*this, "WarnFloatingGround"),
      WarnTableIntervals(*this, "WarnTableIntervals"),
      ShowCompileResult(*this, "ShowCompileResult"),
      UserVarListTypes(*this, "UserVarListTypes"),
      MoveUp(*this, "MoveUp"),
      MoveDown(*this, "MoveDown"),
      settings_(settings),
      kinds_(settings.UserVarListTypes()) {
  Caption = "SETTINGS";
  DefaultScanInterval.Limits(1, DefaultScanInterval.Max());
  DefaultScanIntervalUnits.SetItems({"uSecs", "mSecs", "Secs", "Mins"});
  DefaultNumFlags.Limits(0, kFlags);
  DefaultDataType.SetItems({"FP2", "IEEE4"});
  DefaultIntegrationCode.SetItems({"50 Hz", "60 Hz", "uSecs"});
  DefaultInputType.SetItems({"Diff", "SE"});
  DefaultTableNumRecs.Limits(1, DefaultTableNumRecs.Max());
  VariableChecks.SetItems({"Never", "Only After Block Edits", "Only on File Save", "Always"});
  UserVarListTypes.OnPick = [this] {
    MoveUp.Enabled = UserVarListTypes.Index() > 0;
    MoveDown.Enabled = UserVarListTypes.Index() + 1 < static_cast<int>(kinds_.size());
  };
  MoveUp.OnPress = [this] { move(-1); };
  MoveDown.OnPress = [this] { move(1); };
  load();
  Describe(*this, kSettingFaces);
}

std::array<frmOptOrvus::WarningBox, 4> frmOptOrvus::warnings() {
  return {{{WarnMeasTime, kWarnMeasTime},
           {WarnFloatingGround, kWarnFloatingGround},
           {WarnTableIntervals, kWarnTableIntervals},
           {ShowCompileResult, kShowCompileResult}}};
}

SettingRow& frmOptOrvus::row(std::string_view name) const {
  for (SettingRow& candidate : settings_.Rows()) {
    if (candidate.Name == name) return candidate;
  }
  throw SubscriptOutOfRange();
}

i32 frmOptOrvus::number(std::string_view name) const {
  return ToInt32(row(name).Value).value_or(0);
}

void frmOptOrvus::store(std::string_view name, double value) {
  row(name).Value = NumberText(static_cast<std::int64_t>(value));
}

void frmOptOrvus::load() {
  const Loading loading(*this);
  for (NumericField* field : {&DefaultScanInterval, &DefaultNumFlags, &DefaultTableNumRecs}) {
    field->Value(number(field->Name()));
  }
  for (Choice* list :
       {&DefaultScanIntervalUnits, &DefaultDataType, &DefaultIntegrationCode, &DefaultInputType}) {
    list->Index(number(list->Name()));
  }
  DefaultTableAutoSize.Checked(number(DefaultTableAutoSize.Name()) != 0);
  const i32 mask = number("WarningMessageMask");
  VariableChecks.Index(mask & kVariableCheckBits);
  for (const WarningBox& warning : warnings()) {
    warning.box.Checked((mask & warning.bit) != 0);
  }
  listKinds(0);
}

void frmOptOrvus::listKinds(int picked) {
  UserVarListTypes.Items.clear();
  for (const i32 kind : kinds_) {
    UserVarListTypes.Add(VariableKindName(kind));
  }
  MoveUp.Enabled = MoveDown.Enabled = false;
  UserVarListTypes.PickAt(picked);
}

void frmOptOrvus::move(int step) {
  const int from = UserVarListTypes.Index();
  const int to = from + step;
  if (from < 0 || to < 0 || to >= static_cast<int>(kinds_.size())) return Forms().Beep();
  std::swap(kinds_[static_cast<std::size_t>(from)], kinds_[static_cast<std::size_t>(to)]);
  listKinds(to);
}

// Bits of the mask without a box keep their value, and so does a code that no list shows.
bool frmOptOrvus::onDone() {
  for (const NumericField* field : {&DefaultScanInterval, &DefaultNumFlags, &DefaultTableNumRecs}) {
    store(field->Name(), field->Value());
  }
  for (const Choice* list :
       {&DefaultScanIntervalUnits, &DefaultDataType, &DefaultIntegrationCode, &DefaultInputType}) {
    if (list->Index() >= 0) store(list->Name(), list->Index());
  }
  store(DefaultTableAutoSize.Name(), DefaultTableAutoSize.Checked() ? 1 : 0);
  i32 mask = (number("WarningMessageMask") & ~kVariableCheckBits) | VariableChecks.Index();
  for (const WarningBox& warning : warnings()) {
    mask = warning.box.Checked() ? mask | warning.bit : mask & ~warning.bit;
  }
  store("WarningMessageMask", mask);
  std::string kinds;
  for (const i32 kind : kinds_) {
    if (!kinds.empty()) kinds += ',';
    kinds += NumberText(kind);
  }
  row("UserVarListTypes").Value = kinds;
  return true;
}

}  // namespace ostrand
