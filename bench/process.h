// Runs a command as a process and counts its costs.
#pragma once

#include <string>
#include <vector>

namespace ostrand::bench {

struct ProcessCosts {
  long faults = 0;  // page faults
  long peak = 0;    // memory in KB
  int status = 0;   // of waitpid
};

// Waits for its end and discards its output.
ProcessCosts RunProcess(const std::vector<std::string>& words);

}  // namespace ostrand::bench
