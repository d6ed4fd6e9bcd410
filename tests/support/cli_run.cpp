#include "support/cli_run.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "support/temp_folder.h"

namespace ostrand::testing {
namespace {

// Nothing of the real user is read or written: all files are under `home`.
pid_t start(const std::vector<std::string>& arguments, const Setting& setting,
            const std::string& home, const std::string& out, const std::string& err) {
  std::vector<std::string> words = {"ostrand"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& word : words) argv.push_back(word.data());
  argv.push_back(nullptr);
  const std::string registry = home + "registry";
  const pid_t child = ::fork();
  if (child != 0) return child;
  ::dup2(::open(setting.in.c_str(), O_RDONLY), STDIN_FILENO);
  ::dup2(::open(out.c_str(), O_WRONLY | O_CREAT, 0600), STDOUT_FILENO);
  ::dup2(::open(err.c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
  ::setenv("SOURCE_DATE_EPOCH", setting.epoch.c_str(), 1);
  ::setenv("XDG_CONFIG_HOME", home.c_str(), 1);
  ::setenv("OSTRAND_REGISTRY", registry.c_str(), 1);
  ::setenv("TMPDIR", home.c_str(), 1);
  const rlimit noCore{0, 0};
  ::setrlimit(RLIMIT_CORE, &noCore);
  const rlimit limit{setting.maxBytes, setting.maxBytes};
  if (::setrlimit(RLIMIT_FSIZE, &limit) == 0 && ::chdir(setting.folder.c_str()) == 0) {
    ::execv(OSTRAND_PROGRAM, argv.data());
  }
  ::_exit(127);
}

}  // namespace

Outcome RunOstrand(const std::vector<std::string>& arguments, const Setting& setting) {
  const TempFolder scratch;
  const std::string out = setting.out.empty() ? scratch / "out" : setting.out;
  const std::string err = scratch / "err";
  const std::string& home = setting.home.empty() ? scratch.Path() : setting.home;
  const int code = EndOf(start(arguments, setting, home, out, err));
  return {code, setting.out.empty() ? ReadDisk(out) : "", ReadDisk(err)};
}

pid_t StartOstrand(const std::vector<std::string>& arguments, const std::string& home) {
  return start(arguments, {}, home, "/dev/null", "/dev/null");
}

int EndOf(pid_t child) {
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace ostrand::testing
