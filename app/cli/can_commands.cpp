// The commands for lists of CAN items.
#include <algorithm>

#include "can/pick_list_report.h"
#include "commands.h"
#include "json_documents.h"
#include "project_run.h"
#include "text/codepage.h"
#include "text/json.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::cli {
namespace {

ExitCode listItems(platform::FileSystem& files, const std::string& path, Format format) {
  const Result<CanList> list = ReadCanList(files, path);
  if (!list) {
    ReportError(list.ErrorText());
    return kFault;
  }
  if (format == Format::kJson) return Print(CanListJson(path, list.Value())) ? kDone : kFault;
  return Print(platform::TerminalText(CanListListing(platform::TerminalName(path), list.Value())))
             ? kDone
             : kFault;
}

std::string findingsText(const std::string& path, const std::vector<CanListFinding>& findings) {
  std::string text;
  for (const CanListFinding& finding : findings) {
    std::string row = path + ": ";
    if (finding.Line > 0) row += "line " + NumberText(finding.Line) + ": ";
    text += platform::TerminalLines(row + finding.Text) + "\n";
  }
  if (findings.empty()) text = platform::TerminalName(path) + ": all items are valid\n";
  return platform::TerminalText(text);
}

std::string findingsJson(const std::string& path, const std::vector<CanListFinding>& findings) {
  JsonWriter json;
  json.BeginObject().Key("file").Text(platform::Utf8Text(path)).Key("findings").BeginArray();
  for (const CanListFinding& finding : findings) {
    json.BeginObject(JsonWriter::Layout::kOneLine);
    json.Key("severity").Text(SeverityName(finding.Wrong ? Severity::kError : Severity::kWarning));
    json.Key("line").Number(finding.Line);
    json.Key("message").Text(Utf8FromWindows1252(finding.Text)).End();
  }
  return json.End().End().Take();
}

ExitCode checkItems(platform::FileSystem& files, const std::string& path, Format format) {
  const std::vector<CanListFinding> findings = CheckCanList(files, path);
  const bool wrong = std::any_of(findings.begin(), findings.end(),
                                 [](const CanListFinding& finding) { return finding.Wrong; });
  const bool printed =
      Print(format == Format::kJson ? findingsJson(path, findings) : findingsText(path, findings));
  return printed && !wrong ? kDone : kFault;
}

}  // namespace

ExitCode LookAtCanList(const CommandLine& line) {
  platform::PosixFileSystem files;
  const std::string path(line.words[1]);
  if (SameText(line.words[0], "list")) return listItems(files, path, line.format);
  if (SameText(line.words[0], "check")) return checkItems(files, path, line.format);
  return WrongUsage("expected list or check, not " + std::string(line.words[0]), "can");
}

}  // namespace ostrand::cli
