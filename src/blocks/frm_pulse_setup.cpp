#include "blocks/frm_pulse_setup.h"

#include <algorithm>
#include <array>
#include <memory>

#include "blocks/scaling_fields.h"
#include "conditions/aliases.h"
#include "conditions/field_keys.h"
#include "model/names.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::array<PulseInput, 3> kInputs = {{
    {"HiLev", "HiLev", "High Level Measurements. Counted on transition from <1.5V to > 3.5V."},
    {"LoLev", "Low Lev", "Low Level Measurements. AC coupled signal."},
    {"Swtch", "Swtch", "Switch Closure Measurements."},
}};

// Results, by their index in the list.
enum : int { kFrequency = 0, kTotal = 1 };
constexpr std::string_view kFrequencyUnits = "Hz";
constexpr std::string_view kTotalUnits = "Counts";

constexpr int kHighResolution = 1;  // index of "IEEE4"
constexpr int kMaxAverage = 32767;
constexpr i32 kPulseTime = 100;  // microseconds for each sensor

}  // namespace

const PulseInput& PulseInputOf(const PulseBlockData& block) {
  for (const PulseInput& input : kInputs) {
    if (SameText(input.meas, Trim(block.Meas))) return input;
  }
  return kInputs.front();
}

frmPulseSetup::frmPulseSetup(const ScreenContext& context, const PulseSetupRequest& request)
    : Screen(context, "frmPulseSetup"),
      list_(request.list),
      block_(request.block),
      before_(data()),
      names_(store()),
      Reps(*this, "Reps", NumberType::kByte),
      Meas(*this, "Meas"),
      Option(*this, "Option"),
      Opt(*this, "Opt", NumberType::kLong),
      Units(*this, "Units"),
      DefaultMult(*this, "DefaultMult", NumberType::kSingle),
      DefaultOffset(*this, "DefaultOffset", NumberType::kSingle),
      Solve(*this, "Solve", "frmSolveList"),
      SiteCal(*this, "SiteCal"),
      Public(*this, "Public"),
      DataType(*this, "DataType"),
      FieldNames(*this, "FieldNames", "frmFldName"),
      FreeHiLev(*this, "FreeHiLev"),
      FreeLoLev(*this, "FreeLoLev"),
      FreeSwtch(*this, "FreeSwtch"),
      Each(*this, "Each"),
      Block(*this, "Block"),
      Outputs(*this, store()),
      scaling_(DefaultScalingOf(data())),
      unitsBefore_(data().Units) {
  Caption = NumberText(block_) + " BLOCK  PULSES";
  bind();
  load();
  Describe(*this, kPulseSetupFaces);
}

void frmPulseSetup::bind() {
  Reps.MayBeBlank = true;
  Reps.OnChange = [this] { onRepsTyped(); };
  Reps.OnTake = [this] { Reps.Value(data().Reps); };
  Reps.OnSpin = [this](bool up) {
    const i16 before = data().Reps;
    setReps(std::max(before + (up ? 1 : -1), 0));
    if (data().Reps == before) Forms().Beep();
  };
  Reps.WhyChanged = [this] {
    return "only " + NumberText(data().Reps) + " pulse channels are free";
  };
  for (const PulseInput& input : kInputs) {
    Meas.Add(input.meas, input.toolTip);
  }
  Meas.OnPick = [this] {
    data().Meas = kInputs[static_cast<std::size_t>(Meas.Index())].meas;
    CountersCount();
  };
  Option.SetItems({"Freq", "Totl"});
  Option.OnPick = [this] { onOption(); };
  Opt.ToolTip = "Enter \"1\" for no averaging.  Greater than 1 yields moving average over N mSecs.";
  Opt.Limits(1, kMaxAverage);
  Opt.WholePart = true;
  Opt.OnChange = [this] {
    DropLeadingZeros(Opt);
    LimitWhileTyped(Opt, 1, kMaxAverage);
    if (Opt.Value() >= 1) data().Opt = static_cast<i16>(Opt.Value());
  };
  Opt.OnTake = [this] { setAverage(static_cast<int>(Opt.Value())); };
  Opt.OnSpin = [this](bool up) {
    setAverage(std::clamp(data().Opt + (up ? 1 : -1), 1, kMaxAverage));
  };
  const auto step = [](double value, bool up) { return value + (up ? 1 : -1); };
  BindScale(
      DefaultMult, [this]() -> float& { return data().DefaultMult; }, step);
  BindScale(
      DefaultOffset, [this]() -> float& { return data().DefaultOffset; }, step);
  Solve.OnPress = [this] { solve(); };
  SiteCal.OnClick = [this] { onSiteCal(); };
  Public.OnClick = [this] { data().Public = Public.Checked() ? kTrue : kFalse; };
  DataType.SetItems({"FP2", "IEEE4"});
  DataType.OnPick = [this] { data().DataResolution = DataType.Text(); };
  LimitUnits(Units, ORVUS_DOBJ_BLK_PULSE);
  FieldNames.OnPress = [this] { openFieldNames(scaling()); };
  Outputs.AskBy(context(), DataType, SourceName(ORVUS_DOBJ_BLK_PULSE, block_));
}

