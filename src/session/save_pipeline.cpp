// The road of a project to its files, through the logger's compiler and to the logger.
#include <algorithm>
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

// One step of the pipeline.
struct Step {
  std::string_view extension;
  bool (Ostrand::*write)(std::string_view base);
};

}  // namespace

void Ostrand::KeepTextBoxes() {
  store_.Gen.Operator = txtOper_;
  store_.Gen.IDNumber = txtIDNum_;
}

bool Ostrand::SavePipeline() {
  const UserAction action(*this);
  KeepTextBoxes();
  if (currentFileName_.empty() || SameText(currentFileName_, "NoName.VKG")) {
    currentFileName_ = InFolder(WorkDir(), "EditTemp.VKG");
  }
  // A copy: what runs below may name the project anew.
  const std::string base(WithoutExtension(currentFileName_));
  const auto run = [&](const Step& step) {
    around_.forms.SetHelpLine("Saving " + Upper(base) + std::string(step.extension) + ".");
    if (!(this->*step.write)(base)) return false;
    savedFiles_.push_back(base + std::string(step.extension));
    return true;
  };
  savedFiles_.clear();
  if (!run({".VKG", &Ostrand::WriteProjectFile})) return false;
  if (!run({".VKP", &Ostrand::WriteProgram})) return false;
  findCompiler(settings_.CompilerPath() + " was not found.", "Would you like to search for it?.");
  if (!run({".VKD", &Ostrand::WriteTableDescription})) return false;
  if (!run({".VKW", &Ostrand::WriteWiringDiagram})) return false;
  around_.forms.SetHelpLine("");
  return true;
}

bool Ostrand::WriteProjectFile(std::string_view base) {
  return Guarded(around_.forms, "ORVUS_GENFILE.SaveProjectFile", [&] {
    keepOldFile(std::string(base).append(".VKG"));
    const Result<> saved =
        ORVUS_GENFILE::SaveProjectFile(store_, around_.files, around_.clock, base);
    if (!saved) throw FileAccess(saved.ErrorText());
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

bool Ostrand::WriteProgram(std::string_view base) {
  generator_.HostApp(hostApp_);
  generator_.BaseName(baseName_);
  return generator_.SaveTheDld(base);
}

bool Ostrand::WriteTableDescription(std::string_view base) {
  bool written = false;
  Guarded(around_.forms, "Ostrand.WriteTableDescription", [&] {
    const DocumentHead head{platform::Split(base).title, around_.clock.Now()};
    written = ostrand::WriteTableDescription(around_.files, around_.forms, std::string(base),
                                             store_, head);
  });
  return written;
}

bool Ostrand::WriteWiringDiagram(std::string_view base) {
  MAKEWIRE wire(store_, around_.files, around_.clock, around_.forms);
  return wire.MakeWire_MasterWire(base, generator_.Channels());
}

std::string Ostrand::WiringText() {
  std::string diagram;
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
  return true;
}

void Ostrand::RunPreCompile() {
  if (compiling_) return;
  const UserAction action(*this);
  compiling_ = true;
  compileFailed_ = true;
  compileSkipped_.clear();
  around_.forms.SetPointer(platform::Pointer::kBusy);
  Guarded(around_.forms, "Ostrand.RunPreCompile", [&] {
    if (!findCompiler("Pre-Compiler was not found.", "Would you like to search for it?")) return;
    settings_.ReadWorkDir();
    if (around_.workFolders == nullptr) return testCompileIn(WorkDir());
    auto folder = around_.workFolders->Create(WorkDir());
    if (!folder) throw FileAccess(folder.ErrorText());
    testCompileIn(folder.Value()->Path());
    if (const auto gone = folder.Value()->Remove(); !gone) throw FileAccess(gone.ErrorText());
  });
  around_.forms.SetPointer(platform::Pointer::kNormal);
  compiling_ = false;
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
  if (WriteProgram(base)) {
    TestCompile compile({around_.files, around_.forms, around_.processes}, folder);
    const bool alwaysShow = (settings_.WarningMessageMask() & kShowCompileResult) != 0;
    Guarded(around_.forms, "Ostrand.ParseCompileResults", [&] {
      compileFailed_ = !compile.ParseCompileResults(store_, generator_.TK40MLines(), testFile,
                                                    settings_.CompilerPath(), alwaysShow);
      compileSkipped_ = compile.Skipped();
    });
    Summarize();
  }
  static_cast<void>(RemoveOld(around_.files, testFile));
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
