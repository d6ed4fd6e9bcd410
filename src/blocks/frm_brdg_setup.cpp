#include "blocks/frm_brdg_setup.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "blocks/bridge_rules.h"
#include "conditions/aliases.h"
#include "conditions/field_keys.h"
#include "conditions/flag_usage.h"
#include "model/name_limits.h"
#include "model/names.h"
#include "platform/box.h"
#include "tables/output_parameters.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr int kMostExciteReps = 32767;  // of the member
constexpr int kMicros = 2;              // place of "uSecs" among the choices of integration

const BridgeKind& kindOf(int style) { return kBridgeKinds[static_cast<std::size_t>(style)]; }

// A file may hold a style that there is none of.
int knownStyle(int style) {
  return style >= 0 && style < static_cast<int>(kBridgeKinds.size()) ? style : 0;
}

// What a field stands for without its fraction, within a whole number's limits.
i32 wholePart(const NumericField& field) {
  constexpr double kMost = 2147483647.0;
  return static_cast<i32>(std::clamp(std::trunc(field.Value()), -kMost, kMost));
}

// What sensors follow. A project may not have copied the gauge factor into the offset yet, which
// this screen does; that is no change of the user's.
DefaultScaling scalingOf(const BridgeBlockData& block) {
  DefaultScaling scaling = DefaultScalingOf(block);
  if (IsStrainStyle(block.Style)) scaling.Offset = block.GageFactor;
  return scaling;
}

}  // namespace

frmBrdgSetup::frmBrdgSetup(const ScreenContext& context, frmBrdgBlock& list, int block,
                           const SetupHooks& hooks)
    : Screen(context, "frmBrdgSetup"),
      list_(list),
      block_(block),
      hooks_(hooks),
      before_(data()),
      names_(store()),
      Style(*this, "Style"),
      StyleInfo(*this, "StyleInfo"),
      Reps(*this, "Reps", NumberType::kInteger),
      StartBrdgChan(*this, "StartBrdgChan", NumberType::kByte),
      ExciteReps(*this, "ExciteReps", NumberType::kInteger),
      Excite(*this, "Excite", NumberType::kSingle),
      CheckCAO(*this, "CheckCAO"),
      RevExcite(*this, "RevExcite"),
      ReverseMes(*this, "ReverseMes"),
      RevOutput(*this, "RevOutput"),
      Range(*this, "Range"),
      OpenSensDetect(*this, "OpenSensDetect"),
      IntegrationRange(*this, "IntegrationRange"),
      Integration(*this, "Integration", NumberType::kLong),
      SettleTime(*this, "SettleTime", NumberType::kLong),
      Units(*this, "Units"),
      DefaultMult(*this, "DefaultMult", NumberType::kSingle),
      DefaultOffset(*this, "DefaultOffset", NumberType::kSingle),
      GageFactor(*this, "GageFactor", NumberType::kSingle),
      Solve(*this, "Solve"),
      CalOnSite(*this, "CalOnSite"),
      ZeroPanel(*this, "ZeroPanel"),
      ZeroFlag(*this, "ZeroFlag"),
      CloseZeroPanel(*this, "CloseZeroPanel"),
      ZeroFlagShown(*this, "ZeroFlagShown"),
      Public(*this, "Public"),
      DataResolution(*this, "DataResolution"),
      FieldNames(*this, "FieldNames"),
      Each(*this, "Each"),
      Block(*this, "Block"),
      FreeSE(*this, "FreeSE"),
      FreeDiff(*this, "FreeDiff"),
      FreeExcite(*this, "FreeExcite"),
      Outputs(*this, store()),
      scaling_(scalingOf(data())) {
  Caption = NumberText(block_) + " BLOCK  BRIDGES";
  bindKind();
  bindCounts();
  bindExcitation();
  bindTiming();
  bindScaling();
  load();
}

void frmBrdgSetup::bindKind() {
  Style.Caption = "&BRIDGE TYPE " + NumberText(block_);
  for (const BridgeKind& kind : kBridgeKinds) {
    Style.Items.push_back({std::string(kind.caption), true, true, std::string(kind.status)});
  }
  Style.PicksAgain = true;  // each pick puts the count to 1
  Style.OnPick = [this] { onStyle(); };
}

