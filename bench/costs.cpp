// Prints one cost of a process as the system counts it: bench_costs faults|memory COMMAND...
#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "process.h"
#include "row.h"

int main(int count, char** arguments) {
  using namespace ostrand::bench;
  constexpr int kFirstWord = 2;
  Require(count > kFirstWord, "the words of a command");
  const std::string_view what = arguments[1];
  Require(what == "faults" || what == "memory", "the name of a cost");
  const std::vector<std::string> words(arguments + kFirstWord, arguments + count);
  // The first runs bring the program into memory.
  ProcessCosts least = RunProcess(words);
  for (int run = 0; run < 4; ++run) {
    const ProcessCosts costs = RunProcess(words);
    Require(costs.status == 0, words[0]);
    least.faults = std::min(least.faults, costs.faults);
    least.peak = std::min(least.peak, costs.peak);
  }
  fmt::print("{}\n", what == "faults" ? least.faults : least.peak);
  return 0;
}
