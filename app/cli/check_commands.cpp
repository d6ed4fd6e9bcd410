// The command that reports what the checks find.
#include <algorithm>

#include "commands.h"
#include "project_run.h"
#include "projectfile/read_report.h"
#include "text/codepage.h"
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

// The control character at the head of a text in UTF-8, of one byte or of two; -1 for any other.
int controlAt(std::string_view utf8) {
  const auto first = static_cast<unsigned char>(utf8.front());
  if (first < 0x20 || first == 0x7F) return first;
  const int second = utf8.size() > 1 ? static_cast<unsigned char>(utf8[1]) : 0;
  return first == 0xC2 && second >= 0x80 && second < 0xA0 ? second : -1;
}

// A JSON string of a text in UTF-8; lines are separated by LF.
std::string quoted(std::string_view utf8) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string result = "\"";
  for (std::size_t at = 0; at < utf8.size(); ++at) {
    const auto byte = static_cast<unsigned char>(utf8[at]);
    if (utf8.substr(at).starts_with("\r\n")) continue;
    if (byte == '"' || byte == '\\') {
      result.append("\\").append(1, utf8[at]);
    } else if (byte == '\n') {
      result += "\\n";
    } else if (const int control = controlAt(utf8.substr(at)); control >= 0) {
      const auto number = static_cast<std::size_t>(control);
      result.append("\\u00").append(1, kDigits[number / 16]).append(1, kDigits[number % 16]);
      if (control >= 0x80) ++at;
    } else {
      result += utf8[at];
    }
  }
  return result + "\"";
}

std::string asJson(const Finding& finding) {
  return "{\"title\": " + quoted(finding.title) +
         ", \"text\": " + quoted(Utf8FromWindows1252(finding.text)) +
         ", \"section\": " + quoted(finding.section) + ", \"key\": " + quoted(finding.key) +
         ", \"againstSaving\": " + (finding.againstSaving ? "true" : "false") + "}";
}

std::string asJson(std::string_view file, bool opened, const Findings& findings,
                   const ReadReport& skipped) {
  std::string text = "{\"file\": " + quoted(platform::Utf8Text(file)) +
                     ", \"opened\": " + (opened ? "true" : "false");
  if (skipped.skipped > 0) {
    text += ", \"notices\": [{\"title\": " + quoted(kNoticeTitle) +
            ", \"text\": " + quoted(Utf8FromWindows1252(SkippedText(skipped))) + "}]";
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
