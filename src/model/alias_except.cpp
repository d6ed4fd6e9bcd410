#include "model/alias_except.h"

#include "text/number.h"

namespace ostrand {

int ExceptionsOf(const RepAlias& alias) {
  const std::string& text = alias.AliasExcept;
  if (text.size() == 1 && text[0] >= '0' && text[0] <= '7') return text[0] - '0';  // fast path
  const double value = Val(text);
  const bool known = value >= 0 && value <= 7 && value == static_cast<int>(value);
  return known ? static_cast<int>(value) : 0;
}

void MarkByHand(RepAlias& alias, int column, bool byHand) {
  const int before = ExceptionsOf(alias);
  const int after = byHand ? before | column : before & ~column;
  if (after != before) alias.AliasExcept = NumberText(after);
}

}  // namespace ostrand
