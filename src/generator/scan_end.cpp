// The end of the scan and of the program.
#include <vector>

#include "generator/savedld.h"

namespace ostrand {
namespace {

bool marksFile(const OutputTable& table) { return table.TableOn != 0 && table.FlagMark > 0; }
bool reportsWhenFull(const OutputTable& table) { return table.TableOn != 0 && table.FlagFull > 0; }
bool isOn(const OutputTable& table) { return table.TableOn != 0; }

std::vector<int> tablesThat(const TableSetup& tables, bool (*test)(const OutputTable&)) {
  std::vector<int> found;
  for (int t = 1; t <= kTables; ++t) {
    if (test(tables[t])) found.push_back(t);
  }
  return found;
}

// A flag is reset only after every table that it marks.
void fileMarks(ProgramRun& run) {
  const auto marking = tablesThat(run.store.Tables, marksFile);
  if (marking.empty()) return;
  run.PutBarTitle("      ", 25, " File Mark Logic ");
  for (const int t : marking) {
    const OutputTable& table = run.store.Tables[t];
    const int f = table.FlagMark;
    const std::string gate =
        table.FlagTable != 0 ? Joined({" And Flag(", table.FlagTable, ")"}) : "";
    run.Put({"      If Flag(", f, ")", gate, " Then"}, {"'Test if flags are on"});
    run.Put({"         FileMark(", table.TableName, ")"},
            {"'Place a file mark in table ", table.TableName});
    run.Put({"         Flag", t, "Mark", f, " = Flag", t, "Mark", f, " + 1"},
            {"'Increment the mark counter"});
    run.Put({"      End If"}, {"'Test finished"});
    run.PutEmpty();
  }
  Row<bool, 1, kFlags> done;
  for (const int t : marking) {
    const int f = run.store.Tables[t].FlagMark;
    if (f > kFlags || done[f]) continue;
    done[f] = true;
    run.Put({"      Flag(", f, ") = False"}, {"'Set Flag(", f, ") back to False"});
  }
}

void tablesFull(ProgramRun& run) {
  const auto reporting = tablesThat(run.store.Tables, reportsWhenFull);
  if (reporting.empty()) return;
  run.PutBarTitle("      ", 24, " Table Full Logic ");
  for (const int t : reporting) {
    const std::string& name = run.store.Tables[t].TableName;
    run.Put({"      'Test if table ", name, " record count is equal or greater than table size"});
    run.Put({"      Flag(", run.store.Tables[t].FlagFull, ") = IIF(", name,
             ".Record(1,0) >= ", name, ".TableSize(1,1),True,False)"});
  }
}

}  // namespace

void SAVEDLD::MainProgram2() {
  fileMarks(run_);
  tablesFull(run_);
  const auto called = tablesThat(run_.store.Tables, isOn);
  if (!called.empty()) run_.PutBarTitle("      ", 22, " Output Table Control ");
  for (const int t : called) TableCallLines(t);
  run_.Put({"   Next Scan"}, {"'Loop up for the next scan"});
  const int f = run_.store.Scan.FlagScan;
  if (f > 0 && run_.store.Scan.BurstMode != 0) {
    run_.Put({"   Flag(", f, ") = False"}, {"'Set Flag(", f, ") back to false"});
    run_.Put({"Loop"}, {"'Loop up to allow scan on flag"});
  }
  section("SAVEDLD.LowPriority", &SAVEDLD::LowPriority);
  run_.Put({"EndProg"}, {"'Program ends here"});
  run_.PutEmpty();
  run_.Put({"'***** Program End *****"});
}

}  // namespace ostrand
