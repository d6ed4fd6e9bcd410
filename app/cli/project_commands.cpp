// The commands that open a project and write its files.
#include "commands.h"
#include "documents/makewire.h"
#include "documents/rich_text.h"
#include "documents/wire_rtf.h"
#include "platform/guarded.h"
#include "project_run.h"
#include "projectfile/genfile.h"

namespace ostrand::cli {
namespace {

bool generate(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file)) return false;
  const std::string base = OutputBase(run, session);
  return NotYetWritten(run, base + ".VKP") && session.UnderLock(base, [&] {
    return session.WriteProgram(base) && ReportWritten(run, base + ".VKP") &&
           session.WriteTableDescription(base) && ReportWritten(run, base + ".VKD") &&
           session.WriteWiringDiagram(base) && ReportWritten(run, base + ".VKW");
  });
}

bool wiring(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file)) return false;
  const std::string diagram = session.WiringText();
  return Print(run.line.rtf ? ConvertWireDiagToRTF(diagram)
                            : platform::TerminalText(WiringUtf8(diagram)));
}

bool summary(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file)) return false;
  const StyledText& box = session.SummaryBox();
  return Print(run.line.rtf ? box.Rtf() : platform::TerminalText(box.Text()));
}

bool resave(ProjectRun& run, Ostrand& session, std::string_view file) {
  return OpenProject(session, file) && WriteProject(run, session);
}

bool isNamed(const Ostrand& session, std::string_view file) {
  if (session.BaseName().empty()) ReportError(std::string(file) + ": no file name");
  return !session.BaseName().empty();
}

// Whether a new project may be written to `path`.
bool mayStart(const ProjectRun& run, const std::string& path) {
  if (run.line.force) return true;
  if (run.files.Taken(path)) {
    ReportError(run.files.Find(path) + ": already exists; --force replaces it");
    return false;
  }
  const auto left = ORVUS_GENFILE::InterruptedSave(run.files, path);
  if (!left) return true;
  ReportError(*left + ": left by an interrupted save. To restore the project: ostrand " +
              "recover " + path + "; --force starts a new one");
  return false;
}

bool startNew(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!session.NewProject(file) || !isNamed(session, file)) return false;
  const std::string base = OutputBase(run, session);
  return session.UnderLock(
      base, [&] { return mayStart(run, session.CurrentFileName()) && WriteProject(run, session); });
}

bool recoverProject(ProjectRun& run, Ostrand& session, std::string_view file) {
  const bool named = Guarded(run.forms, "Ostrand.NameProject", [&] { session.NameProject(file); });
  if (!named || !isNamed(session, file)) return false;
  const std::string& path = session.CurrentFileName();
  return session.UnderLock(OutputBase(run, session), [&] {
    const auto from = ORVUS_GENFILE::RecoverProjectFile(run.files, path);
    if (!from) ReportError(from.ErrorText());
    return from &&
           Print(platform::TerminalText("recovered " + path + " from " + from.Value() + "\n"));
  });
}

}  // namespace

ExitCode Generate(const CommandLine& line) { return ForEachProject(line, generate); }

ExitCode Wiring(const CommandLine& line) { return ForEachProject(line, wiring); }

ExitCode Summary(const CommandLine& line) { return ForEachProject(line, summary); }

ExitCode Resave(const CommandLine& line) { return ForEachProject(line, resave); }

ExitCode StartNew(const CommandLine& line) { return ForEachProject(line, startNew); }

ExitCode Recover(const CommandLine& line) { return ForEachProject(line, recoverProject); }

}  // namespace ostrand::cli
