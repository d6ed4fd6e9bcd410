// The road of a project to its files, through the logger's compiler and to the logger.
#include <algorithm>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "documents/makewire.h"
#include "documents/table_description.h"
#include "platform/guarded.h"
#include "platform/paths.h"
#include "projectfile/genfile.h"
#include "projectfile/kept_copy.h"
#include "session/ostrand.h"
#include "session/test_compile.h"
#include "session/user_action.h"
#include "text/codepage.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// The message that asks the toolbar server for a download.
constexpr i32 kDownloadMessage = 101;
constexpr i32 kDownloadCode = 1515;
constexpr std::string_view kDownloadApplication = "Harrier";

constexpr std::size_t kLongBytes = 4;

constexpr std::string_view kProjectExtension = ".VKG";

// One step of the pipeline.
struct Step {
  std::string_view extension;
  bool (Ostrand::*write)(std::string_view base);
};

}  // namespace

// The lock of the save under way; the one before it, if any, comes back at the end.
class Ostrand::Held {
 public:
  Held(Ostrand& session, std::string_view base, std::unique_ptr<platform::ProjectLock> lock)
      : session_(session),
        lock_(std::move(lock)),
        lockBefore_(std::exchange(session.lock_, lock_.get())),
        baseBefore_(std::exchange(session.lockedBase_, std::string(base))) {}
  ~Held() {
    session_.lock_ = lockBefore_;
    session_.lockedBase_ = std::move(baseBefore_);
  }
  Held(const Held&) = delete;
  Held& operator=(const Held&) = delete;

 private:
  Ostrand& session_;
  std::unique_ptr<platform::ProjectLock> lock_;
  platform::ProjectLock* lockBefore_;
  std::string baseBefore_;
};

void Ostrand::KeepTextBoxes() {
  store_.Gen.Operator = txtOper_;
  store_.Gen.IDNumber = txtIDNum_;
}

bool Ostrand::SavePipeline() {
  if (Busy()) return false;
  const Marked saving(saving_);
  return savePipeline();
}

bool Ostrand::WriteProjectFile(std::string_view base) {
  if (Busy()) return false;
  const Marked saving(saving_);
  return saveUnchanged(base, [&] { return writeProject(base); });
}

bool Ostrand::WriteProgram(std::string_view base) {
  return !Busy() && writeProgram(base) && settle(base);
}

bool Ostrand::WriteTableDescription(std::string_view base) {
  return !Busy() && writeTableDescription(base) && settle(base);
}

bool Ostrand::WriteWiringDiagram(std::string_view base) {
  return !Busy() && writeWiringDiagram(base) && settle(base);
}

bool Ostrand::savePipeline() {
  const UserAction action(*this);
  KeepTextBoxes();
  if (currentFileName_.empty() || SameText(currentFileName_, "NoName.VKG")) {
    currentFileName_ = InFolder(WorkDir(), "EditTemp.VKG");
  }
  // A copy: what runs below may name the project anew.
  const std::string base(WithoutExtension(currentFileName_));
  const auto run = [&](const Step& step) {
    around_.forms.SetHelpLine("Saving " + Upper(base) + std::string(step.extension) + ".");
    if (!keepLock() || !(this->*step.write)(base)) return false;
    savedFiles_.push_back(base + std::string(step.extension));
    return true;
  };
  savedFiles_.clear();
  return saveUnchanged(base, [&] {
    if (!run({".VKG", &Ostrand::writeProject})) return false;
    if (!run({".VKP", &Ostrand::writeProgram}) || !settle(base)) return false;
    findCompiler(settings_.CompilerPath() + " was not found.", "Would you like to search for it?.");
    if (!run({".VKD", &Ostrand::writeTableDescription})) return false;
    if (!run({".VKW", &Ostrand::writeWiringDiagram})) return false;
    around_.forms.SetHelpLine("");
    return true;
  });
}

// ---- The lock and the project on the disk -------------------------------------------------------

