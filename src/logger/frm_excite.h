// The two continuous analog outputs: a constant, or one of two values chosen by conditions.
#pragma once

#include <memory>

#include "conditions/backup.h"
#include "conditions/condition_variables.h"
#include "controls/choice.h"
#include "controls/screen.h"

namespace ostrand {

// Edits the outputs in place; Cancel restores them. Names of controls contain the channel number:
// "Include1", "State21" for state 2 of channel 1, "Excite2MeasVar1".
class frmExcite final : public Screen {
 public:
  explicit frmExcite(const ScreenContext& context);
  ~frmExcite() override;

  Label Purpose;
  CheckBox ExcitePublic;

  // Shows the stored settings of a channel, 1 or 2, and whether bridges use it.
  void UpdateChannelStates(int port);

 protected:
  bool onDone() override;
  bool onCancel() override;

 private:
  static constexpr int kChannels = 2;
  struct ChannelControls;

  [[nodiscard]] ChannelControls& at(int port) { return *channels_[port]; }
  [[nodiscard]] ExciteChannel& stored(int port) const { return store().ExciteOut.Slot[0][port]; }
  void bind(int port);
  void bindStates(int port);
  void takeConditions(int port);
  void refresh(int port);
  [[nodiscard]] std::string codeOf(int port);
  // A list of what is missing for dynamic channels, one row each; empty for nothing.
  [[nodiscard]] std::string incomplete();
  [[nodiscard]] bool lacksCondition(int port);
  // The first measurement missing; null for none.
  [[nodiscard]] Control* firstMissing();

  ConditionVariables variables_;
  Backup<ExciteControl> before_;
  Row<std::unique_ptr<ChannelControls>, 1, kChannels> channels_;
};

}  // namespace ostrand
