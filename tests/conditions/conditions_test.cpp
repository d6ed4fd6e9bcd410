// Conditions as screens compose them, and the line that groups them.
#include "conditions/condition_row.h"
#include "conditions/condition_set.h"
#include "conditions/condition_variables.h"
#include "conditions/grouping.h"
#include "model/variables.h"
#include "support/table_screens_fixture.h"

namespace ostrand {
namespace {

// A "^" marks the reported position: it precedes the character.
TEST(GroupingTest, FirstFaultIsReportedWithItsPosition) {
  const struct {
    std::string title, text;  // no title for a valid line
    std::vector<std::string> lines;
  } faults[] = {
      {"",
       "",
       {"1", "", "   ", "1 AND (2 OR 3)", "((1))and(2)Or3", "10 OR 1", "007 OR1", "1OR 2AND(3)"}},
      {"GROUPING SYNTAX ERROR - A",
       "A syntax error with 'A' was found at character number ",
       {"^AND 1", "1 AND ^and 2"}},
      {"GROUPING SYNTAX ERROR - O",
       "A syntax error with 'O' was found at character number ",
       {"1 OR (^OR 2)"}},
      {"GROUPING SYNTAX ERROR - N",
       "A syntax error (no 'N') was found at character number ",
       {"1 A^BD 2", "1 A^ ND 2", "1 A^"}},
      {"GROUPING SYNTAX ERROR - D",
       "A syntax error (no 'D') was found at character number ",
       {"1 AN^E 2", "1 AN^ D 2"}},
      {"GROUPING SYNTAX ERROR - R",
       "A syntax error (no 'R') was found at character number ",
       {"1 O^ 2"}},
      {"TWO NUMBER TOGETHER WITHOUT LOGIC ERROR",
       "A syntax error was found at character number ",
       {"1 ^2", "  1  ^22", "1 ^0", "1 AND 2 (^99)", "1 (^2)", "(1)(^2)"}},
      {"GROUPING SYNTAX ERROR",
       "A syntax error was found at character number ",
       {"1 AND^", "1 AND  ^", "(1 OR^)", "(^)", "1^\t", "1 ^XOR 2", "1 OR^R 2", "1^.2", "^-1"}},
      {"MISMATCHED PARENTHESES",
       "The parentheses in the condition groupings are not matched correctly",
       {"(1 AND 2", "1) AND (2", ")", "(", "(1 OR", "1 OR 2 (", "1 ) 2", "1 AND )"}},
      {"CONDITION NUMBER RANGE ERROR",
       "Only condition numbers from 1 to the last valid condition may be grouped (1-10 maximum).",
       {"0", "11", "1 OR 99999999999999999999", "11 2)"}},
  };
  for (const auto& expected : faults) {
    for (std::string line : expected.lines) {
      SCOPED_TRACE(line);
      const std::size_t mark = line.find('^');
      if (mark != std::string::npos) line.erase(mark, 1);
      const auto fault = FindGroupingFault(line, 10);
      ASSERT_EQ(fault.has_value(), !expected.title.empty()) << (fault ? fault->text : "");
      if (!fault) continue;
      EXPECT_EQ(fault->title, expected.title);
      const bool placed = mark != std::string::npos;
      EXPECT_EQ(fault->text, expected.text + (placed ? std::to_string(mark + 1) : ""));
    }
  }
  EXPECT_FALSE(FindGroupingFault("3", 3).has_value());
  EXPECT_TRUE(FindGroupingFault("4", 3).has_value());
}

// Random lines of the letters that lines consist of are either refused, or their stored form joins
// their rows so that the program can expand it: words separated by blanks, numbers without zeros.
TEST(GroupingTest, StoredLineIsValidAndStable) {
  constexpr std::string_view kPieces[] = {"1", "2 ", "10", "01", "(", ")", "OR", "or ", " And"};
  unsigned seed = 7;
  int good = 0;
  for (int round = 0; round < 20000; ++round) {
    std::string line;
    for (int i = 0; i <= 2 + round % 5; ++i) {
      seed = seed * 1103515245U + 12345U;
      line += kPieces[(seed >> 16U) % std::size(kPieces)];
    }
    if (FindGroupingFault(line, 10)) continue;
    ++good;
    const std::string stored = StoredGrouping(line, 10);
    EXPECT_FALSE(FindGroupingFault(stored, 10)) << line << " -> " << stored;
    EXPECT_EQ(StoredGrouping(stored, 10), stored) << line;
    const std::string rows[10] = {"x", "x", "x", "x", "x", "x", "x", "x", "x", "x"};
    const std::string text = ExpandGrouping(stored, rows, RowForm::kBare);
    for (const std::string_view run : {"xx", "xO", "xA", "Rx", "Dx", "0"}) {
      EXPECT_EQ(text.find(run), std::string::npos) << line << " -> " << text;
    }
  }
  EXPECT_GT(good, 100);
}

TEST(GroupingTest, LinesAreStoredAndExpanded) {
  EXPECT_EQ(DefaultGrouping(0), "1");
  EXPECT_EQ(DefaultGrouping(1), "1");
  EXPECT_EQ(DefaultGrouping(3), "1 OR 2 OR 3");
  EXPECT_EQ(StoredGrouping(" ", 2), "1 OR 2");
  EXPECT_EQ(StoredGrouping("1 and(02  Or 3) ", 3), "1 AND (2  OR 3)");
  EXPECT_EQ(StoredGrouping("1or2", 2), "1 OR 2");
  const std::string rows[] = {"a = 1", "b = 2", "c = 3"};
  EXPECT_EQ(ExpandGrouping("1 AND (2 OR 3)", rows, RowForm::kInParentheses),
            "(a = 1) AND ((b = 2) OR (c = 3))");
  EXPECT_EQ(ExpandGrouping("1 AND (2 OR 3)", rows, RowForm::kBare), "a = 1 AND (b = 2 OR c = 3)");
}

class VoltProject : public testing::TableScreens {
 protected:
  VoltProject() {
    kinds = {kVoltVariables, kFlagVariables};
    store->VoltBlock.BlockCount = 2;
    store->VoltBlock[1].Reps = 2;
    store->VoltBlock[1].Alias[2].AliasName = "Oil";
    store->VoltBlock[2].Reps = 1;
  }
};

class ConditionsTest : public VoltProject {
 protected:
  Screen screen{{*store, forms, host, AllScreens(), options, 0, kinds}, "frmTest"};
  ConditionVariables variables{*store, kinds};
  ConditionSet set{screen,
                   variables,
                   {.group = "Conditions",
                    .row =
                        [](int n) {
                          const std::string at = std::to_string(n);
                          return ConditionControlNames{"Meas" + at, "Compare" + at, "Value" + at,
                                                       "Expression" + at};
                        },
                    .grouping = "Grouping",
                    .expression = "Whole"}};

