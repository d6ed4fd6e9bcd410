#include "commands.h"

#include <array>

namespace ostrand::cli {
namespace {

constexpr unsigned kCommonOptions = kAnswer | kYes | kNoSync | kHelp;
constexpr std::string_view kWhichProject = "which project file?";

constexpr std::array<CommandRow, 3> kCommands = {{
    {"generate", "FILE.VKG...", "write the logger program (.VKP) of each project",
     kCommonOptions | kOutput | kHostApp, 1, kAnyNumber, kWhichProject, Generate},
    {"resave", "FILE.VKG...", "load each project and write its project file again",
     kCommonOptions | kOutput, 1, kAnyNumber, kWhichProject, Resave},
    {"new", "FILE.VKG", "write a project file with the defaults of a new project",
     kCommonOptions | kForce, 1, 1, kWhichProject, StartNew},
}};

}  // namespace

std::span<const CommandRow> Commands() { return kCommands; }

}  // namespace ostrand::cli
