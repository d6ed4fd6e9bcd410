#include "generator/triggers.h"

#include "generator/generated.h"

namespace ostrand::testing {
namespace {

TEST(TriggerNumbers, FirstDigitAndLeadingNumber) {
  struct Case {
    const char* text;
    int first, leading;
  };
  for (const Case& c :
       {Case{"", 0, 0}, Case{"(1)", 2, 0}, Case{"10 OR 2", 1, 10}, Case{"0", 0, 0},
        Case{"1)", 1, 1}, Case{"05", 2, 0}, Case{"123", 1, 12}, Case{"20E", 1, 20}}) {
    EXPECT_EQ(FirstDigit(c.text), c.first) << c.text;
    EXPECT_EQ(LeadingNumber(c.text), c.leading) << c.text;
  }
}

class TriggersTest : public Generated {
 protected:
  TriggersTest() {
    table.TableOn = kTrue;
    for (int n = 1; n <= kConditions; ++n) {
      const std::string letter(1, static_cast<char>('a' + n - 1));
      table.Trigger[0][n].StartTrigIndvExpress = "start " + letter;
      table.Trigger[1][n].StartTrigIndvExpress = "stop " + letter;
      table.Write[n].Expression = "write " + letter;
    }
    table.TableName = "Fast";
    table.GroupWriteIf = "NOT 3";
    table.DataEventCodeStop = "2";
  }
  OutputTable& table = store.Tables[2];
};

// The stop condition counts with a disabled trigger too; a single one is taken without its group.
TEST_F(TriggersTest, Subroutine) {
  const std::string head = "Sub TriggerCallFast|";
  table.TrigTable = 2;
  table.TrigTabStop = table.WriteIf = 1;
  table.DataEventCodeStart = "(10 OR 2) AND 01 AND 0";
  Run();
  ExpectText(head +
             "  bStartTrigger = ((start j OR start b) AND 0start a AND 0)|"
             "  bStopTrigger = (stop a)|  bWriteIfCall = (NOT write c)|End Sub");
  table.TrigTabStop = 2;
  table.DisableTrigger = kTrue;
  Run();
  ExpectText(head + "  bStopTrigger = (stop b)|  bWriteIfCall = (NOT write c)|End Sub");
  table.SingleTrigger = kTrue;
  Run();
  ExpectText(head + "  bWriteIfCall = (NOT write c)|End Sub");
}

TEST_F(TriggersTest, AnOldFlagTestIsRepairedInTheProject) {
  table.WriteIf = 1;
  table.GroupWriteIf = "1";
  for (const auto& [before, after] : {std::pair{"FLAG(2) True", "FLAG(2) = True"},
                                      {"Flag(2) = True", "Flag(2) = True"},
                                      {"Flag 2", "Flag 2"},
                                      {"Port(2) True", "Port(2) True"}}) {
    table.Write[1].Expression = before;
    Run();
    EXPECT_EQ(table.Write[1].Expression, after);
    ExpectText("  bWriteIfCall = (" + std::string(after) + ")");
  }
}

TEST_F(TriggersTest, AConditionThatIsNotThereEndsTheSection) {
  table.TrigTable = 2;
  table.DataEventCodeStart = "1 OR 11";
  ExpectFault(9, kSubscript, "Subroutines");
  Run();
  ExpectText("Sub TriggerCallFast|'" + std::string(28, '\\') + " PROGRAM " + std::string(28, '/'));
}

// A disabling switch of -1 ends a trigger, yet only the number 1 makes the table a plain one.
TEST_F(TriggersTest, CallLines) {
  struct Case {
    int trigTable, disableTrigger, writeIf, disableWriteIf, flagTable;
    const char* lines;
  };
  const Case cases[] = {
      {0, 0, 0, 0, 4, "      If Flag(4) Then CallTable Fast|"},
      {1, 0, 0, 0, 0, "      Call TriggerCallFast|      CallTable Fast|"},
      {1, 0, 0, 0, 4, "      Call TriggerCallFast|      If Flag(4) Then CallTable Fast|"},
      {1, 1, 0, 0, 0, "      CallTable Fast|"},
      {1, -1, 0, 0, 0, ""},
      {1, 0, 1, 0, 0, "      Call TriggerCallFast|      If bWriteIfCall Then CallTable Fast|"},
      {0, 0, 1, 0, 4,
       "      Call TriggerCallFast|      If bWriteIfCall And Flag(4) Then CallTable Fast|"},
      {1, 0, 1, 1, 0, "      Call TriggerCallFast|      CallTable Fast|"},
      {1, 1, 1, -1, 0, ""},
  };
  for (const Case& c : cases) {
    table.TrigTable = static_cast<i16>(c.trigTable);
    table.DisableTrigger = static_cast<flag>(c.disableTrigger);
    table.WriteIf = static_cast<i16>(c.writeIf);
    table.DisableWriteIf = static_cast<flag>(c.disableWriteIf);
    table.FlagTable = static_cast<i16>(c.flagTable);
    Run();
    ExpectText(Bars("      ", 22, " Output Table Control ") + "|" + c.lines + kNextScan);
  }
}

}  // namespace
}  // namespace ostrand::testing
