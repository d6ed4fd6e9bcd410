// What the user does on the main screen of the control.
#include <string>

#include "model/stored_text.h"
#include "platform/box.h"
#include "platform/guarded.h"
#include "session/ostrand.h"
#include "session/user_action.h"
#include "verify/ground_warning.h"
#include "verify/verify_before_save.h"

namespace ostrand {
namespace {

constexpr std::string_view kUpgradeLines =
    "Saving this Generator Project will irreversibly upgrade\r\n"
    "the Trigger and WriteIf conditions so that the project\r\n"
    "can no longer be used in Larkfield 5.3.1 or earlier.\r\n";

constexpr std::string_view kBadLines =
    "Harrier recommends that the Generator file should NOT be saved\r\n"
    "due to possible issues in the following areas : \r\n"
    "\r\n"
    "Duplicate Names\r\n"
    "Bad Timing\r\n"
    "Bad Slow Sequence\r\n"
    "Interval Problems\r\n"
    "Bad Status Flags\r\n"
    "Zero/Burst Problems\r\n"
    "\r\n"
    "Save it anyway?";

constexpr std::string_view kSavedFormat = "6.0";

}  // namespace

void Ostrand::enableButtons() {
  row_.EnableForProject(store_.Config, screens_, isHarrierRunning_, hostIsHarrier());
  printPanelShown_ = false;
}

void Ostrand::Click(int button) {
  if (Busy() || !row_.Enabled(button)) return;
  const UserAction action(*this);
  const auto run = [&] {
    const Marked working(working_);
    row_.DisableAll();
    Guarded(around_.forms, "Ostrand.cmdOption_Click", [&] { runButton(button); });
  };
  const auto settle = [&] {
    enableButtons();
    if (button < kSaveAndSendButton) {  // a screen that failed may have edited before
      dirtyFlag_ = true;
      Summarize();
    }
    if (button != kSaveAndSendButton) SetFocus(Focus::kButton, button);
  };
  WithBusyPointer(around_.forms, [&] { Finally(run, settle); });
}

void Ostrand::runButton(int button) {
  if (button >= kSaveAndSendButton) return saveByButton(button == kSaveAndSendButton);
  const Marked screenOpen(screenOpen_);
  screens_[button]();
}

void Ostrand::RightClick(int) { events_.PopupOptionsMenu(); }

void Ostrand::PointAt(int button) {
  around_.forms.SetHelpLine(std::string(MainButtonHelp(button)));
}

void Ostrand::PointAtQuit() { around_.forms.SetHelpLine(std::string(kQuitHelp)); }

void Ostrand::ClickQuit() {
  if (!row_.QuitEnabled()) return;
  i16 cancelled = kFalse;
  CloseSession(false, cancelled);
}

// ---- Saving -------------------------------------------------------------------------------------

void Ostrand::saveByButton(bool send) {
  if (checkAndSave(send) && send) this->send();
}

// Whether all was written and its program is one to send.
bool Ostrand::checkAndSave(bool send) {
  const Marked saving(saving_);
  bool bad = false;
  bool upgrade = false;
  ORVUS_COMMON::VerifyBeforeSave(Checks(), bad, upgrade);
  if (!bad && !upgrade) return saveClean(send);
  if (bad ? !confirmBadSave(send, upgrade) : !confirmUpgrade()) return false;
  if (upgrade) store_.Gen.Version = kSavedFormat;
  saveDldFile();
  return false;
}

bool Ostrand::saveClean(bool send) {
  ORVUS_COMMON::FloatingGroundWarning(Checks());
  runPreCompile();
  saveDldFile();
  if (send && !compileSkipped_.empty()) {
    around_.forms.SetHelpLine(compileSkipped_);
  } else if (send && !ProgramFaults().empty()) {
    around_.forms.SetHelpLine("Not sent: " + ProgramFaults().front());
  }
  return saved_ && !compileFailed_ && ProgramFaults().empty();
}

void Ostrand::send() {
  around_.forms.SetPointer(platform::Pointer::kNormal);
  const std::string program = std::string(WithoutExtension(currentFileName_)) + ".VKP";
  if (hostIsHarrier()) {
    HarrierDownload(program);
  } else {
    events_.DownloadRequest(program, true);
  }
}

bool Ostrand::confirmBadSave(bool send, bool upgrade) {
  std::string text = send ? "Program will not be downloaded.\r\n" : "";
  if (upgrade) text += kUpgradeLines;
  text += kBadLines;
  return Ask(around_.forms, "Save Generator Project ?", text, platform::Buttons::kYesNo) ==
         platform::Answer::kYes;
}

bool Ostrand::confirmUpgrade() {
  return Ask(around_.forms, "Upgrade Generator Project Beyond Larkfield 5.3.1 ?",
             std::string(kUpgradeLines) + "Do you want to save the project anyway ?",
             platform::Buttons::kYesNo) == platform::Answer::kYes;
}

// ---- Printing -----------------------------------------------------------------------------------

void Ostrand::PrintSelect() {
  if (!printPanelShown_) rowBeforePrint_ = row_;
  row_.DisableAll();
  printPanelShown_ = true;
  SetFocus(Focus::kCancelPrint);
}

void Ostrand::CancelPrint() {
  if (!printPanelShown_) return;
  printPanelShown_ = false;
  row_ = rowBeforePrint_;
  SetFocus(Focus::kNone);
}

// ---- The keyboard -------------------------------------------------------------------------------

// The text that a text box has after these keys.
std::string Ostrand::typedText(std::string_view keys) {
  std::string text(keys);
  if (std::erase(text, kSectionMark) > 0) {
    around_.forms.Beep();
    around_.forms.SetHelpLine(std::string(kSectionMarkHelp));
  }
  return text.substr(0, kMaxBoxLetters);
}

void Ostrand::SetFocus(Focus focus, int button) {
  focus_ = focus;
  focusButton_ = focus == Focus::kButton ? button : 0;
  if (focus == Focus::kOper) {
    around_.forms.SetHelpLine("Enter operator's name. Up to 30 characters.");
  } else if (focus == Focus::kIDNum) {
    around_.forms.SetHelpLine("Enter an appropriate ID number. Up to 30 characters.");
  }
}

void Ostrand::KeyDown(Key key) {
  if (key == Key::kEscape) {
    i16 cancelled = kFalse;
    CloseSession(false, cancelled);
  } else if (key == Key::kDown && focus_ == Focus::kOper) {
    SetFocus(Focus::kIDNum);
  } else if (key == Key::kDown && focus_ == Focus::kIDNum) {
    SetFocus(Focus::kButton, kConfigurationButton);
  } else if (key == Key::kUp && focus_ == Focus::kIDNum) {
    SetFocus(Focus::kOper);
  }
}

}  // namespace ostrand
