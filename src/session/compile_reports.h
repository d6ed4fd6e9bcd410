// The compiler's reports, read from its two text files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "model/store.h"

namespace ostrand {

// Report on the compiler's version.
struct VersionReport {
  bool newCompiler = false;  // of 06-06-07 or later: has the new form of arguments
  std::string version;
  std::string dateCode;
};
VersionReport ReadVersionReport(std::string_view report);

// The result of a compile, from a report in the form of ReportText.
struct CompileVerdict {
  bool compiled = false;
  std::string message;  // for the user; lines end in CR LF
};
CompileVerdict ReadCompileVerdict(std::string_view report, bool newCompiler);

// Maximum size of a report to read.
inline constexpr std::size_t kMaxReportBytes = std::size_t{4} << 20;

// The text of a report with all line ends (CR, LF or both) as CR LF.
std::string ReportText(std::string_view bytes);

// A text shortened for a box: one of more than 64 KB becomes its first and last lines, with the
// number of lines and bytes left out between them.
std::string ShownInBox(std::string_view text);

// Numbers of the program lines with statements of multiplexer blocks, each followed by a blank.
using MuxLines = Row<std::string, 1, kBlocks>;

// Stores the times of the report's first scan, in microseconds, in place of all previous times of
// battery, panel and blocks.
void StoreMeasuredTimes(ProjectStore& store, std::string_view report, const MuxLines& muxLines);

}  // namespace ostrand