void frmBrdgSetup::bindCounts() {
  Reps.BlankStands = true;
  Reps.WholePart = true;
  Reps.OnTake = [this] { onReps(); };
  Reps.OnSpin = [this](bool up) {
    const i16 before = data().Reps;  // what was typed has taken effect
    fitReps(before + (up ? 1 : -1));
    if (data().Reps == before) Forms().Beep();
  };
  StartBrdgChan.OnTake = [this] { takeStart(); };
  StartBrdgChan.OnSpin = [this](bool up) {
    StartBrdgChan.Value(StartBrdgChan.Value() + (up ? 1 : -1));
    takeStart();
  };
  ExciteReps.Caption = "MeasPerEx";
  ExciteReps.BlankStands = true;
  ExciteReps.WholePart = true;
  ExciteReps.OnChange = [this] {
    LimitWhileTyped(ExciteReps, 1, kMostExciteReps);
    if (ExciteReps.Text() == "0") ExciteReps.Correct("1");
  };
  ExciteReps.OnTake = [this] { onExciteReps(); };
  ExciteReps.OnSpin = [this](bool up) {
    const i32 shown = std::clamp(wholePart(ExciteReps), 1, kMostExciteReps);
    ExciteReps.Value(shown + (up ? 1 : -1));
    onExciteReps();
  };
  Units.WhyNot = [this](std::string_view units) {
    return UnitsFit(SourceName(ORVUS_DOBJ_BLK_BRIDGE, block_), units) ? "" : kTooLongHelp;
  };
  FieldNames.OnPress = [this] { openFieldNames(scaling()); };
  addOpener(OpenedBy(FieldNames, "frmFldName"));
}

void frmBrdgSetup::bindFlag(CheckBox& box, flag BridgeBlockData::*member,
                            const std::function<void()>& then) {
  box.OnClick = [this, &box, member, then] {
    data().*member = box.Checked() ? kTrue : kFalse;
    then();
  };
}

void frmBrdgSetup::bindExcitation() {
  Excite.WholePart = true;
  Excite.OnChange = [this] { onExciteTyped(); };
  Excite.OnTake = [this] {
    Excite.Value(std::max(Excite.Value(), double{kLeastExcite}));
    data().Excite = static_cast<float>(Excite.Value());
  };
  Excite.OnSpin = [this](bool up) {
    constexpr i32 kStep = 10;
    Excite.Value(std::clamp(wholePart(Excite) + (up ? kStep : -kStep), kLeastExcite, kMostExcite));
    data().Excite = static_cast<float>(Excite.Value());
  };
  bindFlag(CheckCAO, &BridgeBlockData::CheckCAO, [this] { recount(); });
  bindFlag(RevExcite, &BridgeBlockData::RevExcite, [this] { showTimes(); });
  bindFlag(ReverseMes, &BridgeBlockData::ReverseMes, [this] { showTimes(); });
  bindFlag(RevOutput, &BridgeBlockData::RevOutput, [] {});
}

void frmBrdgSetup::bindTiming() {
  for (const AnalogRange& range : kAnalogRanges)
    Range.Items.push_back({std::string(range.text), true, true, {}});
  Range.OnPick = [this] { onRange(); };
  OpenSensDetect.ToolTip =
      "Check for open sensor test. Increases measure time by 10 uSecs per sensor.";
  bindFlag(OpenSensDetect, &BridgeBlockData::OpenSensDetect, [this] { storeRangeCode(); });
  IntegrationRange.SetItems({"50 Hz", "60 Hz", "uSecs", "mSecs"});
  IntegrationRange.OnPick = [this] { onIntegrationRange(); };
  Integration.Limits(0, 2147483647.0);
  Integration.WholePart = true;
  Integration.OnChange = [this] { DropLeadingZeros(Integration); };
  Integration.OnTake = [this] { takeIntegration(); };
  Integration.OnSpin = [this](bool up) { spinIntegration(up); };
  SettleTime.WholePart = true;
  SettleTime.OnChange = [this] {
    DropLeadingZeros(SettleTime);
    if (SettleTime.Value() > kMostBridgeSettling)
      SettleTime.Correct(NumberText(kMostBridgeSettling));
  };
  SettleTime.OnTake = [this] {
    setSettling(TakenBridgeSettling(wholePart(SettleTime), integration()));
  };
  SettleTime.OnSpin = [this](bool up) {
    constexpr i32 kStep = 10;
    const i32 micros = wholePart(SettleTime) / kStep * kStep + (up ? kStep : -kStep);
    setSettling(std::clamp(micros, 100, kMostBridgeSettling));
  };
}