  void use(std::string_view name, std::string_view keys) {
    Control& used = control(screen, name);
    EXPECT_TRUE(used.Pick(keys) || used.TypeText(keys)) << name;
    ASSERT_TRUE(screen.MoveFocus(nullptr)) << name << " keeps " << used.Text();
  }
  std::string shown(std::string_view name) { return TableScreens::shown(screen, name); }
};

TEST_F(ConditionsTest, AliasesConvertToVariablesAndBack) {
  const std::vector<std::string> first(variables.Names().begin(), variables.Names().begin() + 4);
  EXPECT_EQ(first, (std::vector<std::string>{"VBlk1(1)", "Oil", "VBlk2", "Flag(1)"}));
  EXPECT_EQ(variables.InVariables("oil > VBlk2 AND Flag(1) = True"),
            "VBlk1(2) > VBlk2(1) AND Flag(1) = True");
  EXPECT_EQ(variables.InAliases("VBlk1(2) > VBlk2(1) AND VBlk1(1) < 3"),
            "Oil > VBlk2 AND VBlk1(1) < 3");
  EXPECT_EQ(variables.InVariables("(Oil2 <= Oil) OR (Oil(2)<>MyOil)"),
            "(Oil2 <= VBlk1(2)) OR (Oil(2)<>MyOil)")
      << "names are whole and have their index with them";
  EXPECT_EQ(variables.Find("vblk1(2)"), 1);
  EXPECT_EQ(variables.Find("VBlk1"), -1);
}

TEST_F(ConditionsTest, RowIsComposedFromPicks) {
  set.Load({}, 0, "");
  use("Meas1", "Oil");
  use("Compare1", ">=");
  use("Value1", "0.50");
  EXPECT_EQ(set.Stored(1), (ConditionRow{"Oil", 3, 0, 0.5F, "", "VBlk1(2) >= 0.5"}));
  use("Value1", "vblk2");
  EXPECT_EQ(set.Stored(1), (ConditionRow{"Oil", 3, 2, 0, "VBlk2", "VBlk1(2) >= VBlk2(1)"}));
  EXPECT_EQ(shown("Expression1"), "Oil >= VBlk2");
  use("Value1", "true");
  EXPECT_EQ(set.Stored(1), (ConditionRow{"Oil", 3, 0, 0, "True", "VBlk1(2) >= True"}));

  use("Meas1", "Flag(3)");
  EXPECT_EQ(set[1].Compare.Items.size(), 1U);
  EXPECT_EQ(set.Stored(1), (ConditionRow{"Flag(3)", 0, 0, 0, "True", "Flag(3) = True"}));
  use("Value1", "false");
  EXPECT_EQ(set.Stored(1).Expression, "Flag(3) = False");
}

TEST_F(ConditionsTest, RowWithoutATextForItsValueShowsThatOfItsExpression) {
  const ConditionRow rows[] = {{"Oil", 4, 3, 1e7F, "", "VBlk1(2) < 1e+07"},
                               {"Flag(2)", 0, 0, 0, "", "Flag(2) = False"},
                               {"Flag(2)", 0, 0, 0, "", "Flag(2)"}};
  set.Load(rows, 3, "1 AND 2 AND 3");
  EXPECT_EQ(shown("Value1") + " " + shown("Value2") + " " + shown("Value3"), "1e+07 False True");
  for (int n = 1; n <= 3; ++n) EXPECT_EQ(set.Stored(n), rows[n - 1]);
}

}  // namespace
}  // namespace ostrand
