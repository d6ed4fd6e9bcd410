// Programs of a new project with a few settings, in the files of the folder `cases`:
//
//   --- program    consecutive lines; "~" fills up to the comment in column 66
//   --- once       lines that occur exactly once
//   --- parts      parts of lines
//   --- never      parts that are in no line
//   --- fault 9 Subroutines    a failure that the previous run reports, and its description
//   --- faults     the reports of all sections that failed; empty for a complete program
//   --- host       the host application
#include <gtest/gtest.h>

#include "generator/generated.h"
#include "support/project_cases.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::testing {
namespace {

class CaseOfAProgram : public ProgramMaker {
 public:
  void Take(const CaseStep& step) {
    const std::string& kind = step.kind;
    if (kind.empty()) {
      TakeSettings(store, step.lines);
      made_ = false;
    } else if (kind == "host") {
      generator.HostApp(step.lines.at(0));
    } else if (kind.starts_with("fault ")) {
      ExpectFault(static_cast<int>(Val(kind.substr(6))), step.lines.at(0),
                  After(std::string_view(kind).substr(6), " "));
    } else {
      if (!made_) MakeProgram();
      made_ = true;
      expect(kind, step.lines);
    }
  }

 private:
  void expect(const std::string& kind, const Lines& lines) const {
    if (kind == "faults") {
      EXPECT_EQ(generator.Faults(), lines);
      return;
    }
    ASSERT_FALSE(lines.empty()) << kind;
    if (kind == "program") {
      ExpectRun(lines);
    } else if (kind == "once") {
      for (const std::string& line : lines) {
        EXPECT_EQ(std::count(program.begin(), program.end(), Filled(line)), 1) << line;
      }
    } else if (kind == "parts") {
      for (const std::string& part : lines) EXPECT_GT(Holding(part), 0) << part;
    } else if (kind == "never") {
      for (const std::string& part : lines) EXPECT_EQ(Holding(part), 0) << part;
    } else {
      ADD_FAILURE() << "unknown: " << kind;
    }
  }

  bool made_ = false;
};

class ProgramCases : public ::testing::TestWithParam<const char*> {};

TEST_P(ProgramCases, HaveTheirLines) {
  PlayProjectCases<CaseOfAProgram>(std::string("generator/cases/") + GetParam());
}

INSTANTIATE_TEST_SUITE_P(Of, ProgramCases,
                         ::testing::Values("declarations.txt", "blocks.txt", "scan.txt",
                                           "tables.txt", "slow_sequence.txt", "faults.txt"));

}  // namespace
}  // namespace ostrand::testing