void frmBrdgSetup::bindScale(NumericField& field, float BridgeBlockData::*member) {
  field.OnTake = [this, &field, member] { data().*member = static_cast<float>(field.Value()); };
  field.OnSpin = [this, &field, member](bool up) {
    field.Value(SteppedToWhole(field.Value(), up));
    data().*member = static_cast<float>(field.Value());
  };
}

void frmBrdgSetup::bindScaling() {
  bindScale(DefaultMult, &BridgeBlockData::DefaultMult);
  bindScale(DefaultOffset, &BridgeBlockData::DefaultOffset);
  GageFactor.OnTake = [this] {
    data().GageFactor = static_cast<float>(GageFactor.Value());
    data().DefaultOffset = data().GageFactor;
  };
  Solve.Caption = "Sol&ve";
  Solve.OnPress = [this] { solve(); };
  addOpener(OpenedBy(Solve, "frmSolveList"));
  Outputs.AskParameters = [this](OutputCode code, int table, HistoSet& histo) {
    const std::string resolution = DataResolution.Text();
    return AskOutputParameters(context(), code, {histo, table, resolution},
                               SourceName(ORVUS_DOBJ_BLK_BRIDGE, block_));
  };
  for (Opener& opener : Outputs.Openers()) addOpener(std::move(opener));
  CalOnSite.OnClick = [this] { onCalOnSite(); };
  ZeroPanel.OnPress = [this] { showZeroPanel(true); };
  CloseZeroPanel.OnPress = [this] { showZeroPanel(false); };
  SetZeroFlagItems(ZeroFlag, store());
  ZeroFlag.PicksAgain = true;  // to close its panel
  ZeroFlag.OnPick = [this] { onZeroFlag(); };
  bindFlag(Public, &BridgeBlockData::Public, [] {});
  DataResolution.SetItems({"FP2", "IEEE4"});
}

void frmBrdgSetup::load() {
  const Loading loading(*this);
  BridgeBlockData& block = data();
  Outputs.Show(block.Output);
  kind_ = knownStyle(block.Style);
  Units.Text(block.Units);
  DefaultMult.Value(block.DefaultMult);
  DefaultOffset.Value(block.DefaultOffset);
  GageFactor.Value(block.GageFactor);
  DataResolution.Index(SameText(block.DataResolution, "FP2") ? 0 : 1);
  Public.Checked(block.Public != kFalse);
  Style.Index(kind_);

  Reps.Value(block.Reps);
  ExciteReps.Value(std::max<int>(block.ExciteReps, 1));
  StartBrdgChan.Enabled = !autoChan();
  Excite.Value(block.Excite);
  CheckCAO.Checked(block.CheckCAO != kFalse);
  RevExcite.Checked(block.RevExcite != kFalse);
  ReverseMes.Checked(block.ReverseMes != kFalse);
  RevOutput.Checked(block.RevOutput != kFalse);
  OpenSensDetect.Checked(block.OpenSensDetect != kFalse);
  Range.Index(BridgeRangeIndex(block.Range));
  IntegrationRange.Index(block.IntegrationRange);
  Integration.Value(block.Integration);
  SettleTime.Value(block.SettleTime);
  ZeroFlag.Index(block.ZeroFlag);
  CalOnSite.Checked(block.CalOnSite != 0);
  recount();
  auto settled = std::make_unique<BridgeBlockData>(block);
  settle(*settled);
  list_.Opened(block_, before_.Before(), *settled);
}

void frmBrdgSetup::onStyle() {
  const int style = Style.Index();
  const int before = kind_;
  const bool changed = style != before && !IsLoading();
  kind_ = style;
  takeKind(style, changed);
  scaleByKind(style, before, changed);
  showPanels();
  ReverseMes.Enabled = CanReverseBridge(style);
  if (!ReverseMes.Enabled) {
    ReverseMes.Checked(false);
    data().ReverseMes = kFalse;
  }
  allowSolve(!IsStrainStyle(style));
  if (!IsLoading()) DataResolution.Pick("IEEE4");
  if (!autoChan() && !IsLoading()) takeStart();
  fillGaugeFactors(data());
  Forms().SetHelpLine(std::string(kindOf(style).status));
  if (!IsLoading()) fitReps(data().Reps);
}

