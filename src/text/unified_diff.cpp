#include "text/unified_diff.h"

#include <algorithm>
#include <limits>
#include <map>
#include <optional>
#include <vector>

#include "text/number.h"

namespace ostrand {
namespace {

constexpr int kContext = 3;     // unchanged lines before and after a change
constexpr int kMaxCost = 2000;  // changes after which a search gives up

using Lines = std::vector<std::string_view>;

// The lines with their ends.
Lines linesOf(std::string_view text) {
  Lines lines;
  while (!text.empty()) {
    const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
    lines.push_back(text.substr(0, size));
    text.remove_prefix(size);
  }
  return lines;
}

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

// A run of lines with the changes in it.
std::vector<Range> hunksOf(const Side& before, const Side& after) {
  const int oldCount = static_cast<int>(before.lines.size());
  const int newCount = static_cast<int>(after.lines.size());
  const auto changed = [](const Side& side, int at, int count) {
    return at < count && side.changed[static_cast<std::size_t>(at)];
  };
  std::vector<Range> hunks;
  for (int atOld = 0, atNew = 0; atOld < oldCount || atNew < newCount; ++atOld, ++atNew) {
    Range change{atOld, atOld, atNew, atNew};
    while (changed(before, change.oldEnd, oldCount)) ++change.oldEnd;
    while (changed(after, change.newEnd, newCount)) ++change.newEnd;
    atOld = change.oldEnd;
    atNew = change.newEnd;
    if (change.oldBegin == atOld && change.newBegin == atNew) continue;
    const int lead = std::min(kContext, change.oldBegin);
    const int trail = std::min(kContext, oldCount - atOld);
    if (!hunks.empty() && change.oldBegin - lead <= hunks.back().oldEnd) {
      hunks.back().oldEnd = atOld + trail;
      hunks.back().newEnd = atNew + trail;
    } else {
      hunks.push_back(
          {change.oldBegin - lead, atOld + trail, change.newBegin - lead, atNew + trail});
    }
  }
  return hunks;
}

// The first line and the number of lines, which is left out when it is 1.
std::string placeOf(int begin, int end) {
  const int count = end - begin;
  std::string place = NumberText(count == 0 ? begin : begin + 1);
  if (count != 1) place.append(",").append(NumberText(count));
  return place;
}

void put(std::string& text, char mark, std::string_view line) {
  text.append(1, mark).append(line);
  if (!line.ends_with('\n')) text += "\n\\ No newline at end of file\n";
}

}  // namespace

std::string UnifiedDiff(std::string_view beforeName, std::string_view before,
                        std::string_view afterName, std::string_view after) {
  if (before == after) return {};
  const Lines oldLines = linesOf(before);
  const Lines newLines = linesOf(after);
  std::map<std::string_view, int> numbers;
  const auto sideOf = [&](const Lines& lines) {
    Side side;
    for (const std::string_view line : lines) {
      side.lines.push_back(numbers.emplace(line, static_cast<int>(numbers.size())).first->second);
    }
    side.changed.resize(lines.size());
    return side;
  };
  Side oldSide = sideOf(oldLines);
  Side newSide = sideOf(newLines);
  Comparison(oldSide, newSide).Run();

  std::string text = "--- ";
  text.append(beforeName).append("\n+++ ").append(afterName).append("\n");
  for (const Range& hunk : hunksOf(oldSide, newSide)) {
    text.append("@@ -").append(placeOf(hunk.oldBegin, hunk.oldEnd));
    text.append(" +").append(placeOf(hunk.newBegin, hunk.newEnd)).append(" @@\n");
    auto atOld = static_cast<std::size_t>(hunk.oldBegin);
    auto atNew = static_cast<std::size_t>(hunk.newBegin);
    const auto oldEnd = static_cast<std::size_t>(hunk.oldEnd);
    const auto newEnd = static_cast<std::size_t>(hunk.newEnd);
    while (atOld < oldEnd || atNew < newEnd) {
      if (atOld < oldEnd && oldSide.changed[atOld]) {
        put(text, '-', oldLines[atOld++]);
      } else if (atNew < newEnd && newSide.changed[atNew]) {
        put(text, '+', newLines[atNew++]);
      } else {
        put(text, ' ', oldLines[atOld++]);
        ++atNew;
      }
    }
  }
  return text;
}

}  // namespace ostrand