void frmPulseSetup::load() {
  const Loading loading(*this);
  PulseBlockData& block = data();
  Outputs.Show(block.Output);
  Units.Text(block.Units);
  DefaultMult.Value(block.DefaultMult);
  DefaultOffset.Value(block.DefaultOffset);
  Public.Check(block.Public != kFalse);
  DataType.PickAt(SameText(block.DataResolution, "FP2") ? 0 : 1);
  Each.Text(MicrosText(kPulseTime));
  Reps.Value(block.Reps);
  Meas.Pick(PulseInputOf(block).meas);
  Option.PickAt(block.Opt > 0 ? kFrequency : kTotal);
  SiteCal.Check(block.CalOnSite != 0);
  auto settled = std::make_unique<PulseBlockData>(block);
  settled->Units = Trim(Units.Text());
  list_.Opened(block_, before_.Before(), *settled);
}

void frmPulseSetup::onRepsTyped() {
  const bool empty = Reps.Text().empty();
  setReps(static_cast<int>(std::min(Reps.Value(), double{kReps})));
  if (empty) Reps.Correct({});  // it waits for a digit
}

void frmPulseSetup::setReps(int reps) {
  data().Reps = static_cast<i16>(reps);
  CountersCount();
}

void frmPulseSetup::CountersCount() {
  PulseBlockData& block = data();
  const PulseFit fit = FitPulseCount(block.Reps, FreePulseChans(list_.Pulses()));
  block.Reps = static_cast<i16>(std::max(fit.count, 0));
  Reps.Correct(NumberText(int{block.Reps}));
  for (Label* label : {&FreeHiLev, &FreeLoLev, &FreeSwtch}) {
    label->Text(NumberText(fit.free) + " free");
  }
  block.BlockTime = block.Reps * kPulseTime;
  Block.Text(MicrosText(block.BlockTime));
  FieldNames.Enable(block.Reps > 0, kNoSensors);
  list_.FreeChans();
}

void frmPulseSetup::onOption() {
  if (Option.Index() == kFrequency) {
    measureFrequency();
  } else {
    totalize();
  }
  list_.List.RefreshRows();
  if (!SiteCal.Checked()) allowSolve(true, {});
}

void frmPulseSetup::measureFrequency() {
  Opt.Enabled = true;
  if (IsLoading()) {
    Opt.Value(data().Opt);
  } else if (keptAverage_ > 0) {
    setAverage(keptAverage_);
    keptAverage_ = 0;
  } else {
    setAverage(std::max<int>(data().Opt, 1));
  }
  swapUnits(kTotalUnits, kFrequencyUnits);
  offerAverages("A frequency is an average already.");
  if (IsLoading() || !Outputs.SampleInstead({kAverage, kStdDev})) return;
  platform::MessageBox box;
  box.title = "OUTPUT OPTIONS CHANGED";
  box.text = "The 'Avg' and/or 'Std' outputs have been replaced with 'Smp'.";
  box.icon = platform::Icon::kInformation;
  Forms().ShowBox(box);
}

