#include "commands.h"

#include <array>

namespace ostrand::cli {
namespace {

// Of all commands.
constexpr unsigned kCommonOptions = kQuiet | kVerbose | kColor | kHelp | kVersion;
// Of commands that open projects; those that take several files can handle them side by side.
constexpr unsigned kProjectOptions = kCommonOptions | kAnswer | kYes | kNoSync;
constexpr unsigned kManyFiles = kRecursive | kJobs;
// Of commands that write a project's files.
constexpr unsigned kCompareOptions = kOutputOrStandard | kCheck | kDiff | kDryRun;
constexpr std::string_view kMissingProject = "missing project file";

// A command that works on project files.
constexpr CommandRow projects(std::string_view name, std::string_view help, unsigned options,
                              std::size_t max, Command command) {
  return {name,   max == 1 ? "FILE.VKG" : "FILE.VKG...",
          help,   kProjectOptions | options | (max == 1 ? 0U : kManyFiles),
          true,   1,
          max,    kMissingProject,
          command};
}

constexpr auto kCommands = std::to_array<CommandRow>({
    projects("check", "report what prevents saving and what to look at",
             kSarifFormat | kSeverity | kWarningsAsErrors, kAnyNumber, Check),
    {"lint", "FILE.VKP...", "report what is wrong with the structure of a program",
     kCommonOptions | kSarifFormat | kSeverity | kWarningsAsErrors | kRecursive, true, 1,
     kAnyNumber, "missing program", Lint},
    projects("save", "check, test-compile and write all files",
             kCompareOptions | kDepfile | kHostApp | kCompiler | kSend | kForce, kAnyNumber, Save),
    projects("compile", "test-compile the program and show the measured times",
             kOutput | kHostApp | kCompiler | kStore | kForce | kFormat, kAnyNumber, Compile),
    projects("generate", "write program, table description and wiring (.VKP .VKD .VKW)",
             kCompareOptions | kDepfile | kHostApp | kForce | kChecked | kWarningsAsErrors,
             kAnyNumber, Generate),
    projects("resave", "load each project and write its project file again",
             kCompareOptions | kDepfile | kForce, kAnyNumber, Resave),
    projects("summary", "show what a project does and how long its scan takes", kRtf | kFormat,
             kAnyNumber, Summary),
    projects("wiring", "show which sensor goes to which terminal", kRtf | kFormat | kHostApp,
             kAnyNumber, Wiring),
    {"diff", "FILE.VKG [FILE.VKG]", "show how two projects differ, or what one of them sets",
     kCommonOptions | kFormat | kKeys, true, 1, 2, kMissingProject, Differ},
    projects("new", "write a project file with the defaults of a new project", kForce, 1, StartNew),
    projects("recover", "restore a project whose save was interrupted", 0, kAnyNumber, Recover),
    {"screen", "FILE.VKG SCRIPT|-", "run a script on the setup screens, then save the project",
     kCommonOptions | kOutputOrStandard | kCheck | kDiff | kDryRunOfScript | kForce | kLenient |
         kNoSync,
     true, 2, 2, "missing project file or script", PlayScreens},
    projects("script", "show the script that makes the project from a new one", 0, 1, WriteScript),
    {"screens", "[NAME]", "list the screens, their controls and the script commands",
     kCommonOptions | kFormat, false, 0, 1, "", ListScreens},
    {"get", "FILE.VKG [SECTION [KEY]]", "show keys of the project file", kProjectOptions | kFormat,
     true, 1, 3, kMissingProject, GetKeys},
    {"can", "list|check FILE", "list or check a file of CAN items", kCommonOptions | kFormat, false,
     2, 2, "missing list or check, or the file", LookAtCanList},
    {"settings", "list|get|set [NAME [VALUE]]", "show or change the settings of all projects",
     kCommonOptions | kNoSync | kFormat, false, 1, 3, "missing list, get or set", ChangeSettings},
    {"completions", "bash|zsh|fish", "print the completion of commands and options for a shell",
     kCommonOptions, false, 1, 1, "missing shell", Completions},
});

}  // namespace

std::span<const CommandRow> Commands() { return kCommands; }

}  // namespace ostrand::cli
