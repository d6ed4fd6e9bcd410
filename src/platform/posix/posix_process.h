// Child processes.
#pragma once

#include "platform/process.h"

namespace ostrand::platform {

// Starts each program in a separate process group, by `words`. Its end reaches what has left the
// group too, on a system that hands orphans to this process (Linux): all children of this process
// that were not there before and are not in its group. While an InterruptGuard has noted a signal
// a program counts as ended, and is.
class PosixProcesses : public Processes {
 public:
  Result<std::unique_ptr<Process>> Start(const ProgramCall& call) override;
};

}  // namespace ostrand::platform
