#include "setup/flag_code.h"

#include "setup/state_rows.h"
#include "text/number.h"

namespace ostrand {

std::string FlagCode(const ProjectStore& store, int number) {
  const FlagControl& control = store.Flags[number];
  const bool first = control.FlagOn != kFalse;
  const std::string assign = "Flag(" + NumberText(number) + ") = ";
  return TwoStateCode(control.State[1].FlagExpression, assign + (first ? "True" : "False"),
                      control.State[2].FlagExpression, assign + (first ? "False" : "True"));
}

}  // namespace ostrand
