// Pieces of work done by several processes at a time.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

namespace ostrand::cli {

// What a job has left behind.
struct JobEnd {
  int code = 0;  // its exit code; 128 + signal if it was killed, -1 if it could not be started
  std::string out;
  std::string err;
  std::string result;  // what it wrote to its third pipe
};

// Runs the jobs 0 to `count` - 1, at most `atOnce` of them at a time, each in a process that
// returns `body`'s exit code. A job reads nothing from standard input; what it prints is collected,
// and what it passes back is written to the descriptor that `body` gets. `done` is called for each
// job in their order, as soon as those before it have ended.
void RunJobs(std::size_t count, int atOnce,
             const std::function<int(std::size_t job, int resultDescriptor)>& body,
             const std::function<void(std::size_t job, const JobEnd& end)>& done);

// The number of processors that this process may use, at least 1.
int ProcessorCount();

}  // namespace ostrand::cli
