#include "setup/flag_code.h"

#include "text/number.h"
#include "verify/box.h"

namespace ostrand {

std::string FlagCode(const ProjectStore& store, int number) {
  const FlagControl& control = store.Flags[number];
  const bool first = control.FlagOn != kFalse;
  const std::string assign = "    Flag(" + NumberText(number) + ") = ";
  return JoinLines({"If " + control.State[1].FlagExpression + " Then",
                    assign + (first ? "True" : "False"),
                    "ElseIf " + control.State[2].FlagExpression + " Then",
                    assign + (first ? "False" : "True"), "End If"});
}

}  // namespace ostrand
