#include "blocks/frm_brdg_block.h"

#include <algorithm>

#include "blocks/analog_list.h"
#include "controls/screen_factory.h"
#include "model/channel_chart.h"
#include "model/defaults.h"
#include "text/number.h"

namespace ostrand {

frmBrdgBlock::frmBrdgBlock(const ScreenContext& context)
    : Screen(context, "frmBrdgBlock"),
      List(*this, rules()),
      FreeSE(*this, "FreeSE"),
      FreeDiff(*this, "FreeDiff"),
      FreeExcite(*this, "FreeExcite"),
      FreeCAO(*this, "FreeCAO"),
      Chart(*this),
      edits_(group(), store()) {
  for (int row = 1; row <= kMaxBridgeBlocks; ++row) {
    Find("Reps" + NumberText(row))->ToolTip =
        "The actual number of analog channels being used. 6 wire full and 3 wire half bridges "
        "require 2 channels.";
  }
  Caption = "BRIDGE BLOCK";
  Describe(*this, kFreeChannelFaces);
  FreeCAO.Text("0");
  Chart.OnPress = [this] { openChart(); };
  List.Show(std::clamp<int>(group().BlockCount, 0, kMaxBridgeBlocks));
  Recount();
  edits_.Begin(List.Count());  // channel counts in the file may be out of date
}

BlockList::Rules frmBrdgBlock::rules() {
  BlockList::Rules rules;
  rules.setup = "frmBrdgSetup";
  rules.open = [this](int block) {
    BrdgSetupRequest request{*this, block};
    OpenScreen(context(), "frmBrdgSetup", request);
  };
  rules.max = kMaxBridgeBlocks;
  rules.rows = kMaxBridgeBlocks;
  rules.maxTyped = 2;
  rules.maxDigit = kMaxBridgeBlocks;
  rules.maySpinUp = [this] { return mayAdd(); };
  rules.mayType = [](int) { return true; };
  rules.sensors = [this](int block) { return int{group()[block].Reps}; };
  rules.add = [this](int block) { add(block); };
  rules.remove = [this](int block) { remove(block); };
  rules.changed = [this] { Recount(); };
  rules.columns = {
      {"Reps", [this](int block) { return NumberText(int{group()[block].Reps}); }},
      {"MeasType", [this](int block) { return group()[block].MeasType; }},
      {"Range", [this](int block) { return group()[block].Range; }},
      {"Integration", [this](int block) { return NumberText(group()[block].Integration); }},
  };
  return rules;
}

// By hand any channel may be taken twice, so only automatic selection checks for free channels.
// Only switched excitations count, since continuous ones are never counted as free.
bool frmBrdgBlock::mayAdd() const {
  if (store().Config.AutoChan == kFalse) return true;
  return freeChannels_ > 0 && freeExcitations_ > 0;
}

// A row after the last block of the project may contain remains of a file.
void frmBrdgBlock::add(int block) {
  if (block > group().BlockCount) ORVUS_COMMON::SetBridgeDefaults(store(), block - 1);
}

void frmBrdgBlock::remove(int block) { ORVUS_COMMON::SetBridgeDefaults(store(), block - 1); }

std::vector<ChannelBlock> frmBrdgBlock::Bridges() const {
  std::vector<ChannelBlock> blocks;
  for (int b = 1; b <= List.Count(); ++b) {
    const BridgeBlockData& block = group()[b];
    blocks.push_back(
        {block.Reps, block.MeasType, block.Style, block.ExciteReps, block.CheckCAO != kFalse});
  }
  return blocks;
}

StartChans frmBrdgBlock::Starts(ChannelBlocks bridges) const {
  StartChans starts;
  ComputeStartChans(ChannelBlocksOf(store().TempBlock), ChannelBlocksOf(store().VoltBlock), bridges,
                    starts);
  return starts;
}

void frmBrdgBlock::BrdBlock_DiffSECount() {
  const ProjectStore& project = store();
  const int used = LiveBridgeCount(Bridges());
  group().SEChannelCount = static_cast<i16>(used);
  freeChannels_ = PanelFreeChans(project.TempBlock.SEChannelCount, project.VoltBlock.SEChannelCount,
                                 used, project.Config.TK40MQty);
  const FreeFigures figures = FreeChannelFigures(project.Config.AutoChan != kFalse, freeChannels_);
  FreeSE.Text(FigureText(figures.singleEnded));
  FreeDiff.Text(FigureText(figures.differential));
}

void frmBrdgBlock::BrdBlock_ExcitCount() {
  const int used = ExciteSwitched(Bridges());
  group().ExciteSwitched = static_cast<i16>(used);
  freeExcitations_ = PanelExcitePorts - used;
  FreeExcite.Text(NumberText(freeExcitations_));
}

void frmBrdgBlock::Recount() {
  BrdBlock_DiffSECount();
  BrdBlock_ExcitCount();
  List.RefreshRows();
}

void frmBrdgBlock::openChart() {
  ChartBlocks blocks = ChartBlocksOf(store());
  blocks.bridges = Bridges();
  StartChans byHand = StoredStartChans(store());
  for (int b = 1; b <= List.Count(); ++b) byHand.Bridge[b] = group()[b].StartChan;
  LogGraphRequest request{std::move(blocks), byHand};
  OpenScreen(context(), Chart.Opens(), request);
}

bool frmBrdgBlock::onDone() {
  const int count = List.Count();
  Recount();
  group().BlockCount = static_cast<i16>(count);
  ORVUS_COMMON::SetBridgeDefaults(store(), count);
  StoreAutomaticStarts(store());
  edits_.Keep();
  return true;
}

bool frmBrdgBlock::onCancel() {
  return edits_.Cancel(Forms(), List.Count(), [this] {
    if (onDone()) End(ModalResult::kDone);
  });
}

}  // namespace ostrand
