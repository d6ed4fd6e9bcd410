// Saving by the dialog, and the end of a session.
#include <exception>
#include <optional>

#include "platform/guarded.h"
#include "platform/moment_text.h"
#include "session/session_state.h"
#include "session/user_action.h"
#include "verify/check_context.h"
#include "verify/verify_before_save.h"

namespace ostrand {
namespace {

constexpr int kSaveHelpContext = 4400;

void askToSaveAll(SessionState& session, bool force, bool& cancel) {
  using platform::Answer;
  using platform::Buttons;
  cancel = false;
  if (!session.dirtyFlag) return;
  const UserAction action(session.control);
  Guarded(session.around.forms, "Ostrand.AskToSaveAll", [&] {
    session.around.forms.Beep();
    const Answer answer = session.around.forms.ShowBox(
        {.title = "QUIT GENERATOR",
         .text = "Do you want to save changes made to " + session.currentFileName + "?",
         .icon = platform::Icon::kQuestion,
         .buttons = force ? Buttons::kYesNo : Buttons::kYesNoCancel});
    cancel = answer == Answer::kCancel;
    if (answer != Answer::kYes) return;
    bool upgrade = false;
    ORVUS_COMMON::VerifyBeforeSave(session.control.Checks(), cancel, upgrade);
    if (cancel) return;
    cancel = !session.SavePipeline();  // ending the session now would lose the edits
    if (!cancel) session.MarkDirty(false);
  });
}

}  // namespace

CheckContext Ostrand::Checks() {
  return {state_->store, state_->around.forms, state_->settings.WarningMessageMask(),
          state_->calcVarRefs};
}

bool Ostrand::SaveDldFile() {
  if (Busy()) return false;
  const Marked saving(state_->saving);
  state_->SaveDldFile();
  return state_->save.saved;
}

void SessionState::SaveDldFile() {
  const UserAction action(control);
  save.cancelled = false;
  save.saved = false;
  Guarded(around.forms, "Ostrand.SaveDldFile", [&] {
    const std::optional<std::string> name =
        around.forms.AskSave({.title = "SAVE .VKG .VKP .VKW .VKD",
                              .filter = std::string(kProjectFilter),
                              .defaultExtension = std::string(kProjectExtension),
                              .initialFolder = control.GenFilePath(),
                              .fileName = baseName == kNoName ? "EditTemp" : baseName,
                              .helpContext = kSaveHelpContext});
    save.cancelled = !name;
    if (!name) return;
    control.NameProject(*name);
    events.NewFile(currentFileName);
    store.Gen.PCTime = ShortMomentText(around.clock.Now());
    save.saved = SavePipeline();
    if (save.saved) MarkDirty(false);
    control.Summarize();
  });
}

void Ostrand::AskToSaveAll(bool bForce, bool& bCancel) {
  bCancel = true;
  if (Busy()) return;
  const Marked saving(state_->saving);
  askToSaveAll(*state_, bForce, bCancel);
}

void Ostrand::CloseSession(bool bForce, i16& iCancel) {
  if (state_->closing) return;
  if (Busy()) {
    iCancel = kTrue;
    return;
  }
  const Marked closing(state_->closing);
  const UserAction action(*this);
  bool cancel = false;
  std::exception_ptr failure;  // thrown by the host, which still gets SessionComplete
  const auto run = [&](const auto& step) {
    try {
      step();
    } catch (...) {
      if (!failure) failure = std::current_exception();
    }
  };
  run([&] {
    state_->around.forms.SetHelpLine("");
    AskToSaveAll(bForce, cancel);
  });
  run([&] {
    Guarded(state_->around.forms, "Ostrand.CloseSession", [&] { state_->KeepSettings(); });
  });
  cancel = !bForce && (cancel || failure);
  iCancel = cancel ? kTrue : kFalse;
  if (!cancel) run([&] { state_->events.SessionComplete(); });
  if (failure) std::rethrow_exception(failure);
}

bool Ostrand::SaveCancelled() const { return state_->save.cancelled; }
bool Ostrand::Saved() const { return state_->save.saved; }

}  // namespace ostrand
