#include "lint/codes.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "lint/findings.h"
#include "lint/key_lines.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using testing::ReadDisk;

TEST(FindingCodes, AreThoseOfTheDocument) {
  std::string inTable;
  for (const CodeRow& row : FindingCodes()) inTable.append(row.code).append("\n");
  const std::string page = ReadDisk(OSTRAND_SOURCE_DIR "/docs/findings.md");
  std::string inPage;
  for (const auto line : Split(page, '\n')) {
    if (line.starts_with("### ")) inPage.append(line.substr(4)).append("\n");
  }
  EXPECT_EQ(inTable, inPage);
}

// The title of a check's findings is a constant of its source, named so.
TEST(FindingCodes, CoverTheTitleOfEachCheck) {
  std::set<std::string> titles;
  for (const auto& entry : std::filesystem::directory_iterator(OSTRAND_SOURCE_DIR "/src/verify")) {
    const std::string source = ReadDisk(entry.path().string());
    std::string_view rest = source;
    while (Holds(rest, "Title = \"")) {
      rest = After(rest, "Title = \"");
      std::string title(Before(rest, "\";"));
      if (title.ends_with("\\\"")) title.replace(title.size() - 2, 2, "\"");
      titles.insert(title);
    }
  }
  EXPECT_EQ(titles.size(), 15U);
  for (const std::string& title : titles) EXPECT_NE(CodeOfTitle(title), "") << title;
  EXPECT_EQ(CodeOfTitle(""), "");
}

TEST(KeyLines, AreFoundBySectionAndKey) {
  const KeyLines lines("[A]\r\nKey=1\r\nOnly(2)= 5\r\n\r\n[B]\r\nKey=2\r\nKey= 3\r\n");
  EXPECT_EQ(lines.LineOf("[A]", "Key"), 2);
  EXPECT_EQ(lines.LineOf("[A]", "Only(2)"), 3);
  EXPECT_EQ(lines.LineOf("[B]", "Key"), 7) << "the last one counts";
  EXPECT_EQ(lines.LineOf("[B]", "Only(2)"), 5) << "its section";
  EXPECT_EQ(lines.LineOf("[C]", "Key"), 1);
}

TEST(OneLine, JoinsTitleAndLines) {
  LintFinding finding;
  finding.title = " INVALID TRIGGERED TABLE\"";
  finding.text = "One\r\n\r\n  two\r\n";
  EXPECT_EQ(OneLine(finding), "INVALID TRIGGERED TABLE: One two");
  finding.title = "";
  EXPECT_EQ(OneLine(finding), "One two");
}

TEST(ProgramFindings, AreErrorsWithTheNameAtFault) {
  const LintFindings findings = ProgramFindings("BeginProg\r\nScan(1,Sec,0,0)\r\nX = Y\n");
  ASSERT_FALSE(findings.empty());
  std::string all;
  for (const LintFinding& finding : findings) {
    EXPECT_EQ(finding.severity, Severity::kError);
    all +=
        std::string(finding.code) + " " + std::to_string(finding.line) + " " + finding.key + "\n";
  }
  EXPECT_TRUE(Holds(all, "program-line 3 \n")) << all;
  EXPECT_TRUE(Holds(all, "undeclared-name 3 Y\n")) << all;
  EXPECT_TRUE(Holds(all, "program-block ")) << all;
}

}  // namespace
}  // namespace ostrand
