// Checks a logger program's structure: faults that are visible in its text without the logger's
// compiler.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ostrand {

enum class ProgramFault {
  kLine,          // a line end, a control character, an open quote or parenthesis
  kBlock,         // a block that is not closed, closed twice or crossed with another
  kUndeclared,    // a name without a declaration
  kDeclaredTwice  // a variable, table or subroutine declared again
};

struct ProgramFinding {
  ProgramFault fault;
  int line;          // from 1
  std::string name;  // the name at fault as spelled in the program; empty if there is none
  std::string text;  // for the user, without the line number
};

// Checks a program: every line ends in CR LF and contains no control character; every block is
// closed in order; every name is declared, called tables as tables and called subroutines as
// subroutines. Names are case-insensitive and may be declared anywhere in the program. An
// undeclared name is reported once, at its first use. What the generator itself writes undeclared
// is left out. The findings are in the order of the lines; a correct program has none.
std::vector<ProgramFinding> CheckProgram(std::string_view program);

}  // namespace ostrand
