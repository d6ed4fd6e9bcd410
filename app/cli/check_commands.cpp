// The commands that report what is worth a look in projects and programs.
#include "commands.h"
#include "find_files.h"
#include "finding_report.h"
#include "generator/preview.h"
#include "json_documents.h"
#include "project_run.h"

namespace ostrand::cli {
namespace {

FileFindings findingsOf(ProjectRun& run, Ostrand& session, std::string_view file) {
  FileFindings found;
  found.file = file;
  found.opened = OpenProject(session, file);
  if (!found.opened) return found;
  found.findings =
      AllFindings(session.Checks(), session.Preview(session.Store()), session.SkippedLines());
  auto bytes = run.files.Read(session.CurrentFileName());
  if (bytes) found.bytes = std::move(bytes.Value());
  return found;
}

// What is passed on for the report of all files: an object for each, or its results.
void keepPieces(std::vector<std::string>& pieces, const FileFindings& found, Format format) {
  if (format == Format::kJson) pieces.push_back(FindingsJson(found));
  if (format != Format::kSarif) return;
  for (std::string& result : FindingsSarif(found)) pieces.push_back(std::move(result));
}

bool printText(const CommandLine& line, const FileFindings& found) {
  if (line.format != Format::kText || !found.opened) return true;
  std::string text = FindingsText(found);
  if (!line.quiet) {
    const std::string count = CountText(found.findings);
    text += platform::TerminalName(found.file) + ": " +
            (count.empty() ? "all checks passed" : count) + "\n";
  }
  return Print(text);
}

bool report(const CommandLine& line, std::vector<std::string>& pieces, FileFindings& found) {
  Select(found.findings, line);
  keepPieces(pieces, found, line.format);
  return printText(line, found) && found.opened && !HasErrors(found.findings);
}

bool check(ProjectRun& run, Ostrand& session, std::string_view file) {
  FileFindings found = findingsOf(run, session, file);
  return report(run.line, run.pieces, found);
}

ExitCode printAll(const CommandLine& line, const RunResult& result) {
  if (line.format == Format::kText) return result.code;
  const std::string text =
      line.format == Format::kJson ? JsonArray(result.pieces) : SarifReport(result.pieces);
  return Print(text) ? result.code : kFault;
}

FileFindings programFindings(const std::string& file) {
  platform::PosixFileSystem files;
  FileFindings found;
  found.file = file == "-" ? "standard input" : file;
  found.opened = false;
  const auto bytes = ReadFileOrInput(files, file);
  if (!bytes) {
    ReportError(bytes.ErrorText());
  } else if (bytes.Value().starts_with("[GEN VERSION]")) {
    ReportError(found.file + ": is a project, not a program; shown by: ostrand check " + file);
  } else {
    found.opened = true;
    found.findings = ProgramFindings(bytes.Value());
  }
  return found;
}

}  // namespace

ExitCode Check(const CommandLine& line) { return printAll(line, RunProjects(line, check)); }

ExitCode Lint(const CommandLine& line) {
  const FoundFiles files = FilesOf(line, line.words, ".VKP");
  RunResult result;
  if (!files.complete) result.code = kFault;
  for (const std::string& file : files.files) {
    FileFindings found = programFindings(file);
    if (!report(line, result.pieces, found)) result.code = kFault;
  }
  return printAll(line, result);
}

}  // namespace ostrand::cli
