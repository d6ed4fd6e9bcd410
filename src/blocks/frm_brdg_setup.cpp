#include "blocks/frm_brdg_setup.h"

#include <algorithm>
#include <memory>

#include "blocks/bridge_rules.h"
#include "blocks/scaling_fields.h"
#include "conditions/aliases.h"
#include "conditions/field_keys.h"
#include "conditions/flag_usage.h"
#include "model/names.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

const BridgeKind& kindOf(int style) { return kBridgeKinds[static_cast<std::size_t>(style)]; }

// A file may contain an unknown style.
int knownStyle(int style) {
  return style >= 0 && style < static_cast<int>(kBridgeKinds.size()) ? style : 0;
}

// The scaling that sensors follow. A project may not have copied the gauge factor into the offset
// yet; this screen does, which is not an edit by the user.
DefaultScaling scalingOf(const BridgeBlockData& block) {
  DefaultScaling scaling = DefaultScalingOf(block);
  if (IsStrainStyle(block.Style)) scaling.Offset = block.GageFactor;
  return scaling;
}

}  // namespace

frmBrdgSetup::frmBrdgSetup(const ScreenContext& context, const BrdgSetupRequest& request)
    : Screen(context, "frmBrdgSetup"),
      list_(request.list),
      block_(request.block),
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
      Solve(*this, "Solve", "frmSolveList"),
      CalOnSite(*this, "CalOnSite"),
      ZeroPanel(*this, "ZeroPanel"),
      ZeroFlag(*this, "ZeroFlag"),
      CloseZeroPanel(*this, "CloseZeroPanel"),
      ZeroFlagShown(*this, "ZeroFlagShown"),
      Public(*this, "Public"),
      DataResolution(*this, "DataResolution"),
      FieldNames(*this, "FieldNames", "frmFldName"),
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
  Describe(*this, kBrdgSetupFaces);
}

void frmBrdgSetup::bindKind() {
  Style.Caption = "&BRIDGE TYPE " + NumberText(block_);
  for (const BridgeKind& kind : kBridgeKinds) {
    Style.Add(kind.caption, kind.status);
  }
  Style.PicksAgain = true;  // each pick sets the count to 1
  Style.OnPick = [this] { onStyle(); };
}

void frmBrdgSetup::bindFlag(CheckBox& box, flag BridgeBlockData::*member,
                            const std::function<void()>& then) {
  box.OnClick = [this, &box, member, then] {
    data().*member = box.Checked() ? kTrue : kFalse;
    then();
  };
}

void frmBrdgSetup::bindScaling() {
  LimitUnits(Units, ORVUS_DOBJ_BLK_BRIDGE);
  BindScale(
      DefaultMult, [this]() -> float& { return data().DefaultMult; }, SteppedToWhole);
  BindScale(
      DefaultOffset, [this]() -> float& { return data().DefaultOffset; }, SteppedToWhole);
  GageFactor.OnTake = [this] {
    data().GageFactor = static_cast<float>(GageFactor.Value());
    data().DefaultOffset = data().GageFactor;
  };
  Solve.OnPress = [this] { solve(); };
  Outputs.AskBy(context(), DataResolution, SourceName(ORVUS_DOBJ_BLK_BRIDGE, block_));
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
  DataResolution.PickAt(SameText(block.DataResolution, "FP2") ? 0 : 1);
  Public.Check(block.Public != kFalse);
  Style.PickAt(kind_);

  Reps.Value(block.Reps);
  ExciteReps.Value(std::max<int>(block.ExciteReps, 1));
  StartBrdgChan.Enabled = !autoChan();
  Excite.Value(block.Excite);
  CheckCAO.Check(block.CheckCAO != kFalse);
  RevExcite.Check(block.RevExcite != kFalse);
  ReverseMes.Check(block.ReverseMes != kFalse);
  RevOutput.Check(block.RevOutput != kFalse);
  OpenSensDetect.Check(block.OpenSensDetect != kFalse);
  Range.PickAt(BridgeRangeIndex(block.Range));
  IntegrationRange.PickAt(block.IntegrationRange);
  Integration.Value(block.Integration);
  SettleTime.Value(block.SettleTime);
  ZeroFlag.PickAt(block.ZeroFlag);
  CalOnSite.Check(block.CalOnSite != 0);
  recount();
  auto settled = std::make_unique<BridgeBlockData>(block);
  settle(*settled);
  list_.Opened(block_, before_.Before(), *settled);
}

