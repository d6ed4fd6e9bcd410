#include "lint/findings.h"

#include <iterator>
#include <utility>

#include "programcheck/program_check.h"
#include "text/line_diff.h"
#include "text/strings.h"
#include "verify/verify_before_save.h"

namespace ostrand {
namespace {

std::string_view codeOf(ProgramFault fault) {
  switch (fault) {
    case ProgramFault::kLine:
      return kCodeProgramLine;
    case ProgramFault::kBlock:
      return kCodeProgramBlock;
    case ProgramFault::kUndeclared:
      return kCodeUndeclared;
    case ProgramFault::kDeclaredTwice:
      return kCodeDeclaredTwice;
  }
  return {};
}

}  // namespace

LintFindings CheckFindings(const CheckContext& checks) {
  LintFindings findings;
  for (Finding& found : CheckAll(checks)) {
    LintFinding finding;
    finding.code = CodeOfTitle(found.title);
    finding.severity = found.againstSaving ? Severity::kError : Severity::kWarning;
    finding.againstSaving = found.againstSaving;
    finding.title = found.title;
    finding.text = std::move(found.text);
    finding.section = found.section;
    finding.key = std::move(found.key);
    findings.push_back(std::move(finding));
  }
  return findings;
}

LintFindings AllFindings(const CheckContext& checks, const ProgramPreview& program,
                         const ORVUS_GENFILE::ReadReport& skipped) {
  LintFindings findings = CheckFindings(checks);
  LintFindings notices = Notices(checks.store, program, skipped);
  std::move(notices.begin(), notices.end(), std::back_inserter(findings));
  return findings;
}

LintFindings ProgramFindings(std::string_view program) {
  LintFindings findings;
  for (ProgramFinding& found : CheckProgram(program)) {
    LintFinding finding;
    finding.code = codeOf(found.fault);
    finding.severity = Severity::kError;
    finding.text = std::move(found.text);
    finding.key = std::move(found.name);
    finding.line = found.line;
    findings.push_back(std::move(finding));
  }
  return findings;
}

std::string OneLine(const LintFinding& finding) {
  // One title has half a pair of quotes, and a blank before it.
  std::string text(Trim(finding.title));
  if (text.ends_with('"')) text.pop_back();
  if (!text.empty()) text += ":";
  for (const std::string_view line : LinesOf(finding.text)) {
    if (Trim(line).empty()) continue;
    if (!text.empty()) text += " ";
    text += Trim(line);
  }
  return text;
}

}  // namespace ostrand
