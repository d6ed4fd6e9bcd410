// The list of bridge blocks.
#pragma once

#include <vector>

#include "blocks/block_edits.h"
#include "blocks/block_list.h"
#include "blocks/frm_graphs.h"
#include "model/channels.h"
#include "tables/output_boxes.h"

namespace ostrand {

// Edits the bridge blocks of the store in place; Done settles the count and the start channels, and
// removes blocks after the fourth, which a project file may contain.
class frmBrdgBlock final : public Screen {
 public:
  explicit frmBrdgBlock(const ScreenContext& context);

  BlockList List;
  Label FreeSE;      // free single-ended channels, "?" when channels are selected by hand
  Label FreeDiff;    // the same as differential channels
  Label FreeExcite;  // free switched excitations
  Label FreeCAO;     // free continuous excitations, which are not counted
  ChartOpener Chart;

  // The blocks in the list. They point into the store.
  [[nodiscard]] std::vector<ChannelBlock> Bridges() const;
  // The first channels of all bridge blocks under automatic selection, if `bridges` were the
  // blocks.
  [[nodiscard]] StartChans Starts(ChannelBlocks bridges) const;

  // Free channels at the last count; negative when there are too many sensors.
  [[nodiscard]] int FreeChannels() const { return freeChannels_; }
  // Recounts the channels and excitations of all blocks.
  void BrdBlock_DiffSECount();
  void BrdBlock_ExcitCount();
  // Recounts both and updates the rows.
  void Recount();

  // The setup of a block was opened. Without an edit it would change `before` to `settled`.
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

// A block of a list, whose setup is opened. The list must outlive it.
struct BrdgSetupRequest {
  frmBrdgBlock& list;
  int block;  // from 1
};

}  // namespace ostrand
