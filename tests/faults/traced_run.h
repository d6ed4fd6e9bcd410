// Runs a program one system call at a time and lets one fault happen on the way (Linux, x86_64).
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace ostrand::faults {

struct Fault {
  enum class Kind {
    kNothing,
    kKill,   // SIGKILL in place of the call
    kOnce,   // the call fails
    kOn,     // so does each later call of its kind
    kFull,   // the disk is full from this call on
    kShort,  // the call writes half of what was asked
  };
  Kind kind = Kind::kNothing;
  std::size_t at = 0;  // which call, counted from 0 at the entry of the program
  int error = 0;
};

struct SeenCall {
  long number = 0;
  long descriptor = -1;  // argument 0, unless the call names a file there
  long command = 0;      // argument 1
  bool takesSpace = false;
  std::string path;  // as the call names it; empty for none
};

struct Command {
  std::string program;
  std::vector<std::string> words;
  std::vector<std::string> environment;  // NAME=VALUE, all that there is
  std::string folder;                    // to run in
  std::string out;                       // files of both outputs
  std::string err;
};

struct Run {
  int code = -1;  // 128 + signal for a killed one
  bool hung = false;
  bool strays = false;          // a process that it started outlived it
  std::vector<SeenCall> calls;  // those of the program itself, the loader's left out
  long missing = 0;             // errno of a machine that does not let a program be traced
};

// `before` runs at each call before it is made. A process that the program starts is waited for
// before its next call, so that two runs make the same calls.
Run RunTraced(const Command& command, const Fault& fault,
              const std::function<void(std::size_t)>& before = {});

// The same without any look at its calls.
Run RunPlain(const Command& command);

// Processes whose parent died come to this one, so that it can wait for them.
void AdoptOrphans();

}  // namespace ostrand::faults
