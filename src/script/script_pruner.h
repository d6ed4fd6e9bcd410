// Takes out of a script what it does not need.
#pragma once

#include <string>
#include <string_view>

#include "script/script_forms.h"
#include "session/ostrand.h"

namespace ostrand {

// A written script without the lines that make no difference: attempts that failed, edits undone
// later in the same screen, screens opened in vain. Each screen of the main row makes the same
// project as before; lines that belong together, an action with its answers, what it opens and what
// is expected of it, stay or go together. `lines` are in UTF-8, indented by two for each open
// screen, and start from the project that the session has. Returns `lines` themselves when they
// don't play. The session, whose forms are of `inner`, ends with the project that they make.
std::string PruneScript(const std::string& lines, Ostrand& session, ScriptForms& forms,
                        platform::Forms& inner);

}  // namespace ostrand
