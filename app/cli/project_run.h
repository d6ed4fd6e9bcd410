// Projects handled one by one, each in a session of its own.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command_line.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/posix/posix_process.h"
#include "platform/posix/posix_work_folders.h"
#include "platform/posix/terminal_forms.h"
#include "platform/surroundings.h"
#include "session/ostrand.h"
#include "settings_places.h"

namespace ostrand::cli {

// What a command works with, and what has happened so far.
struct ProjectRun {
  const CommandLine& line;
  platform::PosixFileSystem& files;
  platform::TerminalForms& forms;
  std::vector<std::string> written;  // names as they were asked for
  std::size_t handled = 0;           // files before this one
};

// Handles one file; false when the user must see to something. A message box that it leaves behind
// unseen counts as such.
using ProjectCommand = bool (*)(ProjectRun& run, Ostrand& session, std::string_view file);

// The machine as a command line sees it.
struct CliHost {
  explicit CliHost(const CommandLine& line, std::optional<std::int64_t> epoch)
      : files(line.syncing), clock(epoch), forms(line.answers), places(line.syncing) {}

  // For a session that shows its boxes through `shown`.
  platform::Surroundings Around(platform::Forms& shown);

  platform::PosixFileSystem files;
  platform::PosixClock clock;
  platform::TerminalForms forms;
  platform::PosixProcesses processes;
  platform::PosixWorkFolders workFolders{files};
  SettingsPlaces places;
};

// The machine for a line; nothing, and the exit code in `refused`, when the line asks for what
// there is not, which has been told then.
std::unique_ptr<CliHost> HostOf(const CommandLine& line, ExitCode& refused);

// Runs the command for every file of the line. A fault of one does not keep the next from its turn.
ExitCode ForEachProject(const CommandLine& line, ProjectCommand command);

// False when the file could not be opened, which has been told then.
bool OpenProject(Ostrand& session, std::string_view file);

// After a failed OpenProject: says what an interrupted save has left in place of the project.
void TellInterrupted(const Ostrand& session);

// Says that another program has changed the project, so that it was not saved.
void TellChanged(const std::string& path);

// Puts the compiler of the line in place of that of the settings, which opening a project loads.
void UseCompiler(const ProjectRun& run, Ostrand& session);

// Writes the project file into its place.
bool WriteProject(ProjectRun& run, Ostrand& session);

// Tells in one line what a save of the session has dropped, if anything, and where it is kept.
void WarnOfSkippedLines(const Ostrand& session, std::string_view file);

// Where the files of the session's project go, without extension.
std::string OutputBase(const ProjectRun& run, const Ostrand& session);

// Whether `path` is still free in this run; another project of the same name, but for upper and
// lower case, may have taken it.
bool NotYetWritten(const ProjectRun& run, const std::string& path);

// Notes that `path` has been written and tells the user.
bool TellWritten(ProjectRun& run, const std::string& path);

}  // namespace ostrand::cli
