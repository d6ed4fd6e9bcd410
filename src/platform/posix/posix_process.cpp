#include "platform/posix/posix_process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <cstring>

namespace ostrand::platform {
namespace {

class PosixProcess : public Process {
 public:
  explicit PosixProcess(pid_t child) : child_(child) {}
  ~PosixProcess() override { PosixProcess::End(); }
  PosixProcess(const PosixProcess&) = delete;
  PosixProcess& operator=(const PosixProcess&) = delete;

  bool Running() override {
    if (child_ == 0) return false;
    siginfo_t info{};
    // Looked at without reaping: until then nobody else can be given the number of the group.
    const int result =
        ::waitid(P_PID, static_cast<id_t>(child_), &info, WEXITED | WNOHANG | WNOWAIT);
    return (result == 0 && info.si_pid == 0) || (result != 0 && errno == EINTR);
  }

  void End() override {
    if (child_ == 0) return;
    ::kill(-child_, SIGKILL);
    while (::waitpid(child_, nullptr, 0) < 0 && errno == EINTR) {
    }
    child_ = 0;
  }

 private:
  pid_t child_;  // and its group; 0 when it is over
};

// The settings of a start, freed at the end of the scope.
class SpawnSettings {
 public:
  SpawnSettings() {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawnattr_init(&attributes_);
    constexpr std::array<int, 3> streams = {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO};
    for (const int stream : streams) {
      ::posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", O_RDWR, 0);
    }
    // What the session ignores for itself, a limit on the size of files for one, is not ignored
    // for others.
    sigset_t all;
    ::sigfillset(&all);
    ::posix_spawnattr_setsigdefault(&attributes_, &all);
    ::posix_spawnattr_setpgroup(&attributes_, 0);
    ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETPGROUP | POSIX_SPAWN_SETSIGDEF);
  }
  ~SpawnSettings() {
    ::posix_spawnattr_destroy(&attributes_);
    ::posix_spawn_file_actions_destroy(&actions_);
  }
  SpawnSettings(const SpawnSettings&) = delete;
  SpawnSettings& operator=(const SpawnSettings&) = delete;

  [[nodiscard]] const posix_spawn_file_actions_t* Actions() const { return &actions_; }
  [[nodiscard]] const posix_spawnattr_t* Attributes() const { return &attributes_; }

 private:
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
};

}  // namespace

Result<std::unique_ptr<Process>> PosixProcesses::Start(const ProgramCall& call) {
  std::vector<std::string> words = call.words;
  std::vector<char*> arguments;
  arguments.reserve(words.size() + 1);
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  const SpawnSettings settings;
  pid_t child = 0;
  const int error = ::posix_spawn(&child, arguments.front(), settings.Actions(),
                                  settings.Attributes(), arguments.data(), environ);
  if (error != 0) return Error{words.front() + ": " + std::strerror(error)};
  return std::unique_ptr<Process>(std::make_unique<PosixProcess>(child));
}

}  // namespace ostrand::platform
