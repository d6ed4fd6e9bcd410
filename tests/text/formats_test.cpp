// Texts for programs and their users: JSON, differences, suggestions for misspelled names.
#include <gtest/gtest.h>

#include <limits>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "text/json.h"
#include "text/nearest.h"
#include "text/number.h"
#include "text/strings.h"
#include "text/unified_diff.h"

namespace ostrand {
namespace {

TEST(Json, EscapesWhatAStringCannotHold) {
  constexpr std::pair<std::string_view, std::string_view> cases[] = {
      {"", "\"\""},
      {"a \"b\" \\", "\"a \\\"b\\\" \\\\\""},
      {"one\r\ntwo\nthree\r", "\"one\\ntwo\\nthree\\u000d\""},
      {"\x01\x1F\x7F\t", "\"\\u0001\\u001f\\u007f\\u0009\""},
      {"\u00B0C \u009B \u6E2C", "\"\u00B0C \\u009b \u6E2C\""}};
  for (const auto& [text, json] : cases) EXPECT_EQ(JsonString(text), json);
}

TEST(Json, WriterPutsCommasAndLines) {
  using Layout = JsonWriter::Layout;
  JsonWriter json;
  json.BeginObject().Key("none").BeginArray().End();
  json.Key("list").BeginArray().Number(1).Text("x").BeginObject(Layout::kOneLine);
  json.Key("a").Number(-0.5).Key("b").BeginArray().Bool(true).Null().End().End().End();
  json.Key("far").Number(std::numeric_limits<double>::infinity());
  json.Key("float").Number(0.1F).End();
  EXPECT_EQ(json.Take(),
            "{\n  \"none\": [],\n  \"list\": [\n    1,\n    \"x\",\n"
            "    {\"a\": -0.5, \"b\": [true, null]}\n  ],\n"
            "  \"far\": null,\n  \"float\": 0.1\n}\n");
}

TEST(UnifiedDiff, IsTextOfDiffU) {
  EXPECT_EQ(UnifiedDiff("a", "1\n2\n", "b", "1\n2\n"), "");
  EXPECT_EQ(UnifiedDiff("a", "", "b", "1\n"), "--- a\n+++ b\n@@ -0,0 +1 @@\n+1\n");
  EXPECT_EQ(UnifiedDiff("a", "1\n2", "b", "1\n2\n"),
            "--- a\n+++ b\n@@ -1,2 +1,2 @@\n 1\n-2\n\\ No newline at end of file\n+2\n");
  // Six lines between two changes are the context of both.
  EXPECT_EQ(UnifiedDiff("a", "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12\n13\n14\n15\n16\n17\n18\n", "b",
                        "1\n3\n4\n5\n6\n7\n8\n9x\n10\n11\n12\n13\n14\n15\n16\n17x\n18\n"),
            "--- a\n+++ b\n@@ -1,12 +1,11 @@\n 1\n-2\n 3\n 4\n 5\n 6\n 7\n 8\n-9\n+9x\n 10\n"
            " 11\n 12\n@@ -14,5 +13,5 @@\n 14\n 15\n 16\n-17\n+17x\n 18\n");
}

// The text that a difference makes of `before`; the hunks must fit where they say.
std::string patched(std::string_view before, std::string_view diff) {
  std::vector<std::string_view> lines;
  while (!before.empty()) lines.push_back(TakeLine(before));
  std::string text;
  std::size_t at = 0;
  TakeLine(diff);
  TakeLine(diff);
  while (!diff.empty()) {
    const std::string_view line = TakeLine(diff);
    if (line.starts_with("@@ ")) {
      const std::string_view place = Before(line.substr(4), " ");
      const int begin = ToInt16(Before(place, ",")).value_or(-1);
      const bool empty = After(place, ",") == "0";
      for (; at < static_cast<std::size_t>(empty ? begin : begin - 1); ++at) {
        text.append(lines.at(at)) += '\n';
      }
      continue;
    }
    if (line.front() != '+') {
      EXPECT_EQ(line.substr(1), lines.at(at++));
    }
    if (line.front() != '-') text.append(line.substr(1)) += '\n';
  }
  for (; at < lines.size(); ++at) text.append(lines[at]) += '\n';
  return text;
}

TEST(UnifiedDiff, MakesTheNewTextOfTheOld) {
  std::mt19937 random(7);
  const auto any = [&](unsigned count) { return static_cast<int>(random() % count); };
  for (int round = 0; round < 400; ++round) {
    // From texts that are nearly the same to texts with nothing in common.
    const unsigned letters = 1U << static_cast<unsigned>(any(14));
    std::string before;
    std::string after;
    for (int line = any(round % 50 == 0 ? 6000 : 60); line > 0; --line) {
      const std::string text = NumberText(any(letters)) + "\n";
      if (any(8) > 0) before += text;
      after += any(8) > 0 ? text : NumberText(any(letters)) + "\n";
    }
    if (before == after) continue;
    ASSERT_EQ(patched(before, UnifiedDiff("a", before, "b", after)), after);
  }
}

// Beyond the limit of the search the rest counts as changed.
TEST(UnifiedDiff, EndsForTextsWithNothingInCommon) {
  std::string before;
  std::string after;
  for (int line = 0; line < 30000; ++line) {
    before += "a" + NumberText(line) + "\n";
    after += "b" + NumberText(line) + "\n";
  }
  EXPECT_TRUE(UnifiedDiff("a", before, "b", after)
                  .starts_with("--- a\n+++ b\n@@ -1,30000 +1,30000 @@\n-a0\n"));
}

TEST(Nearest, SuggestsWhatWasProbablyMeant) {
  constexpr std::string_view kNames[] = {"Reps",  "RepsCount", "DefaultMult", "Range",
                                         "Reps1", "Reps2",     "Reps3",       "MV"};
  constexpr std::pair<std::string_view, std::string_view> cases[] = {
      {"Resp", "; did you mean Reps?"},   // exchanged
      {"rnge", "; did you mean Range?"},  // missing, in any case
      {"DefautlMlut", "; did you mean DefaultMult?"},
      {"Reps4", "; did you mean Reps, Reps1 or Reps2?"},
      {"mult", "; did you mean DefaultMult?"},  // a part
      {"Count", "; did you mean RepsCount?"},
      {"XY", ""},
      {"Temperature", ""},
      {"", ""},
      {"V", "; did you mean MV?"}};
  for (const auto& [name, text] : cases) EXPECT_EQ(DidYouMean(name, kNames), text) << name;
  EXPECT_EQ(DidYouMean(std::string(100000, 'x'), kNames), "");
}

}  // namespace
}  // namespace ostrand
