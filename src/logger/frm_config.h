// The main configuration: what is attached to the logger, and its tasks besides the scan.
#pragma once

#include <array>

#include "conditions/backup.h"
#include "conditions/condition_variables.h"
#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "logger/config_battery.h"
#include "logger/config_power.h"
#include "logger/config_status.h"

namespace ostrand {

// Edits the configuration and the outputs of battery and panel in place; Cancel restores them. Done
// applies the consequences for blocks, tables and ports.
class frmConfig final : public Screen {
  ConditionVariables variables_;  // created before the panel that lists them

 public:
  explicit frmConfig(const ScreenContext& context);

  TextField CanBusQty;
  TextField TK40MQty;
  Choice AutoChan;  // automatic, manual
  NumericField SizeCard;
  Choice SizeCardUnits;  // M bytes, G bytes

  // "MonitorPower1" to "MonitorPower5", in the order of MonitorEntry. Checking one shows its panel;
  // those of battery and panel temperature open a screen.
  std::array<CheckBox, 5> MonitorPower;
  Opener BatteryOutput;
  Opener PanelOutput;
  PowerPanel Power;
  BatterySaverPanel Saver;
  StatusMonitorPanel Status;

 protected:
  bool onDone() override;
  bool onCancel() override;

 private:
  [[nodiscard]] Configuration& config() const { return store().Config; }
  [[nodiscard]] CheckBox& box(int entry) {
    return MonitorPower[static_cast<std::size_t>(entry - 1)];
  }

  void load();
  void bindBoxes();
  void showOutput(int entry);
  int countIn(TextField& field, int max);
  void takeCanBusQty();
  void takeTK40MQty();
  void takeAutoChan();
  void takeSizeCard();
  void showSizeCard();
  void takeBox(int entry);
  void listVariables();
  void showPanels();
  bool askToDeleteBlocks();
  void freeMultiplexerPorts();

  Backup<Configuration> before_;
  Backup<ReferenceOutput> batteryBefore_;
  Backup<ReferenceOutput> panelBefore_;
  bool offCard_ = false;  // the user agreed to move tables off the card, at Done
};

}  // namespace ostrand
