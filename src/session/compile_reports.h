// What the logger's compiler reports, read from its two text files.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "model/store.h"

namespace ostrand {

// Report of the compiler's own version.
struct VersionReport {
  bool newCompiler = false;  // of 06-06-07 or later: takes its arguments in the new form
  std::string version;
  std::string dateCode;
};
VersionReport ReadVersionReport(std::string_view report);

// The result of a compile, by its report in the form of ReportText.
struct CompileVerdict {
  bool compiled = false;
  std::string message;  // for the user; lines end in CR LF
};
CompileVerdict ReadCompileVerdict(std::string_view report, bool newCompiler);

// The largest report that is read.
inline constexpr std::size_t kMaxReportBytes = std::size_t{4} << 20;

// The text of a report with all its line ends, CR, LF or both, as CR LF.
std::string ReportText(std::string_view bytes);

// A text as a box shows it: one of more than 64 KB is its first and last lines, with the number of
// lines and bytes left out between them.
std::string ShownInBox(std::string_view text);

// Numbers of the program lines with the statements of the multiplexer blocks, each followed by a
// blank.
using MuxLines = Row<std::string, 1, kBlocks>;

// Puts the times of the first scan of the report into the store, in microseconds, in place of all
// times of battery, panel and blocks that were there.
void StoreMeasuredTimes(ProjectStore& store, std::string_view report, const MuxLines& muxLines);

}  // namespace ostrand
