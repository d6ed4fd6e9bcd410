// The list of voltage blocks.
#pragma once

#include "blocks/analog_list.h"

namespace ostrand {

class frmVoltBlock final : public PanelList<VoltBlockGroup> {
 public:
  explicit frmVoltBlock(const ScreenContext& context);
};

}  // namespace ostrand
