// A row of the table: what is measured, against which aim.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::bench {

struct Figure {
  double value = 0;
  std::string remark;  // behind the verdict: the two times of a ratio
};

struct Row {
  std::string_view name;  // on the command line
  std::string_view what;
  double aim;  // the most that the figure may be; 0 for a figure that is only listed
  std::function<Figure()> measure;
  bool slow = false;  // takes a minute or so and is measured only when it is named
};

// Load, save and generation within this process, against yardsticks on the same bytes.
std::vector<Row> InnerRows();
// Whole processes, against an empty one; peak memory.
std::vector<Row> ProcessRows();
// Fleets in one folder, and a save that waits for the disk.
std::vector<Row> DiskRows();
// The screens on the largest project; lists each of them.
std::vector<Row> ScreenRows();

// Ends the program, with a message, when results that must be equal are not.
void Require(bool holds, std::string_view what);

// Takes what was made, so that no compiler leaves the making out.
void Use(std::size_t figure);

// The median ratio of the time of `measured` to that of `yardstick` in so many rounds. Both run in
// turn, each so long in a round, in seconds, so that a change of the machine's speed meets both.
Figure RatioOf(int rounds, double length, const std::function<void()>& measured,
               const std::function<void()>& yardstick);

// The time of one call in seconds, the median of `rounds`.
double MedianTime(int rounds, const std::function<void()>& body);

}  // namespace ostrand::bench
