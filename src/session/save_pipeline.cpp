// Writes the files of a project, under its lock.
#include <algorithm>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "documents/document_file.h"
#include "documents/makewire.h"
#include "documents/table_description.h"
#include "platform/atomic_file.h"
#include "platform/guarded.h"
#include "platform/paths.h"
#include "projectfile/genfile.h"
#include "projectfile/kept_copy.h"
#include "session/session_state.h"
#include "session/test_compile.h"
#include "session/user_action.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// One step of the pipeline.
struct Step {
  std::string_view extension;
  bool (*write)(SessionState& session, std::string_view base);
};

// ---- The lock and the project on the disk -------------------------------------------------------

// The lock of the save under way; restores the previous one, if any, at the end.
class Held {
 public:
  Held(SessionState& session, std::string_view base, std::unique_ptr<platform::ProjectLock> lock)
      : session_(session),
        lock_(std::move(lock)),
        lockBefore_(std::exchange(session.save.lock, lock_.get())),
        baseBefore_(std::exchange(session.save.lockedBase, std::string(base))) {}
  ~Held() {
    session_.save.lock = lockBefore_;
    session_.save.lockedBase = std::move(baseBefore_);
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

 private:
  SessionState& session_;
  std::unique_ptr<platform::ProjectLock> lock_;
  platform::ProjectLock* lockBefore_;
  std::string baseBefore_;
};

Result<> syncedFolder(SessionState& session, std::string_view base) {
  return session.around.files.SyncFolder(session.around.files.Target(base));
}

bool syncFolder(SessionState& session, std::string_view base) {
  return Guarded(session.around.forms, "Ostrand.SavePipeline", [&] {
    const Result<> synced = syncedFolder(session, base);
    if (!synced) throw FileAccess(synced.ErrorText());
  });
}

// After an output is written: syncs its folder now or, under a lock, after the last output.
bool settleFolder(SessionState& session, std::string_view base) {
  if (session.save.lockedBase != base) return syncFolder(session, base);
  session.save.unsynced = true;
  return true;
}

bool underLockOf(SessionState& session, const std::string& project, std::string_view base,
                 const std::function<bool()>& body) {
  if (session.save.lockedBase == base) return body();
  std::string shown;
  const auto waiting = [&](const std::string& holder) {
    if (shown != holder) {
      session.around.forms.ShowWaiting("Waiting for " + holder +
                                       ", to end a save of this project.");
    }
    shown = holder;
    session.around.forms.DoEvents();
  };
  auto lock = session.around.files.LockProject(project, waiting);
  if (!lock) {
    session.around.forms.Beep();
    session.around.forms.ShowBox({.title = "PROJECT NOT SAVED",
                                  .text = lock.ErrorText() + "\r\nNothing was written.",
                                  .icon = platform::Icon::kExclamation});
    return false;
  }
  const Held held(session, base, std::move(lock.Value()));
  const bool before = std::exchange(session.save.unsynced, false);
  const bool done = body();
  const bool unsynced = std::exchange(session.save.unsynced, before);
  if (!unsynced) return done;
  if (done) return syncFolder(session, base);
  // The failure that ended the save has been reported.
  static_cast<void>(static_cast<bool>(syncedFolder(session, base)));
  return false;
}

Result<> keptLock(SessionState& session) {
  return session.save.lock == nullptr ? Result<>(Done{}) : session.save.lock->Keep();
}

// Whether the lock is still held; its loss has been reported by then.
bool keepLock(SessionState& session) {
  return Guarded(session.around.forms, "Ostrand.SavePipeline", [&] {
    const Result<> kept = keptLock(session);
    if (!kept) throw FileAccess(kept.ErrorText());
  });
}

// The project file that a save replaces or creates.
std::string placeOf(SessionState& session, std::string_view base) {
  return ORVUS_GENFILE::PlaceOf(session.around.files, std::string(base).append(kProjectExtension));
}

std::optional<platform::FileIdentity> changedOnDisk(SessionState& session, std::string_view base) {
  if (session.known.path.empty()) return std::nullopt;
  const std::string path = placeOf(session, base);
  if (!platform::SameFile(session.around.files, session.known.path, path)) return std::nullopt;
  return platform::ChangedSince(session.around.files, session.known, path);
}

bool askToOverwrite(SessionState& session, const std::string& path) {
  session.around.forms.Beep();
  const platform::Answer answer = session.around.forms.ShowBox(
      {.title = "PROJECT CHANGED",
       .text = path + "\r\nwas changed by another program since it was read here.\r\n"
                      "Overwriting it loses what the other program wrote.",
       .icon = platform::Icon::kExclamation,
       .buttons = platform::Buttons::kOverwriteCancel,
       .preselected = platform::Answer::kCancel});
  return answer == platform::Answer::kOverwrite;
}

void reportKept(SessionState& session) {
  if (session.save.keptAs.empty()) return;
  session.around.forms.ShowBox(
      {.title = "EARLIER SAVE KEPT",
       .text = "An interrupted save had left an older project beside this one.\r\n"
               "It is kept as " +
               session.save.keptAs + ".",
       .icon = platform::Icon::kInformation});
}

// Runs `body` under the lock if the project file has the content that the session knows, or one
// that the user agrees to overwrite. The lock is free while the user is asked.
bool saveUnchanged(SessionState& session, std::string_view base,
                   const std::function<bool()>& body) {
  session.save.changedOutside = false;
  session.save.keptAs.clear();
  for (;;) {
    std::optional<platform::FileIdentity> other;
    const bool done = underLockOf(session, placeOf(session, base), base, [&] {
      other = changedOnDisk(session, base);
      return !other && body();
    });
    if (!other) {
      reportKept(session);
      return done;
    }
    session.save.changedOutside =
        !session.overwriteChanged && !askToOverwrite(session, other->path);
    if (session.save.changedOutside) return false;
    session.known = std::move(*other);
  }
}

// ---- The steps ----------------------------------------------------------------------------------

// Never saves without the copy.
void keepOldFile(SessionState& session, const std::string& path) {
  session.save.oldFileKept.clear();
  if (session.readReport.skipped == 0) return;
  const Result<std::string> kept = ORVUS_GENFILE::KeepOldFile(session.around.files, path);
  if (!kept) throw FileAccess(kept.ErrorText());
  session.save.oldFileKept = kept.Value();
}

bool writeProject(SessionState& session, std::string_view base) {
  return Guarded(session.around.forms, "ORVUS_GENFILE.SaveProjectFile", [&] {
    keepOldFile(session, std::string(base).append(kProjectExtension));
    auto saved = ORVUS_GENFILE::SaveProjectFile(session.store, session.around.files,
                                                session.around.clock, base);
    if (!saved) {
      // The new content may be in place despite the failure.
      auto now = platform::IdentityNow(session.around.files, placeOf(session, base));
      if (now) session.known = std::move(*now);
      throw FileAccess(saved.ErrorText());
    }
    session.known = std::move(saved.Value().file);
    session.save.keptAs = std::move(saved.Value().keptAs);
  });
}

bool writeTableDescription(SessionState& session, std::string_view base) {
  bool written = false;
  Guarded(session.around.forms, "Ostrand.WriteTableDescription", [&] {
    const DocumentHead head{platform::Split(base).title, session.around.clock.Now()};
    written = ostrand::WriteTableDescription(session.around.files, session.around.forms,
                                             std::string(base), session.store, head);
  });
  return written;
}

bool writeWiringDiagram(SessionState& session, std::string_view base) {
  MAKEWIRE wire(session.store, session.around.files, session.around.clock, session.around.forms);
  return wire.MakeWire_MasterWire(base, session.generator.Channels());
}

// The generator, set up with the names for a program.
SAVEDLD& namedGenerator(SessionState& session) {
  session.generator.HostApp(session.hostApp);
  session.generator.BaseName(session.baseName);
  return session.generator;
}

bool writeProgram(SessionState& session, std::string_view base) {
  return session.WriteProgram(base);
}

// Puts the documents of a save into their places, unless the lock is lost; `before` is the number
// of files saved before them. Reports a failure, unless a failed write has already been reported;
// `written` is false then.
bool placeDocuments(SessionState& session, platform::WriteBatch& documents, std::size_t before,
                    bool written) {
  std::vector<std::string>& saved = session.save.files;
  if (written ? !keepLock(session) : !keptLock(session)) {
    saved.resize(before);
    return false;
  }
  const auto failure = documents.Commit();
  if (!failure) return written;
  saved.erase(std::find(saved.begin(), saved.end(), failure->path), saved.end());
  if (written) ReportDocument(session.around.forms, failure->path, failure->text);
  return false;
}

}  // namespace

