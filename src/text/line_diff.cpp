#include "text/line_diff.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>

#include "text/strings.h"

namespace ostrand {
namespace {

constexpr int kMaxCost = 2000;  // changes after which a search gives up

using Lines = std::span<const std::string_view>;

// One of the two texts: a number for each line, equal for equal lines, and which lines change.
struct Side {
  std::vector<int> lines;
  std::vector<bool> changed;

  void Change(int begin, int end) {
    std::fill(changed.begin() + begin, changed.begin() + end, true);
  }
};

// Lines `oldBegin` up to `oldEnd` against `newBegin` up to `newEnd`, counted from 0.
struct Range {
  int oldBegin;
  int oldEnd;
  int newBegin;
  int newEnd;
};

// Marks a shortest set of changed lines. It searches from both ends for a point that lies on a
// shortest way through the grid of old and new lines, and then on both sides of that point.
class Comparison {
 public:
  Comparison(Side& before, Side& after) : old_(before), new_(after) {
    const int size = sizeOf(old_) + sizeOf(new_) + 3;
    forward_.resize(static_cast<std::size_t>(size));
    backward_.resize(static_cast<std::size_t>(size));
  }

  void Run() { compare({0, sizeOf(old_), 0, sizeOf(new_)}); }

 private:
  struct Point {
    int atOld;
    int atNew;
  };

  static int sizeOf(const Side& side) { return static_cast<int>(side.lines.size()); }
  [[nodiscard]] bool same(int atOld, int atNew) const {
    return old_.lines[static_cast<std::size_t>(atOld)] ==
           new_.lines[static_cast<std::size_t>(atNew)];
  }
  // The old line that a search has reached on a diagonal, the difference of old and new line.
  int& reached(std::vector<int>& search, int diagonal) {
    const int at = diagonal + sizeOf(new_) + 1;
    return search[static_cast<std::size_t>(at)];
  }

  void compare(Range range) {
    while (range.oldBegin < range.oldEnd && range.newBegin < range.newEnd &&
           same(range.oldBegin, range.newBegin)) {
      ++range.oldBegin;
      ++range.newBegin;
    }
    while (range.oldBegin < range.oldEnd && range.newBegin < range.newEnd &&
           same(range.oldEnd - 1, range.newEnd - 1)) {
      --range.oldEnd;
      --range.newEnd;
    }
    const bool oneSided = range.oldBegin == range.oldEnd || range.newBegin == range.newEnd;
    const std::optional<Point> middle = oneSided ? std::nullopt : middleOf(range);
    if (!middle) {
      old_.Change(range.oldBegin, range.oldEnd);
      new_.Change(range.newBegin, range.newEnd);
      return;
    }
    compare({range.oldBegin, middle->atOld, range.newBegin, middle->atNew});
    compare({middle->atOld, range.oldEnd, middle->atNew, range.newEnd});
  }

  // The diagonals of a search, every second one.
  struct Front {
    int first;
    int last;

    // One more change: a diagonal more at each end that is in the grid.
    void Widen(int lowest, int highest) {
      first += first > lowest ? -1 : 1;
      last += last < highest ? 1 : -1;
    }
    [[nodiscard]] bool Has(int diagonal) const { return first <= diagonal && diagonal <= last; }
  };

  std::optional<Point> middleOf(const Range& range) {
    const int lowest = range.oldBegin - range.newEnd;
    const int highest = range.oldEnd - range.newBegin;
    Front ahead{range.oldBegin - range.newBegin, range.oldBegin - range.newBegin};
    Front back{range.oldEnd - range.newEnd, range.oldEnd - range.newEnd};
    const bool odd = (ahead.first - back.first) % 2 != 0;
    reached(forward_, ahead.first) = range.oldBegin;
    reached(backward_, back.first) = range.oldEnd;
    for (int cost = 0; cost < kMaxCost; ++cost) {
      prepare(forward_, ahead, lowest, highest, -1);
      for (int diagonal = ahead.last; diagonal >= ahead.first; diagonal -= 2) {
        const int at = goForward(range, diagonal);
        if (odd && back.Has(diagonal) && reached(backward_, diagonal) <= at) {
          return Point{at, at - diagonal};
        }
      }
      prepare(backward_, back, lowest, highest, std::numeric_limits<int>::max());
      for (int diagonal = back.last; diagonal >= back.first; diagonal -= 2) {
        const int at = goBackward(range, diagonal);
        if (!odd && ahead.Has(diagonal) && at <= reached(forward_, diagonal)) {
          return Point{at, at - diagonal};
        }
      }
    }
    return std::nullopt;
  }

  // Widens a front; the diagonals beside it have reached nothing.
  void prepare(std::vector<int>& search, Front& front, int lowest, int highest, int nothing) {
    if (front.first > lowest) reached(search, front.first - 2) = nothing;
    if (front.last < highest) reached(search, front.last + 2) = nothing;
    front.Widen(lowest, highest);
  }

  int goForward(const Range& range, int diagonal) {
    const int below = reached(forward_, diagonal - 1);
    const int above = reached(forward_, diagonal + 1);
    int at = below < above ? above : below + 1;
    while (at < range.oldEnd && at - diagonal < range.newEnd && same(at, at - diagonal)) ++at;
    return reached(forward_, diagonal) = at;
  }

  int goBackward(const Range& range, int diagonal) {
    const int below = reached(backward_, diagonal - 1);
    const int above = reached(backward_, diagonal + 1);
    int at = below < above ? below : above - 1;
    while (at > range.oldBegin && at - diagonal > range.newBegin &&
           same(at - 1, at - diagonal - 1)) {
      --at;
    }
    return reached(backward_, diagonal) = at;
  }

  Side& old_;
  Side& new_;
  std::vector<int> forward_;
  std::vector<int> backward_;
};

}  // namespace

std::vector<LineChange> LineChanges(Lines before, Lines after) {
  std::map<std::string_view, int> numbers;
  const auto sideOf = [&](Lines lines) {
    Side side;
    for (const std::string_view line : lines) {
      side.lines.push_back(numbers.emplace(line, static_cast<int>(numbers.size())).first->second);
    }
    side.changed.resize(lines.size());
    return side;
  };
  Side old = sideOf(before);
  Side now = sideOf(after);
  Comparison(old, now).Run();
  const auto endOfChange = [](const Side& side, std::size_t at) {
    while (at < side.changed.size() && side.changed[at]) ++at;
    return at;
  };
  std::vector<LineChange> changes;
  for (std::size_t atOld = 0, atNew = 0; atOld < before.size() || atNew < after.size();
       ++atOld, ++atNew) {
    const std::size_t oldEnd = endOfChange(old, atOld);
    const std::size_t newEnd = endOfChange(now, atNew);
    if (oldEnd > atOld || newEnd > atNew) {
      changes.push_back({static_cast<int>(atOld), static_cast<int>(oldEnd - atOld),
                         static_cast<int>(atNew), static_cast<int>(newEnd - atNew)});
    }
    atOld = oldEnd;
    atNew = newEnd;
  }
  return changes;
}

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) lines.push_back(TakeLine(text));
  return lines;
}

}  // namespace ostrand
