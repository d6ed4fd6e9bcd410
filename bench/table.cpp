#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <span>

#include "row.h"

namespace ostrand::bench {
namespace {

using Clock = std::chrono::steady_clock;

double seconds(const std::function<void()>& body) {
  const auto start = Clock::now();
  body();
  return std::chrono::duration<double>(Clock::now() - start).count();
}

double medianOf(std::vector<double> values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// The mean time of a call, over as many calls as take `length` seconds.
double timeOfCall(double length, const std::function<void()>& body) {
  int calls = 0;
  double total = 0;
  do {
    total += seconds(body);
    ++calls;
  } while (total < length);
  return total / calls;
}

// Whether a word of the command line selects the row: its name, or the part of it before a "-".
bool means(std::string_view word, const Row& row) {
  return row.name.starts_with(word) &&
         (row.name.size() == word.size() || row.name[word.size()] == '-');
}

}  // namespace

Figure RatioOf(int rounds, double length, const std::function<void()>& measured,
               const std::function<void()>& yardstick) {
  constexpr double kMicro = 1e6;
  std::vector<double> ratios;
  std::vector<double> times;
  std::vector<double> yardTimes;
  measured();
  yardstick();
  for (int round = 0; round < rounds; ++round) {
    times.push_back(timeOfCall(length, measured));
    yardTimes.push_back(timeOfCall(length, yardstick));
    ratios.push_back(times.back() / yardTimes.back());
  }
  return {medianOf(ratios), fmt::format("{:.0f} to {:.0f} us", medianOf(times) * kMicro,
                                        medianOf(yardTimes) * kMicro)};
}

double MedianTime(int rounds, const std::function<void()>& body) {
  std::vector<double> times;
  for (int round = 0; round < rounds; ++round) times.push_back(seconds(body));
  return medianOf(times);
}

int PrintTable(const std::vector<Row>& rows, std::span<char*> names) {
  for (const std::string_view name : names) {
    const bool known =
        std::any_of(rows.begin(), rows.end(), [&](const Row& row) { return means(name, row); });
    Require(known, "the name of a row");
  }
  fmt::print("{:<11} {:<52} {:>8} {:>9}  {}\n", "name", "what", "aim", "figure", "verdict");
  for (const Row& row : rows) {
    const bool named =
        std::any_of(names.begin(), names.end(), [&](const char* name) { return means(name, row); });
    if (!named && (row.slow || !names.empty())) continue;
    const Figure figure = row.measure();
    const std::string aim = row.aim > 0 ? fmt::format("{}", row.aim) : "";
    const char* verdict = row.aim <= 0 ? "" : figure.value <= row.aim ? "met" : "OVER";
    fmt::print("{:<11} {:<52} {:>8} {:>9.2f}  {:<4}  {}\n", row.name, row.what, aim, figure.value,
               verdict, figure.remark);
    std::fflush(stdout);
  }
  return 0;
}

}  // namespace ostrand::bench
