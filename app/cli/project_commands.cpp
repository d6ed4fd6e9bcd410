// The commands that open a project and write its files.
#include "commands.h"
#include "documents/makewire.h"
#include "documents/wire_rtf.h"
#include "project_run.h"

namespace ostrand::cli {
namespace {

bool generate(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file)) return false;
  const std::string base = OutputBase(run, session);
  return NotYetWritten(run, base + ".VKP") && session.WriteProgram(base) &&
         TellWritten(run, base + ".VKP") && session.WriteTableDescription(base) &&
         TellWritten(run, base + ".VKD") && session.WriteWiringDiagram(base) &&
         TellWritten(run, base + ".VKW");
}

bool wiring(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file)) return false;
  const std::string diagram = session.WiringText();
  return Say(run.line.rtf ? ConvertWireDiagToRTF(diagram)
                          : platform::TerminalText(WiringUtf8(diagram)));
}

bool summary(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file)) return false;
  const RtfText& box = session.SummaryBox();
  return Say(run.line.rtf ? box.Rtf() : platform::TerminalText(box.Text()));
}

bool resave(ProjectRun& run, Ostrand& session, std::string_view file) {
  return OpenProject(session, file) && WriteProject(run, session);
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
  return WriteProject(run, session);
}

}  // namespace

ExitCode Generate(const CommandLine& line) { return ForEachProject(line, generate); }

ExitCode Wiring(const CommandLine& line) { return ForEachProject(line, wiring); }

ExitCode Summary(const CommandLine& line) { return ForEachProject(line, summary); }

ExitCode Resave(const CommandLine& line) { return ForEachProject(line, resave); }

ExitCode StartNew(const CommandLine& line) { return ForEachProject(line, startNew); }

}  // namespace ostrand::cli
