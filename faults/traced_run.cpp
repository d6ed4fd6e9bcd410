#include "traced_run.h"

#include <elf.h>
#include <fcntl.h>
#include <sys/personality.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/uio.h>
#include <sys/user.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>
#include <thread>

#include "system_calls.h"

namespace ostrand::faults {
namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds kMaxRun{60};
constexpr std::chrono::seconds kMaxStray{5};
constexpr std::chrono::milliseconds kBetweenLooks{1};
constexpr std::uint64_t kBreakpoint = 0xCC;

std::vector<char*> pointers(std::vector<std::string>& words) {
  std::vector<char*> result;
  for (std::string& word : words) result.push_back(word.data());
  result.push_back(nullptr);
  return result;
}

// Starts the command in a separate process group; if traced, it stops at its first instruction.
pid_t start(const Command& command, bool traced) {
  std::vector<std::string> words = command.words;
  words.insert(words.begin(), "ostrand");
  std::vector<std::string> environment = command.environment;
  const std::vector<char*> argv = pointers(words);
  const std::vector<char*> envp = pointers(environment);
  const pid_t child = ::fork();
  if (child != 0) return child;

  ::setpgid(0, 0);
  ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
  ::dup2(::open(command.out.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0600), STDOUT_FILENO);
  ::dup2(::open(command.err.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_APPEND, 0600), STDERR_FILENO);
  ::close_range(3, ~0U, 0);
  // The same addresses each time, so that the calls for memory are the same.
  static_cast<void>(::personality(ADDR_NO_RANDOMIZE));
  if (::chdir(command.folder.c_str()) != 0) ::_exit(126);
  if (traced && ::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(126);
  ::execve(command.program.c_str(), argv.data(), envp.data());
  ::_exit(127);
}

// Wakes waitpid each second, so that a hanging program is found.
class Waker {
 public:
  Waker() {
    struct sigaction action {};
    action.sa_handler = [](int) {};
    ::sigaction(SIGALRM, &action, nullptr);
    const itimerval each{{1, 0}, {1, 0}};
    ::setitimer(ITIMER_REAL, &each, nullptr);
  }
  ~Waker() {
    const itimerval never{};
    ::setitimer(ITIMER_REAL, &never, nullptr);
  }
  Waker(const Waker&) = delete;
  Waker& operator=(const Waker&) = delete;

  // The status of the child; false if the time of a run is over and the child was killed.
  bool Wait(pid_t child, int& status) {
    while (::waitpid(child, &status, 0) < 0) {
      if (errno != EINTR) return false;
      if (Clock::now() - began_ < kMaxRun) continue;
      ::kill(child, SIGKILL);
      while (::waitpid(child, &status, 0) >= 0 && !WIFEXITED(status) && !WIFSIGNALED(status)) {
      }
      return false;
    }
    return true;
  }

 private:
  Clock::time_point began_ = Clock::now();
};

int codeOf(int status) { return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status); }

// Whether the process has ended but was not waited for.
bool hasEnded(pid_t process) {
  std::ifstream file("/proc/" + std::to_string(process) + "/stat");
  const std::string text{std::istreambuf_iterator<char>(file), {}};
  const std::size_t at = text.rfind(')');
  return at == std::string::npos || text.substr(at + 2, 1) == "Z";
}

void waitUntilEnded(pid_t process) {
  const auto until = Clock::now() + kMaxStray;
  while (!hasEnded(process) && Clock::now() < until) std::this_thread::sleep_for(kBetweenLooks);
}

// Waits for the processes that the program left; true if one had to be killed.
bool endStrays() {
  const auto until = Clock::now() + kMaxStray;
  bool killed = false;
  for (;;) {
    const pid_t ended = ::waitpid(-1, nullptr, WNOHANG);
    if (ended < 0) return killed;
    if (ended > 0) continue;
    if (Clock::now() >= until) {
      const std::string self = std::to_string(::getpid());
      std::ifstream children("/proc/self/task/" + self + "/children");
      for (pid_t child = 0; children >> child && child > 0;) ::kill(child, SIGKILL);
      killed = true;
    }
    std::this_thread::sleep_for(kBetweenLooks);
  }
}

// The start of the program itself, after its loader; 0 if unknown.
std::uint64_t entryOf(pid_t child) {
  std::ifstream file("/proc/" + std::to_string(child) + "/auxv", std::ios::binary);
  Elf64_auxv_t row{};
  while (file.read(reinterpret_cast<char*>(&row), sizeof row)) {
    if (row.a_type == AT_ENTRY) return row.a_un.a_val;
  }
  return 0;
}

std::string textAt(pid_t child, std::uint64_t address) {
  std::array<char, 256> bytes{};
  const iovec here{bytes.data(), bytes.size() - 1};
  const iovec there{reinterpret_cast<void*>(address), bytes.size() - 1};
  // The text may end just before unmapped memory: then byte by byte.
  if (::process_vm_readv(child, &here, 1, &there, 1, 0) > 0) return bytes.data();
  std::string text;
  for (; text.size() < bytes.size(); ++address) {
    const iovec one{bytes.data(), 1};
    const iovec from{reinterpret_cast<void*>(address), 1};
    if (::process_vm_readv(child, &one, 1, &from, 1, 0) != 1 || bytes[0] == '\0') break;
    text += bytes[0];
  }
  return text;
}

class Tracer {
 public:
  Tracer(pid_t child, const Fault& fault, const std::function<void(std::size_t)>& before)
      : child_(child), fault_(fault), before_(before) {}

