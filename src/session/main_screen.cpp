// User actions on the main screen of the control.
#include <string>
#include <utility>

#include "model/stored_text.h"
#include "platform/box.h"
#include "platform/guarded.h"
#include "session/session_state.h"
#include "session/user_action.h"
#include "verify/check_context.h"
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

// ---- Saving -------------------------------------------------------------------------------------

bool confirmBadSave(SessionState& session, bool send, bool upgrade) {
  std::string text = send ? "Program will not be downloaded.\r\n" : "";
  if (upgrade) text += kUpgradeLines;
  text += kBadLines;
  return Ask(session.around.forms, "Save Generator Project ?", text, platform::Buttons::kYesNo) ==
         platform::Answer::kYes;
}

bool confirmUpgrade(SessionState& session) {
  return Ask(session.around.forms, "Upgrade Generator Project Beyond Larkfield 5.3.1 ?",
             std::string(kUpgradeLines) + "Do you want to save the project anyway ?",
             platform::Buttons::kYesNo) == platform::Answer::kYes;
}

void sendProgram(SessionState& session) {
  session.around.forms.SetPointer(platform::Pointer::kNormal);
  const std::string program =
      std::string(Ostrand::WithoutExtension(session.currentFileName)).append(kProgramExtension);
  if (session.HostIsHarrier()) {
    session.control.HarrierDownload(program);
  } else {
    session.events.DownloadRequest(program, true);
  }
}

bool saveClean(SessionState& session, bool send) {
  ORVUS_COMMON::FloatingGroundWarning(session.control.Checks());
  session.RunPreCompile();
  session.SaveDldFile();
  if (send && !session.compileSkipped.empty()) {
    session.around.forms.SetHelpLine(session.compileSkipped);
  } else if (send && !session.control.ProgramFaults().empty()) {
    session.around.forms.SetHelpLine("Not sent: " + session.control.ProgramFaults().front());
  }
  return session.save.saved && !session.compileFailed && session.control.ProgramFaults().empty();
}

// Whether all files were written and the program may be sent.
bool checkAndSave(SessionState& session, bool send) {
  const Marked saving(session.saving);
  bool bad = false;
  bool upgrade = false;
  ORVUS_COMMON::VerifyBeforeSave(session.control.Checks(), bad, upgrade);
  if (!bad && !upgrade) return saveClean(session, send);
  if (bad ? !confirmBadSave(session, send, upgrade) : !confirmUpgrade(session)) return false;
  if (upgrade) session.store.Gen.Version = kSavedFormat;
  session.SaveDldFile();
  return false;
}

void saveByButton(SessionState& session, bool send) {
  if (checkAndSave(session, send) && send) sendProgram(session);
}

void runButton(SessionState& session, int button) {
  if (button >= kSaveAndSendButton) return saveByButton(session, button == kSaveAndSendButton);
  const Marked screenOpen(session.main.screenOpen);
  float left = 0;
  float top = 0;
  float width = 0;
  float height = 0;
  session.events.RequestParentMDISize(left, top, width, height);
  session.screens[button]();
}

// The row that the host changes: while the print panel is shown, the one that returns after it.
MainRow& rowOf(MainScreenState& main) {
  return main.printPanelShown ? main.rowBeforePrint : main.row;
}

}  // namespace

// ---- The main row -------------------------------------------------------------------------------

void SessionState::EnableButtons() {
  main.row.EnableForProject(store.Config, screens, isHarrierRunning, HostIsHarrier());
  if (std::exchange(main.printPanelShown, false)) events.PrintPanelChanged(false);
  events.ButtonsChanged();
}

void SessionState::MarkDirty(bool dirty) {
  if (std::exchange(dirtyFlag, dirty) != dirty) events.DirtyChanged(dirty);
}

const MainRow& Ostrand::MainButtons() const { return state_->main.row; }
ScreenTable& Ostrand::Screens() { return state_->screens; }
bool Ostrand::Working() const { return state_->main.working; }
void Ostrand::SetQuitButton(bool Enable) {
  rowOf(state_->main).EnableQuit(Enable);
  state_->events.ButtonsChanged();
}
void Ostrand::SetSaveDownload(bool Enable) {
  rowOf(state_->main).Enable(kSaveAndSendButton, Enable);
  state_->events.ButtonsChanged();
}

