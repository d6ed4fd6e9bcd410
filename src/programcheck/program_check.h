// A check of a logger program's structure: what can be seen wrong in the text of a program without
// the logger's own compiler.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ostrand {

enum class ProgramFault {
  kLine,          // a line end, a control character, an open quote or parenthesis
  kBlock,         // a block that is not closed, closed twice or crossed with another
  kUndeclared,    // a name that nothing declares
  kDeclaredTwice  // a variable, table or subroutine that is declared again
};

struct ProgramFinding {
  ProgramFault fault;
  int line;          // from 1
  std::string name;  // the name in question as the program spells it; empty without one
  std::string text;  // for the user, without the line number
};

// Checks a program: every line ends in CR LF and holds no control character; every block is closed
// in order; every name is declared, with tables where a table is called and subroutines where a
// subroutine is. Names are compared without regard to upper and lower case; where in the program a
// name is declared does not matter. A name that is missing is told once, at its first use.
// The findings come in the order of the lines; a sound program gives none.
std::vector<ProgramFinding> CheckProgram(std::string_view program);

}  // namespace ostrand
