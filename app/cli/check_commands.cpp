// The command that reports what the checks find.
#include <algorithm>

#include "commands.h"
#include "project_run.h"
#include "projectfile/read_report.h"
#include "text/codepage.h"
#include "text/json.h"
#include "text/number.h"
#include "verify/check_context.h"
#include "verify/verify_before_save.h"

namespace ostrand::cli {
namespace {

using ORVUS_GENFILE::ReadReport;
using ORVUS_GENFILE::SkippedText;

int countPreventing(const Findings& findings) {
  return static_cast<int>(
      std::count_if(findings.begin(), findings.end(),
                    [](const Finding& finding) { return finding.againstSaving; }));
}

// ---- For a reader -------------------------------------------------------------------------------

std::string placeOf(const Finding& finding) {
  std::string place(finding.section);
  if (!finding.key.empty()) place.append(" ").append(finding.key);
  return place;
}

constexpr std::string_view kNoticeTitle = "LINES NOT READ";

// Lines that were not read are a notice and not a finding: what was read may be in order.
std::string noticeText(std::string_view file, const ReadReport& skipped) {
  if (skipped.skipped == 0) return "";
  return platform::HeadAndLines(std::string(file).append(": ").append(kNoticeTitle) + ", notice",
                                Utf8FromWindows1252(SkippedText(skipped)));
}

std::string resultLine(const Findings& findings) {
  if (findings.empty()) return "all checks passed";
  const int preventing = countPreventing(findings);
  return NumberText(static_cast<int>(findings.size())) +
         (findings.size() == 1 ? " finding, " : " findings, ") +
         (preventing == 0 ? "none" : NumberText(preventing)) +
         (preventing > 1 ? " prevent saving" : " prevents saving");
}

std::string asText(std::string_view file, const Findings& findings, const ReadReport& skipped) {
  const std::string name = platform::TerminalName(file);
  std::string text = noticeText(name, skipped);
  for (const Finding& finding : findings) {
    std::string head = (name + ": ").append(finding.title);
    if (finding.againstSaving) head += ", prevents saving";
    std::string lines = Utf8FromWindows1252(finding.text);
    if (const std::string place = placeOf(finding); !place.empty()) lines += "\r\n" + place;
    text += platform::HeadAndLines(head, lines);
  }
  text.append(name).append(": ").append(resultLine(findings));
  return platform::TerminalText(text + (skipped.skipped > 0 ? ", 1 notice\n" : "\n"));
}

// ---- For a program ------------------------------------------------------------------------------

std::string asJson(const Finding& finding) {
  return "{\"title\": " + JsonString(finding.title) +
         ", \"text\": " + JsonString(Utf8FromWindows1252(finding.text)) +
         ", \"section\": " + JsonString(finding.section) + ", \"key\": " + JsonString(finding.key) +
         ", \"againstSaving\": " + (finding.againstSaving ? "true" : "false") + "}";
}

std::string asJson(std::string_view file, bool opened, const Findings& findings,
                   const ReadReport& skipped) {
  std::string text = "{\"file\": " + JsonString(platform::Utf8Text(file)) +
                     ", \"opened\": " + (opened ? "true" : "false");
  if (skipped.skipped > 0) {
    text += ", \"notices\": [{\"title\": " + JsonString(kNoticeTitle) +
            ", \"text\": " + JsonString(Utf8FromWindows1252(SkippedText(skipped))) + "}]";
  }
  text += ", \"findings\": [";
  for (const Finding& finding : findings) {
    text += (&finding == &findings.front() ? "\n  " : ",\n  ") + asJson(finding);
  }
  return text + (findings.empty() ? "]}" : "\n]}");
}

// ---- The command --------------------------------------------------------------------------------

bool check(ProjectRun& run, Ostrand& session, std::string_view file) {
  const bool opened = OpenProject(session, file);
  const Findings findings = opened ? CheckAll(session.Checks()) : Findings();
  const ReadReport skipped = opened ? session.SkippedLines() : ReadReport();
  bool printed = true;
  if (run.line.json) {
    printed = Print((run.handled == 0 ? "" : ",\n") + asJson(file, opened, findings, skipped));
  } else if (opened) {
    printed = Print(asText(file, findings, skipped));
  }
  return printed && opened && countPreventing(findings) == 0;
}

}  // namespace

ExitCode Check(const CommandLine& line) {
  if (!line.json) return ForEachProject(line, check);
  if (!Print("[")) return kFault;
  const ExitCode result = ForEachProject(line, check);
  return Print("]\n") ? result : kFault;
}

}  // namespace ostrand::cli