void frmBrdgSetup::takeKind(int style, bool changed) {
  const BridgeKind& kind = kindOf(style);
  BridgeBlockData& block = data();
  if (!IsLoading()) {
    block.Reps = 1;
    Reps.Value(1);
  }
  block.Style = static_cast<i16>(style);
  block.MeasType = kBridgeStyles[static_cast<std::size_t>(style)].measType;
  block.Type = kind.instruction;
  StyleInfo.Text(kind.info);
  if (changed) ResetColumn(aliasRows(), kUnitsByHand);
  if (changed || Trim(Units.Text()).empty()) Units.Text(kind.units);
}

void frmBrdgSetup::scaleByKind(int style, int styleBefore, bool changed) {
  BridgeBlockData& block = data();
  const bool otherOffsets = changed && IsStrainStyle(style) != IsStrainStyle(styleBefore);
  // A gauge factor must not be added as an offset, nor an offset be taken for a gauge factor.
  if (otherOffsets) ResetColumn(aliasRows(), kOffsetByHand);
  if (style == kResistanceBridge) setScaling(kResistanceMult, 0);
  if (IsStrainStyle(style)) {
    block.GageCode = kindOf(style).gageCode;
    setScaling(1, block.GageFactor);
    CalOnSite.Checked(false);
    block.CalOnSite = 0;
  } else if (otherOffsets) {
    setScaling(block.DefaultMult, 0);
  }
  if (otherOffsets) scaling_.RestartOffset(block.DefaultOffset);
}

void frmBrdgSetup::showPanels() {
  const bool strain = IsStrainStyle(kind_);
  const bool scaling = !strain && !CalOnSite.Checked();
  for (Control* control : {static_cast<Control*>(&DefaultMult),
                           static_cast<Control*>(&DefaultOffset), static_cast<Control*>(&Solve)}) {
    control->Visible = scaling;
  }
  CalOnSite.Visible = !strain;
  GageFactor.Visible = strain;
  RevOutput.Visible = strain;
  ZeroPanel.Visible = !strain;
  showZeroPanel(strain);
}

void frmBrdgSetup::showStart() {
  const int found = autoChan() ? list_.Starts(list_.Bridges()).Bridge[block_] : 0;
  StartBrdgChan.Value(found > 0 ? found : data().StartChan);
}

// Repetitions of strain kinds that have no gauge factor of their own hold a zero for it.
void frmBrdgSetup::fillGaugeFactors(BridgeBlockData& block) const {
  if (!IsStrainStyle(kind_)) return;
  for (RepAlias& alias : AliasesOf(block.Alias, block.Reps)) {
    if (Trim(alias.AliasOffset).empty()) alias.AliasOffset = "0";
  }
}

// What Done makes of a block beside its counts.
void frmBrdgSetup::settle(BridgeBlockData& block) const {
  block.Units = Trim(Units.Text());
  block.SettleTime = TakenBridgeSettling(block.SettleTime, integration());
  block.DataResolution = DataResolution.Text();
  block.BlockTime = BridgeBlockTime(block);
  fillGaugeFactors(block);
  ClearRowsBeyond(block.Alias.Made(), block.Reps);
}

void frmBrdgSetup::onReps() {
  if (Trim(Reps.Text()).empty()) return;
  fitReps(wholePart(Reps));
}

// Takes a sensor count as far as excitations and channels reach.
void frmBrdgSetup::fitReps(int reps) {
  BridgeBlockData& block = data();
  int fitting = std::clamp(reps, 0, kReps);
  if (!autoChan()) {
    fitting = std::clamp(fitting, 0, std::max(ManualRoom(differential(), block.StartChan), 0));
  }
  block.Reps = static_cast<i16>(fitting);
  fitExciteReps();  // also leaves no sensors where others have all excitations
  while (autoChan() && block.Reps > 0 && list_.FreeChannels() < 0) {
    const ChannelBlock own = list_.Bridges()[static_cast<std::size_t>(block_ - 1)];
    const int tooMany = BridgeSensorsTooMany(-list_.FreeChannels(), own);
    block.Reps = static_cast<i16>(std::max(block.Reps - tooMany, 0));
    recount();
  }
  Reps.Value(block.Reps);
  warnWhenEmptied(reps);
}

void frmBrdgSetup::onExciteReps() {
  const int before = data().Reps;
  fitExciteReps();
  warnWhenEmptied(before);
}

