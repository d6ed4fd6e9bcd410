// Naming, opening and starting projects.
#include <optional>
#include <utility>

#include "model/defaults.h"
#include "platform/guarded.h"
#include "platform/paths.h"
#include "projectfile/genfile.h"
#include "session/session_state.h"
#include "session/user_action.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::string_view kOwnRegistryApp = "QUILLON";

// The user's choices for a new project. The settings accept any number; an invalid one is replaced
// by the system's default.
void giveUserDefaults(ProjectStore& store, const OptionValues& options) {
  const OptionValues usual;
  const i32 units = options.DefaultScanIntervalUnits;
  const bool scanFits = options.DefaultScanInterval >= 1 && units >= 0 && units <= 3;
  const OptionValues& scan = scanFits ? options : usual;
  store.Scan.ExecutionTime = static_cast<float>(scan.DefaultScanInterval);
  store.Scan.ExecTimeUnits = static_cast<i16>(scan.DefaultScanIntervalUnits);
  const OptionValues& records = options.DefaultTableNumRecs >= 1 ? options : usual;
  for (int t = 1; t <= kTables; ++t) {
    store.Tables[t].AutoSize = options.DefaultTableAutoSize == 1 ? kTrue : kFalse;
    store.Tables[t].Buffer = records.DefaultTableNumRecs;
  }
}

bool loadProject(SessionState& session) {
  const std::string path = ORVUS_GENFILE::PlaceOf(session.around.files, session.currentFileName);
  const auto stamp = session.around.files.Stamp(path);
  const auto bytes = ORVUS_GENFILE::ReadProjectFile(session.around.files, session.currentFileName);
  if (bytes && bytes.Value()) {  // the present project is kept until here
    session.known = platform::IdentityOf(path, *bytes.Value(), stamp);
    session.StartProject();
    session.readReport = ORVUS_GENFILE::ReadProjectText(session.store, *bytes.Value());
    session.MarkDirty(false);
    return true;
  }
  std::string reason = session.currentFileName + ": Changed while it was read";
  if (!bytes) {
    reason = bytes.ErrorText();
  } else if (const auto again = session.around.files.Read(session.currentFileName); !again) {
    reason = again.ErrorText();  // not a regular file, or deleted meanwhile
  }
  session.around.forms.ShowBox(
      {.title = "FILE CANNOT BE READ",
       .text = "The requested program generator file could not be read: \r\n" + reason,
       .icon = platform::Icon::kExclamation,
       .diskError = reason});
  return false;
}

void showNotFound(SessionState& session) {
  session.around.forms.ShowBox({.title = "FILE NOT FOUND",
                                .text = "The requested program generator file: \r\n" +
                                        Upper(session.currentFileName) +
                                        "\r\n\r\ncould not be located on this computer.",
                                .icon = platform::Icon::kExclamation});
}

// `cancel` becomes false as soon as the session contains the project of the present name.
void openNamed(SessionState& session, bool fromDialog, bool& cancel) {
  session.interrupted = {};
  const bool there = session.around.files.Taken(session.currentFileName);
  const bool opened = there ? loadProject(session) : fromDialog;
  if (!there && !fromDialog) showNotFound(session);
  if (!opened) {
    const auto left = ORVUS_GENFILE::InterruptedSave(session.around.files, session.currentFileName);
    if (left) session.interrupted = {session.currentFileName, *left};
    return;
  }
  cancel = false;
  if (!there) {  // a new name from the dialog starts a new project
    session.readReport = {};
    session.known = {ORVUS_GENFILE::PlaceOf(session.around.files, session.currentFileName), false,
                     std::nullopt, 0, 0};
  }
  session.calcVarRefs = CollectCalcVarRefs(session.store);
  if (there) session.events.NewFile(session.currentFileName);
}

}  // namespace

void SessionState::StartProject() {
  ORVUS_COMMON::ClearStore(store);
  ORVUS_COMMON::SetAllDefaults(store);
  ORVUS_COMMON::SetLoggerConstants(store);
}

void SessionState::ShowProject() {
  TakeTextBoxes();
  EnableButtons();
  control.Summarize();
}

void SessionState::TakeTextBoxes() {
  main.txtOper = store.Gen.Operator;
  main.txtIDNum = store.Gen.IDNumber;
}

void Ostrand::NameProject(std::string_view path) {
  const platform::SplitPath parts = platform::Split(path);
  const std::string folder =
      parts.folder.empty() ? state_->around.files.WorkingFolder() : parts.folder;
  // The settings store the folder; a relative one would mean another folder in another session.
  if (folder.empty()) {
    throw FileAccess(std::string(path) + ": The current folder cannot be determined");
  }
  GenFilePath(folder);
  state_->baseName = Before(parts.title, ".");
  if (Holds(parts.title, kProjectExtension)) {
    state_->currentFileName = path;
  } else if (Holds(parts.title, ".")) {
    state_->currentFileName = GenFilePath() + state_->baseName;
    state_->currentFileName += kProjectExtension;
  } else {
    state_->currentFileName = std::string(path).append(kProjectExtension);
  }
}

std::string_view Ostrand::WithoutExtension(std::string_view name) {
  return Before(name, Holds(name, kProjectExtension) ? kProjectExtension : kProgramExtension);
}

void Ostrand::OpenFile(std::string_view sFileName, bool& bCancel) {
  bCancel = true;
  if (Busy() || state_->main.screenOpen) return;
  const UserAction action(*this);
  const std::string fileBefore = std::exchange(state_->currentFileName, "");
  const std::string baseBefore = state_->baseName;
  const std::string folderBefore = GenFilePath();
  const auto open = [&] {
    if (RegistryApp() == kOwnRegistryApp) state_->LoadSettings();
    const bool fromDialog = Trim(sFileName).empty();
    std::optional<std::string> name(sFileName);
    if (fromDialog) {
      name = state_->around.forms.AskOpen({.title = "OPEN GENERATOR FILE",
                                           .filter = std::string(kProjectFilter),
                                           .defaultExtension = std::string(kProjectExtension),
                                           .initialFolder = GenFilePath(),
                                           .fileName = "",
                                           .helpContext = Ostrand::InternalHelpContextID()});
    }
    if (!name) return;
    NameProject(*name);
    openNamed(*state_, fromDialog, bCancel);
  };
  // However it ended, names and store belong to the same project.
  const auto settle = [&] {
    if (!bCancel) return state_->ShowProject();
    state_->currentFileName = fileBefore;
    state_->baseName = baseBefore;
    GenFilePath(folderBefore);
  };
  WithBusyPointer(state_->around.forms, [&] {
    Finally([&] { Guarded(state_->around.forms, "Ostrand.OpenFile", open); }, settle);
  });
}

bool Ostrand::NewProject(std::string_view path) {
  if (Busy() || state_->main.screenOpen) return false;
  const UserAction action(*this);
  return Guarded(state_->around.forms, "Ostrand.NewProject", [&] {
    if (RegistryApp() == kOwnRegistryApp) state_->LoadSettings();
    state_->StartProject();
    giveUserDefaults(state_->store, state_->settings.Options());
    NameProject(path);
    state_->calcVarRefs = CollectCalcVarRefs(state_->store);
    state_->readReport = {};
    state_->known = {};
    state_->MarkDirty(false);
    state_->ShowProject();
  });
}

const ORVUS_GENFILE::ReadReport& Ostrand::SkippedLines() const { return state_->readReport; }
const InterruptedProject& Ostrand::Interrupted() const { return state_->interrupted; }

}  // namespace ostrand
