// The commands that open a project and write its files.
#include "commands.h"
#include "project_run.h"

namespace ostrand::cli {
namespace {

bool writeProject(ProjectRun& run, Ostrand& session) {
  const std::string base = OutputBase(run, session);
  return NotYetWritten(run, base + ".VKG") && session.WriteProjectFile(base) &&
         TellWritten(run, base + ".VKG");
}

bool generate(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file)) return false;
  const std::string base = OutputBase(run, session);
  return NotYetWritten(run, base + ".VKP") && session.WriteProgram(base) &&
         TellWritten(run, base + ".VKP");
}

bool resave(ProjectRun& run, Ostrand& session, std::string_view file) {
  return OpenProject(session, file) && writeProject(run, session);
}

bool startNew(ProjectRun& run, Ostrand& session, std::string_view file) {
  session.NameProject(file);
  if (session.BaseName().empty()) {
    Complain(std::string(file) + " names no file");
    return false;
  }
  if (!run.line.force && run.files.Taken(session.CurrentFileName())) {
    Complain(run.files.Find(session.CurrentFileName()) + " exists already; --force replaces it");
    return false;
  }
  return writeProject(run, session);
}

}  // namespace

ExitCode Generate(const CommandLine& line) { return ForEachProject(line, generate); }

ExitCode Resave(const CommandLine& line) { return ForEachProject(line, resave); }

ExitCode StartNew(const CommandLine& line) { return ForEachProject(line, startNew); }

}  // namespace ostrand::cli
