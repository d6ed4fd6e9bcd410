#include "commands.h"

#include <array>

namespace ostrand::cli {
namespace {

constexpr unsigned kCommonOptions = kAnswer | kYes | kNoSync | kHelp;
constexpr std::string_view kWhichProject = "which project file?";

// A command that works on project files.
constexpr CommandRow projects(std::string_view name, std::string_view help, unsigned options,
                              std::size_t most, Command command) {
  return {name,   most == 1 ? "FILE.VKG" : "FILE.VKG...",
          help,   kCommonOptions | options,
          true,   1,
          most,   kWhichProject,
          command};
}

constexpr std::array<CommandRow, 13> kCommands = {{
    projects("check", "tell what stands against saving, and what to see to", kFormat, kAnyNumber,
             Check),
    projects("save", "check, test-compile and write all files",
             kOutput | kHostApp | kCompiler | kSend | kForce, 1, Save),
    projects("compile", "compile for a test and tell the measured times",
             kOutput | kHostApp | kCompiler | kStore | kForce, 1, Compile),
    projects("generate", "write program, table description and wiring (.VKP .VKD .VKW)",
             kOutput | kHostApp, kAnyNumber, Generate),
    projects("resave", "load each project and write its project file again", kOutput | kForce,
             kAnyNumber, Resave),
    projects("summary", "show what a project does and how long its scan takes", kRtf, 1, Summary),
    projects("wiring", "show which sensor goes to which terminal", kRtf | kHostApp, 1, Wiring),
    projects("new", "write a project file with the defaults of a new project", kForce, 1, StartNew),
    projects("recover", "give back a project whose save was interrupted", 0, kAnyNumber, Recover),
    {"screen", "FILE.VKG SCRIPT", "work at the setup screens by a script, then save the project",
     kOutput | kForce | kNoSync | kHelp, true, 2, 2, "which project file, and which script?",
     PlayScreens},
    {"screens", "", "list the screens, their controls and the lines of a script", kHelp, false, 0,
     0, "", ListScreens},
    {"can", "list|check FILE", "show a list of CAN items, or what is wrong with it", kHelp, false,
     2, 2, "list or check, and which file?", LookAtCanList},
    {"settings", "list|get|set [NAME [VALUE]]", "show or change what is kept for all projects",
     kNoSync | kHelp, false, 1, 3, "list, get or set?", ChangeSettings},
}};

}  // namespace

std::span<const CommandRow> Commands() { return kCommands; }

}  // namespace ostrand::cli