bool Ostrand::UnderLock(std::string_view base, const std::function<bool()>& body) {
  return underLockOf(std::string(base).append(kProjectExtension), base, body);
}

bool Ostrand::underLockOf(const std::string& project, std::string_view base,
                          const std::function<bool()>& body) {
  if (lockedBase_ == base) return body();
  std::string shown;
  const auto waiting = [&](const std::string& holder) {
    if (shown != holder) {
      around_.forms.ShowWaiting("Waiting for " + holder + ", to end a save of this project.");
    }
    shown = holder;
    around_.forms.DoEvents();
  };
  auto lock = around_.files.LockProject(project, waiting);
  if (!lock) {
    around_.forms.Beep();
    around_.forms.ShowBox({.title = "PROJECT NOT SAVED",
                           .text = lock.ErrorText() + "\r\nNothing was written.",
                           .icon = platform::Icon::kExclamation});
    return false;
  }
  const Held held(*this, base, std::move(lock.Value()));
  const bool before = std::exchange(unsynced_, false);
  const bool done = body();
  const bool unsynced = std::exchange(unsynced_, before);
  if (!unsynced) return done;
  if (done) return syncFolder(base);
  // The failure that ended the save has been reported.
  static_cast<void>(static_cast<bool>(syncedFolder(base)));
  return false;
}

// After a write of an output: its folder is synced now, or, under a lock, when the last is written.
bool Ostrand::settle(std::string_view base) {
  if (lockedBase_ != base) return syncFolder(base);
  unsynced_ = true;
  return true;
}

bool Ostrand::syncFolder(std::string_view base) {
  return Guarded(around_.forms, "Ostrand.SavePipeline", [&] {
    const Result<> synced = syncedFolder(base);
    if (!synced) throw FileAccess(synced.ErrorText());
  });
}

Result<> Ostrand::syncedFolder(std::string_view base) {
  return around_.files.SyncFolder(around_.files.Target(base));
}

// Whether the lock is still ours; the loss has been reported then.
bool Ostrand::keepLock() {
  return Guarded(around_.forms, "Ostrand.SavePipeline", [&] {
    const Result<> kept = lock_ == nullptr ? Result<>(Done{}) : lock_->Keep();
    if (!kept) throw FileAccess(kept.ErrorText());
  });
}

// Runs `body` under the lock while the project file has the content that the session knows, or one
// that the user lets it overwrite. Nobody waits for the lock while the user is asked.
bool Ostrand::saveUnchanged(std::string_view base, const std::function<bool()>& body) {
  changedOutside_ = false;
  keptAs_.clear();
  for (;;) {
    std::optional<platform::FileIdentity> other;
    const bool done = underLockOf(placeOf(base), base, [&] {
      other = changedOnDisk(base);
      return !other && body();
    });
    if (!other) {
      tellKept();
      return done;
    }
    changedOutside_ = !overwriteChanged_ && !askToOverwrite(other->path);
    if (changedOutside_) return false;
    known_ = std::move(*other);
  }
}

// The project file that a save replaces or creates.
std::string Ostrand::placeOf(std::string_view base) {
  return ORVUS_GENFILE::PlaceOf(around_.files, std::string(base).append(kProjectExtension));
}

std::optional<platform::FileIdentity> Ostrand::changedOnDisk(std::string_view base) {
  if (known_.path.empty()) return std::nullopt;
  const std::string path = placeOf(base);
  if (!platform::SameFile(around_.files, known_.path, path)) return std::nullopt;
  return platform::ChangedSince(around_.files, known_, path);
}

bool Ostrand::askToOverwrite(const std::string& path) {
  around_.forms.Beep();
  const platform::Answer answer = around_.forms.ShowBox(
      {.title = "PROJECT CHANGED",
       .text = path + "\r\nwas changed by another program since it was read here.\r\n"
                      "Overwriting it loses what the other program wrote.",
       .icon = platform::Icon::kExclamation,
       .buttons = platform::Buttons::kOverwriteCancel,
       .preselected = platform::Answer::kCancel});
  return answer == platform::Answer::kOverwrite;
}

