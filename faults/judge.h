// Judges what is wrong after a fault.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "commands.h"

namespace ostrand::faults {

enum Wrong : std::size_t {
  kLoss,      // a file is neither as before nor as after, or missing
  kMixture,   // files of two saves in an order that no save writes
  kSilent,    // a result different from the run without the fault, and no code or no message that
              // names a file
  kMoment,    // a file could not be read between two calls
  kLeftover,  // useless files or processes
  kNext,      // the next command fails or does not clean up
  kWrongs
};

constexpr std::array<std::string_view, kWrongs> kWrongNames = {
    "losses", "mixtures", "silent failures", "moments without project", "leftovers", "next fails"};

struct Finding {
  Wrong wrong;
  std::string text;
};

// The result and messages of a run.
struct Outcome {
  Run run;
  std::string out;
  std::string err;
};

// Whether each file in `tree` is whole, as before or as after.
bool FilesReadable(const Subject& subject, const Tree& tree);

// Findings after an interrupted run. `normal` is the run without a fault.
std::vector<Finding> Judge(const Subject& subject, const Fault& fault, const Outcome& normal,
                           const Outcome& met, const Tree& left);

// Findings after the next command.
std::vector<Finding> JudgeNext(const Subject& subject, const Outcome& next, const Tree& left);

}  // namespace ostrand::faults
