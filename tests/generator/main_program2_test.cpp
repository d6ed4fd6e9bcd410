#include "generator/generated.h"

namespace ostrand::testing {
namespace {

using MainProgram2Test = Generated;

// Tables 1, 3 and 4 are on. The flag of two tables goes back once, one past the eighth never.
TEST_F(MainProgram2Test, MarksFullTablesCallsAndEnd) {
  const int marks[] = {3, 5, 9, 3};
  for (int t = 1; t <= 4; ++t) {
    store.Tables[t].TableOn = t == 2 ? kFalse : kTrue;
    store.Tables[t].FlagMark = static_cast<i16>(marks[t - 1]);
  }
  store.Tables[4].FlagTable = 7;
  store.Tables[4].FlagFull = 2;
  store.Scan.BurstMode = kTrue;
  store.Scan.FlagScan = 6;
  const auto mark = [](const std::string& t, const std::string& counter, const std::string& test) {
    return "|      If " + test + " Then~'Test if flags are on|         FileMark(Table" + t +
           ")~'Place a file mark in table Table" + t + "|         " + counter + " = " + counter +
           " + 1~'Increment the mark counter|      End If~'Test finished|";
  };
  Run();
  ExpectText(
      Bars("      ", 25, " File Mark Logic ") + mark("1", "Flag1Mark3", "Flag(3)") +
      mark("3", "Flag3Mark9", "Flag(9)") + mark("4", "Flag4Mark3", "Flag(3) And Flag(7)") +
      "|      Flag(3) = False~'Set Flag(3) back to False|" +
      Bars("      ", 24, " Table Full Logic ") +
      "|      'Test if table Table4 record count is equal or greater than table size|      Fla"
      "g(2) = IIF(Table4.Record(1,0) >= Table4.TableSize(1,1),True,False)|" +
      Bars("      ", 22, " Output Table Control ") +
      "|      CallTable Table1|      CallTable "
      "Table3|      If Flag(7) Then CallTable Table4|" +
      kNextScan +
      "|   Flag(6) = False~'Set Flag(6) back to false|Loop~'Loop up to allow scan on flag|" +
      kEndProg);
}

}  // namespace
}  // namespace ostrand::testing
