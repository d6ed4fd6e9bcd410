// What the logger's compiler reports, read from its two text files.
#pragma once

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

// What a compile came to.
struct CompileVerdict {
  bool compiled = false;
  std::string message;  // for the user; lines end in CR LF
};
CompileVerdict ReadCompileVerdict(std::string_view report, bool newCompiler);

// Program lines that hold the statements of the multiplexer blocks, each with a blank behind it.
using MuxLines = Row<std::string, 1, kBlocks>;

// Puts the times of the first scan of the report into the store, in microseconds, in place of all
// times of battery, panel and blocks that were there.
void StoreMeasuredTimes(ProjectStore& store, std::string_view report, const MuxLines& muxLines);

}  // namespace ostrand
