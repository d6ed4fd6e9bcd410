// The commands for lists of CAN items.
#include "can/pick_list_report.h"
#include "commands.h"
#include "project_run.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::cli {
namespace {

ExitCode listItems(platform::FileSystem& files, const std::string& path) {
  const Result<CanList> list = ReadCanList(files, path);
  if (!list) {
    ReportError(list.ErrorText());
    return kFault;
  }
  return Print(platform::TerminalText(CanListListing(platform::TerminalName(path), list.Value())))
             ? kDone
             : kFault;
}

ExitCode checkItems(platform::FileSystem& files, const std::string& path) {
  const std::vector<CanListFinding> findings = CheckCanList(files, path);
  std::string text;
  ExitCode result = kDone;
  for (const CanListFinding& finding : findings) {
    std::string row = path + ": ";
    if (finding.Line > 0) row += "line " + NumberText(finding.Line) + ": ";
    text += platform::TerminalLines(row + finding.Text) + "\n";
    if (finding.Wrong) result = kFault;
  }
  if (findings.empty()) text = platform::TerminalName(path) + ": all items can be picked\n";
  return Print(platform::TerminalText(text)) ? result : kFault;
}

}  // namespace

ExitCode LookAtCanList(const CommandLine& line) {
  platform::PosixFileSystem files;
  const std::string path(line.words[1]);
  if (SameText(line.words[0], "list")) return listItems(files, path);
  if (SameText(line.words[0], "check")) return checkItems(files, path);
  return WrongUsage("expected list or check, not " + std::string(line.words[0]), "can");
}

}  // namespace ostrand::cli
