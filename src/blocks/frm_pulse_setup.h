// One pulse block.
#pragma once

#include <string_view>

#include "blocks/frm_pulse_block.h"
#include "conditions/backup.h"
#include "conditions/names_backup.h"
#include "conditions/screen_requests.h"
#include "controls/choice.h"
#include "controls/edits.h"
#include "controls/numeric_field.h"
#include "tables/output_boxes.h"

namespace ostrand {

// A kind of pulse input.
struct PulseInput {
  std::string_view meas;     // `Meas`
  std::string_view rowText;  // in the list of blocks
  std::string_view toolTip;
};
// The kind of a block; high level if none is stored.
const PulseInput& PulseInputOf(const PulseBlockData& block);

// Edits a block of the store in place; Cancel restores it.
class frmPulseSetup final : public Screen {
 public:
  frmPulseSetup(const ScreenContext& context, const PulseSetupRequest& request);

 private:
  // First, since its controls refer to it.
  frmPulseBlock& list_;
  int block_;
  Backup<PulseBlockData> before_;
  NamesBackup names_;  // a renamed sensor is renamed in the project too

 public:
  NumericField Reps;
  Choice Meas;
  Choice Option;     // frequency or total
  NumericField Opt;  // moving average in milliseconds, for frequencies
  UnitField Units;
  NumericField DefaultMult;
  NumericField DefaultOffset;
  Opener Solve;
  CheckBox SiteCal;
  CheckBox Public;
  Choice DataType;
  Opener FieldNames;
  Label FreeHiLev;
  Label FreeLoLev;
  Label FreeSwtch;
  Label Each;
  Label Block;
  OutputBoxes Outputs;

  // Recounts the free channels and reduces the sensors of this block until they fit.
  void CountersCount();

 protected:
  bool onDone() override;

 private:
  [[nodiscard]] PulseBlockData& data() const { return store().PulseBlock[0][block_]; }

  void bind();
  void load();
  void onRepsTyped();
  void setReps(int reps);
  void onOption();
  void measureFrequency();
  void totalize();
  void offerAverages(std::string_view whyNot);
  void swapUnits(std::string_view from, std::string_view to);
  void setAverage(int millis);
  void onSiteCal();
  void allowSolve(bool allowed, std::string_view whyNot);
  [[nodiscard]] SolveSource solveSource() const;
  void solve();
  void openFieldNames(const DefaultScaling& defaults);
  [[nodiscard]] DefaultScaling scaling() const;

  ScalingEdit scaling_;
  std::string unitsBefore_;  // repetitions with these units take new ones
  int keptAverage_ = 0;      // average before the block totalized; 0 for none
};

}  // namespace ostrand
