#include "text/unified_diff.h"

#include <algorithm>
#include <vector>

#include "text/line_diff.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr int kContext = 3;  // unchanged lines before and after a change

// The lines with their ends.
std::vector<std::string_view> linesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t size = std::min(text.find('\n'), text.size() - 1) + 1;
    lines.push_back(text.substr(0, size));
    text.remove_prefix(size);
  }
  return lines;
}

// A run of lines around changes that are near each other; lines are counted from 0.
struct Hunk {
  int oldBegin;
  int oldEnd;
  int newBegin;
  int newEnd;
  std::vector<LineChange> changes;
};

std::vector<Hunk> hunksOf(const std::vector<LineChange>& changes, int oldCount) {
  std::vector<Hunk> hunks;
  for (const LineChange& change : changes) {
    const int oldEnd = change.before + change.beforeCount;
    const int lead = std::min(kContext, change.before);
    const int trail = std::min(kContext, oldCount - oldEnd);
    if (hunks.empty() || change.before - lead > hunks.back().oldEnd) {
      hunks.push_back({change.before - lead, 0, change.after - lead, 0, {}});
    }
    hunks.back().oldEnd = oldEnd + trail;
    hunks.back().newEnd = change.after + change.afterCount + trail;
    hunks.back().changes.push_back(change);
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

void put(std::string& text, char mark, const std::vector<std::string_view>& lines, int begin,
         int end) {
  for (int at = begin; at < end; ++at) {
    const std::string_view line = lines[static_cast<std::size_t>(at)];
    text.append(1, mark).append(line);
    if (!line.ends_with('\n')) text += "\n\\ No newline at end of file\n";
  }
}

}  // namespace

std::string UnifiedDiff(std::string_view beforeName, std::string_view before,
                        std::string_view afterName, std::string_view after) {
  if (before == after) return {};
  const std::vector<std::string_view> oldLines = linesOf(before);
  const std::vector<std::string_view> newLines = linesOf(after);
  std::string text = "--- ";
  text.append(beforeName).append("\n+++ ").append(afterName).append("\n");
  for (const Hunk& hunk :
       hunksOf(LineChanges(oldLines, newLines), static_cast<int>(oldLines.size()))) {
    text.append("@@ -").append(placeOf(hunk.oldBegin, hunk.oldEnd));
    text.append(" +").append(placeOf(hunk.newBegin, hunk.newEnd)).append(" @@\n");
    int at = hunk.oldBegin;
    for (const LineChange& change : hunk.changes) {
      put(text, ' ', oldLines, at, change.before);
      at = change.before + change.beforeCount;
      put(text, '-', oldLines, change.before, at);
      put(text, '+', newLines, change.after, change.after + change.afterCount);
    }
    put(text, ' ', oldLines, at, hunk.oldEnd);
  }
  return text;
}

}  // namespace ostrand
