#include "commands.h"

#include <array>

namespace ostrand::cli {
namespace {

constexpr unsigned kCommonOptions = kAnswer | kYes | kNoSync | kHelp;
constexpr std::string_view kWhichProject = "which project file?";

constexpr std::array<CommandRow, 5> kCommands = {{
    {"generate", "FILE.VKG...", "write program, table description and wiring (.VKP .VKD .VKW)",
     kCommonOptions | kOutput | kHostApp, 1, kAnyNumber, kWhichProject, Generate},
    {"resave", "FILE.VKG...", "load each project and write its project file again",
     kCommonOptions | kOutput, 1, kAnyNumber, kWhichProject, Resave},
    {"summary", "FILE.VKG", "show what a project does and how long its scan takes",
     kCommonOptions | kRtf, 1, 1, kWhichProject, Summary},
    {"wiring", "FILE.VKG", "show which sensor goes to which terminal",
     kCommonOptions | kRtf | kHostApp, 1, 1, kWhichProject, Wiring},
    {"new", "FILE.VKG", "write a project file with the defaults of a new project",
     kCommonOptions | kForce, 1, 1, kWhichProject, StartNew},
}};

}  // namespace

std::span<const CommandRow> Commands() { return kCommands; }

}  // namespace ostrand::cli
