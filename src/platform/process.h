// External programs that run beside the session.
#pragma once

#include <memory>
#include <string>
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

// A program that was started. Its end ends what it started itself, and so does destroying it.
class Process {
 public:
  virtual ~Process() = default;
  virtual bool Running() = 0;
  virtual void End() = 0;
};

class Processes {
 public:
  virtual ~Processes() = default;
  // Starts the program minimised, without input, its output dropped; the error names the program.
  virtual Result<std::unique_ptr<Process>> Start(const ProgramCall& call) = 0;
};

}  // namespace ostrand::platform
