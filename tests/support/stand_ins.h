// The processes of the stand-in compiler.
#pragma once

namespace ostrand::testing {

// The number of running stand-ins started by this process or its children, marked by an environment
// variable. Other tests may run stand-ins at the same time.
int StandInsAlive();

}  // namespace ostrand::testing
