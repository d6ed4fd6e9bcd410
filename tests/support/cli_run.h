// The command `ostrand` as its user meets it: a process with arguments, files, messages, a code.
#pragma once

#include <sys/resource.h>
#include <sys/types.h>

#include <string>
#include <vector>

namespace ostrand::testing {

struct Outcome {
  int code = -1;  // 128 + signal for a process that was killed
  std::string out;
  std::string err;
};

struct Setting {
  std::string epoch = "1000000000";  // 2001-09-09 01:46:40 UTC
  std::string folder = ".";          // where the process stands
  rlim_t mostBytes = RLIM_INFINITY;  // of a file
  std::string out = {};              // where standard output goes, if not kept
  std::string home = {};             // of settings, machine keys and temporary files, if kept
};

Outcome RunOstrand(const std::vector<std::string>& arguments, const Setting& setting = {});

// The same in the background, with its messages dropped.
pid_t StartOstrand(const std::vector<std::string>& arguments, const std::string& home);
// Waits for its end; the code as in Outcome.
int EndOf(pid_t child);

}  // namespace ostrand::testing
