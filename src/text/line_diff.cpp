#include "text/line_diff.h"

#include <algorithm>
#include <map>

#include "text/strings.h"

namespace ostrand {
namespace {

using Lines = std::span<const std::string_view>;

// A pair of equal lines at the end of the best chain of pairs before it.
struct Pair {
  int before;
  int after;
  int previous;  // index of a pair; -1 for the first
};

// The longest chain of pairs of equal lines, both rising. `ends` has for each length of a chain the
// pair that ends it soonest in the second text.
std::vector<Pair> longestChain(Lines before, Lines after) {
  std::map<std::string_view, std::vector<int>> places;  // in the second text, falling
  for (int at = static_cast<int>(after.size()) - 1; at >= 0; --at) {
    places[after[static_cast<std::size_t>(at)]].push_back(at);
  }
  std::vector<Pair> pairs;
  std::vector<int> ends;
  for (std::size_t line = 0; line < before.size(); ++line) {
    const auto found = places.find(before[line]);
    if (found == places.end()) continue;
    for (const int at : found->second) {
      const auto longer = std::lower_bound(ends.begin(), ends.end(), at, [&](int pair, int place) {
        return pairs[static_cast<std::size_t>(pair)].after < place;
      });
      const bool isSame =
          longer != ends.end() && pairs[static_cast<std::size_t>(*longer)].after == at;
      if (isSame) continue;
      const int previous = longer == ends.begin() ? -1 : *(longer - 1);
      const int made = static_cast<int>(pairs.size());
      pairs.push_back({static_cast<int>(line), at, previous});
      if (longer == ends.end()) {
        ends.push_back(made);
      } else {
        *longer = made;
      }
    }
  }
  std::vector<Pair> chain;
  for (int at = ends.empty() ? -1 : ends.back(); at >= 0;
       at = pairs[static_cast<std::size_t>(at)].previous) {
    chain.push_back(pairs[static_cast<std::size_t>(at)]);
  }
  std::reverse(chain.begin(), chain.end());
  return chain;
}

}  // namespace

std::vector<LineChange> LineChanges(Lines before, Lines after) {
  const auto head = static_cast<std::size_t>(
      std::mismatch(before.begin(), before.end(), after.begin(), after.end()).first -
      before.begin());
  const Lines restBefore = before.subspan(head);
  const Lines restAfter = after.subspan(head);
  const auto tail = static_cast<std::size_t>(
      std::mismatch(restBefore.rbegin(), restBefore.rend(), restAfter.rbegin(), restAfter.rend())
          .first -
      restBefore.rbegin());
  const Lines old = restBefore.first(restBefore.size() - tail);
  const Lines now = restAfter.first(restAfter.size() - tail);

  std::vector<LineChange> changes;
  const int offset = static_cast<int>(head);
  int oldAt = 0;
  int nowAt = 0;
  const auto addUpTo = [&](int oldEnd, int nowEnd) {
    if (oldEnd > oldAt || nowEnd > nowAt) {
      changes.push_back({offset + oldAt, oldEnd - oldAt, offset + nowAt, nowEnd - nowAt});
    }
  };
  for (const Pair& pair : longestChain(old, now)) {
    addUpTo(pair.before, pair.after);
    oldAt = pair.before + 1;
    nowAt = pair.after + 1;
  }
  addUpTo(static_cast<int>(old.size()), static_cast<int>(now.size()));
  return changes;
}

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) lines.push_back(TakeLine(text));
  return lines;
}

}  // namespace ostrand
