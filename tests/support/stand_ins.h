// The processes of the stand-in compiler.
#pragma once

namespace ostrand::testing {

// How many processes of the stand-in run that this process has started, or those it started: they
// are marked by an environment variable. Other tests may have such processes at the same time.
int StandInsAlive();

}  // namespace ostrand::testing
