// The lines of a project file that a reading skipped.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ostrand::ORVUS_GENFILE {

// A line that the next save drops. Lines that the format never keeps, and old keys that are read as
// others, are not among them.
struct SkippedLine {
  int number = 0;  // from 1
  std::string text;
  std::string_view why;
};

struct ReadReport {
  static constexpr int kMaxShown = 5;
  int skipped = 0;
  std::vector<SkippedLine> first;  // up to kMaxShown of them
  bool noSection = false;          // the file has no section of a project
};

// "3 lines were not read", then one line for each that is shown; lines end in CR LF except the
// last. Bytes of the file's code page.
std::string SkippedText(const ReadReport& report);

// "line 12: Operator=A [lab]: the reason", a long line cut.
std::string SkippedLineText(const SkippedLine& line);

}  // namespace ostrand::ORVUS_GENFILE
