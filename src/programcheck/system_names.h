// What the generator itself writes in a way that the check would report. The program is prescribed
// line by line, so no project can avoid these.
#pragma once

#include "programcheck/statement.h"

namespace ostrand {

// Whether the generator uses the name in such a statement without declaring it. In any other
// statement the name is the user's.
bool IsSystemUse(const Token& name, Tokens statement);

// Whether the statement after Alias names the multiplier or offset of a value without a name of
// its own: MVBlk1(2) = M$VBlk1(2).
bool IsScalingAlias(Tokens rest);

}  // namespace ostrand
