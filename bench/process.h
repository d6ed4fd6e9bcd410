// A command as a whole process, and what the system says that it took.
#pragma once

#include <string>
#include <vector>

namespace ostrand::bench {

struct ProcessCosts {
  long faults = 0;  // pages that had to be given or looked up
  long peak = 0;    // memory in KB
  int status = 0;   // as waitpid gives it
};

// Runs it to its end, its output dropped.
ProcessCosts RunProcess(const std::vector<std::string>& words);

}  // namespace ostrand::bench
