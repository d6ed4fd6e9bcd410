// Runs a program one system call at a time and injects one fault (Linux, x86_64).
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
    kShort,  // the call writes half of the bytes
  };
  Kind kind = Kind::kNothing;
  std::size_t at = 0;  // index of the call, from 0 at the entry of the program
  int error = 0;
};

struct SeenCall {
  long number = 0;
  long descriptor = -1;  // argument 0, unless the call names a file there
  long command = 0;      // argument 1
  bool takesSpace = false;
  std::string path;  // as given to the call; empty for none
};

struct Command {
  std::string program;
  std::vector<std::string> words;
  std::vector<std::string> environment;  // NAME=VALUE, the whole environment
  std::string folder;                    // working folder
  std::string out;                       // files of both outputs
  std::string err;
};

struct Run {
  int code = -1;  // 128 + signal of a killed one
  bool hung = false;
  bool strays = false;          // a process that it started outlived it
  std::vector<SeenCall> calls;  // of the program itself, without those of the loader
  long missing = 0;             // errno if programs cannot be traced on this machine
};

// Calls `before` ahead of each system call. Waits for a process that the program starts before the
// program's next call, so that two runs make the same calls.
Run RunTraced(const Command& command, const Fault& fault,
              const std::function<void(std::size_t)>& before = {});

// Runs the command without tracing.
Run RunPlain(const Command& command);

// Makes orphaned processes children of this one, so that it can wait for them.
void AdoptOrphans();

}  // namespace ostrand::faults
