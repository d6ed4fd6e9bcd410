// The documents of a new project with a few settings, in the files of the folder `cases`:
//
//   --- summary        consecutive lines of the summary
//   --- description    consecutive lines of the table description
//   --- absent         texts that are in neither of the two
//   --- wired          all wired terminals of the wiring diagram, as "terminal:label"
//   --- wired part     consecutive ones of them
//   --- fault 9 Bridges    a failure of the program, reported before the wiring diagram
#include <gtest/gtest.h>

#include "documents/makewire.h"
#include "documents/summary.h"
#include "documents/table_description.h"
#include "documents/wired_terminals.h"
#include "generator/generated.h"
#include "support/project_cases.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::testing {
namespace {

const DocumentHead kHead = {"PUMP", {2025, 11, 24, 9, 30, 0}};

class CaseOfDocuments : public ProgramMaker {
 public:
  void Take(const CaseStep& step) {
    const std::string& kind = step.kind;
    if (kind.empty()) return TakeSettings(store, step.lines);
    ASSERT_FALSE(step.lines.empty() && kind != "wired") << kind;
    if (kind == "summary") {
      expectRun(summary(), step.lines, "\r\n");
    } else if (kind == "description") {
      expectRun(description(), step.lines, "\r\n");
    } else if (kind == "absent") {
      for (const std::string& part : step.lines) {
        EXPECT_FALSE(Holds(summary(), part) || Holds(description(), part)) << part;
      }
    } else if (kind == "wired part") {
      expectRun(wired(), step.lines, "\n");
    } else if (kind == "wired") {
      EXPECT_EQ(wired(), joined(step.lines, "\n"));
    } else if (kind.starts_with("fault ")) {
      ExpectFault(static_cast<int>(Val(kind.substr(6))), step.lines.at(0),
                  After(std::string_view(kind).substr(6), " "));
    } else {
      ADD_FAILURE() << "unknown: " << kind;
    }
  }

 private:
  static std::string joined(const Lines& lines, const char* end) {
    std::string text;
    for (const std::string& line : lines) text += line + end;
    return text;
  }
  static void expectRun(const std::string& text, const Lines& lines, const char* end) {
    const bool found = Holds(end + text, end + joined(lines, end));
    EXPECT_TRUE(found) << "Wanted:\n" << joined(lines, "\n") << "in:\n" << text;
  }

  std::string summary() {
    PlainText box;
    EXPECT_TRUE(Summarize(store, {.projectName = "Pump"}, box, forms));
    return box.Text();
  }
  std::string description() { return TableDescriptionText(store, kHead); }
  std::string wired() {
    MakeProgram();
    return WiredIn(WiringText(store, generator.Channels(), kHead));
  }
};

class DocumentCases : public ::testing::TestWithParam<const char*> {};

TEST_P(DocumentCases, ShowTheProject) {
  PlayProjectCases<CaseOfDocuments>(std::string("documents/cases/") + GetParam());
}

INSTANTIATE_TEST_SUITE_P(Of, DocumentCases,
                         ::testing::Values("summary.txt", "table_description.txt", "wiring.txt"));

}  // namespace
}  // namespace ostrand::testing
