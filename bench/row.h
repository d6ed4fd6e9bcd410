// A row of the table: the measurement and its aim.
#pragma once

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand::bench {

struct Figure {
  double value = 0;
  std::string remark;  // after the verdict: the two times of a ratio
};

struct Row {
  std::string_view name;  // on the command line
  std::string_view what;
  double aim;  // maximum of the figure; 0 for a figure that is only listed
  std::function<Figure()> measure;
  bool slow = false;  // takes about a minute; measured only when named
};

// Load, save and generation within this process, against yardsticks on the same bytes.
std::vector<Row> InnerRows();
// Whole processes, against an empty one; peak memory.
std::vector<Row> ProcessRows();
// Fleets in one folder, and a save that waits for the disk.
std::vector<Row> DiskRows();
// The screens on the largest project; lists each of them.
std::vector<Row> ScreenRows();

// Measures and prints all rows but the slow ones, or those with the given names; returns the exit
// code.
int PrintTable(const std::vector<Row>& rows, std::span<char*> names);

// Ends the program with the message `what` if `holds` is false.
void Require(bool holds, std::string_view what);

// Uses a result, so that the compiler cannot drop its computation.
void Use(std::size_t figure);

// The median ratio of the time of `measured` to that of `yardstick` over `rounds`. Both run
// alternately, each for `length` seconds a round, so that a change of the machine's speed affects
// both.
Figure RatioOf(int rounds, double length, const std::function<void()>& measured,
               const std::function<void()>& yardstick);

// The time of one call in seconds, the median of `rounds`.
double MedianTime(int rounds, const std::function<void()>& body);

}  // namespace ostrand::bench
