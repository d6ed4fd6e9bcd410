#include "jobs.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <map>
#include <vector>

namespace ostrand::cli {
namespace {

constexpr int kPipes = 3;  // standard output, standard error, result

struct Running {
  pid_t process = -1;
  std::array<int, kPipes> pipes = {-1, -1, -1};  // read ends; -1 when closed
  JobEnd end;
};

std::string& textOf(JobEnd& end, int pipe) {
  return pipe == 0 ? end.out : pipe == 1 ? end.err : end.result;
}

[[noreturn]] void runChild(std::size_t job, const std::array<int, kPipes>& writeEnds,
                           const std::function<int(std::size_t, int)>& body) {
  ::dup2(::open("/dev/null", O_RDONLY), STDIN_FILENO);
  ::dup2(writeEnds[0], STDOUT_FILENO);
  ::dup2(writeEnds[1], STDERR_FILENO);
  ::_exit(body(job, writeEnds[2]));
}

// False when the system has no more pipes or processes.
bool start(Running& running, std::size_t job, const std::function<int(std::size_t, int)>& body) {
  std::array<int, kPipes> writeEnds = {-1, -1, -1};
  bool open = true;
  for (int i = 0; i < kPipes && open; ++i) {
    int ends[2] = {-1, -1};
    open = ::pipe2(ends, O_CLOEXEC) == 0;
    running.pipes[static_cast<std::size_t>(i)] = ends[0];
    writeEnds[static_cast<std::size_t>(i)] = ends[1];
  }
  if (open) running.process = ::fork();
  if (running.process == 0) runChild(job, writeEnds, body);
  for (const int end : writeEnds) {
    if (end >= 0) ::close(end);
  }
  if (running.process > 0) return true;
  for (int& end : running.pipes) {
    if (end >= 0) ::close(end);
    end = -1;
  }
  running.end.code = -1;
  return false;
}

void takeBytes(Running& running, int pipe) {
  std::array<char, 1 << 14> buffer;
  int& descriptor = running.pipes[static_cast<std::size_t>(pipe)];
  const ssize_t count = ::read(descriptor, buffer.data(), buffer.size());
  if (count > 0) {
    textOf(running.end, pipe).append(buffer.data(), static_cast<std::size_t>(count));
  } else if (count == 0 || errno != EINTR) {
    ::close(descriptor);
    descriptor = -1;
  }
}

bool isOpen(const Running& running) {
  return running.pipes[0] >= 0 || running.pipes[1] >= 0 || running.pipes[2] >= 0;
}

// Waits until any job has written or ended, and takes what is there.
void takeSome(std::map<std::size_t, Running>& jobs) {
  std::vector<pollfd> polled;
  std::vector<std::pair<Running*, int>> owners;
  for (auto& [number, running] : jobs) {
    for (int pipe = 0; pipe < kPipes; ++pipe) {
      const int descriptor = running.pipes[static_cast<std::size_t>(pipe)];
      if (descriptor < 0) continue;
      polled.push_back({descriptor, POLLIN, 0});
      owners.emplace_back(&running, pipe);
    }
  }
  if (::poll(polled.data(), polled.size(), -1) <= 0) return;
  for (std::size_t i = 0; i < polled.size(); ++i) {
    if (polled[i].revents != 0) takeBytes(*owners[i].first, owners[i].second);
  }
}

int codeOf(pid_t process) {
  int status = 0;
  while (::waitpid(process, &status, 0) < 0) {
    if (errno != EINTR) return -1;
  }
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

}  // namespace

void RunJobs(std::size_t count, int atOnce, const std::function<int(std::size_t, int)>& body,
             const std::function<void(std::size_t, const JobEnd&)>& done) {
  std::map<std::size_t, Running> running;  // that have pipes open
  std::map<std::size_t, JobEnd> ended;     // that wait for one before them
  std::size_t next = 0;
  for (std::size_t reported = 0; reported < count;) {
    while (next < count && running.size() < static_cast<std::size_t>(atOnce)) {
      Running job;
      if (start(job, next, body)) {
        running.emplace(next, std::move(job));
      } else if (!running.empty()) {
        break;  // as soon as one of them has ended
      } else {
        ended.emplace(next, std::move(job.end));
      }
      if (ended.contains(next) || running.contains(next)) ++next;
    }
    if (!running.empty()) takeSome(running);
    for (auto at = running.begin(); at != running.end();) {
      if (isOpen(at->second)) {
        ++at;
        continue;
      }
      at->second.end.code = codeOf(at->second.process);
      ended.emplace(at->first, std::move(at->second.end));
      at = running.erase(at);
    }
    for (auto at = ended.find(reported); at != ended.end(); at = ended.find(reported)) {
      done(reported++, at->second);
      ended.erase(at);
    }
  }
}

int ProcessorCount() {
  const long count = ::sysconf(_SC_NPROCESSORS_ONLN);
  return count < 1 ? 1 : static_cast<int>(count);
}

}  // namespace ostrand::cli
