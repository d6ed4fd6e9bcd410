// Projects handled one by one, each in a session of its own.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "command_line.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/posix/terminal_forms.h"
#include "session/ostrand.h"

namespace ostrand::cli {

// What a command works with, and what has happened so far.
struct ProjectRun {
  const CommandLine& line;
  platform::PosixFileSystem& files;
  platform::TerminalForms& forms;
  std::vector<std::string> written;  // names as they stand on the disk
  std::size_t handled = 0;           // files before this one
};

// Handles one file; false when the user must see to something. A message box that it leaves behind
// unseen counts as such.
using ProjectCommand = bool (*)(ProjectRun& run, Ostrand& session, std::string_view file);

// Runs the command for every file of the line. A fault of one does not keep the next from its turn.
ExitCode ForEachProject(const CommandLine& line, ProjectCommand command);

// False when the file could not be opened, which has been told then.
bool OpenProject(Ostrand& session, std::string_view file);

// Puts the compiler of the line in place of that of the settings, which opening a project loads.
void UseCompiler(const ProjectRun& run, Ostrand& session);

// Writes the project file into its place.
bool WriteProject(ProjectRun& run, Ostrand& session);

// Where the files of the session's project go, without extension.
std::string OutputBase(const ProjectRun& run, const Ostrand& session);

// Whether `path` is still free in this run; another project of the same name may have taken it.
bool NotYetWritten(const ProjectRun& run, const std::string& path);

// Notes that `path` has been written and tells the user.
bool TellWritten(ProjectRun& run, const std::string& path);

}  // namespace ostrand::cli
