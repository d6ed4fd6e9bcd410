// One bridge block. The main source covers kind, scaling and zeroing; sensors with their channels
// and excitation are in frm_brdg_setup_counts.cpp, range and times in frm_brdg_setup_timing.cpp.
#pragma once

#include <functional>
#include <span>
#include <string_view>

#include "blocks/frm_brdg_block.h"
#include "conditions/aliases.h"
#include "conditions/backup.h"
#include "conditions/names_backup.h"
#include "conditions/screen_requests.h"
#include "controls/choice.h"
#include "controls/edits.h"
#include "controls/numeric_field.h"
#include "tables/output_boxes.h"

namespace ostrand {

// Edits a block of the store in place; Cancel restores it.
class frmBrdgSetup final : public Screen {
 public:
  frmBrdgSetup(const ScreenContext& context, const BrdgSetupRequest& request);

 private:
  // First, since its controls refer to it.
  frmBrdgBlock& list_;
  int block_;
  Backup<BridgeBlockData> before_;
  NamesBackup names_;  // a renamed sensor is renamed in the project too

 public:
  Choice Style;
  Label StyleInfo;
  NumericField Reps;
  NumericField StartBrdgChan;
  NumericField ExciteReps;  // sensors on one excitation channel
  NumericField Excite;
  CheckBox CheckCAO;
  CheckBox RevExcite;
  CheckBox ReverseMes;
  CheckBox RevOutput;
  Choice Range;
  CheckBox OpenSensDetect;
  Choice IntegrationRange;
  NumericField Integration;
  NumericField SettleTime;
  UnitField Units;
  NumericField DefaultMult;
  NumericField DefaultOffset;
  NumericField GageFactor;
  Opener Solve;
  CheckBox CalOnSite;
  Button ZeroPanel;  // opens the panel of zero flags
  Choice ZeroFlag;
  Button CloseZeroPanel;
  Label ZeroFlagShown;
  CheckBox Public;
  Choice DataResolution;
  Opener FieldNames;
  Label Each;
  Label Block;
  Label FreeSE;
  Label FreeDiff;
  Label FreeExcite;
  OutputBoxes Outputs;

  // Counts the channels of the section, with this block as the fields show it.
  void BrdSetup_DiffSECount();

 protected:
  bool onDone() override;

 private:
  [[nodiscard]] BridgeBlockData& data() const { return store().BridgeBlock[block_]; }
  [[nodiscard]] bool autoChan() const { return store().Config.AutoChan != kFalse; }
  [[nodiscard]] bool differential() const { return IsDifferential(data().MeasType); }

  void bindKind();
  void bindCounts();
  void bindExcitation();
  void bindTiming();
  void bindScaling();
  void bindFlag(CheckBox& box, flag BridgeBlockData::*member, const std::function<void()>& then);
  void load();

  void onStyle();
  void takeKind(int style, bool changed);
  void scaleByKind(int style, int styleBefore, bool changed);
  void showPanels();
  void showStart();
  void fillGaugeFactors(BridgeBlockData& block) const;
  void settle(BridgeBlockData& block) const;
  [[nodiscard]] std::span<RepAlias> aliases() const { return AliasesOf(data().Alias, data().Reps); }
  // The rows written so far; the others equal those of an unused block.
  [[nodiscard]] std::span<RepAlias> aliasRows() const { return data().Alias.Made(); }

  void onReps();
  void fitReps(int reps);
  void onExciteReps();
  void fitExciteReps();
  void recount();
  void limitExciteReps();
  void warnWhenEmptied(int before);
  void takeStart();

  void onExciteTyped();
  void onIntegrationRange();
  void takeIntegration();
  void spinIntegration(bool up);
  void setIntegration(i32 micros);
  void settleLongEnough();
  void setSettling(i32 micros);
  [[nodiscard]] i32 integration() const;
  void onRange();
  void storeRangeCode();
  void showTimes();

  void setScaling(float mult, float offset);
  void onCalOnSite();
  void allowSolve(bool allowed);
  [[nodiscard]] std::string_view whyNoSolve() const;
  [[nodiscard]] SolveSource solveSource() const;
  void solve();
  void onZeroFlag();
  void showZeroPanel(bool open);
  void openFieldNames(const DefaultScaling& defaults);
  [[nodiscard]] DefaultScaling scaling() const;

  ScalingEdit scaling_;
  int kind_ = 0;
};

}  // namespace ostrand
