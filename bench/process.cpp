#include "process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include "row.h"

extern char** environ;

namespace ostrand::bench {

ProcessCosts RunProcess(const std::vector<std::string>& words) {
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
  pid_t child = 0;
  Require(posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ) == 0,
          "the start of " + words[0]);
  posix_spawn_file_actions_destroy(&actions);
  ProcessCosts costs;
  rusage usage{};
  Require(wait4(child, &costs.status, 0, &usage) == child, "the end of " + words[0]);
  costs.faults = usage.ru_minflt + usage.ru_majflt;
  costs.peak = usage.ru_maxrss;
  return costs;
}

}  // namespace ostrand::bench
