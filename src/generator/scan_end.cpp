// The end of the scan and of the program.
#include "generator/savedld.h"

namespace ostrand {
namespace {

bool marksFile(const OutputTable& table) { return table.TableOn != 0 && table.FlagMark > 0; }
bool tellsWhenFull(const OutputTable& table) { return table.TableOn != 0 && table.FlagFull > 0; }
bool isOn(const OutputTable& table) { return table.TableOn != 0; }

std::vector<int> tablesThat(const TableSetup& tables, bool (*test)(const OutputTable&)) {
  std::vector<int> found;
  for (int t = 1; t <= kTables; ++t) {
    if (test(tables[t])) found.push_back(t);
  }
  return found;
}

}  // namespace

void SAVEDLD::MainProgram2() {
  fileMarks();
  tablesFull();
  tableCalls();
  Put({"   Next Scan"}, {"'Loop up for the next scan"});
  const int f = store_.Scan.FlagScan;
  if (f > 0 && store_.Scan.BurstMode != 0) {
    Put({"   Flag(", f, ") = False"}, {"'Set Flag(", f, ") back to false"});
    Put({"Loop"}, {"'Loop up to allow scan on flag"});
  }
  section("SAVEDLD.LowPriority", &SAVEDLD::LowPriority);
  Put({"EndProg"}, {"'Program ends here"});
  PutEmpty();
  Put({"'***** Program End *****"});
}

// A flag goes back only after every table that it marks has seen it.
void SAVEDLD::fileMarks() {
  const auto marking = tablesThat(store_.Tables, marksFile);
  if (marking.empty()) return;
  putBarTitle("      ", 25, " File Mark Logic ");
  for (const int t : marking) {
    const OutputTable& table = store_.Tables[t];
    const int f = table.FlagMark;
    const std::string gate =
        table.FlagTable != 0 ? Joined({" And Flag(", table.FlagTable, ")"}) : "";
    Put({"      If Flag(", f, ")", gate, " Then"}, {"'Test if flags are on"});
    Put({"         FileMark(", table.TableName, ")"},
        {"'Place a file mark in table ", table.TableName});
    Put({"         Flag", t, "Mark", f, " = Flag", t, "Mark", f, " + 1"},
        {"'Increment the mark counter"});
    Put({"      End If"}, {"'Test finished"});
    PutEmpty();
  }
  Row<bool, 1, kFlags> done;
  for (const int t : marking) {
    const int f = store_.Tables[t].FlagMark;
    if (f > kFlags || done[f]) continue;
    done[f] = true;
    Put({"      Flag(", f, ") = False"}, {"'Set Flag(", f, ") back to False"});
  }
}

void SAVEDLD::tablesFull() {
  const auto telling = tablesThat(store_.Tables, tellsWhenFull);
  if (telling.empty()) return;
  putBarTitle("      ", 24, " Table Full Logic ");
  for (const int t : telling) {
    const std::string& name = store_.Tables[t].TableName;
    Put({"      'Test if table ", name, " record count is equal or greater than table size"});
    Put({"      Flag(", store_.Tables[t].FlagFull, ") = IIF(", name, ".Record(1,0) >= ", name,
         ".TableSize(1,1),True,False)"});
  }
}

void SAVEDLD::tableCalls() {
  const auto on = tablesThat(store_.Tables, isOn);
  if (on.empty()) return;
  putBarTitle("      ", 22, " Output Table Control ");
  for (const int t : on) TableCallLines(t);
}

}  // namespace ostrand