void Ostrand::tellKept() {
  if (keptAs_.empty()) return;
  around_.forms.ShowBox(
      {.title = "EARLIER SAVE KEPT",
       .text = "An interrupted save had left an older project beside this one.\r\n"
               "It is kept as " +
               keptAs_ + ".",
       .icon = platform::Icon::kInformation});
}

bool Ostrand::writeProject(std::string_view base) {
  return Guarded(around_.forms, "ORVUS_GENFILE.SaveProjectFile", [&] {
    keepOldFile(std::string(base).append(kProjectExtension));
    auto saved = ORVUS_GENFILE::SaveProjectFile(store_, around_.files, around_.clock, base);
    if (!saved) {
      // The new content may be in its place all the same.
      if (auto now = platform::IdentityNow(around_.files, placeOf(base))) known_ = std::move(*now);
      throw FileAccess(saved.ErrorText());
    }
    known_ = std::move(saved.Value().file);
    keptAs_ = std::move(saved.Value().keptAs);
  });
}

// Without the copy there is no save.
void Ostrand::keepOldFile(const std::string& path) {
  oldFileKept_.clear();
  if (readReport_.skipped == 0) return;
  const Result<std::string> kept = ORVUS_GENFILE::KeepOldFile(around_.files, path);
  if (!kept) throw FileAccess(kept.ErrorText());
  oldFileKept_ = kept.Value();
}

bool Ostrand::writeProgram(std::string_view base) {
  generator_.HostApp(hostApp_);
  generator_.BaseName(baseName_);
  return generator_.SaveTheDld(base);
}

bool Ostrand::writeTableDescription(std::string_view base) {
  bool written = false;
  Guarded(around_.forms, "Ostrand.WriteTableDescription", [&] {
    const DocumentHead head{platform::Split(base).title, around_.clock.Now()};
    written = ostrand::WriteTableDescription(around_.files, around_.forms, std::string(base),
                                             store_, head);
  });
  return written;
}

bool Ostrand::writeWiringDiagram(std::string_view base) {
  MAKEWIRE wire(store_, around_.files, around_.clock, around_.forms);
  return wire.MakeWire_MasterWire(base, generator_.Channels());
}

std::string Ostrand::WiringText() {
  std::string diagram;
  if (Busy()) return diagram;
  Guarded(around_.forms, "MAKEWIRE.MakeWire_MasterWire", [&] {
    generator_.HostApp(hostApp_);
    generator_.BaseName(baseName_);
    generator_.ProgramText();
    const std::string title = platform::Split(WithoutExtension(currentFileName_)).title;
    diagram = ostrand::WiringText(store_, generator_.Channels(), {title, around_.clock.Now()});
  });
  return diagram;
}

// ---- The compiler -------------------------------------------------------------------------------

// Whether there is a compiler, which the user may have to search for.
bool Ostrand::findCompiler(std::string_view missing, std::string_view question) {
  if (!settings_.CompilerPath().empty() && around_.files.Exists(settings_.CompilerPath())) {
    return true;
  }
  around_.forms.Beep();
  const platform::Answer answer =
      around_.forms.ShowBox({.title = "MISSING FILE",
                             .text = std::string(missing).append("\r\n").append(question),
                             .icon = platform::Icon::kQuestion,
                             .buttons = platform::Buttons::kYesNo});
  if (answer != platform::Answer::kYes) return false;
  const std::optional<std::string> found =
      around_.forms.AskOpen({.title = "FIND VK7300 COMPILER",
                             .filter = "(VKPComp.EXE)|VKPComp.EXE|(All Files)|*.*",
                             .defaultExtension = "EXE",
                             .initialFolder = appPath_,
                             .fileName = "VKPComp.EXE",
                             .helpContext = kHelpContext});
  if (!found) return false;
  settings_.CompilerPath(*found);
  Guarded(around_.forms, "Ostrand.FindCompiler", [&] { keepSettings(); });
  return true;
}