void frmBrdgSetup::fitExciteReps() {
  BridgeBlockData& block = data();
  const int wanted = std::clamp(wholePart(ExciteReps), 1, kMostExciteReps);
  const ExciteFit fit =
      FitExciteReps(block.Reps, wanted, ExcitePortsOfOthers(list_.Bridges(), block_));
  block.Reps = static_cast<i16>(fit.reps);
  block.ExciteReps = static_cast<i16>(fit.exciteReps);
  Reps.Value(fit.reps);
  ExciteReps.Value(fit.exciteReps);
  if (fit.exciteReps != wanted) ShowWarning(Forms(), "CORRECTION", "MeasPerEx has been Changed");
  recount();
}

void frmBrdgSetup::recount() {
  BrdSetup_DiffSECount();
  if (!IsLoading()) limitExciteReps();
  list_.BrdBlock_ExcitCount();
  FreeExcite.Text(list_.FreeExcite.Text());
  list_.List.RefreshRows();
  if (autoChan() || IsLoading()) showStart();
  FieldNames.Enabled = data().Reps > 0 && hooks_.FieldNames != nullptr;
  showTimes();
}

void frmBrdgSetup::BrdSetup_DiffSECount() {
  list_.BrdBlock_DiffSECount();
  FreeSE.Text(list_.FreeSE.Text());
  FreeDiff.Text(list_.FreeDiff.Text());
}

void frmBrdgSetup::limitExciteReps() {
  BridgeBlockData& block = data();
  if (block.Reps <= 0 || block.ExciteReps <= block.Reps) return;
  block.ExciteReps = block.Reps;
  ExciteReps.Value(block.ExciteReps);
  Forms().Beep();
  ShowWarning(Forms(), "TROUBLE",
              "The excitation repeat value (MeasPerEx) is too large for the number\r\n"
              "of available channels, and has been reduced.");
}

void frmBrdgSetup::warnWhenEmptied(int before) {
  if (before < 1 || data().Reps > 0) return;
  Forms().SetHelpLine("WARNING - Sensor count has been set to zero.");
}

void frmBrdgSetup::takeStart() {
  const int start = std::max(wholePart(StartBrdgChan), 1);
  data().StartChan =
      static_cast<i16>(std::min(start, LastBridgeStart(differential(), data().Reps)));
  StartBrdgChan.Value(data().StartChan);
}

void frmBrdgSetup::onExciteTyped() {
  DropLeadingZeros(Excite);
  std::string text = Excite.Text();
  if (text.find('-', 1) != std::string::npos) {
    text.erase(std::remove(text.begin() + 1, text.end(), '-'), text.end());
    Excite.Correct(text);
    Forms().Beep();
  }
  LimitWhileTyped(Excite, -kMostExcite, kMostExcite);
}

void frmBrdgSetup::onIntegrationRange() {
  data().IntegrationRange = IntegrationRange.Index();
  const i32 forced = ForcedIntegration(IntegrationRange.Index());
  Integration.Enabled = forced == 0;
  if (IsLoading()) return;
  if (forced > 0) setIntegration(forced);
  if (IntegrationRange.Index() == kMicros) setIntegration(kMostBridgeIntegration);
  settleLongEnough();
  showTimes();
}

void frmBrdgSetup::takeIntegration() {
  // Only a stored 2 is rounded, a mark of projects that never held a time.
  constexpr i32 kNoTimeYet = 2;
  const i32 typed = wholePart(Integration);
  setIntegration(data().Integration == kNoTimeYet ? RoundedBridgeIntegration(typed) : typed);
  settleLongEnough();
}

void frmBrdgSetup::spinIntegration(bool up) {
  const i32 micros = wholePart(Integration);
  if (!up && micros < 1) return;
  setIntegration(up ? BridgeIntegrationUp(micros) : BridgeIntegrationDown(micros));
  if (up) settleLongEnough();
}

void frmBrdgSetup::setIntegration(i32 micros) {
  data().Integration = micros;
  Integration.Value(micros);
  list_.List.RefreshRows();
  showTimes();
}

i32 frmBrdgSetup::integration() const {
  const i32 forced = ForcedIntegration(data().IntegrationRange);
  return forced > 0 ? forced : data().Integration;
}

