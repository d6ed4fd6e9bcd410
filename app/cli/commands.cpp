#include "commands.h"

#include <array>

namespace ostrand::cli {
namespace {

constexpr unsigned kCommonOptions = kAnswer | kYes | kNoSync | kHelp;
constexpr std::string_view kMissingProject = "missing project file";

// A command that works on project files.
constexpr CommandRow projects(std::string_view name, std::string_view help, unsigned options,
                              std::size_t max, Command command) {
  return {name,   max == 1 ? "FILE.VKG" : "FILE.VKG...",
          help,   kCommonOptions | options,
          true,   1,
          max,    kMissingProject,
          command};
}

constexpr std::array<CommandRow, 15> kCommands = {{
    projects("check", "report what prevents saving and what to look at", kFormat, kAnyNumber,
             Check),
    projects("save", "check, test-compile and write all files",
             kOutput | kHostApp | kCompiler | kSend | kForce, 1, Save),
    projects("compile", "test-compile the program and show the measured times",
             kOutput | kHostApp | kCompiler | kStore | kForce, 1, Compile),
    projects("generate", "write program, table description and wiring (.VKP .VKD .VKW)",
             kOutput | kHostApp, kAnyNumber, Generate),
    projects("resave", "load each project and write its project file again", kOutput | kForce,
             kAnyNumber, Resave),
    projects("summary", "show what a project does and how long its scan takes", kRtf, 1, Summary),
    projects("wiring", "show which sensor goes to which terminal", kRtf | kHostApp, 1, Wiring),
    projects("new", "write a project file with the defaults of a new project", kForce, 1, StartNew),
    projects("recover", "restore a project whose save was interrupted", 0, kAnyNumber, Recover),
    {"screen", "FILE.VKG SCRIPT|-", "run a script on the setup screens, then save the project",
     kOutput | kForce | kLenient | kDryRun | kNoSync | kHelp, true, 2, 2,
     "missing project file or script", PlayScreens},
    projects("script", "show the script that makes the project from a new one", 0, 1, WriteScript),
    {"screens", "[NAME]", "list the screens, their controls and the script commands",
     kFormat | kHelp, false, 0, 1, "", ListScreens},
    {"get", "FILE.VKG [SECTION [KEY]]", "show keys of the project file", kFormat | kCommonOptions,
     true, 1, 3, kMissingProject, GetKeys},
    {"can", "list|check FILE", "list or check a file of CAN items", kHelp, false, 2, 2,
     "missing list or check, or the file", LookAtCanList},
    {"settings", "list|get|set [NAME [VALUE]]", "show or change the settings of all projects",
     kNoSync | kHelp, false, 1, 3, "missing list, get or set", ChangeSettings},
}};

}  // namespace

std::span<const CommandRow> Commands() { return kCommands; }

}  // namespace ostrand::cli
