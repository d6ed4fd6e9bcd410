// Why a written script does not set a key.
#pragma once

#include <vector>

#include "script/script_writer.h"
#include "session/ostrand.h"

namespace ostrand {

// Fills in why the script that made the project of `made` does not set the keys as in `wanted`: by
// the control of each key, as both screens show it. Both sessions have the projects as before
// afterwards, but their screens are those of this routine.
void ExplainUnset(Ostrand& wanted, Ostrand& made, std::vector<UnsetKey>& unset);

}  // namespace ostrand
