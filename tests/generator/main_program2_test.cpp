#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class MainProgram2Test : public Generated {};

TEST_F(MainProgram2Test, MarksFullTablesCallsAndEnd) {
  for (const int t : {1, 3, 4}) store.Tables[t].TableOn = kTrue;
  store.Tables[1].FlagMark = 3;
  store.Tables[2].FlagMark = 5;  // not on
  store.Tables[3].FlagMark = 9;  // no such flag to set back
  store.Tables[4].FlagMark = 3;
  store.Tables[4].FlagTable = 7;
  store.Tables[1].FlagFull = 2;
  store.Tables[4].FlagFull = 2;
  store.Scan.BurstMode = kTrue;
  store.Scan.FlagScan = 6;
  Run();
  const auto mark = [](const std::string& t, const std::string& f, const std::string& gate) {
    const std::string counter = "Flag" + t + "Mark" + f;
    return Lines{
        At66("      If Flag(" + f + ")" + gate + " Then", "'Test if flags are on"),
        At66("         FileMark(Table" + t + ")", "'Place a file mark in table Table" + t),
        At66("         " + counter + " = " + counter + " + 1", "'Increment the mark counter"),
        At66("      End If", "'Test finished"), ""};
  };
  const auto full = [](const std::string& name) {
    return Lines{
        "      'Test if table " + name + " record count is equal or greater than table size",
        "      Flag(2) = IIF(" + name + ".Record(1,0) >= " + name + ".TableSize(1,1),True,False)"};
  };
  const auto title = [](std::size_t bar, const std::string& text) {
    return "      '" + std::string(bar, '_') + text + std::string(bar, '_');
  };
  Lines expected = {title(25, " File Mark Logic ")};
  const auto add = [&](const Lines& lines) {
    expected.insert(expected.end(), lines.begin(), lines.end());
  };
  add(mark("1", "3", ""));
  add(mark("3", "9", ""));
  add(mark("4", "3", " And Flag(7)"));
  add({At66("      Flag(3) = False", "'Set Flag(3) back to False"),
       title(24, " Table Full Logic ")});
  add(full("Table1"));
  add(full("Table4"));
  add({title(22, " Output Table Control "), "      CallTable Table1", "      CallTable Table3",
       "      If Flag(7) Then CallTable Table4", At66("   Next Scan", "'Loop up for the next scan"),
       At66("   Flag(6) = False", "'Set Flag(6) back to false"),
       At66("Loop", "'Loop up to allow scan on flag"), At66("EndProg", "'Program ends here"), "",
       "'***** Program End *****"});
  ExpectRun(expected);
}

TEST_F(MainProgram2Test, ALongTableNameEndsTheProgramEarly) {
  store.Tables[1].TableOn = kTrue;
  store.Tables[1].FlagMark = 1;
  store.Tables[1].TableName = std::string(50, 'T');
  ExpectFault(5, "Invalid procedure call or argument", "MainProgram2");
  Run();
  EXPECT_EQ(program.back(), At66("      If Flag(1) Then", "'Test if flags are on"));
}

}  // namespace
}  // namespace ostrand::testing
