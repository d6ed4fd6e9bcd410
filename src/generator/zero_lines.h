// The late lines of the zero subroutines, and the program as a file.
#pragma once

#include <string>

#include "generator/program_lines.h"
#include "model/store.h"
#include "text/row.h"

namespace ostrand {

// The zero subroutines repeat measurement statements that the scan makes only later. So their lines
// are reserved when the subroutines are written, and the statements kept when the scan is.
struct ZeroLines {
  static constexpr int kMuxStatements = 14;
  // Statements as the scan has them; empty for none.
  Row<std::string, 1, kBlocks> VZeroText, BZeroText;
  Row<Row<std::string, 1, kMuxStatements>, 1, kBlocks> AZeroText;
  // Positions of the reserved lines; 0 for none.
  Row<int, 1, kBlocks> VZeroLine, BZeroLine, AZeroLine;
};

// The bytes of the program: the lines in their order, reserved lines replaced by the statements
// kept for them.
std::string ProgramBytes(const ProgramLines& lines, const ZeroLines& zero,
                         const ProjectStore& store);

}  // namespace ostrand
