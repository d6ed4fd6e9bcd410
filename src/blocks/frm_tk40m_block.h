// The list of blocks on multiplexers.
#pragma once

#include "blocks/analog_list.h"

namespace ostrand {

class frmTK40MBlock final : public AnalogGroupList<TK40MBlockGroup> {
 public:
  Label TK40MCount;
  Label FreeChannels;  // inputs of all multiplexers
  Opener ReferenceTemp;
  Opener Map;  // map of the blocks on the multiplexers

  explicit frmTK40MBlock(const ScreenContext& context);
  ~frmTK40MBlock() override;

  // Free inputs, whichever way the panel's channels are selected.
  [[nodiscard]] int ChannelsAvailable() const;
  [[nodiscard]] int ChannelsAvailable(OrvusAnalogInputTypes) const override {
    return ChannelsAvailable();
  }
  // Blocks follow each other; they have no separate start.
  [[nodiscard]] int StartOf(int) const override { return 0; }

 protected:
  void showFigures() override;
  [[nodiscard]] bool maySpinUp() const override { return ChannelsAvailable() != 0; }
  [[nodiscard]] bool mayTypeMore() const override { return ChannelsAvailable() >= 1; }

 private:
  [[nodiscard]] bool anyThermocouples() const;
  void setReference(bool measured);
};

}  // namespace ostrand
