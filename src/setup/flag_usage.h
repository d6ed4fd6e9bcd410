// Flags that screens offer, and who else in the project uses them.
#pragma once

#include <string>
#include <vector>

#include "model/store.h"
#include "platform/forms.h"
#include "setup/controls/choice.h"

namespace ostrand {

// Whether any table has the flag, from 1, as its write, file mark or full flag. A table that is
// off counts as well.
bool TablesUseFlag(const ProjectStore& store, int flagNumber);

// Fills a list of zero flags: "None", then the flags by their numbers, so that the place is the
// number. Flags that tables use are disabled.
void SetZeroFlagItems(Choice& list, const ProjectStore& store);

// A flag that the flags screen drives got one more user: the user is told who sets it.
void CheckFlagUsage(platform::Forms& forms, const ProjectStore& store, int flagNumber);

}  // namespace ostrand
