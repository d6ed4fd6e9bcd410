#include "text/line_diff.h"

#include <gtest/gtest.h>

#include <random>

namespace ostrand {
namespace {

std::vector<LineChange> changes(std::string_view before, std::string_view after) {
  return LineChanges(LinesOf(before), LinesOf(after));
}

TEST(LineDiff, FindsLinesThatAreReplacedAddedAndRemoved) {
  using Changes = std::vector<LineChange>;
  EXPECT_EQ(changes("a\nb\nc\n", "a\nb\nc\n"), Changes());
  EXPECT_EQ(changes("a\r\nb\r\nc", "a\nx\nc\n"), (Changes{{1, 1, 1, 1}}));
  EXPECT_EQ(changes("a\nb\n", "a\nx\ny\nb\n"), (Changes{{1, 0, 1, 2}}));
  EXPECT_EQ(changes("a\nx\ny\nb\n", "a\nb\n"), (Changes{{1, 2, 1, 0}}));
  EXPECT_EQ(changes("", "a\n"), (Changes{{0, 0, 0, 1}}));
  EXPECT_EQ(changes("a\na\na\n", "a\na\n"), (Changes{{2, 1, 2, 0}}));
  EXPECT_EQ(changes("h\na\nb\nc\nt\n", "h\nc\na\nb\nt\n"), (Changes{{1, 0, 1, 1}, {3, 1, 4, 0}}));
}

// The number of lines that two texts have in common, by the plain table.
std::size_t inCommon(const std::vector<std::string_view>& one,
                     const std::vector<std::string_view>& other) {
  std::vector<std::vector<std::size_t>> best(one.size() + 1,
                                             std::vector<std::size_t>(other.size() + 1, 0));
  for (std::size_t i = one.size(); i-- > 0;) {
    for (std::size_t j = other.size(); j-- > 0;) {
      best[i][j] =
          one[i] == other[j] ? best[i + 1][j + 1] + 1 : std::max(best[i + 1][j], best[i][j + 1]);
    }
  }
  return best[0][0];
}

TEST(LineDiff, MakesOneTextOfTheOtherWithTheFewestLines) {
  std::mt19937 random(7);
  for (int round = 0; round < 500; ++round) {
    std::vector<std::string_view> texts[2];
    for (auto& text : texts) {
      const std::size_t count = random() % 12;
      for (std::size_t i = 0; i < count; ++i)
        text.push_back(std::string_view("abcd").substr(random() % 4, 1));
    }
    std::vector<std::string_view> made;
    std::size_t at = 0;
    std::size_t kept = 0;
    for (const LineChange& change : LineChanges(texts[0], texts[1])) {
      for (; at < static_cast<std::size_t>(change.before); ++at, ++kept)
        made.push_back(texts[0][at]);
      EXPECT_EQ(made.size(), static_cast<std::size_t>(change.after));
      at += static_cast<std::size_t>(change.beforeCount);
      for (int i = 0; i < change.afterCount; ++i) {
        made.push_back(texts[1][static_cast<std::size_t>(change.after + i)]);
      }
    }
    for (; at < texts[0].size(); ++at, ++kept) made.push_back(texts[0][at]);
    EXPECT_EQ(made, texts[1]);
    EXPECT_EQ(kept, inCommon(texts[0], texts[1]));
  }
}

}  // namespace
}  // namespace ostrand