void frmBrdgSetup::settleLongEnough() {
  const i32 least = LeastBridgeSettling(integration());
  if (least > LeastBridgeSettling(0) && data().SettleTime < least) setSettling(least);
}

void frmBrdgSetup::setSettling(i32 micros) {
  data().SettleTime = micros;
  SettleTime.Value(micros);
  showTimes();
}

void frmBrdgSetup::onRange() {
  const AnalogRange& range = kAnalogRanges[static_cast<std::size_t>(Range.Index())];
  data().Range = range.text;
  OpenSensDetect.Visible = range.openSensor;
  storeRangeCode();
}

void frmBrdgSetup::storeRangeCode() {
  if (Range.Index() < 0) return;
  data().RangeNo = AnalogRangeCode(kAnalogRanges[static_cast<std::size_t>(Range.Index())],
                                   data().OpenSensDetect != kFalse);
  list_.List.RefreshRows();
  showTimes();
}

void frmBrdgSetup::showTimes() {
  data().BlockTime = BridgeBlockTime(data());
  Each.Text(MicrosText(BridgeMeasTime(data())));
  Block.Text(MicrosText(data().BlockTime));
}

void frmBrdgSetup::setScaling(float mult, float offset) {
  data().DefaultMult = mult;
  data().DefaultOffset = offset;
  DefaultMult.Value(mult);
  DefaultOffset.Value(offset);
}

void frmBrdgSetup::onCalOnSite() {
  const bool on = CalOnSite.Checked();
  data().CalOnSite = on ? 1 : 0;
  if (on) {
    Public.Checked(true);
    if (!IsLoading()) setScaling(1, 0);
  }
  Public.Enabled = !on;
  DefaultMult.Enabled = !on;
  DefaultOffset.Enabled = !on;
  if (on || kind_ < kResistanceBridge) allowSolve(!on);
  showPanels();
}

void frmBrdgSetup::allowSolve(bool allowed) { Solve.Enabled = allowed && hooks_.Solve != nullptr; }

SolveSource frmBrdgSetup::solveSource() const {
  return {.kind = "Brdg", .inVolts = IsHalfBridge(kind_), .inOhms = kind_ == kResistanceBridge};
}

void frmBrdgSetup::solve() {
  DefaultScaling answer = scaling();
  if (!hooks_.Solve(solveSource(), answer)) return;
  setScaling(answer.Mult, answer.Offset);
  Units.Text(answer.Units);
}

void frmBrdgSetup::onZeroFlag() {
  const bool changed = data().ZeroFlag != ZeroFlag.Index();
  data().ZeroFlag = static_cast<i16>(ZeroFlag.Index());
  ZeroFlagShown.Text(ZeroFlag.Text());
  if (!IsStrainStyle(kind_)) showZeroPanel(false);
  if (!changed || ZeroFlag.Index() < 1) return;
  CheckFlagUsage(Forms(), store(), ZeroFlag.Index(), ZeroFlagUser(ORVUS_DOBJ_BLK_BRIDGE, block_));
}

void frmBrdgSetup::showZeroPanel(bool open) {
  ZeroFlag.Visible = open;
  CloseZeroPanel.Visible = open && !IsStrainStyle(kind_);
}

DefaultScaling frmBrdgSetup::scaling() const {
  return {std::string(Trim(Units.Text())), data().DefaultMult, data().DefaultOffset};
}

void frmBrdgSetup::openFieldNames(const DefaultScaling& defaults) {
  if (!hooks_.FieldNames) return;
  scaling_.Follow(aliasRows(), defaults);
  hooks_.FieldNames({.kind = ORVUS_DOBJ_BLK_BRIDGE,
                     .block = block_,
                     .name = SourceName(ORVUS_DOBJ_BLK_BRIDGE, block_),
                     .defaults = defaults,
                     .gaugeFactor = IsStrainStyle(kind_),
                     .aliases = aliases(),
                     .calibrated = data().CalOnSite != 0 && !IsStrainStyle(kind_),
                     .solveSource = solveSource()});
}

bool frmBrdgSetup::onDone() {
  const DefaultScaling after = scaling();
  if (!scaling_.Ask(Forms(), after, aliases(), [&] { openFieldNames(after); })) return false;
  scaling_.Follow(aliasRows(), after);
  fitReps(data().Reps);
  settle(data());
  before_.Keep();
  names_.Keep();
  return true;
}

}  // namespace ostrand
