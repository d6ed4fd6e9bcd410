// Test compile of a project's program by the logger's compiler.
#include <optional>

#include "model/warnings.h"
#include "platform/guarded.h"
#include "session/session_state.h"
#include "session/test_compile.h"
#include "session/user_action.h"

namespace ostrand {
namespace {

// Compiles the program for a test, with all files in `folder`.
void testCompileIn(SessionState& session, const std::string& folder) {
  const std::string base = InFolder(folder, "TEMP$$$$");
  const std::string testFile = base + ".VKP";
  // An existing one could be a link, through which the program would be written.
  if (const auto gone = RemoveOld(session.around.files, testFile); !gone) {
    throw FileAccess(gone.ErrorText());
  }
  session.generator.ClearTK40MLines();
  const auto compile = [&] {
    if (!session.WriteProgram(base)) return;
    TestCompile test({session.around.files, session.around.forms, session.around.processes},
                     folder);
    const bool alwaysShow = (session.settings.WarningMessageMask() & kShowCompileResult) != 0;
    Guarded(session.around.forms, "Ostrand.ParseCompileResults", [&] {
      session.compileFailed =
          !test.ParseCompileResults(session.store, session.generator.TK40MLines(), testFile,
                                    session.settings.CompilerPath(), alwaysShow);
      session.compileSkipped = test.Skipped();
    });
    session.control.Summarize();
  };
  Finally(compile, [&] { static_cast<void>(RemoveOld(session.around.files, testFile)); });
}

}  // namespace

bool SessionState::FindCompiler(std::string_view missing, std::string_view question) {
  if (!settings.CompilerPath().empty() && around.files.Exists(settings.CompilerPath())) {
    return true;
  }
  around.forms.Beep();
  const platform::Answer answer =
      around.forms.ShowBox({.title = "MISSING FILE",
                            .text = std::string(missing).append("\r\n").append(question),
                            .icon = platform::Icon::kQuestion,
                            .buttons = platform::Buttons::kYesNo});
  if (answer != platform::Answer::kYes) return false;
  const std::optional<std::string> found =
      around.forms.AskOpen({.title = "FIND VK7300 COMPILER",
                            .filter = "(VKPComp.EXE)|VKPComp.EXE|(All Files)|*.*",
                            .defaultExtension = "EXE",
                            .initialFolder = appPath,
                            .fileName = "VKPComp.EXE",
                            .helpContext = Ostrand::InternalHelpContextID()});
  if (!found) return false;
  settings.CompilerPath(*found);
  Guarded(around.forms, "Ostrand.FindCompiler", [&] { KeepSettings(); });
  return true;
}

void Ostrand::RunPreCompile() {
  if (!Busy()) state_->RunPreCompile();
}

void SessionState::RunPreCompile() {
  const UserAction action(control);
  const Marked running(compiling);
  compileFailed = true;
  compileSkipped.clear();
  const auto compile = [&] {
    if (!FindCompiler("Pre-Compiler was not found.", "Would you like to search for it?")) {
      compileSkipped = "Skipped pre-compile. Pre-Compiler was not found.";
      return;
    }
    settings.ReadWorkDir();
    if (around.workFolders == nullptr) return testCompileIn(*this, control.WorkDir());
    auto folder = around.workFolders->Create(control.WorkDir());
    if (!folder) throw FileAccess(folder.ErrorText());
    testCompileIn(*this, folder.Value()->Path());
    if (const auto gone = folder.Value()->Remove(); !gone) throw FileAccess(gone.ErrorText());
  };
  WithBusyPointer(around.forms, [&] { Guarded(around.forms, "Ostrand.RunPreCompile", compile); });
}

bool Ostrand::CompileFailed() const { return state_->compileFailed; }
const std::string& Ostrand::CompileSkipped() const { return state_->compileSkipped; }

}  // namespace ostrand
