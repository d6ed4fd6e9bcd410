// The commands that open a project and write its files.
#include <algorithm>

#include "commands.h"
#include "documents/makewire.h"
#include "documents/rich_text.h"
#include "documents/wire_rtf.h"
#include "generator/preview.h"
#include "json_documents.h"
#include "platform/guarded.h"
#include "platform/quiet_forms.h"
#include "project_run.h"
#include "projectfile/genfile.h"
#include "text/number.h"
#include "verify/check_context.h"
#include "verify/verify_before_save.h"

namespace ostrand::cli {
namespace {

// What the checks found, in short: "2 findings, 1 prevents saving".
std::string countText(const Findings& findings) {
  const auto preventing = std::count_if(findings.begin(), findings.end(),
                                        [](const Finding& found) { return found.againstSaving; });
  std::string text = NumberText(static_cast<int>(findings.size()));
  text += findings.size() == 1 ? " finding" : " findings";
  if (preventing == 0) return text;
  text += ", " + NumberText(static_cast<int>(preventing));
  return text + (preventing == 1 ? " prevents saving" : " prevent saving");
}

// Whether the program may be made; reports that the checks found something.
bool mayGenerate(const ProjectRun& run, Ostrand& session, std::string_view file) {
  platform::QuietForms quiet;  // a check that fails is reported by "check"
  const CheckContext usual = session.Checks();
  const Findings findings =
      CheckAll({usual.store, quiet, usual.WarningMessageMask, usual.calcVarRefs});
  if (findings.empty()) return true;
  const bool refused =
      run.line.checked && (run.line.warningsAsErrors ||
                           std::any_of(findings.begin(), findings.end(),
                                       [](const Finding& found) { return found.againstSaving; }));
  if (refused || !run.line.quiet) {
    ReportError(std::string(file) + (refused ? ": not generated: " : ": warning: ") +
                countText(findings) + "; shown by: ostrand check " + std::string(file));
  }
  return !refused;
}

bool generate(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file) || !mayGenerate(run, session, file)) return false;
  const std::string base = OutputBase(run, session);
  return NotYetWritten(run, base + ".VKP") && session.UnderLock(base, [&] {
    return session.WriteProgram(base) && ReportWritten(run, base + ".VKP") &&
           session.WriteTableDescription(base) && ReportWritten(run, base + ".VKD") &&
           session.WriteWiringDiagram(base) && ReportWritten(run, base + ".VKW");
  });
}

bool wiring(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file)) return false;
  if (run.line.format == Format::kJson) {
    run.pieces.push_back(WiringJson(file, session, session.Preview(session.Store()).channels));
    return true;
  }
  const std::string diagram = session.WiringText();
  return Print(run.line.rtf ? ConvertWireDiagToRTF(diagram)
                            : platform::TerminalText(WiringUtf8(diagram)));
}

bool summary(ProjectRun& run, Ostrand& session, std::string_view file) {
  if (!OpenProject(session, file)) return false;
  if (run.line.format == Format::kJson) {
    run.pieces.push_back(SummaryJson(file, session));
    return true;
  }
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

ExitCode Wiring(const CommandLine& line) {
  return line.format == Format::kJson ? PrintArray(line, wiring) : ForEachProject(line, wiring);
}

ExitCode Summary(const CommandLine& line) {
  return line.format == Format::kJson ? PrintArray(line, summary) : ForEachProject(line, summary);
}

ExitCode Resave(const CommandLine& line) { return ForEachProject(line, resave); }

ExitCode StartNew(const CommandLine& line) {
  if (line.words.front() == "-") return WrongUsage("new takes a file, not standard input", "new");
  return ForEachProject(line, startNew);
}

ExitCode Recover(const CommandLine& line) { return ForEachProject(line, recoverProject); }

}  // namespace ostrand::cli