  Run Follow() {
    int status = 0;
    if (!waker_.Wait(child_, status)) return hang();
    if (!WIFSTOPPED(status)) return refused(EPERM);
    if (::ptrace(PTRACE_SETOPTIONS, child_, nullptr, PTRACE_O_TRACESYSGOOD | PTRACE_O_EXITKILL) !=
        0) {
      return refused(errno);
    }
    if (!runLoader(status)) return ended(status);
    bool inside = false;
    for (int signal = 0;;) {
      ::ptrace(PTRACE_SYSCALL, child_, nullptr, signal);
      if (!waker_.Wait(child_, status)) return hang();
      if (!WIFSTOPPED(status)) return ended(status);
      signal = 0;
      if (WSTOPSIG(status) != (SIGTRAP | 0x80)) {
        signal = WSTOPSIG(status);
        continue;
      }
      inside = !inside;
      if (inside) {
        if (!enter()) {
          waker_.Wait(child_, status);
          return ended(status);
        }
      } else {
        leave();
      }
    }
  }

 private:
  // Runs the loader; false if the program ended in it.
  bool runLoader(int& status) {
    const std::uint64_t entry = entryOf(child_);
    const long word = ::ptrace(PTRACE_PEEKTEXT, child_, entry, nullptr);
    const std::uint64_t stopping = (static_cast<std::uint64_t>(word) & ~0xFFULL) | kBreakpoint;
    ::ptrace(PTRACE_POKETEXT, child_, entry, stopping);
    ::ptrace(PTRACE_CONT, child_, nullptr, nullptr);
    if (!waker_.Wait(child_, status) || !WIFSTOPPED(status)) return false;
    ::ptrace(PTRACE_POKETEXT, child_, entry, word);
    user_regs_struct registers{};
    ::ptrace(PTRACE_GETREGS, child_, nullptr, &registers);
    registers.rip = entry;
    ::ptrace(PTRACE_SETREGS, child_, nullptr, &registers);
    return true;
  }

  SeenCall seen(const user_regs_struct& registers) const {
    SeenCall call;
    call.number = static_cast<long>(registers.orig_rax);
    const CallRow* row = FindCall(call.number);
    if (row == nullptr) return call;
    if ((row->traits & kNamesFile) != 0) call.path = textAt(child_, registers.rdi);
    if ((row->traits & kNamesEntry) != 0) call.path = textAt(child_, registers.rsi);
    if ((row->traits & kNamesFile) == 0) call.descriptor = static_cast<int>(registers.rdi);
    const bool reads = (row->traits & kOpens) != 0 &&
                       ((call.number == SYS_openat ? registers.rdx : registers.rsi) & O_CREAT) == 0;
    call.takesSpace = (row->traits & kTakesSpace) != 0 && !reads && !toUser(call);
    return call;
  }

