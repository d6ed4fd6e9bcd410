#include "blocks/frm_pulse_block.h"

#include <algorithm>

#include "blocks/frm_pulse_setup.h"
#include "controls/screen_factory.h"
#include "model/channel_chart.h"
#include "model/defaults.h"
#include "text/mask.h"
#include "text/number.h"

namespace ostrand {

frmPulseBlock::frmPulseBlock(const ScreenContext& context)
    : Screen(context, "frmPulseBlock"),
      List(*this, rules()),
      FreeHiLev(*this, "FreeHiLev"),
      FreeLoLev(*this, "FreeLoLev"),
      FreeSwtch(*this, "FreeSwtch"),
      edits_(group(), store()) {
  Caption = "PULSE BLOCK";
  Describe(*this, kFreeChannelFaces);
  List.Show(std::clamp<int>(group().BlockCount, 0, kPulseBlocks));
  FreeChans();
  edits_.Begin(List.Count());
}

BlockList::Rules frmPulseBlock::rules() {
  BlockList::Rules rules;
  rules.setup = "frmPulseSetup";
  rules.open = [this](int block) {
    PulseSetupRequest request{*this, block};
    OpenScreen(context(), "frmPulseSetup", request);
  };
  rules.max = kPulseBlocks;
  rules.rows = kPulseBlocks;
  rules.maxDigit = kPulseBlocks;
  rules.maySpinUp = [this] { return FreePulseChans(Pulses()) > 0; };
  rules.mayType = [this](int) { return FreePulseChans(Pulses()) > 0; };
  rules.sensors = [this](int block) { return int{group()[block].Reps}; };
  rules.add = [this](int block) { add(block); };
  rules.remove = [this](int block) { ORVUS_COMMON::SetPulseDefaults(store(), 0, block - 1); };
  rules.changed = [this] { FreeChans(); };
  const auto scale = [](float value) { return FormatNumber(DecimalValue(value), "0.0e-##"); };
  rules.columns = {
      {"Meas", [this](int block) { return std::string(PulseInputOf(group()[block]).rowText); }},
      {"Option",
       [this](int block) { return std::string(group()[block].Opt > 0 ? "Freq" : "Totl"); }},
      {"Reps", [this](int block) { return NumberText(int{group()[block].Reps}); }},
      {"DefaultMult", [this, scale](int block) { return scale(group()[block].DefaultMult); }},
      {"DefaultOffset", [this, scale](int block) { return scale(group()[block].DefaultOffset); }},
  };
  return rules;
}

// A row after the last block of the project may contain remains of a file.
void frmPulseBlock::add(int block) {
  if (block > group().BlockCount) ORVUS_COMMON::SetPulseDefaults(store(), 0, block - 1);
}

std::vector<ChannelBlock> frmPulseBlock::Pulses() const {
  std::vector<ChannelBlock> blocks;
  for (int b = 1; b <= List.Count(); ++b) blocks.push_back({.Reps = group()[b].Reps});
  return blocks;
}

int frmPulseBlock::FreeChans() {
  const int free = FreePulseChans(Pulses());
  for (Label* label : {&FreeHiLev, &FreeLoLev, &FreeSwtch}) label->Text(NumberText(free));
  List.RefreshRows();
  return free;
}

bool frmPulseBlock::onDone() {
  group().BlockCount = static_cast<i16>(List.Count());
  ORVUS_COMMON::SetPulseDefaults(store(), 0, List.Count());
  StoreAutomaticStarts(store());
  edits_.Keep();
  return true;
}

bool frmPulseBlock::onCancel() {
  return edits_.Cancel(Forms(), List.Count(), [this] {
    if (onDone()) End(ModalResult::kDone);
  });
}

}  // namespace ostrand