bool SessionState::WriteProgram(std::string_view base) {
  return namedGenerator(*this).SaveTheDld(base);
}

bool SessionState::SavePipeline() {
  const UserAction action(control);
  control.KeepTextBoxes();
  if (currentFileName.empty() || SameText(currentFileName, "NoName.VKG")) {
    currentFileName = InFolder(control.WorkDir(), "EditTemp.VKG");
  }
  // A copy: the project may be renamed while the steps run.
  const std::string base(Ostrand::WithoutExtension(currentFileName));
  const auto run = [&](const Step& step) {
    around.forms.SetHelpLine("Saving " + Upper(base) + std::string(step.extension) + ".");
    if (!keepLock(*this) || !step.write(*this, base)) return false;
    save.files.push_back(base + std::string(step.extension));
    return true;
  };
  save.files.clear();
  return saveUnchanged(*this, base, [&] {
    if (!run({".VKG", writeProject})) return false;
    if (!run({".VKP", writeProgram}) || !settleFolder(*this, base)) return false;
    FindCompiler(settings.CompilerPath() + " was not found.", "Would you like to search for it?.");
    const std::size_t before = save.files.size();
    platform::WriteBatch documents(around.files);
    const bool written = run({".VKD", writeTableDescription}) && run({".VKW", writeWiringDiagram});
    if (!placeDocuments(*this, documents, before, written)) return false;
    around.forms.SetHelpLine("");
    return true;
  });
}

