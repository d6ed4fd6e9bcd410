// Child processes.
#pragma once

#include "platform/process.h"

namespace ostrand::platform {

// Starts each program in a process group of its own, by `words`.
class PosixProcesses : public Processes {
 public:
  Result<std::unique_ptr<Process>> Start(const ProgramCall& call) override;
};

}  // namespace ostrand::platform
