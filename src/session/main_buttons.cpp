#include "session/main_buttons.h"

#include <array>

#include "model/store.h"

namespace ostrand {
namespace {

struct ButtonRow {
  std::string_view help;
  bool reserved = false;
};

constexpr std::array<ButtonRow, kLastButton + 1> kButtons = {{
    {"Hardware configuration procedure for the Logger."},
    {"Select the execution intervals for the Logger."},
    {"Set up the output intervals for the Logger."},
    {"Set up thermocouple measurements to be made with the Logger."},
    {"Set up voltage measurements to be made with the Logger."},
    {"Reserved for future.", true},
    {"Reserved for future.", true},
    {"Set up bridge measurements to be made with the Logger."},
    {"Reserved for future.", true},
    {"Set up pulse input measurements to be made with the Logger."},
    {"Set up TK40M measurements to be made."},
    {"Set up Canbus items."},
    {"Set up calculated fields."},
    {"Set up ports to be set or monitored."},
    {"Set up program flags."},
    {"Set up Continuous Analog Output channels."},
    {"Save the file and download to the data logger."},
    {"Save the file for later downloading to the logger."},
}};

// Whether the hardware of a button is fitted.
bool isFitted(int button, const Configuration& config) {
  if (button == kTK40MButton) return config.TK40MQty >= 1;
  if (button == kCanButton) return config.CanBusQty >= 1;
  return true;
}

}  // namespace

std::string_view MissingForButton(int button, const Configuration& config) {
  if (isFitted(button, config)) return {};
  return button == kCanButton ? "The logger has no CAN module (CanBusQty of frmConfig)."
                              : "The logger has no multiplexer (TK40MQty of frmConfig).";
}

std::string_view MainButtonHelp(int button) {
  return kButtons[static_cast<std::size_t>(button)].help;
}

void MainRow::DisableAll() {
  enabled_.Fill(kFalse);
  quitEnabled_ = false;
}

void MainRow::EnableForProject(const Configuration& config, const ScreenTable& screens,
                               bool isHarrierRunning, bool hostIsHarrier) {
  for (int button = kConfigurationButton; button <= kExciteButton; ++button) {
    const bool reserved = kButtons[static_cast<std::size_t>(button)].reserved;
    Enable(button, !reserved && screens[button] != nullptr && isFitted(button, config));
  }
  if (isHarrierRunning) Enable(kSaveAndSendButton, true);
  Enable(kSaveButton, true);
  quitEnabled_ = !hostIsHarrier;
}

}  // namespace ostrand
