// Everything that is worth a look before a project or a program is used: what the checks before a
// save find, and what else will surprise.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "generator/preview.h"
#include "lint/codes.h"
#include "projectfile/read_report.h"
#include "verify/check_context.h"

namespace ostrand {

struct LintFinding {
  std::string_view code;
  Severity severity = Severity::kNotice;
  std::string_view title = {};  // of a check's message box
  std::string text;             // one or more lines, separated by CR LF; in Windows-1252
  // Its place in the project file, as in Finding; empty if no key is at fault.
  std::string section = {};
  std::string key = {};
  // Of the file that was checked, from 1: a line that was not read, or a line of a program. 0 for
  // the line of the key.
  int line = 0;
  int programLine = 0;  // of the project's program; 0 for none
  bool againstSaving = false;
};
using LintFindings = std::vector<LintFinding>;

// What the checks before a save find, in their order.
LintFindings CheckFindings(const CheckContext& checks);

// What no check before a save reports, of a project whose measurement time is estimated.
LintFindings Notices(const ProjectStore& store, const ProgramPreview& program,
                     const ORVUS_GENFILE::ReadReport& skipped);

// Both, one after the other.
LintFindings AllFindings(const CheckContext& checks, const ProgramPreview& program,
                         const ORVUS_GENFILE::ReadReport& skipped);

// The structure of a program; all findings are errors.
LintFindings ProgramFindings(std::string_view program);

// The text in one line: the title and the lines of the finding, joined by blanks.
std::string OneLine(const LintFinding& finding);

}  // namespace ostrand