void Ostrand::KeepTextBoxes() {
  state_->store.Gen.Operator = state_->main.txtOper;
  state_->store.Gen.IDNumber = state_->main.txtIDNum;
}

bool Ostrand::SavePipeline() {
  if (Busy()) return false;
  const Marked saving(state_->saving);
  return state_->SavePipeline();
}

bool Ostrand::UnderLock(std::string_view base, const std::function<bool()>& body) {
  return underLockOf(*state_, std::string(base).append(kProjectExtension), base, body);
}

bool Ostrand::WriteProjectFile(std::string_view base) {
  if (Busy()) return false;
  const Marked saving(state_->saving);
  return saveUnchanged(*state_, base, [&] { return writeProject(*state_, base); });
}

bool Ostrand::WriteProgram(std::string_view base) {
  return !Busy() && state_->WriteProgram(base) && settleFolder(*state_, base);
}

bool Ostrand::WriteTableDescription(std::string_view base) {
  return !Busy() && writeTableDescription(*state_, base) && settleFolder(*state_, base);
}

bool Ostrand::WriteWiringDiagram(std::string_view base) {
  return !Busy() && writeWiringDiagram(*state_, base) && settleFolder(*state_, base);
}

std::string Ostrand::WiringText() {
  std::string diagram;
  if (Busy()) return diagram;
  Guarded(state_->around.forms, "MAKEWIRE.MakeWire_MasterWire", [&] {
    SAVEDLD& generator = namedGenerator(*state_);
    generator.ProgramText();
    const std::string title = platform::Split(WithoutExtension(state_->currentFileName)).title;
    diagram = ostrand::WiringText(state_->store, generator.Channels(),
                                  {title, state_->around.clock.Now()});
  });
  return diagram;
}

const std::vector<std::string>& Ostrand::SavedFiles() const { return state_->save.files; }
const std::string& Ostrand::OldFileKept() const { return state_->save.oldFileKept; }
void Ostrand::OverwriteChanged(bool overwrite) { state_->overwriteChanged = overwrite; }
bool Ostrand::ChangedOutside() const { return state_->save.changedOutside; }
const std::vector<std::string>& Ostrand::ProgramFaults() const {
  return state_->generator.Faults();
}

}  // namespace ostrand
