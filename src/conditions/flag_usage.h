// Flags that screens offer, and their other users in the project.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "controls/choice.h"
#include "model/enums.h"
#include "model/store.h"
#include "platform/forms.h"

namespace ostrand {

// What a table uses flags for.
struct TableFlag {
  i16 OutputTable::*number;  // of the flag; 0 for none
  std::string_view role;     // in lists of the users of a flag
  std::string_view name;     // on the screen of the tables
};
inline constexpr std::array<TableFlag, 3> kTableFlags = {{
    {&OutputTable::FlagTable, " Run Flag", "Write Flag"},
    {&OutputTable::FlagMark, " Mark Flag", "Mark Flag"},
    {&OutputTable::FlagFull, " Full Flag", "Full Flag"},
}};

inline constexpr std::string_view kStatusMonitorUser = "Status Monitor";
inline constexpr std::string_view kScanBurstUser = "Scan Burst";
// A use by a table or by a block that is zeroed, both numbered from 1. The kinds of blocks are
// ORVUS_DOBJ_BLK_VOLT, _BRIDGE and _TK40M.
std::string TableFlagUser(int table, const TableFlag& use);
std::string ZeroFlagUser(OrvusDataObjTypes kind, int block);

// Uses of a flag, from 1, as boxes list them: "Table 1 Run Flag", "Voltage Block 2". Includes
// tables that are off.
std::vector<std::string> TablesWithFlag(const ProjectStore& store, int flagNumber);
std::vector<std::string> BlocksZeroedBy(const ProjectStore& store, int flagNumber);

// Fills a list of zero flags: "None", then the flags in order, so that the index is the flag
// number. Flags that tables use are disabled.
void SetZeroFlagItems(Choice& list, const ProjectStore& store);

// Reports a flag that the flags screen drives.
void ShowFlagInformation(platform::Forms& forms, std::string text);

// Reports the users of a flag that got one more user. `self` is the new user as boxes list it; the
// user of a condition is not listed.
void CheckFlagUsage(platform::Forms& forms, const ProjectStore& store, int flagNumber,
                    std::string_view self = {});

}  // namespace ostrand
