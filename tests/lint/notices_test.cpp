// Notices on a new project with a few settings, in the files of the folder `cases`:
//
//   --- notices CODE...   all notices with these codes: section, key and text of each; without
//                         codes all there are
#include <gtest/gtest.h>

#include <filesystem>
#include <set>

#include "lint/codes.h"
#include "lint/findings.h"
#include "model/scan_time.h"
#include "places/key_places.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/project_cases.h"
#include "support/temp_folder.h"
#include "support/test_surroundings.h"
#include "text/strings.h"
#include "verify/check_fixture.h"

namespace ostrand::testing {
namespace {

class CaseOfNotices : public CheckedProject {
 public:
  void Take(const CaseStep& step) {
    if (step.kind.empty()) return TakeSettings(store, step.lines);
    const auto words = Split(step.kind, ' ');
    store.EstMeasTime = ORVUS_COMMON::EstMeasTime(store);
    const ProgramPreview program = PreviewOf(store, machine_.all, "Pump", "");
    std::vector<std::string> lines;
    for (const LintFinding& notice : Notices(store, program, {})) {
      EXPECT_EQ(notice.severity, Severity::kNotice);
      // A key leads to its screen.
      EXPECT_EQ(notice.section.empty(), PlaceOfKey(notice.section, notice.key).screen.steps.empty())
          << notice.section << notice.key;
      const bool asked =
          words.size() == 1 || std::find(words.begin(), words.end(), notice.code) != words.end();
      if (asked) lines.push_back(notice.section + notice.key + " " + notice.text);
    }
    EXPECT_EQ(lines, step.lines);
  }

 private:
  MemoryFileSystem files_;
  FixedClock clock_;
  TestSurroundings machine_{files_, clock_, forms, "/tmp"};
};

TEST(Notices, OfProjectsWithAFewSettings) {
  PlayProjectCases<CaseOfNotices>("lint/cases/notices.txt");
}

TEST(Notices, LinesNotReadAreListedUpToALimit) {
  CheckedProject project;
  ORVUS_GENFILE::ReadReport report;
  report.skipped = 7;
  report.first = {{12, "Reps(9)=1", "unknown key"}};
  const LintFindings notices = Notices(project.store, {}, report);
  ASSERT_GE(notices.size(), 2U);
  EXPECT_EQ(notices[0].text, "line 12: Reps(9)=1: unknown key");
  EXPECT_EQ(notices[0].line, 12);
  EXPECT_EQ(notices[1].text, "6 more lines were not read");
}

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
}  // namespace ostrand::testing
