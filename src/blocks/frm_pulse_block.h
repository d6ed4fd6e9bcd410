// The list of pulse blocks.
#pragma once

#include <vector>

#include "blocks/block_edits.h"
#include "blocks/block_list.h"
#include "model/channels.h"
#include "tables/output_boxes.h"

namespace ostrand {

// Edits the pulse blocks of the store in place; Done settles the count.
class frmPulseBlock final : public Screen {
 public:
  explicit frmPulseBlock(const ScreenContext& context);

  BlockList List;
  // Free channels. All kinds of input share one pool.
  Label FreeHiLev;
  Label FreeLoLev;
  Label FreeSwtch;

  // The blocks in the list.
  [[nodiscard]] std::vector<ChannelBlock> Pulses() const;
  // Recounts the free channels; negative when there are too many sensors.
  int FreeChans();

  // The setup of a block was opened. Without an edit it would change `before` to `settled`.
  void Opened(int block, const PulseBlockData& before, const PulseBlockData& settled) {
    edits_.Opened(block, before, settled);
  }

 protected:
  bool onDone() override;
  bool onCancel() override;

 private:
  [[nodiscard]] BlockList::Rules rules();
  [[nodiscard]] PulseBlockGroup& group() const { return store().PulseBlock[0]; }
  void add(int block);

  BlockEdits<PulseBlockGroup> edits_;
};

// A block of a list, whose setup is opened. The list must outlive it.
struct PulseSetupRequest {
  frmPulseBlock& list;
  int block;  // from 1
};

}  // namespace ostrand
