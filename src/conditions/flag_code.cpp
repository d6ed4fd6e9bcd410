#include "conditions/flag_code.h"

#include "platform/box.h"
#include "text/number.h"

namespace ostrand {

std::string TwoStateCode(std::string_view condition1, std::string_view statement1,
                         std::string_view condition2, std::string_view statement2) {
  constexpr std::string_view kIndent = "    ";
  const auto join = [](std::string_view head, std::string_view text, std::string_view tail) {
    return std::string(head).append(text).append(tail);
  };
  return JoinLines({join("If ", condition1, " Then"), join(kIndent, statement1, {}),
                    join("ElseIf ", condition2, " Then"), join(kIndent, statement2, {}), "End If"});
}

std::string FlagCode(const ProjectStore& store, int number) {
  const FlagControl& control = store.Flags[number];
  const bool first = control.FlagOn != kFalse;
  const std::string assign = "Flag(" + NumberText(number) + ") = ";
  return TwoStateCode(control.State[1].FlagExpression, assign + (first ? "True" : "False"),
                      control.State[2].FlagExpression, assign + (first ? "False" : "True"));
}

}  // namespace ostrand
