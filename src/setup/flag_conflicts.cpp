#include "setup/flag_conflicts.h"

#include <string>
#include <vector>

#include "setup/flag_usage.h"
#include "text/number.h"
#include "verify/box.h"

namespace ostrand {
namespace {

std::string flagText(int flagNumber) { return "Flag(" + NumberText(flagNumber) + ")"; }

bool askToFree(platform::Forms& forms, const std::string& firstLine,
               const std::vector<std::string>& users) {
  if (users.empty()) return false;
  std::string text =
      JoinLines({firstLine, "desired with this logic. These are selected:", ""}) + "\r\n";
  for (const std::string& user : users) text += user + "\r\n";
  text += "\r\nWOULD YOU LIKE THE ABOVE DISABLED NOW?";
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
                   TablesWithFlag(store, flagNumber));
}

void FreeTables(ProjectStore& store, int flagNumber) {
  for (OutputTable& table : store.Tables.Table) {
    for (const TableFlag& use : kTableFlags) {
      if (table.*use.number == flagNumber) table.*use.number = 0;
    }
  }
}

bool AskToFreeZeroBlocks(platform::Forms& forms, const ProjectStore& store, int flagNumber) {
  return askToFree(forms,
                   "Zero subroutines previously selected to run on " + flagText(flagNumber) +
                       " may not give the results",
                   BlocksZeroedBy(store, flagNumber));
}

void FreeZeroBlocks(ProjectStore& store, int flagNumber) {
  freeZeroBlocks(store.VoltBlock, flagNumber);
  freeZeroBlocks(store.BridgeBlock, flagNumber);
  freeZeroBlocks(store.TK40MBlock, flagNumber);
}

}  // namespace ostrand
