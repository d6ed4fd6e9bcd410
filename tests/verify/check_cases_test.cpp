// The checks before a save, on a new project with a few settings, in the files of the folder
// `cases`:
//
//   --- box TITLE | Answer     the next box, its whole text (if empty, that of the box before),
//                              and the user's answer, if not OK
//   --- good names             the check of names passes, after the boxes listed before it
//   --- bad names              the check of names prevents saving
//   --- keys names             the places of its findings in the project file
//   --- saved [SECTION]        lines of the section in the current project file
//   --- lost [SECTION]         keys that are not in it
//   --- new name               of a field about to be created
//   --- opened                 the project was opened: the variables of its formulas are noted
//   --- warnings               the mask of the warnings
#include <functional>
#include <map>

#include "projectfile/genfile.h"
#include "support/project_cases.h"
#include "text/number.h"
#include "text/strings.h"
#include "verify/check_fixture.h"
#include "verify/ground_warning.h"
#include "verify/names_check.h"
#include "verify/pick_var_checks.h"
#include "verify/scan_rate_tables.h"
#include "verify/status_flags_check.h"
#include "verify/zero_burst_check.h"

namespace ostrand::testing {
namespace {

using namespace ORVUS_COMMON;

class CaseOfChecks : public CheckedProject {
 public:
  void Take(const CaseStep& step) {
    if (step.kind.empty()) return TakeSettings(store, step.lines);
    const std::string verb(Before(step.kind, " "));
    const std::string rest(After(step.kind, " "));
    if (verb == "box") {
      const std::string answer(After(rest, " | "));
      if (!step.lines.empty()) text_ = joined(step.lines, "\r\n");
      forms.ExpectBox(std::string(Before(rest, " | ")), text_,
                      answer.empty() ? Answer::kOk : kAnswers.at(answer));
    } else if (verb == "good" || verb == "bad") {
      EXPECT_EQ(isBad(rest), verb == "bad");
    } else if (verb == "keys") {
      std::string keys;
      for (const Finding& finding : found(rest)) {
        keys += std::string(finding.section) + finding.key + "\n";
      }
      EXPECT_EQ(keys, joined(step.lines, "\n") + "\n");
    } else if (verb == "saved" || verb == "lost") {
      const std::string file = ORVUS_GENFILE::ProjectFileText(store, {});
      const std::string section(Before(After(file, rest), "\r\n["));
      ASSERT_FALSE(section.empty()) << rest;
      for (const std::string& line : step.lines) {
        const bool saved = verb == "saved";
        EXPECT_EQ(Holds(section, "\r\n" + line + (saved ? "\r\n" : "=")), saved) << line;
      }
    } else if (verb == "new") {
      newName_ = step.lines.at(0);
    } else if (verb == "opened") {
      refs = CollectCalcVarRefs(store);
    } else if (verb == "warnings") {
      context.WarningMessageMask = static_cast<i32>(Val(step.lines.at(0)));
    } else {
      ADD_FAILURE() << "unknown: " << step.kind;
    }
  }

 private:
  static std::string joined(const std::vector<std::string>& lines, const char* end) {
    std::string text;
    for (const std::string& line : lines) text += (text.empty() ? "" : end) + line;
    return text;
  }

  bool isBad(const std::string& check) {
    bool bad = check != "variables" && check != "ground";  // these two only warn
    if (check == "names") {
      CheckNames(context, bad, newName_);
    } else if (check == "variables") {
      VerifyPickVars(context, kWarnVariablesOnSave);
    } else if (check == "variables of another caller") {
      bad = false;
      VerifyPickVars(context, 1);
    } else if (check == "flags") {
      CheckStatusFlags(context, bad, 1);
    } else if (check == "burst") {
      VerifyZeroBurst(context, bad);
    } else if (check == "ground") {
      FloatingGroundWarning(context);
    } else if (check == "tables") {
      CheckScanRateTables(context, bad);
    } else {
      ADD_FAILURE() << "unknown: " << check;
    }
    return bad;
  }

  Findings found(const std::string& check) {
    if (check == "names") return DuplicateNames(store, newName_);
    if (check == "variables") return PickVarFindings(context);
    if (check == "flags") return StatusFlagFindings(store);
    if (check == "zero flags") return ZeroFlagFindings(store);
    if (check == "calibration") return CalOnSiteFindings(store);
    if (check == "ground") return FloatingGroundFindings(store);
    if (check == "tables") return ScanRateFindings(store);
    ADD_FAILURE() << "unknown: " << check;
    return {};
  }

  const std::map<std::string, Answer> kAnswers = {
      {"Yes", Answer::kYes}, {"No", Answer::kNo}, {"Cancel", Answer::kCancel}};
  std::string newName_;
  std::string text_;  // of the last box
};

class CheckCases : public ::testing::TestWithParam<const char*> {};

TEST_P(CheckCases, ReportTheirFindings) {
  PlayProjectCases<CaseOfChecks>(std::string("verify/cases/") + GetParam());
}

INSTANTIATE_TEST_SUITE_P(Of, CheckCases,
                         ::testing::Values("names.txt", "variables.txt", "blocks_and_flags.txt"));

// 700 equal names are 244,650 pairs, too many for a box.
TEST(NamesCheck, CountsPairsAboveTheLimit) {
  CheckedProject project;
  project.use(project.store.VoltBlock, 7, 100);
  for (VoltBlockData& block : project.store.VoltBlock.Blocks) {
    for (RepAlias& alias : block.Alias) alias.AliasName = "Same";
  }
  const Findings findings = DuplicateNames(project.store, "");
  ASSERT_EQ(findings.size(), 10001U);
  EXPECT_EQ(findings.back().text, "... and 234650 more.");
  EXPECT_TRUE(findings[0].againstSaving);
}

// A slot and a count that a file cannot contain: the other checks still run.
TEST(PickVarChecks, FailureOfOneDoesNotStopTheOthers) {
  CheckedProject project;
  project.store.Ports.Slot[1].Ports[9].Include = kTrue;
  project.store.Ports.Slot[1].Ports[9].State[0].MeasureVar = "Lost";
  project.forms.ExpectBox("INVALID TRIGGER CONDITION",
                          "I/O Port Slot 2 9 Trigger ( Lost ) for State 1 is no longer available.");
  project.store.Tables[1].TrigTable = 11;
  project.store.Tables[2].WriteIf = 1;
  project.store.Tables[2].Write[1].MeasureVar = "Gone";
  project.forms.ExpectBoxWith("TROUBLE",
                              "Unexpected error 9, \"Subscript out of range\" has occurred in "
                              "ORVUS_COMMON.VerifyPickVar_TwoState.");
  project.forms.ExpectBoxWith("INVALID WRITE IF TRIGGER", "Gone");
  VerifyPickVars(project.context, kWarnVariablesOnSave);
}

}  // namespace
}  // namespace ostrand::testing
