#include "conditions/flag_conflicts.h"

#include <algorithm>
#include <string>
#include <vector>

#include "conditions/flag_usage.h"
#include "platform/box.h"
#include "text/number.h"

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
  for (auto& block : group.Blocks.Made()) {
    if (block.ZeroFlag == flagNumber) block.ZeroFlag = 0;
  }
}

struct FlagUse {
  int flagNumber;
  std::string text;
};

// Flags of the tables in use, table by table.
std::vector<FlagUse> flagUses(const TableSetup& tables) {
  std::vector<FlagUse> uses;
  for (const OutputTable& table : tables.Table) {
    if (table.TableOn == kFalse) continue;
    for (const TableFlag& use : kTableFlags) {
      if (table.*use.number < 1) continue;
      uses.push_back(
          {table.*use.number, "Table '" + table.TableName + "'  " + std::string(use.name) + " "});
    }
  }
  return uses;
}

}  // namespace

void ShowBurstFlagNotice(platform::Forms& forms, int flagNumber) {
  const std::string number = NumberText(flagNumber);
  ShowFlagInformation(
      forms,
      JoinLines({"Flag(" + number + ") was previously enabled in the Flags Setup window.",
                 "The expressions set for flag(" + number + ") will not be evaluated until",
                 "after the burst is finished. Therefore it is not possible for Flag(" + number +
                     "to control the burst except manually.  This is only a warning."}));
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

std::string DuplicateTableFlags(const TableSetup& tables) {
  const std::vector<FlagUse> uses = flagUses(tables);
  std::string text;
  for (std::size_t i = 0; i < uses.size(); ++i) {
    for (std::size_t j = i + 1; j < uses.size(); ++j) {
      if (uses[i].flagNumber != uses[j].flagNumber) continue;
      text += uses[i].text + "and " + uses[j].text + "both use flag " +
              NumberText(uses[i].flagNumber) + "\r\n";
    }
  }
  return text;
}

bool TablesInUseHaveFlag(const TableSetup& tables, int flagNumber) {
  const std::vector<FlagUse> uses = flagUses(tables);
  return std::any_of(uses.begin(), uses.end(),
                     [&](const FlagUse& use) { return use.flagNumber == flagNumber; });
}

}  // namespace ostrand