void Ostrand::RunPreCompile() {
  if (!Busy()) runPreCompile();
}

void Ostrand::runPreCompile() {
  const UserAction action(*this);
  const Marked compiling(compiling_);
  compileFailed_ = true;
  compileSkipped_.clear();
  const auto compile = [&] {
    if (!findCompiler("Pre-Compiler was not found.", "Would you like to search for it?")) {
      compileSkipped_ = "Skipped pre-compile. Pre-Compiler was not found.";
      return;
    }
    settings_.ReadWorkDir();
    if (around_.workFolders == nullptr) return testCompileIn(WorkDir());
    auto folder = around_.workFolders->Create(WorkDir());
    if (!folder) throw FileAccess(folder.ErrorText());
    testCompileIn(folder.Value()->Path());
    if (const auto gone = folder.Value()->Remove(); !gone) throw FileAccess(gone.ErrorText());
  };
  WithBusyPointer(around_.forms, [&] { Guarded(around_.forms, "Ostrand.RunPreCompile", compile); });
}
// Compiles the program for a test with all files in `folder`.
void Ostrand::testCompileIn(const std::string& folder) {
  const std::string base = InFolder(folder, "TEMP$$$$");
  const std::string testFile = base + ".VKP";
  // What is there could be a link, through which the program would be written.
  if (const auto gone = RemoveOld(around_.files, testFile); !gone) {
    throw FileAccess(gone.ErrorText());
  }
  generator_.ClearTK40MLines();
  const auto compile = [&] {
    if (!writeProgram(base)) return;
    TestCompile test({around_.files, around_.forms, around_.processes}, folder);
    const bool alwaysShow = (settings_.WarningMessageMask() & kShowCompileResult) != 0;
    Guarded(around_.forms, "Ostrand.ParseCompileResults", [&] {
      compileFailed_ = !test.ParseCompileResults(store_, generator_.TK40MLines(), testFile,
                                                 settings_.CompilerPath(), alwaysShow);
      compileSkipped_ = test.Skipped();
    });
    Summarize();
  };
  Finally(compile, [&] { static_cast<void>(RemoveOld(around_.files, testFile)); });
}

// ---- The download -------------------------------------------------------------------------------

void Ostrand::LongToMessage(i32 lng, unsigned char*& pDst) {
  const auto bits = static_cast<std::uint32_t>(lng);
  for (int shift = 24; shift >= 0; shift -= 8) {
    *pDst++ = static_cast<unsigned char>(bits >> shift);
  }
}

void Ostrand::StringToMessage(std::string_view Str, unsigned char*& pDst) {
  const std::string bytes = LowBytes(Str);
  LongToMessage(static_cast<i32>(bytes.size()), pDst);
  pDst = std::copy(bytes.begin(), bytes.end(), pDst);
}

void Ostrand::HarrierDownload(const std::string& FileName) {
  if (!isSocketConnected_ || socketControl_ == nullptr) {
    around_.forms.ShowBox(
        {.title = "",
         .text = "Ostrand is not registered with the Harrier toolbar server-- no connection"});
    return;
  }
  // Behind the length: number, code, application, two values, file.
  const std::size_t length =
      6 * kLongBytes + kDownloadApplication.size() + LowBytes(FileName).size();
  std::vector<unsigned char> message(kLongBytes + length);
  unsigned char* at = message.data();
  LongToMessage(static_cast<i32>(length), at);
  LongToMessage(kDownloadMessage, at);
  LongToMessage(kDownloadCode, at);
  StringToMessage(kDownloadApplication, at);
  LongToMessage(1, at);
  LongToMessage(1, at);
  StringToMessage(FileName, at);
  Guarded(around_.forms, "Ostrand.HarrierDownload", [&] {
    const Result<> sent = socketControl_->SendData(std::string(message.begin(), message.end()));
    if (!sent) throw FileAccess(sent.ErrorText());
  });
}

}  // namespace ostrand
