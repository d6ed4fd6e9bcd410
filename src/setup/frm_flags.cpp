#include "setup/frm_flags.h"

#include "setup/flag_code.h"
#include "setup/flag_conflicts.h"
#include "text/number.h"
#include "verify/box.h"

namespace ostrand {
namespace {

ConditionControlNames stateNames(int state, const std::string& number) {
  const std::string head = "State" + NumberText(state);
  return {head + "FlagVar" + number, head + "FlagCompare" + number, head + "FlagValue" + number,
          head + "FlagExpression" + number};
}

}  // namespace

struct frmFlags::FlagControls {
  FlagControls(Screen& screen, const ConditionVariables& variables, const std::string& number)
      : FlagInclude(screen, "FlagInclude" + number),
        FlagOn(screen, "FlagOn" + number),
        Lite1(screen, "State1Lite" + number),
        Lite2(screen, "State2Lite" + number),
        State1(screen, variables, stateNames(1, number), {.compares = kStateCompares}),
        State2(screen, variables, stateNames(2, number), {.compares = kStateCompares}),
        Message(screen, "Message" + number),
        ViewCode(screen, "ViewCode" + number) {
    FlagInclude.Caption = "Include Flag " + number;
    FlagOn.Caption = "State 1 sets Flag " + number;
    ViewCode.Caption = "View Code";
  }

  [[nodiscard]] ConditionControls& State(int state) { return state == 1 ? State1 : State2; }

  CheckBox FlagInclude;
  CheckBox FlagOn;  // the state that the first condition sets; the second sets the other
  Label Lite1;
  Label Lite2;
  ConditionControls State1;
  ConditionControls State2;
  Label Message;
  Button ViewCode;
  bool freeTables = false;  // Done takes the flag from those that used it before
  bool freeBlocks = false;
};

frmFlags::frmFlags(const ScreenContext& context)
    : Screen(context, "frmFlags"),
      variables_(context.store, context.UserVarListTypes),
      before_(context.store.Flags) {
  Caption = "FLAGS";
  for (int f = 1; f <= kFlags; ++f) {
    flags_[f] = std::make_unique<FlagControls>(*this, variables_, NumberText(f));
    bind(f);
    load(f);
  }
}

frmFlags::~frmFlags() = default;

void frmFlags::bind(int number) {
  FlagControls& controls = at(number);
  controls.FlagInclude.OnClick = [this, number] {
    if (!IsLoading()) takeInclude(number);
  };
  controls.FlagOn.OnClick = [this, number] {
    if (IsLoading()) return;
    store().Flags[number].FlagOn = at(number).FlagOn.Checked() ? kTrue : kFalse;
    refresh(number);
  };
  for (const int state : {1, 2}) {
    controls.State(state).OnEdit = [this, number, state] { takeState(number, state); };
  }
  controls.ViewCode.OnPress = [this, number] { viewCode(number); };
}

void frmFlags::load(int number) {
  const Loading loading(*this);
  const FlagControl& flagControl = store().Flags[number];
  FlagControls& controls = at(number);
  controls.FlagInclude.Checked(flagControl.FlagInclude != kFalse);
  controls.FlagOn.Checked(flagControl.FlagOn != kFalse);
  for (const int state : {1, 2}) {
    const FlagState& stored = flagControl.State[state];
    controls.State(state).Load(StoredState(stored.FlagVar, stored.FlagCompare, stored.FlagValue,
                                           stored.FlagExpression, kStateCompares));
  }
  refresh(number);
}

// A flag that something else uses is asked about when it is included.
void frmFlags::takeInclude(int number) {
  FlagControls& controls = at(number);
  const bool include = controls.FlagInclude.Checked();
  store().Flags[number].FlagInclude = include ? kTrue : kFalse;
  controls.freeTables = controls.freeBlocks = false;
  if (include) {
    const ScanSetup& scan = store().Scan;
    if (scan.BurstMode != kFalse && scan.FlagScan == number) ShowBurstFlagNotice(Forms(), number);
    controls.freeTables = AskToFreeTables(Forms(), store(), number);
    controls.freeBlocks = AskToFreeZeroBlocks(Forms(), store(), number);
  }
  refresh(number);
}

void frmFlags::takeState(int number, int state) {
  const ConditionRow row = at(number).State(state).Stored();
  FlagState& stored = store().Flags[number].State[state];
  stored.FlagVar = row.MeasVar;
  stored.FlagCompare = static_cast<i16>(row.Compare);
  stored.FlagValue = row.Value;
  stored.FlagExpression = row.MeasVar.empty() ? std::string(kNoCondition) : row.Expression;
  refresh(number);
}

void frmFlags::refresh(int number) {
  FlagControls& controls = at(number);
  const bool include = controls.FlagInclude.Checked();
  controls.Message.Text(include ? MissingStates(controls.State1, controls.State2) : "");
  const auto showLite = [&](Label& lite, bool on) {
    lite.Text(on ? "Red" : "Gray");
    lite.ToolTip = (on ? "Red lite indicates the True state of Flag "
                       : "Gray lite indicates the False state of Flag ") +
                   NumberText(number);
  };
  showLite(controls.Lite1, controls.FlagOn.Checked());
  showLite(controls.Lite2, !controls.FlagOn.Checked());
  // Flags beyond those that the user wants to see stay out of the way until they are in use.
  const bool visible = include || number <= context().options.DefaultNumFlags;
  for (Control* control :
       std::initializer_list<Control*>{&controls.FlagInclude, &controls.FlagOn, &controls.Lite1,
                                       &controls.Lite2, &controls.Message, &controls.ViewCode}) {
    control->Visible = visible;
  }
  for (const int state : {1, 2}) ShowState(controls.State(state), visible);
}

void frmFlags::viewCode(int number) {
  FlagControls& controls = at(number);
  const std::string flagNumber = NumberText(number);
  if (!controls.FlagInclude.Checked()) {
    ShowWarning(Forms(), "VIEW CODE",
                "You must Include Flag " + flagNumber + " setup to view the code.");
  } else if (!controls.State1.Valid() || !controls.State2.Valid()) {
    ShowWarning(Forms(), "VIEW CODE",
                "You must select a Measurement for both State 1 and State 2 to view Flag " +
                    flagNumber + " code.");
  } else {
    ShowCode(Forms(), "FLAG SET CODE", FlagCode(store(), number));
  }
}

bool frmFlags::onDone() {
  for (int f = 1; f <= kFlags; ++f) {
    if (at(f).freeTables) FreeTables(store(), f);
    if (at(f).freeBlocks) FreeZeroBlocks(store(), f);
  }
  before_.Keep();
  return true;
}

bool frmFlags::onCancel() {
  before_.PutBack();
  return true;
}

}  // namespace ostrand
