#include "conditions/flag_usage.h"

#include <algorithm>

#include "text/number.h"

namespace ostrand {
namespace {

using Lines = std::vector<std::string>;

bool isMonitored(const ProjectStore& store, int flagNumber) {
  const Configuration& config = store.Config;
  if (config.MonitorPower[kMonitorStatus] == kFalse) return false;
  // A row names its flag before the state: "3 T".
  for (int row = 1; row <= std::min<int>(config.StatusMonCount, kStatusRows); ++row) {
    if (Val(config.Status[row][4]) == flagNumber) return true;
  }
  return false;
}

template <class Group>
void addZeroBlocks(const Group& group, int flagNumber, OrvusDataObjTypes kind, Lines& users) {
  for (int b = 1; b <= std::min<int>(group.BlockCount, kBlocks); ++b) {
    if (group[b].ZeroFlag == flagNumber) users.push_back(ZeroFlagUser(kind, b));
  }
}

Lines usersOf(const ProjectStore& store, int flagNumber) {
  Lines users;
  if (store.Flags[flagNumber].FlagInclude != kFalse) users.emplace_back("Flags Setup");
  if (isMonitored(store, flagNumber)) users.emplace_back(kStatusMonitorUser);
  if (store.Scan.BurstMode != kFalse && store.Scan.FlagScan == flagNumber) {
    users.emplace_back(kScanBurstUser);
  }
  for (const Lines& more : {TablesWithFlag(store, flagNumber), BlocksZeroedBy(store, flagNumber)}) {
    users.insert(users.end(), more.begin(), more.end());
  }
  return users;
}

}  // namespace

std::string TableFlagUser(int table, const TableFlag& use) {
  return "Table " + NumberText(table) + std::string(use.role);
}

std::string ZeroFlagUser(OrvusDataObjTypes kind, int block) {
  std::string_view name = "Voltage Block ";
  if (kind == ORVUS_DOBJ_BLK_BRIDGE) name = "Bridge Block ";
  if (kind == ORVUS_DOBJ_BLK_TK40M) name = "TK40M Block ";
  return std::string(name) + NumberText(block);
}

Lines TablesWithFlag(const ProjectStore& store, int flagNumber) {
  Lines users;
  for (int t = 1; t <= kTables; ++t) {
    for (const TableFlag& use : kTableFlags) {
      if (store.Tables[t].*use.number != flagNumber) continue;
      users.push_back(TableFlagUser(t, use));
    }
  }
  return users;
}

Lines BlocksZeroedBy(const ProjectStore& store, int flagNumber) {
  Lines users;
  addZeroBlocks(store.VoltBlock, flagNumber, ORVUS_DOBJ_BLK_VOLT, users);
  addZeroBlocks(store.BridgeBlock, flagNumber, ORVUS_DOBJ_BLK_BRIDGE, users);
  addZeroBlocks(store.TK40MBlock, flagNumber, ORVUS_DOBJ_BLK_TK40M, users);
  return users;
}

void SetZeroFlagItems(Choice& list, const ProjectStore& store) {
  list.SetItems({"None", "1", "2", "3", "4", "5", "6", "7", "8"});
  for (int f = 1; f <= kFlags; ++f) {
    const Lines users = TablesWithFlag(store, f);
    Choice::Item& item = list.Items[static_cast<std::size_t>(f)];
    item.Enabled = users.empty();
    item.ToolTip = users.empty() ? "" : "In use by " + users.front() + ".";
  }
}

void ShowFlagInformation(platform::Forms& forms, std::string text) {
  platform::MessageBox box;
  box.title = "FLAG INFORMATION";
  box.text = std::move(text);
  box.icon = platform::Icon::kInformation;
  forms.ShowBox(box);
}

void CheckFlagUsage(platform::Forms& forms, const ProjectStore& store, int flagNumber,
                    std::string_view self) {
  const Lines users = usersOf(store, flagNumber);
  if (std::all_of(users.begin(), users.end(), [&](const auto& user) { return user == self; })) {
    return;
  }
  std::string text = "JUST LETTING YOU KNOW.\r\nDuring program execution, the state of Flag(" +
                     NumberText(flagNumber) +
                     "may potentially be set by the following program configuration settings:";
  for (const std::string& user : users) text += "\r\n" + user;
  ShowFlagInformation(forms, std::move(text));
}

}  // namespace ostrand