void frmPulseSetup::offerAverages(std::string_view whyNot) {
  Outputs.Offer(kAverage, whyNot);
  Outputs.Offer(kStdDev, whyNot);
}

void frmPulseSetup::totalize() {
  Opt.Enabled = false;
  if (!IsLoading()) {
    DataType.PickAt(kHighResolution);
    if (data().Opt > 0) keptAverage_ = data().Opt;
    data().Opt = 0;
  }
  Opt.Value(data().Opt);
  swapUnits(kFrequencyUnits, kTotalUnits);
  offerAverages({});
}

// Replaces the units of the other result, also in repetitions that follow the block.
void frmPulseSetup::swapUnits(std::string_view from, std::string_view to) {
  const std::string units(Trim(Units.Text()));
  if (!units.empty() && (IsLoading() || units != from)) return;
  unitsBefore_ = from;
  Units.Text(to);
}

void frmPulseSetup::setAverage(int millis) {
  data().Opt = static_cast<i16>(millis);
  Opt.Value(millis);
}

void frmPulseSetup::onSiteCal() {
  const bool on = SiteCal.Checked();
  data().CalOnSite = on ? 1 : 0;
  if (on) {
    Public.Check(true);
    if (!IsLoading()) {
      DefaultMult.Value(1);
      DefaultOffset.Value(0);
      data().DefaultMult = 1;
      data().DefaultOffset = 0;
    }
  }
  Public.Enabled = !on;
  for (NumericField* field : {&DefaultMult, &DefaultOffset}) {
    field->Enabled = !on;
    field->Visible = !on;
  }
  allowSolve(!on, kCalibratedOnSite);
}

void frmPulseSetup::allowSolve(bool allowed, std::string_view whyNot) {
  Solve.Enable(allowed, whyNot);
}

SolveSource frmPulseSetup::solveSource() const {
  return {.kind = Option.Index() == kFrequency ? "Pulse" : "Totalize"};
}

void frmPulseSetup::solve() {
  SolveRequest request{solveSource(), scaling()};
  if (!SolveScaling(context(), request)) return;
  const DefaultScaling& answer = request.scaling;
  Units.Text(answer.Units);
  DefaultMult.Value(answer.Mult);
  DefaultOffset.Value(answer.Offset);
  data().DefaultMult = answer.Mult;
  data().DefaultOffset = answer.Offset;
}

DefaultScaling frmPulseSetup::scaling() const {
  return {std::string(Trim(Units.Text())), data().DefaultMult, data().DefaultOffset};
}

void frmPulseSetup::openFieldNames(const DefaultScaling& defaults) {
  scaling_.Follow(data().Alias.Made(), defaults);
  FieldNamesRequest request{.kind = ORVUS_DOBJ_BLK_PULSE,
                            .block = block_,
                            .name = SourceName(ORVUS_DOBJ_BLK_PULSE, block_),
                            .defaults = defaults,
                            .aliases = AliasesOf(data().Alias, data().Reps),
                            .calibrated = data().CalOnSite != 0,
                            .solveSource = solveSource()};
  OpenScreen(context(), FieldNames.Opens(), request);
}

bool frmPulseSetup::onDone() {
  PulseBlockData& block = data();
  const DefaultScaling after = scaling();
  const auto aliases = AliasesOf(block.Alias, block.Reps);
  if (!scaling_.Ask(Forms(), after, aliases, [&] { openFieldNames(after); })) return false;
  block.Units = after.Units;
  scaling_.Follow(aliases, after);
  DefaultScaling swapped = after;
  swapped.Units = unitsBefore_;
  FollowDefaults(aliases, swapped, after);
  CountersCount();
  ClearRowsBeyond(block.Alias.Made(), block.Reps);
  before_.Keep();
  names_.Keep();
  return true;
}

}  // namespace ostrand