  // Whether the call writes a message, which a full disk does not prevent.
  static bool toUser(const SeenCall& call) {
    const CallRow* row = FindCall(call.number);
    return row != nullptr && (row->traits & (kNamesFile | kNamesEntry)) == 0 &&
           (call.descriptor == STDOUT_FILENO || call.descriptor == STDERR_FILENO);
  }

  // At the entry of a call; false if the program was killed there.
  bool enter() {
    user_regs_struct registers{};
    ::ptrace(PTRACE_GETREGS, child_, nullptr, &registers);
    const std::size_t at = run_.calls.size();
    run_.calls.push_back(seen(registers));
    if (before_) before_(at);
    failing_ = 0;
    if (fault_.kind == Fault::Kind::kKill && at == fault_.at) {
      ::kill(child_, SIGKILL);
      return false;
    }
    if (fault_.kind == Fault::Kind::kShort && at == fault_.at) {
      registers.rdx = (registers.rdx + 1) / 2;
      ::ptrace(PTRACE_SETREGS, child_, nullptr, &registers);
    }
    failing_ = errorAt(at);
    const CallRow* row = FindCall(run_.calls[at].number);
    if (failing_ != 0 && (row->traits & kRunsFirst) == 0) {
      registers.orig_rax = static_cast<unsigned long long>(-1);
      ::ptrace(PTRACE_SETREGS, child_, nullptr, &registers);
    }
    return true;
  }

  // The error of call `at`; 0 for none.
  [[nodiscard]] int errorAt(std::size_t at) const {
    const SeenCall& call = run_.calls[at];
    // The calls of this run can differ from those of the first.
    if (at < fault_.at || FindCall(call.number) == nullptr) return 0;
    switch (fault_.kind) {
      case Fault::Kind::kOnce:
        return at == fault_.at ? fault_.error : 0;
      case Fault::Kind::kOn:
        if (at > fault_.at && toUser(call)) return 0;
        return call.number == run_.calls[fault_.at].number ? fault_.error : 0;
      case Fault::Kind::kFull:
        return call.takesSpace ? ENOSPC : 0;
      default:
        return 0;
    }
  }

  void leave() {
    user_regs_struct registers{};
    const SeenCall& call = run_.calls.back();
    const CallRow* row = FindCall(call.number);
    const bool starts = row != nullptr && (row->traits & kStarts) != 0;
    if (failing_ == 0 && !starts) return;
    ::ptrace(PTRACE_GETREGS, child_, nullptr, &registers);
    if (failing_ != 0) {
      registers.rax = call.number == SYS_brk
                          ? 0
                          : static_cast<unsigned long long>(-static_cast<long long>(failing_));
      ::ptrace(PTRACE_SETREGS, child_, nullptr, &registers);
      return;
    }
    const auto process = static_cast<pid_t>(registers.rax);
    if (process > 0) waitUntilEnded(process);
  }

  Run ended(int status) {
    run_.code = codeOf(status);
    return run_;
  }
  Run hang() {
    run_.hung = true;
    return run_;
  }
  Run refused(int number) {
    run_.missing = number;
    return run_;
  }

  pid_t child_;
  const Fault& fault_;
  const std::function<void(std::size_t)>& before_;
  Waker waker_;
  Run run_;
  int failing_ = 0;  // the error of the current call
};

}  // namespace

Run RunTraced(const Command& command, const Fault& fault,
              const std::function<void(std::size_t)>& before) {
  Run run = Tracer(start(command, true), fault, before).Follow();
  run.strays = endStrays();
  return run;
}

Run RunPlain(const Command& command) {
  Run run;
  Waker waker;
  int status = 0;
  run.hung = !waker.Wait(start(command, false), status);
  run.code = codeOf(status);
  run.strays = endStrays();
  return run;
}

void AdoptOrphans() { ::prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0); }

}  // namespace ostrand::faults
