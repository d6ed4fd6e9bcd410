// The list of bridge blocks.
#pragma once

#include <vector>

#include "blocks/block_edits.h"
#include "blocks/block_list.h"
#include "blocks/frm_graphs.h"
#include "model/channels.h"
#include "tables/output_boxes.h"

namespace ostrand {

// Edits the bridge blocks of the store in place; Done settles the count and the starts. Blocks
// above the fourth, which a project may bring along, go at Done.
class frmBrdgBlock final : public Screen {
 public:
  explicit frmBrdgBlock(const ScreenContext& context);

  BlockList List;
  Label FreeSE;      // free single-ended channels, "?" when channels are selected by hand
  Label FreeDiff;    // the same as differential ones
  Label FreeExcite;  // free switched excitations
  Label FreeCAO;     // free continuous ones, of which no account is kept
  ChartOpener Chart;

  // The blocks in the list. They point into the store.
  [[nodiscard]] std::vector<ChannelBlock> Bridges() const;
  // The first channels of all bridge blocks under automatic selection, were `bridges` the blocks.
  [[nodiscard]] StartChans Starts(ChannelBlocks bridges) const;

  // Free as they were counted last; below 0 when there are too many.
  [[nodiscard]] int FreeChannels() const { return freeChannels_; }
  // Count the channels and excitations of all blocks anew.
  void BrdBlock_DiffSECount();
  void BrdBlock_ExcitCount();
  // Both, with the rows.
  void Recount();

  // The setup of a block was opened and would leave `settled` in place of `before`.
  void Opened(int block, const BridgeBlockData& before, const BridgeBlockData& settled) {
    edits_.Opened(block, before, settled);
  }

 protected:
  bool onDone() override;
  bool onCancel() override;

 private:
  [[nodiscard]] BlockList::Rules rules();
  [[nodiscard]] BridgeBlockGroup& group() const { return store().BridgeBlock; }
  [[nodiscard]] bool mayAdd() const;
  void add(int block);
  void remove(int block);
  void openChart();

  int freeChannels_ = 0;
  int freeExcitations_ = 0;
  BlockEdits<BridgeBlockGroup> edits_;
};

// The block of a list whose setup is opened. The list outlives it.
struct BrdgSetupRequest {
  frmBrdgBlock& list;
  int block;  // from 1
};

}  // namespace ostrand
