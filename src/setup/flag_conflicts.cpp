#include "setup/flag_conflicts.h"

#include <string>

#include "text/number.h"
#include "verify/box.h"

namespace ostrand {
namespace {

std::string flagText(int flagNumber) { return "Flag(" + NumberText(flagNumber) + ")"; }

struct TableFlag {
  i16 OutputTable::*member;
  std::string_view role;
};
constexpr TableFlag kTableFlags[] = {
    {&OutputTable::FlagTable, " Run Flag"},
    {&OutputTable::FlagMark, " Mark Flag"},
    {&OutputTable::FlagFull, " Full Flag"},
};

std::string tableUsers(const ProjectStore& store, int flagNumber) {
  std::string users;
  for (int t = 1; t <= kTables; ++t) {
    for (const TableFlag& use : kTableFlags) {
      if (store.Tables[t].*use.member != flagNumber) continue;
      users.append("Table ").append(NumberText(t)).append(use.role).append("\r\n");
    }
  }
  return users;
}

template <class Group>
void addZeroBlocks(const Group& group, int flagNumber, std::string_view kind, std::string& users) {
  for (int b = 1; b <= kBlocks; ++b) {
    if (group[b].ZeroFlag == flagNumber) users.append(kind).append(NumberText(b)).append("\r\n");
  }
}

std::string zeroUsers(const ProjectStore& store, int flagNumber) {
  std::string users;
  addZeroBlocks(store.VoltBlock, flagNumber, "Voltage Block ", users);
  addZeroBlocks(store.BridgeBlock, flagNumber, "Bridge Block ", users);
  addZeroBlocks(store.TK40MBlock, flagNumber, "TK40M Block ", users);
  return users;
}

// `users` are lines, each with its end.
bool askToFree(platform::Forms& forms, const std::string& firstLine, const std::string& users) {
  if (users.empty()) return false;
  const std::string text = JoinLines({firstLine, "desired with this logic. These are selected:", "",
                                      users, "WOULD YOU LIKE THE ABOVE DISABLED NOW?"});
  return Ask(forms, "ZERO SUBROUTINE WARNING", text, platform::Buttons::kYesNo) ==
         platform::Answer::kYes;
}

template <class Group>
void freeZeroBlocks(Group& group, int flagNumber) {
  for (auto& block : group.Blocks) {
    if (block.ZeroFlag == flagNumber) block.ZeroFlag = 0;
  }
}

}  // namespace

void ShowBurstFlagNotice(platform::Forms& forms, int flagNumber) {
  const std::string number = NumberText(flagNumber);
  platform::MessageBox box;
  box.title = "FLAG INFORMATION";
  box.text =
      JoinLines({"Flag(" + number + ") was previously enabled in the Flags Setup window.",
                 "The expressions set for flag(" + number + ") will not be evaluated until",
                 "after the burst is finished. Therefore it is not possible for Flag(" + number +
                     "to control the burst except manually.  This is only a warning."});
  box.icon = platform::Icon::kInformation;
  forms.ShowBox(box);
}

bool AskToFreeTables(platform::Forms& forms, const ProjectStore& store, int flagNumber) {
  return askToFree(forms,
                   "Tables Or Isolated Modules previously selected interact with " +
                       flagText(flagNumber) + " may not give the results",
                   tableUsers(store, flagNumber));
}

void FreeTables(ProjectStore& store, int flagNumber) {
  for (OutputTable& table : store.Tables.Table) {
    for (const TableFlag& use : kTableFlags) {
      if (table.*use.member == flagNumber) table.*use.member = 0;
    }
  }
}

bool AskToFreeZeroBlocks(platform::Forms& forms, const ProjectStore& store, int flagNumber) {
  return askToFree(forms,
                   "Zero subroutines previously selected to run on " + flagText(flagNumber) +
                       " may not give the results",
                   zeroUsers(store, flagNumber));
}

void FreeZeroBlocks(ProjectStore& store, int flagNumber) {
  freeZeroBlocks(store.VoltBlock, flagNumber);
  freeZeroBlocks(store.BridgeBlock, flagNumber);
  freeZeroBlocks(store.TK40MBlock, flagNumber);
}

}  // namespace ostrand
