// The list of thermocouple blocks.
#pragma once

#include "blocks/analog_list.h"

namespace ostrand {

class frmTempBlock final : public PanelList<TempBlockGroup> {
 public:
  explicit frmTempBlock(const ScreenContext& context);
};

}  // namespace ostrand
