#include "project_run.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "platform/paths.h"
#include "platform/posix/user_folders.h"
#include "projectfile/read_report.h"
#include "session/settings.h"
#include "text/codepage.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::cli {
namespace {

// Reads the moment of SOURCE_DATE_EPOCH, if it is set; false when it is invalid.
bool readEpoch(std::optional<std::int64_t>& epoch) {
  const char* fixed = std::getenv("SOURCE_DATE_EPOCH");
  if (fixed == nullptr || *fixed == '\0') return true;
  epoch = platform::PosixClock::EpochFromText(fixed);
  if (!epoch) {
    ReportError("SOURCE_DATE_EPOCH: \"" + std::string(fixed) + "\" is not a number of seconds");
  }
  return epoch.has_value();
}

}  // namespace

std::unique_ptr<CliHost> HostOf(const CommandLine& line, ExitCode& refused) {
  std::optional<std::int64_t> epoch;
  if (!readEpoch(epoch)) {
    refused = kWrongUsage;
    return nullptr;
  }
  auto host = std::make_unique<CliHost>(line, epoch);
  if (!line.outputFolder.empty() && !host->files.IsFolder(line.outputFolder)) {
    const std::string folder = line.outputFolder.substr(0, line.outputFolder.size() - 1);
    ReportError(folder + (host->files.Taken(folder) ? ": not a directory" : ": no such directory"));
    refused = kFault;
    host.reset();
  }
  return host;
}

bool OpenProject(Ostrand& session, std::string_view file) {
  bool cancelled = false;
  session.OpenFile(file, cancelled);
  if (cancelled) ReportInterrupted(session);
  return !cancelled;
}

void UseCompiler(const ProjectRun& run, Ostrand& session) {
  if (!run.line.compiler.empty()) session.UserSettings().CompilerPath(run.line.compiler);
}

bool WriteProject(ProjectRun& run, Ostrand& session) {
  const std::string base = OutputBase(run, session);
  const std::string path = base + ".VKG";
  if (!NotYetWritten(run, path)) return false;
  const bool written = session.WriteProjectFile(base);
  if (session.ChangedOutside()) ReportChanged(path);
  if (!written) return false;
  WarnOfSkippedLines(session, path);
  return ReportWritten(run, path);
}

void ReportChanged(const std::string& path) {
  ReportError(path +
              ": changed by another program since it was read; not saved, --force overwrites it");
}

void ReportInterrupted(const Ostrand& session) {
  const InterruptedProject& found = session.Interrupted();
  if (found.left.empty()) return;
  PrintHint(platform::TerminalText("An earlier save was interrupted: " + found.left +
                                   " holds the project. To restore it: ostrand recover " +
                                   found.project + "\n"));
}

void WarnOfSkippedLines(const Ostrand& session, std::string_view file) {
  const ORVUS_GENFILE::ReadReport& skipped = session.SkippedLines();
  if (skipped.skipped == 0) return;
  std::string text(file);
  text.append(": warning: ").append(NumberText(skipped.skipped));
  text += skipped.skipped == 1 ? " line was not read and is not written"
                               : " lines were not read and are not written";
  text += " (" + Utf8FromWindows1252(SkippedLineText(skipped.first.front())) + ")";
  if (!session.OldFileKept().empty()) {
    text += "; the old file is kept as " + session.OldFileKept();
  }
  ReportError(text);
}

std::string OutputBase(const ProjectRun& run, const Ostrand& session) {
  const platform::SplitPath parts = platform::Split(session.CurrentFileName());
  const std::string& folder = run.line.outputFolder.empty() ? parts.folder : run.line.outputFolder;
  return folder + std::string(Ostrand::WithoutExtension(parts.title));
}

bool NotYetWritten(const ProjectRun& run, const std::string& path) {
  const bool taken = std::any_of(run.written.begin(), run.written.end(),
                                 [&](const std::string& name) { return SameText(name, path); });
  if (!taken) return true;
  ReportError(path + ": already written in this run; not overwritten");
  return false;
}

bool ReportWritten(ProjectRun& run, const std::string& path) {
  run.written.push_back(path);
  if (run.line.quiet || run.line.OutputsAre() != Outputs::kWritten) return true;
  return Print((run.files.LeftAlone(path) ? "unchanged " : "wrote ") +
               platform::TerminalName(run.files.Find(path)) + "\n");
}

}  // namespace ostrand::cli
