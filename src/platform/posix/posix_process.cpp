#include "platform/posix/posix_process.h"

#include <dirent.h>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <utility>

#include "platform/posix/interrupts.h"
#include "platform/posix/system_error.h"
#include "text/number.h"

namespace ostrand::platform {
namespace {

using Pids = std::vector<pid_t>;

struct Child {
  pid_t number = 0;
  pid_t group = 0;
};

// Number, state, parent and group at the start of a line of /proc/NUMBER/stat. The program's name,
// in parentheses, can hold anything.
std::optional<Child> childIn(const char* stat) {
  const char* afterName = std::strrchr(stat, ')');
  Child child;
  pid_t parent = 0;
  if (afterName == nullptr || std::sscanf(afterName, ") %*c %d %d", &parent, &child.group) != 2) {
    return std::nullopt;
  }
  child.number = static_cast<pid_t>(std::strtol(stat, nullptr, 10));
  return parent == ::getpid() ? std::optional(child) : std::nullopt;
}

// The children of this process, those that it has not waited for included; none on a system
// without /proc.
std::vector<Child> children() {
  std::vector<Child> found;
  siginfo_t info{};
  constexpr int kLook = WEXITED | WNOHANG | WNOWAIT;
  if (::waitid(P_ALL, 0, &info, kLook) != 0 && errno == ECHILD) return found;
  DIR* processes = ::opendir("/proc");
  if (processes == nullptr) return found;
  while (const dirent* entry = ::readdir(processes)) {
    const std::string name = entry->d_name;
    if (name.find_first_not_of("0123456789") != std::string::npos) continue;
    const int file = ::open(("/proc/" + name + "/stat").c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0) continue;  // it has ended by now
    std::array<char, 512> stat{};
    const ssize_t length = ::read(file, stat.data(), stat.size() - 1);
    ::close(file);
    if (length <= 0) continue;
    if (const auto child = childIn(stat.data())) found.push_back(*child);
  }
  ::closedir(processes);
  return found;
}

Pids numbersOf(const std::vector<Child>& family) {
  Pids numbers;
  numbers.reserve(family.size());
  for (const Child& child : family) numbers.push_back(child.number);
  return numbers;
}

// While one lives, a process whose parent ends becomes a child of this one, where the system can
// do that, whatever group and session it has moved to.
class Adoption {
 public:
  Adoption() {
#ifdef PR_SET_CHILD_SUBREAPER
    ::prctl(PR_GET_CHILD_SUBREAPER, &before_);
    ::prctl(PR_SET_CHILD_SUBREAPER, 1);
#endif
  }
  ~Adoption() {
#ifdef PR_SET_CHILD_SUBREAPER
    ::prctl(PR_SET_CHILD_SUBREAPER, before_);
#endif
  }
  Adoption(const Adoption&) = delete;
  Adoption& operator=(const Adoption&) = delete;

 private:
  int before_ = 0;
};

// Waits for a child; false when that fails.
bool reap(pid_t child) {
  constexpr int kTries = 100;  // of a call that is interrupted
  for (int tries = 0; tries < kTries; ++tries) {
    if (::waitpid(child, nullptr, 0) >= 0) return true;
    if (errno != EINTR) return false;
  }
  return false;
}

class PosixProcess : public Process {
 public:
  PosixProcess() : family_(numbersOf(children())) {}
  ~PosixProcess() override { PosixProcess::End(); }
  PosixProcess(const PosixProcess&) = delete;
  PosixProcess& operator=(const PosixProcess&) = delete;

  // The number of what was started.
  pid_t& Number() { return child_; }

  bool Running() override {
    if (child_ == 0) return false;
    if (InterruptGuard::Noted()) {
      End();
      return false;
    }
    siginfo_t info{};
    const int result = look(info);
    return (result == 0 && info.si_pid == 0) || (result != 0 && errno == EINTR);
  }

  std::optional<ProcessFailure> Failure() override {
    siginfo_t info{};
    if (child_ == 0 || look(info) != 0 || info.si_pid == 0) return std::nullopt;
    const bool crashed = info.si_code != CLD_EXITED;
    const std::string number = NumberText(info.si_status);
    if (!crashed && info.si_status == 0) return std::nullopt;
    if (!crashed) return ProcessFailure{false, "exited with code " + number};
    return ProcessFailure{
        true, "was ended by signal " + number + " (" + ::strsignal(info.si_status) + ")"};
  }

  void End() override {
    if (child_ == 0) return;
    ::kill(-child_, SIGKILL);
    reap(child_);
    endAdopted();
    child_ = 0;
  }

 private:
  // Looks without reaping: until it is reaped, no other process can get the number of the group.
  int look(siginfo_t& info) const {
    return ::waitid(P_PID, static_cast<id_t>(child_), &info, WEXITED | WNOHANG | WNOWAIT);
  }

  // Ends what the program has left running, in its group or not. Such a process has become a child
  // of this one, and its children become so when it is gone.
  void endAdopted() {
    bool found = true;
    for (int round = 0; found && round < kMaxAdoptionRounds; ++round) {
      found = false;
      for (const Child& child : children()) {
        const bool known = std::find(family_.begin(), family_.end(), child.number) != family_.end();
        if (known || child.group == ::getpgrp()) continue;
        if (::kill(child.number, SIGKILL) != 0) continue;  // one that has changed its user
        found = reap(child.number) || found;
      }
    }
  }

  static constexpr int kMaxAdoptionRounds = 100;

  Pids family_;  // children of this process that were there before
  Adoption adoption_;
  pid_t child_ = 0;  // and its group; 0 when it is over
};

// The settings of a start, freed at the end of the scope.
class SpawnSettings {
 public:
  SpawnSettings() {
    ::posix_spawn_file_actions_init(&actions_);
    ::posix_spawnattr_init(&attributes_);
    constexpr std::array<int, 3> kStreams = {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO};
    for (const int stream : kStreams) {
      ::posix_spawn_file_actions_addopen(&actions_, stream, "/dev/null", O_RDWR, 0);
    }
    // Signals that the session ignores for itself, such as that of a file size limit, keep their
    // effect on the program.
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
  auto process = std::make_unique<PosixProcess>();
  const int error = ::posix_spawn(&process->Number(), arguments.front(), settings.Actions(),
                                  settings.Attributes(), arguments.data(), environ);
  if (error != 0) {
    process->Number() = 0;
    return SystemError(words.front(), error);
  }
  return std::unique_ptr<Process>(std::move(process));
}

}  // namespace ostrand::platform
