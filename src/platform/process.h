// External programs that run beside the session.
#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "text/result.h"

namespace ostrand::platform {

// How a program is called: `words` for a platform that passes arguments apart, the program first,
// with no shell between, so that blanks and quotes in paths do no harm; `text` for one that starts
// programs by a command line.
struct ProgramCall {
  std::vector<std::string> words;
  std::string text;
};

// How a program that ended failed.
struct ProcessFailure {
  bool crashed = false;  // or exited with a code other than 0
  std::string text;      // "exited with code 3", "was ended by signal 11 (Segmentation fault)"
};

// A program that was started.
class Process {
 public:
  virtual ~Process() = default;
  virtual bool Running() = 0;
  // Nothing for success, while it runs, and after End.
  virtual std::optional<ProcessFailure> Failure() = 0;
  // Ends the program, if it still runs, and all that it started. So does destroying it.
  virtual void End() = 0;
};

class Processes {
 public:
  virtual ~Processes() = default;
  // Starts the program minimised, without input, its output dropped; the error names the program.
  virtual Result<std::unique_ptr<Process>> Start(const ProgramCall& call) = 0;
  // Rests about a millisecond, for loops that wait for a program.
  virtual void Rest() { std::this_thread::sleep_for(std::chrono::milliseconds(1)); }
};

}  // namespace ostrand::platform
