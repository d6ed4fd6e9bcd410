// Findings as text, JSON and SARIF.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "command_line.h"
#include "lint/findings.h"

namespace ostrand::cli {

// The findings of one file.
struct FileFindings {
  std::string file;  // as given
  bool opened = true;
  LintFindings findings;
  std::string bytes = {};  // of the project file, for its line numbers; empty for a program
};

// Leaves out what the line does not ask for, and makes errors of warnings if it says so.
void Select(LintFindings& findings, const CommandLine& line);

bool HasErrors(const LintFindings& findings);

// "2 errors, 1 warning"; empty for none.
std::string CountText(const LintFindings& findings);

// A line for each finding, "pump.VKG:57: error: DUPLICATION FOUND: ... [duplicate-name]".
std::string FindingsText(const FileFindings& found);
// An object for the file.
std::string FindingsJson(const FileFindings& found);
// A SARIF result for each finding; an empty text for a file that could not be opened.
std::vector<std::string> FindingsSarif(const FileFindings& found);

// The report of all files from their results.
std::string SarifReport(std::vector<std::string> results);

}  // namespace ostrand::cli
