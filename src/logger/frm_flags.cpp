#include "logger/frm_flags.h"

#include "conditions/condition_row.h"
#include "conditions/flag_code.h"
#include "conditions/flag_conflicts.h"
#include "logger/faces.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr TwoStateKeys kKeys = {.include = "FlagInclude",
                                .on = "FlagOn",
                                .measurement = "FlagVar",
                                .compare = "FlagCompare",
                                .value = "FlagValue",
                                .expression = "FlagExpression"};

StateFields fieldsOf(FlagState& state) {
  return {state.FlagVar, state.FlagCompare, state.FlagValue, state.FlagExpression};
}

}  // namespace

struct frmFlags::FlagControls : TwoStateControls {
  FlagControls(Screen& screen, const ConditionVariables& variables, int number)
      : TwoStateControls(screen, variables, kKeys, number) {
    Describe(kFlagsTable, number);
  }

  bool freeTables = false;  // Done releases the flag from the tables that used it
  bool freeBlocks = false;
};

frmFlags::frmFlags(const ScreenContext& context)
    : Screen(context, "frmFlags"),
      variables_(context.store, context.UserVarListTypes),
      before_(context.store.Flags) {
  Caption = "FLAGS";
  for (int f = 1; f <= kFlags; ++f) {
    flags_[f] = std::make_unique<FlagControls>(*this, variables_, f);
    bind(f);
    load(f);
  }
  Describe(*this, kFlagsFaces);
}

frmFlags::~frmFlags() = default;

void frmFlags::bind(int number) {
  FlagControls& controls = at(number);
  controls.Include.OnClick = [this, number] {
    if (!IsLoading()) takeInclude(number);
  };
  controls.On.OnClick = [this, number] {
    if (IsLoading()) return;
    store().Flags[number].FlagOn = at(number).On.Checked() ? kTrue : kFalse;
    refresh(number);
  };
  for (const int state : {1, 2}) {
    controls.State(state).OnEdit = [this, number, state] { takeState(number, state); };
    ReportPickedFlag(controls.State(state), Forms(), store());
  }
  controls.ViewCode.OnPress = [this, number] { viewCode(number); };
}

void frmFlags::load(int number) {
  const Loading loading(*this);
  FlagControl& stored = store().Flags[number];
  FlagControls& controls = at(number);
  controls.Include.Check(stored.FlagInclude != kFalse);
  controls.On.Check(stored.FlagOn != kFalse);
  for (const int state : {1, 2}) {
    LoadState(controls.State(state), fieldsOf(stored.State[state]), kStateCompares);
  }
  refresh(number);
}

// Including a flag that is used elsewhere asks first.
void frmFlags::takeInclude(int number) {
  FlagControls& controls = at(number);
  const bool include = controls.Include.Checked();
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
  KeepState(at(number).State(state), fieldsOf(store().Flags[number].State[state]), kNoCondition);
  refresh(number);
}

void frmFlags::refresh(int number) {
  FlagControls& controls = at(number);
  const std::string flagNumber = NumberText(number);
  controls.ShowMessage(true);
  controls.ShowLites({"Red lite indicates the True state of Flag " + flagNumber,
                      "Gray lite indicates the False state of Flag " + flagNumber});
  // Flags above the number that the user wants to see are hidden until they are in use.
  const bool visible = number <= context().options.DefaultNumFlags ||
                       before_.Before()[number].FlagInclude != kFalse || controls.Include.Checked();
  for (Control* control :
       std::initializer_list<Control*>{&controls.Include, &controls.On, &controls.Lite1,
                                       &controls.Lite2, &controls.Message, &controls.ViewCode}) {
    control->Visible = visible;
  }
  for (const int state : {1, 2}) ShowState(controls.State(state), visible);
}

void frmFlags::viewCode(int number) {
  const std::string flagNumber = NumberText(number);
  const bool mayView = at(number).MayView(
      Forms(), "You must Include Flag " + flagNumber + " setup to view the code.",
      "You must select a Measurement for both State 1 and State 2 to view Flag " + flagNumber +
          " code.",
      true);
  if (mayView) ShowCode(Forms(), "FLAG SET CODE", FlagCode(store(), number));
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