void Ostrand::Click(int button) {
  if (Busy() || !state_->main.row.Enabled(button)) return;
  const UserAction action(*this);
  const auto run = [&] {
    const Marked working(state_->main.working);
    state_->main.row.DisableAll();
    state_->events.ButtonsChanged();
    Guarded(state_->around.forms, "Ostrand.cmdOption_Click", [&] { runButton(*state_, button); });
  };
  const auto settle = [&] {
    state_->EnableButtons();
    if (button < kSaveAndSendButton) {  // a screen that failed may have edited first
      state_->MarkDirty(true);
      Summarize();
    }
    if (button != kSaveAndSendButton) SetFocus(Focus::kButton, button);
  };
  WithBusyPointer(state_->around.forms, [&] { Finally(run, settle); });
}

void Ostrand::RightClick(int) { state_->events.PopupOptionsMenu(); }

void Ostrand::PointAt(int button) {
  state_->around.forms.SetHelpLine(std::string(MainButtonHelp(button)));
}

void Ostrand::PointAtQuit() { state_->around.forms.SetHelpLine(std::string(kQuitHelp)); }

void Ostrand::ClickQuit() {
  if (!state_->main.row.QuitEnabled()) return;
  i16 cancelled = kFalse;
  CloseSession(false, cancelled);
}

// ---- Printing -----------------------------------------------------------------------------------

bool Ostrand::PrintPanelShown() const { return state_->main.printPanelShown; }

void Ostrand::PrintSelect() {
  if (!state_->main.printPanelShown) state_->main.rowBeforePrint = state_->main.row;
  state_->main.row.DisableAll();
  if (!std::exchange(state_->main.printPanelShown, true)) state_->events.PrintPanelChanged(true);
  state_->events.ButtonsChanged();
  SetFocus(Focus::kCancelPrint);
}

void Ostrand::CancelPrint() {
  if (!state_->main.printPanelShown) return;
  state_->main.printPanelShown = false;
  state_->main.row = state_->main.rowBeforePrint;
  state_->events.PrintPanelChanged(false);
  state_->events.ButtonsChanged();
  SetFocus(Focus::kNone);
}

// ---- Text boxes and keyboard --------------------------------------------------------------------

std::string SessionState::TypedText(std::string_view keys) {
  std::string text(keys);
  if (std::erase(text, kSectionMark) > 0) {
    around.forms.Beep();
    around.forms.SetHelpLine(std::string(kSectionMarkHelp));
  }
  return text.substr(0, Ostrand::kMaxBoxLetters);
}

const std::string& Ostrand::txtOper() const { return state_->main.txtOper; }
void Ostrand::txtOper(std::string_view text) { state_->main.txtOper = state_->TypedText(text); }
const std::string& Ostrand::txtIDNum() const { return state_->main.txtIDNum; }
void Ostrand::txtIDNum(std::string_view text) { state_->main.txtIDNum = state_->TypedText(text); }
Focus Ostrand::FocusAt() const { return state_->main.focus; }
int Ostrand::FocusButton() const { return state_->main.focusButton; }
const Appearance& Ostrand::Colors() const { return state_->main.appearance; }

void Ostrand::SetFocus(Focus focus, int button) {
  state_->main.focus = focus;
  state_->main.focusButton = focus == Focus::kButton ? button : 0;
  if (focus == Focus::kOper) {
    state_->around.forms.SetHelpLine("Enter operator's name. Up to 30 characters.");
  } else if (focus == Focus::kIDNum) {
    state_->around.forms.SetHelpLine("Enter an appropriate ID number. Up to 30 characters.");
  }
}

void Ostrand::KeyDown(Key key) {
  if (key == Key::kEscape) {
    i16 cancelled = kFalse;
    CloseSession(false, cancelled);
  } else if (key == Key::kDown && state_->main.focus == Focus::kOper) {
    SetFocus(Focus::kIDNum);
  } else if (key == Key::kDown && state_->main.focus == Focus::kIDNum) {
    SetFocus(Focus::kButton, kConfigurationButton);
  } else if (key == Key::kUp && state_->main.focus == Focus::kIDNum) {
    SetFocus(Focus::kOper);
  }
}

}  // namespace ostrand
