// The commands that the sweep interrupts, and what each may leave.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "traced_run.h"

namespace ostrand::faults {

// Files below a folder by their relative path; a folder ends in "/" and has no bytes.
using Tree = std::map<std::string, std::string>;

Tree ReadTree(const std::string& folder);
void WriteTree(const std::string& folder, const Tree& tree);

struct Programs {
  std::string ostrand;
  std::string compiler;  // the stand-in
  std::string project;   // the file to work on
};

struct Subject {
  std::string name;
  std::vector<std::string> words;  // arguments of the command
  std::vector<std::string> again;  // arguments of the command after an interrupted one
  std::vector<std::string> files;  // files that the command replaces, in order
  std::vector<std::string> named;  // a message of a failure contains one of these
  Tree before;
  std::vector<Tree> after;  // the results: of a successful run, and of a reported failure
};

// The environment below `root`: nothing of the real user is read or written.
Command CommandBelow(const std::string& root, const Programs& programs,
                     const std::vector<std::string>& words, long epoch);

// Makes all subjects; `root` is the working folder. Throws std::runtime_error with the outputs if a
// command fails without a fault.
std::vector<Subject> MakeSubjects(const std::string& root, const Programs& programs);

constexpr long kOldEpoch = 1'000'000'000;  // of the files that exist before
constexpr long kNewEpoch = 1'100'000'000;

}  // namespace ostrand::faults
