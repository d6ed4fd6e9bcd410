// Projects handled one by one, each in a separate session.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "command_line.h"
#include "output_files.h"
#include "platform/posix/posix_machine.h"
#include "platform/posix/terminal_forms.h"
#include "session/ostrand.h"

namespace ostrand::cli {

// The context of a command, and what it has done so far.
struct ProjectRun {
  const CommandLine& line;
  OutputFiles& files;
  platform::TerminalForms& forms;
  std::vector<std::string> written = {};  // names as requested
  std::vector<std::string> pieces = {};   // what the command puts together for all files
};

// Handles one file; false on a fault. A message box that was shown and not taken from the forms
// counts as a fault.
using ProjectCommand = bool (*)(ProjectRun& run, Ostrand& session, std::string_view file);

// The machine as a command line sees it.
struct CliHost : platform::PosixMachineOn<OutputFiles> {
  CliHost(const CommandLine& line, std::optional<std::int64_t> epoch)
      : PosixMachineOn(line.syncing, epoch, platform::UserSettingsPath(), line.OutputsAre(),
                       line.force),
        forms(line.answers) {}

  platform::TerminalForms forms;
};

// The machine for a line. Null, with the exit code in `refused`, when the output folder or the
// clock's setting is invalid, which has been reported then.
std::unique_ptr<CliHost> HostOf(const CommandLine& line, ExitCode& refused);

struct RunResult {
  ExitCode code = kDone;
  std::vector<std::string> pieces;  // of all files, in their order
};

// Runs the command for every file of the line, also after a fault: one after the other, or by
// several processes. Files come with their folders searched (-r); "-" is standard input.
RunResult RunProjects(const CommandLine& line, ProjectCommand command);
inline ExitCode ForEachProject(const CommandLine& line, ProjectCommand command) {
  return RunProjects(line, command).code;
}

// Runs it for the first word alone.
ExitCode ForProject(const CommandLine& line, ProjectCommand command);

// Prints the pieces of all files as the elements of a JSON array. They are complete texts.
ExitCode PrintArray(const CommandLine& line, ProjectCommand command);

// False when the file could not be opened, which has been reported then.
bool OpenProject(Ostrand& session, std::string_view file);

// After a failed OpenProject: reports what an interrupted save has left in place of the project.
void ReportInterrupted(const Ostrand& session);

// Reports that another program has changed the project, so that it was not saved.
void ReportChanged(const std::string& path);

// Uses the compiler of the line, if any, instead of that of the settings, which opening a project
// loads.
void UseCompiler(const ProjectRun& run, Ostrand& session);

// Writes the project file to its output folder.
bool WriteProject(ProjectRun& run, Ostrand& session);

// Reports in one line the lines that a save has dropped, if any, and where the old file is kept.
void WarnOfSkippedLines(const Ostrand& session, std::string_view file);

// Where the files of the session's project go, without extension.
std::string OutputBase(const ProjectRun& run, const Ostrand& session);

// Whether this run has not written `path` yet, in any case: two projects can have the same name.
// If it has, that has been reported.
bool NotYetWritten(const ProjectRun& run, const std::string& path);

// Notes and prints that `path` has been written, or was left alone.
bool ReportWritten(ProjectRun& run, const std::string& path);

}  // namespace ostrand::cli
