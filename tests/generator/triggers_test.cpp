#include "generator/triggers.h"

#include "generator/generated.h"

namespace ostrand::testing {
namespace {

TEST(TriggerNumbers, FirstDigitAndLeadingNumber) {
  struct Case {
    const char* text;
    int first, leading;
  };
  const Case cases[] = {{"", 0, 0},     {"(1 AND 2)", 2, 0}, {"10 OR 2", 1, 10}, {"0", 0, 0},
                        {"1)", 1, 1},   {"1 2", 1, 1},       {"05", 2, 0},       {"9", 1, 9},
                        {"123", 1, 12}, {"1.5", 1, 1},       {"20E", 1, 20},     {"x", 0, 0}};
  for (const Case& c : cases) {
    EXPECT_EQ(FirstDigit(c.text), c.first) << c.text;
    EXPECT_EQ(LeadingNumber(c.text), c.leading) << c.text;
  }
}

class TriggersTest : public Generated {
 protected:
  TriggersTest() {
    table.TableOn = kTrue;
    table.TableName = "Fast";
    for (int n = 1; n <= kConditions; ++n) {
      const std::string number(1, static_cast<char>('a' + n - 1));
      table.Trigger[0][n].StartTrigIndvExpress = "start " + number;
      table.Trigger[1][n].StartTrigIndvExpress = "stop " + number;
      table.Write[n].Expression = "write " + number;
    }
  }
  OutputTable& table = store.Tables[2];
};

TEST_F(TriggersTest, GroupsAreExpanded) {
  table.TrigTable = 2;
  table.TrigTabStop = 1;
  table.WriteIf = 1;
  table.DataEventCodeStart = "(10 OR 2) AND 01 AND 0";
  table.DataEventCodeStop = "2";
  table.GroupWriteIf = "NOT 3";
  Run();
  ExpectRun({"Sub TriggerCallFast", "  bStartTrigger = ((start j OR start b) AND 0start a AND 0)",
             "  bStopTrigger = (stop a)", "  bWriteIfCall = (NOT write c)", "End Sub"});
}

TEST_F(TriggersTest, SwitchesOfTheLines) {
  table.TrigTable = 1;
  table.TrigTabStop = 2;
  table.DataEventCodeStop = "1";
  table.SingleTrigger = kTrue;
  Run();
  ExpectRun({"Sub TriggerCallFast", "  bStartTrigger = (start a)", "End Sub"});
  // A disabled trigger does not take the stop line away.
  table.SingleTrigger = kFalse;
  table.DisableTrigger = kTrue;
  table.WriteIf = 1;
  table.GroupWriteIf = "1";
  Run();
  ExpectRun({"Sub TriggerCallFast", "  bStopTrigger = (stop a)", "  bWriteIfCall = (write a)",
             "End Sub"});
  table.DisableWriteIf = kTrue;
  Run();
  EXPECT_EQ(Count("Sub TriggerCallFast"), 0);
}

TEST_F(TriggersTest, AnOldFlagTestIsRepairedInTheProject) {
  struct Case {
    const char *before, *after;
  };
  const Case cases[] = {{"FLAG(2) True", "FLAG(2) = True"},
                        {"Flag(2) = True", "Flag(2) = True"},
                        {"Flag 2", "Flag 2"},
                        {"Port(2) True", "Port(2) True"}};
  table.WriteIf = 1;
  table.GroupWriteIf = "1";
  for (const Case& c : cases) {
    table.Write[1].Expression = c.before;
    Run();
    EXPECT_EQ(table.Write[1].Expression, c.after);
    EXPECT_EQ(Count("  bWriteIfCall = (" + std::string(c.after) + ")"), 1);
  }
}

TEST_F(TriggersTest, AConditionThatIsNotThereEndsTheSection) {
  table.TrigTable = 2;
  table.DataEventCodeStart = "1 OR 11";
  ExpectFault(9, "Subscript out of range", "Subroutines");
  Run();
  ExpectRun(
      {"Sub TriggerCallFast", "'" + std::string(28, '\\') + " PROGRAM " + std::string(28, '/')});
}

// The calls of a table, by its switches. A disabling switch of -1 ends the trigger, yet only the
// number 1 makes the table a plain one.
TEST_F(TriggersTest, CallLines) {
  struct Case {
    int trigTable, disableTrigger, writeIf, disableWriteIf, flagTable;
    Lines lines;
  };
  const std::string call = "      Call TriggerCallFast";
  const std::string plain = "      CallTable Fast";
  const std::string onFlag = "      If Flag(4) Then CallTable Fast";
  const Case cases[] = {
      {0, 0, 0, 0, 0, {plain}},
      {0, 0, 0, 0, 4, {onFlag}},
      {1, 0, 0, 0, 0, {call, plain}},
      {1, 0, 0, 0, 4, {call, onFlag}},
      {1, 1, 0, 0, 4, {onFlag}},
      {1, -1, 0, 0, 0, {}},
      {1, 0, 1, 0, 0, {call, "      If bWriteIfCall Then CallTable Fast"}},
      {0, 0, 1, 0, 4, {call, "      If bWriteIfCall And Flag(4) Then CallTable Fast"}},
      {0, 0, 1, 1, 0, {plain}},
      {1, 0, 1, 1, 0, {call, plain}},
      {1, 1, 1, -1, 0, {}},
  };
  for (const Case& c : cases) {
    table.TrigTable = static_cast<i16>(c.trigTable);
    table.DisableTrigger = static_cast<flag>(c.disableTrigger);
    table.WriteIf = static_cast<i16>(c.writeIf);
    table.DisableWriteIf = static_cast<flag>(c.disableWriteIf);
    table.FlagTable = static_cast<i16>(c.flagTable);
    Run();
    Lines expected = {"      '" + std::string(22, '_') + " Output Table Control " +
                      std::string(22, '_')};
    expected.insert(expected.end(), c.lines.begin(), c.lines.end());
    expected.push_back(At66("   Next Scan", "'Loop up for the next scan"));
    ExpectRun(expected);
  }
}

}  // namespace
}  // namespace ostrand::testing
