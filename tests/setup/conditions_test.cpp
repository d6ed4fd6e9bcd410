// Conditions as screens compose them, and the line that groups them.
#include "setup/conditions.h"

#include <gtest/gtest.h>

#include "model/defaults.h"
#include "model/options.h"
#include "model/variables.h"
#include "support/scripted_forms.h"

namespace ostrand {
namespace {

std::string syntaxAt(int position) {
  return "A syntax error was found at character number " + std::to_string(position);
}

TEST(GroupingTest, TheFirstFaultIsToldWithItsPosition) {
  const std::string kRange =
      "Only condition numbers from 1 to the last valid condition may be grouped (1-10 maximum).";
  const std::string kParentheses =
      "The parentheses in the condition groupings are not matched correctly";
  const std::string_view kTwo = "TWO NUMBER TOGETHER WITHOUT LOGIC ERROR";
  const std::string_view kSyntax = "GROUPING SYNTAX ERROR";
  const std::string_view kMismatch = "MISMATCHED PARENTHESES";
  const std::string_view kOutside = "CONDITION NUMBER RANGE ERROR";
  struct Case {
    std::string_view line;
    std::string_view title;  // empty for a good line
    std::string text;
  };
  const Case cases[] = {
      {"1", "", ""},
      {"", "", ""},
      {"   ", "", ""},
      {"1 AND (2 OR 3)", "", ""},
      {"((1))and(2)Or3", "", ""},
      {"10 OR 1", "", ""},
      {"(1 AND 2", kMismatch, kParentheses},
      {"1) AND (2", kMismatch, kParentheses},
      {")", kMismatch, kParentheses},
      {"(", kMismatch, kParentheses},
      {"(1 OR", kMismatch, kParentheses},
      {"1 OR 2 (", kMismatch, kParentheses},
      {"1 ) 2", kMismatch, kParentheses},
      {"007 OR1", "", ""},
      {"1OR 2AND(3)", "", ""},
      {"AND 1", "GROUPING SYNTAX ERROR - A",
       "A syntax error with 'A' was found at character number 1"},
      {"1 AND and 2", "GROUPING SYNTAX ERROR - A",
       "A syntax error with 'A' was found at character number 7"},
      {"1 OR (OR 2)", "GROUPING SYNTAX ERROR - O",
       "A syntax error with 'O' was found at character number 7"},
      {"1 ABD 2", "GROUPING SYNTAX ERROR - N",
       "A syntax error (no 'N') was found at character number 4"},
      {"1 A ND 2", "GROUPING SYNTAX ERROR - N",
       "A syntax error (no 'N') was found at character number 4"},
      {"1 A", "GROUPING SYNTAX ERROR - N",
       "A syntax error (no 'N') was found at character number 4"},
      {"1 ANE 2", "GROUPING SYNTAX ERROR - D",
       "A syntax error (no 'D') was found at character number 5"},
      {"1 AN D 2", "GROUPING SYNTAX ERROR - D",
       "A syntax error (no 'D') was found at character number 5"},
      {"1 O 2", "GROUPING SYNTAX ERROR - R",
       "A syntax error (no 'R') was found at character number 4"},
      {"1 2", kTwo, syntaxAt(3)},
      {"  1  22", kTwo, syntaxAt(6)},
      {"1 0", kTwo, syntaxAt(3)},
      {"1 AND 2 (99)", kTwo, syntaxAt(10)},
      {"1 (2)", kTwo, syntaxAt(4)},
      {"(1)(2)", kTwo, syntaxAt(5)},
      {"1 AND", kSyntax, syntaxAt(6)},
      {"1 AND  ", kSyntax, syntaxAt(8)},
      {"(1 OR)", kSyntax, syntaxAt(6)},
      {"()", kSyntax, syntaxAt(2)},
      {"1 AND )", kMismatch, kParentheses},
      {"1\t", kSyntax, syntaxAt(2)},
      {"1 XOR 2", kSyntax, syntaxAt(3)},
      {"1 ORR 2", kSyntax, syntaxAt(5)},
      {"1.2", kSyntax, syntaxAt(2)},
      {"-1", kSyntax, syntaxAt(1)},
      {"0", kOutside, kRange},
      {"11", kOutside, kRange},
      {"1 OR 99999999999999999999", kOutside, kRange},
      {"11 2)", kOutside, kRange},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.line);
    const auto fault = FindGroupingFault(row.line, 10);
    ASSERT_EQ(fault.has_value(), !row.title.empty()) << (fault ? fault->text : "");
    if (!fault) continue;
    EXPECT_EQ(fault->title, row.title);
    EXPECT_EQ(fault->text, row.text);
  }
  EXPECT_FALSE(FindGroupingFault("3", 3).has_value());
  EXPECT_TRUE(FindGroupingFault("4", 3).has_value());
}

// Any line of the letters that lines are made of is either refused or, as it is stored, joins its
// rows as the program will expand it: words apart from their neighbours, numbers without zeros.
TEST(GroupingTest, WhatIsStoredOfAGoodLineIsGoodAndStaysAsItIs) {
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

class NoHost : public ScreenHost {
 public:
  void ShowModal(Screen&) override {}
};

class ConditionsTest : public ::testing::Test {
 protected:
  static std::unique_ptr<ProjectStore> project() {
    auto store = NewStore();
    ORVUS_COMMON::SetAllDefaults(*store);
    store->VoltBlock.BlockCount = 2;
    store->VoltBlock[1].Reps = 2;
    store->VoltBlock[1].Alias[2].AliasName = "Oil";
    store->VoltBlock[2].Reps = 1;
    return store;
  }

  std::unique_ptr<ProjectStore> store = project();
  testing::ScriptedForms forms;
  NoHost host;
  OptionValues options;
  std::vector<i32> kinds = {kVoltVariables, kFlagVariables};
  Screen screen{{*store, forms, host, options, 0, kinds}, "frmTest"};
  ConditionVariables variables{*store, kinds};
  ConditionSet set{screen,
                   variables,
                   {.row =
                        [](int n) {
                          const std::string at = std::to_string(n);
                          return ConditionControlNames{"Meas" + at, "Compare" + at, "Value" + at,
                                                       "Expression" + at};
                        },
                    .grouping = "Grouping",
                    .expression = "Whole"}};

  void use(std::string_view control, std::string_view keys) {
    Control* found = screen.Find(control);
    ASSERT_NE(found, nullptr) << control;
    ASSERT_TRUE(screen.MoveFocus(found));
    if (!found->Pick(keys)) {
      ASSERT_TRUE(found->TypeText(keys)) << control;
    }
    ASSERT_TRUE(screen.MoveFocus(nullptr)) << control << " keeps " << found->Text();
  }
  [[nodiscard]] std::string shown(std::string_view control) const {
    return screen.Find(control)->Text();
  }
};

TEST_F(ConditionsTest, NamesAndVariables) {
  EXPECT_EQ(variables.Names()[0], "VBlk1(1)");
  EXPECT_EQ(variables.Names()[1], "Oil");
  EXPECT_EQ(variables.Names()[2], "VBlk2");
  EXPECT_EQ(variables.Names()[3], "Flag(1)");
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

TEST_F(ConditionsTest, ARowIsComposedOfWhatIsPicked) {
  set.Load({}, 0, "");
  use("Meas1", "Oil");
  EXPECT_EQ(shown("Expression1"), "Oil = 0");
  use("Compare1", ">=");
  use("Value1", "0.50");
  EXPECT_EQ(shown("Expression1"), "Oil >= 0.5");
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
  Control* value = screen.Find("Value1");
  screen.MoveFocus(value);
  value->TypeText("5");
  EXPECT_EQ(forms.beeps, 1) << "flags take no numbers";
  set[1].Value.Escape();
  screen.MoveFocus(nullptr);
  EXPECT_EQ(set.Stored(1).Expression, "Flag(3) = False");
}

TEST_F(ConditionsTest, ARowThatIsOnlyLookedAtStaysAsItIs) {
  const ConditionRow rows[] = {
      {"Gone", 17, 30, -2.5F, "", "Gone ?? -2.5"},
      {"", 0, 0, 0, "", "Flag(2) True"},
      {"Oil", 4, 3, 1e7F, "", "VBlk1(2) < 1e+07"},
  };
  set.Load(rows, 3, "1 AND (2 OR 3)");
  EXPECT_EQ(set.Count(), 3);
  for (int n = 1; n <= 3; ++n) EXPECT_EQ(set.Stored(n), rows[n - 1]);
  EXPECT_EQ(shown("Meas1"), "Gone");
  EXPECT_EQ(shown("Value3"), "1e+07");
  EXPECT_EQ(shown("Whole"), "(Gone ?? -2.5) AND ((Flag(2) True) OR (Oil < 1e+07))");
  EXPECT_TRUE(set.Check());
}

TEST_F(ConditionsTest, TheLineFollowsTheRowsUntilItIsTheUsersOwn) {
  set.Load({}, 0, "");
  EXPECT_EQ(set.Count(), 0);
  EXPECT_EQ(set.StoredLine(), "1");
  use("Meas1", "Oil");
  use("Meas2", "VBlk2");
  use("Meas3", "VBlk1(1)");
  EXPECT_EQ(shown("Grouping"), "1 OR 2 OR 3");
  use("Grouping", "1 and (2 or 3)");
  use("Meas4", "VBlk2");
  EXPECT_EQ(shown("Grouping"), "1 AND (2 OR 3)");
  use("Meas4", "(None)");  // the last one goes without a question
  EXPECT_EQ(shown("Grouping"), "1 AND (2 OR 3)");
  use("Meas3", "(None)");
  EXPECT_EQ(shown("Grouping"), "1 OR 2") << "the line named a row that has gone";
}

// Nine rows of 16 characters and one of n: with parentheses and " OR " between them it is 9 * 18 +
// n + 2 + 9 * 4.
TEST_F(ConditionsTest, TheLongestExpressionHas490Characters) {
  std::vector<ConditionRow> rows(10, {"Flag(1)", 0, 0, 0, "", "Flag(1) = ******"});
  for (const auto& [length, fits] : {std::pair{290, true}, {291, false}}) {
    rows[9] = {"X", 0, 0, 0, "", std::string(static_cast<std::size_t>(length), 'x')};
    set.Load(rows, 10, "");
    EXPECT_EQ(set.InVariables().size(), fits ? 490U : 491U);
    if (!fits) {
      forms.ExpectBox("EXPRESSION TOO LONG",
                      "The total length for a conditional logic expression\r\n"
                      "may not exceed 490 characters. This size limit is\r\n"
                      "based on the expression size after alias names have\r\n"
                      "been replaced with their actual variable names.");
    }
    EXPECT_EQ(set.Check(), fits);
  }
}

}  // namespace
}  // namespace ostrand