void frmBrdgSetup::onStyle() {
  const int style = Style.Index();
  const int before = kind_;
  const bool changed = style != before;
  kind_ = style;
  takeKind(style, changed);
  scaleByKind(style, before, changed);
  showPanels();
  ReverseMes.Enabled = CanReverseBridge(style);
  if (!ReverseMes.Enabled) {
    ReverseMes.Check(false);
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
  // A gauge factor must not be added as an offset, nor an offset used as a gauge factor.
  if (otherOffsets) ResetColumn(aliasRows(), kOffsetByHand);
  if (style == kResistanceBridge) setScaling(kResistanceMult, 0);
  if (IsStrainStyle(style)) {
    block.GageCode = kindOf(style).gageCode;
    setScaling(1, block.GageFactor);
    CalOnSite.Check(false);
    block.CalOnSite = 0;
  } else if (otherOffsets) {
    setScaling(block.DefaultMult, 0);
  }
  if (otherOffsets) scaling_.RestartOffset(block.DefaultOffset);
}

void frmBrdgSetup::showPanels() {
  const bool strain = IsStrainStyle(kind_);
  const bool scaling = !strain && !CalOnSite.Checked();
  for (NumericField* field : {&DefaultMult, &DefaultOffset}) {
    field->Visible = scaling;
    field->WhyDisabled = strain ? "Strain styles have gauge factors." : kCalibratedOnSite;
  }
  Solve.Show(scaling, whyNoSolve());
  CalOnSite.Visible = !strain;
  GageFactor.Visible = strain;
  RevOutput.Visible = strain;
  ZeroPanel.Visible = !strain;
  showZeroPanel(strain);
}

// Repetitions of strain kinds without a separate gauge factor store 0.
void frmBrdgSetup::fillGaugeFactors(BridgeBlockData& block) const {
  if (!IsStrainStyle(kind_)) return;
  for (RepAlias& alias : AliasesOf(block.Alias, block.Reps)) {
    if (Trim(alias.AliasOffset).empty()) alias.AliasOffset = "0";
  }
}

// Changes to a block at Done, besides its counts.
void frmBrdgSetup::settle(BridgeBlockData& block) const {
  block.Units = Trim(Units.Text());
  block.SettleTime = TakenBridgeSettling(block.SettleTime, integration());
  block.DataResolution = DataResolution.Text();
  block.BlockTime = BridgeBlockTime(block);
  fillGaugeFactors(block);
  ClearRowsBeyond(block.Alias.Made(), block.Reps);
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
    Public.Check(true);
    if (!IsLoading()) setScaling(1, 0);
  }
  Public.Enabled = !on;
  DefaultMult.Enabled = !on;
  DefaultOffset.Enabled = !on;
  if (on || kind_ < kResistanceBridge) allowSolve(!on);
  showPanels();
}

void frmBrdgSetup::allowSolve(bool allowed) { Solve.Enable(allowed, whyNoSolve()); }

std::string_view frmBrdgSetup::whyNoSolve() const {
  return IsStrainStyle(kind_) ? "No calculator finds a gauge factor." : kCalibratedOnSite;
}

SolveSource frmBrdgSetup::solveSource() const {
  return {.kind = "Brdg", .inVolts = IsHalfBridge(kind_), .inOhms = kind_ == kResistanceBridge};
}

void frmBrdgSetup::solve() {
  SolveRequest request{solveSource(), scaling()};
  if (!SolveScaling(context(), request)) return;
  const DefaultScaling& answer = request.scaling;
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
  scaling_.Follow(aliasRows(), defaults);
  FieldNamesRequest request{.kind = ORVUS_DOBJ_BLK_BRIDGE,
                            .block = block_,
                            .name = SourceName(ORVUS_DOBJ_BLK_BRIDGE, block_),
                            .defaults = defaults,
                            .gaugeFactor = IsStrainStyle(kind_),
                            .aliases = aliases(),
                            .calibrated = data().CalOnSite != 0 && !IsStrainStyle(kind_),
                            .solveSource = solveSource()};
  OpenScreen(context(), FieldNames.Opens(), request);
}

bool frmBrdgSetup::onDone() {
  const DefaultScaling after = scaling();
  if (!scaling_.Ask(Forms(), after, aliases(), [&] { openFieldNames(after); })) return false;
  scaling_.Follow(aliasRows(), after);
  settle(data());
  before_.Keep();
  names_.Keep();
  return true;
}

}  // namespace ostrand
