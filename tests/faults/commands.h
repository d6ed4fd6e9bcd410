// The commands that the sweep interrupts, and what each may leave behind.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "traced_run.h"

namespace ostrand::faults {

// Files below a folder by their path in it; a folder ends in "/" and has no bytes.
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
  std::vector<std::string> words;  // of the command line
  std::vector<std::string> again;  // of the command that follows an interrupted one
  std::vector<std::string> files;  // that the command replaces, in its order
  std::vector<std::string> named;  // a message of a failure holds one of these
  Tree before;
  std::vector<Tree> after;  // the results: all went well; what a reported failure makes of it
};

// The environment below `root`: nothing of the real user's is read or written.
Command CommandBelow(const std::string& root, const Programs& programs,
                     const std::vector<std::string>& words, long epoch);

// Makes all subjects; `root` is a folder to work in. Throws std::runtime_error with the outputs
// when a command fails though nothing hinders it.
std::vector<Subject> MakeSubjects(const std::string& root, const Programs& programs);

constexpr long kOldEpoch = 1'000'000'000;  // of the files that stand before
constexpr long kNewEpoch = 1'100'000'000;

}  // namespace ostrand::faults
