#include "tables/frm_trig_table.h"

#include <array>
#include <limits>

#include "conditions/condition_row.h"
#include "conditions/flag_usage.h"
#include "platform/box.h"
#include "tables/faces.h"
#include "text/mask.h"
#include "text/number.h"

namespace ostrand {
namespace {

// Names of the two states, and the comparison of their rows in a new project.
struct StateNames {
  std::string_view prefix;  // of the controls
  std::string_view heading;
  std::string_view variable;
  int firstCompare;
};
constexpr std::array<StateNames, 2> kStates = {
    {{"Start", "Start conditions", "     bStartTrigger = (", 1},
     {"Stop", "Stop conditions", "     bStopTrigger = (", 2}}};

constexpr std::array<std::string_view, 4> kScanUnits = {" uSecs", " mSecs", " Secs", " Mins"};

ConditionSet::Names namesOf(const StateNames& state) {
  const std::string head(state.prefix);
  return {.group = state.heading,
          .row =
              [head](int row) {
                const std::string n = NumberText(row);
                return ConditionControlNames{head + "MeasVar" + n, head + "Compare" + n,
                                             head + "TrigValue" + n, head + "TrigIndvExpress" + n};
              },
          .grouping = "DataEventCode" + head,
          .expression = head + "Expression"};
}

// The assignment of a state's variable.
std::string codeOf(int state, const std::string& expression) {
  return std::string(kStates[static_cast<std::size_t>(state)].variable) + expression + ")";
}

std::vector<ConditionRow> rowsOf(const cOutputTable& table, int state) {
  std::vector<ConditionRow> rows;
  for (int n = 1; n <= kConditions; ++n) {
    rows.push_back({table.TriggerMeasVar(state, n), table.TriggerCompare(state, n),
                    table.TriggerVarIdx(state, n), table.TriggerValue(state, n),
                    table.TriggerVarb(state, n), table.TriggerIndvExpress(state, n)});
  }
  return rows;
}

}  // namespace

frmTrigTable::frmTrigTable(const ScreenContext& context)
    : Screen(context, "frmTrigTable"),
      SingleTrigger(*this, "SingleTrigger"),
      DisableTrigger(*this, "DisableTrigger"),
      PreTriggerScans(*this, "PreTriggerScans", NumberType::kLong),
      AftTriggerScans(*this, "AftTriggerScans", NumberType::kLong),
      PreTriggerTime(*this, "PreTriggerTime"),
      AftTriggerTime(*this, "AftTriggerTime"),
      DataEventCode(*this, "DataEventCode"),
      variables_(context.store, context.UserVarListTypes),
      Start(*this, variables_, namesOf(kStates[0]), kStates[0].firstCompare),
      Stop(*this, variables_, namesOf(kStates[1]), kStates[1].firstCompare),
      ViewStart(*this, "ViewStart"),
      ViewStop(*this, "ViewStop"),
      ListStart(*this, "ListStart"),
      ListStop(*this, "ListStop"),
      ListBoth(*this, "ListBoth"),
      Font(*this, context.ConditionFont, {&Start.Grouping, &Stop.Grouping}) {
  PreTriggerScans.Limits(0, std::numeric_limits<i32>::max());
  AftTriggerScans.Limits(0, std::numeric_limits<i32>::max());
  PreTriggerTime.ToolTip = "Shows the time from the beginning of the test to the start trigger.";
  AftTriggerTime.ToolTip = "Shows the time from the stop trigger to the end of the test.";
  Caption = "TABLE TRIGGER";
  bind();
  Describe(*this, kTrigTableFaces);
}

void frmTrigTable::bind() {
  SingleTrigger.OnClick = [this] { showEvent(); };
  for (NumericField* scans : {&PreTriggerScans, &AftTriggerScans}) {
    scans->OnChange = [this] { showTimes(); };
    scans->OnTake = [this] {
      showTimes();
      showEvent();
    };
  }
  const auto onFlag = [this](int flagNumber) { CheckFlagUsage(Forms(), store(), flagNumber); };
  Start.OnFlag = onFlag;
  Stop.OnFlag = onFlag;

  ViewStart.OnPress = [this] {
    Start.View("START TRIGGER TESSEL CODE", codeOf(0, Start.InVariables()));
  };
  ViewStop.OnPress = [this] {
    Stop.View("STOP TRIGGER TESSEL CODE", codeOf(1, Stop.InVariables()));
  };
  ListStart.OnPress = [this] { Start.View("START TRIGGER CODE", codeOf(0, Start.InAliases())); };
  ListStop.OnPress = [this] { Stop.View("STOP TRIGGER CODE", codeOf(1, Stop.InAliases())); };
  ListBoth.OnPress = [this] {
    if (!Start.Check()) return;
    Stop.View("START/STOP TRIGGER CODE", JoinLines({"Sub TriggerCall", codeOf(0, Start.InAliases()),
                                                    codeOf(1, Stop.InAliases()), "End Sub"}));
  };
}

frmTrigTable::frmTrigTable(const ScreenContext& context, cOutputTable& table)
    : frmTrigTable(context) {
  load(table);
}

bool frmTrigTable::SetTriggers(cOutputTable& table) {
  load(table);
  const bool done = showModal(*this);
  table_ = nullptr;
  return done;
}

void frmTrigTable::load(cOutputTable& table) {
  table_ = &table;
  const Loading loading(*this);
  SingleTrigger.Check(table_->TriggerSingle != 0);
  DisableTrigger.Checked(table_->TriggerDisable != 0);
  PreTriggerScans.Value(table_->TriggerScansPre);
  AftTriggerScans.Value(table_->TriggerScansPost);
  Start.Load(rowsOf(*table_, 0), table_->TriggerNumber, table_->TriggerStartExpress);
  Stop.Load(rowsOf(*table_, 1), table_->TriggerStopNum, table_->TriggerStopExpress);
  showTimes();
  showEvent();
}

void frmTrigTable::showTimes() {
  const ScanSetup& scan = store().Scan;
  const bool known = scan.ExecTimeUnits >= 0 && scan.ExecTimeUnits <= 3;
  const auto show = [&](const NumericField& scans, Label& time) {
    const double length = scans.Value() * DecimalValue(scan.ExecutionTime);
    std::string text = FormatNumber(length, "#,##0.######");
    if (text.ends_with('.')) text.pop_back();
    if (known) text += kScanUnits[static_cast<std::size_t>(scan.ExecTimeUnits)];
    time.Text(text);
  };
  show(PreTriggerScans, PreTriggerTime);
  show(AftTriggerScans, AftTriggerTime);
}

// A single trigger has no stop conditions; existing ones are kept for a dual trigger.
void frmTrigTable::showEvent() {
  Stop.Enable(!isSingle(), kNeedsDualTrigger);
  for (Button* button : {&ViewStop, &ListStop, &ListBoth}) button->Enabled = !isSingle();
  DataEventCode.Text(eventText());
}

std::string frmTrigTable::eventText() const {
  return "DataEvent (" + PreTriggerScans.Text() + ",bStartTrigger," +
         (isSingle() ? "True" : "bStopTrigger") + "," + AftTriggerScans.Text() + ")";
}

bool frmTrigTable::reportMissing(ConditionSet& set, std::string_view what,
                                 std::string_view remedy) {
  std::string text = JoinLines({"Warning: Your current conditions for this dual trigger", what});
  text += "\r\n";
  text += remedy;
  ShowWarning(Forms(), "INVALID TRIGGER CONDITION", std::move(text));
  MoveFocus(&set[1].MeasVar);
  return false;
}

bool frmTrigTable::onDone() {
  if (table_ == nullptr) return true;
  if (!isSingle() && Stop.Count() == 0) {
    return reportMissing(Stop, "do not contain a valid stop trigger condition. Please",
                         "add at least one valid stop trigger condition or change\r\n"
                         "the trigger to be a single trigger.");
  }
  if (Start.Count() == 0) {
    return reportMissing(Start, "do not contain a valid start trigger condition. Please",
                         "add at least one valid start trigger condition.");
  }
  if (!Start.Check() || (!isSingle() && !Stop.Check())) return false;
  table_->TriggerSingle = isSingle() ? kTrue : kFalse;
  table_->TriggerDisable = DisableTrigger.Checked() ? 1 : 0;  // the program compares with 1
  table_->TriggerScansPre = static_cast<i32>(PreTriggerScans.Value());
  table_->TriggerScansPost = static_cast<i32>(AftTriggerScans.Value());
  table_->TriggerNumber = static_cast<i16>(Start.Count());
  table_->TriggerStopNum = static_cast<i16>(Stop.Count());
  table_->TriggerStartExpress = Start.StoredLine();
  table_->TriggerStopExpress = Stop.StoredLine();
  table_->TriggerExpression = eventText();
  keep(Start, 0);
  keep(Stop, 1);
  return true;
}

void frmTrigTable::keep(const ConditionSet& set, int state) {
  for (int n = 1; n <= kConditions; ++n) {
    const ConditionRow row = set.Stored(n);
    table_->TriggerMeasVar(state, n, row.MeasVar);
    table_->TriggerCompare(state, n, static_cast<i16>(row.Compare));
    table_->TriggerVarIdx(state, n, static_cast<i16>(row.VarIdx));
    table_->TriggerValue(state, n, row.Value);
    table_->TriggerVarb(state, n, row.Varb);
    table_->TriggerIndvExpress(state, n, row.Expression);
  }
}

}  // namespace ostrand
