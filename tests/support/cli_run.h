// Runs the command `ostrand`: a process with arguments, files, messages and an exit code.
#pragma once

#include <sys/resource.h>
#include <sys/types.h>

#include <string>
#include <vector>

namespace ostrand::testing {

struct Outcome {
  int code = -1;  // 128 + signal for a killed process
  std::string out;
  std::string err;
};

struct Setting {
  std::string epoch = "1000000000";  // 2001-09-09 01:46:40 UTC
  std::string folder = ".";          // working folder
  rlim_t maxBytes = RLIM_INFINITY;   // maximum size of a file
  std::string out = {};              // file of standard output, if kept
  std::string in = "/dev/null";      // file of standard input
  std::string home = {};             // of settings, machine keys and temporary files, if kept
};

Outcome RunOstrand(const std::vector<std::string>& arguments, const Setting& setting = {});

// Runs it in the background and discards its messages.
pid_t StartOstrand(const std::vector<std::string>& arguments, const std::string& home);
// Waits for its end; returns the code as in Outcome.
int EndOf(pid_t child);

}  // namespace ostrand::testing
