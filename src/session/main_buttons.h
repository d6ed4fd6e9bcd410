// The row of main buttons of the control.
#pragma once

#include <functional>
#include <string_view>

#include "model/scalars.h"
#include "text/row.h"

namespace ostrand {

struct Configuration;

// Buttons of `cmdOption` by their index. Those without a name are reserved and always disabled.
enum MainButton : int {
  kConfigurationButton = 0,
  kExecutionButton = 1,
  kTablesButton = 2,
  kThermocoupleButton = 3,
  kVoltageButton = 4,
  kBridgeButton = 7,
  kPulseButton = 9,
  kTK40MButton = 10,
  kCanButton = 11,
  kCalcFieldsButton = 12,
  kPortsButton = 13,
  kFlagsButton = 14,
  kExciteButton = 15,
  kSaveAndSendButton = 16,
  kSaveButton = 17
};
inline constexpr int kLastButton = kSaveButton;

// What a project lacks for a button, as a sentence; empty when it has all.
std::string_view MissingForButton(int button, const Configuration& config);

// The help line of a button under the pointer.
std::string_view MainButtonHelp(int button);
// The caption of the button that saves and sends; "&" precedes its access key.
inline constexpr std::string_view kSaveAndSendCaption = "SAVE AND SEN&D";
inline constexpr std::string_view kQuitHelp = "Quit Program Generator.";

// The screens of the buttons 0 to 15, each shown until the user ends it. A button without a screen
// stays disabled.
using ShowScreen = std::function<void()>;
using ScreenTable = Row<ShowScreen, kConfigurationButton, kExciteButton>;

// One of the option screens. Does nothing without a screen.
struct OptionDialog {
  std::function<bool()> Show;    // until the user ends it; true after Done
  std::function<void()> Cancel;  // ends it while it is shown
};

// Which buttons can be pressed.
class MainRow {
 public:
  [[nodiscard]] bool Enabled(int button) const { return enabled_[button] != 0; }
  void Enable(int button, bool enable) { enabled_[button] = enable ? kTrue : kFalse; }
  [[nodiscard]] bool QuitEnabled() const { return quitEnabled_; }
  void EnableQuit(bool enable) { quitEnabled_ = enable; }

  void DisableAll();
  // The rules for an open project. The button that saves and sends needs a running host; without
  // one its state does not change.
  void EnableForProject(const Configuration& config, const ScreenTable& screens,
                        bool isHarrierRunning, bool hostIsHarrier);

 private:
  Row<flag, kConfigurationButton, kLastButton> enabled_;
  bool quitEnabled_ = false;
};

}  // namespace ostrand
