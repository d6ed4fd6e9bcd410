// Clearing and defaults of the project store (module ORVUS_COMMON).
#pragma once

#include <string_view>

#include "model/store.h"

namespace ostrand::ORVUS_COMMON {

// The module's version: major "." minor ".0." and the revision in two digits.
extern const std::string_view kModuleVersion;
// The format version of projects that this system writes.
inline constexpr std::string_view kFormatVersion = "6.0";

// Sets every member to zero or empty text, the logger constants included.
void ClearStore(ProjectStore& store);

// Sets the defaults of a new project, all groups in their fixed order. Leaves the logger constants.
void SetAllDefaults(ProjectStore& store);

// Sets the panel of the VK7300.
void SetLoggerConstants(ProjectStore& store);

// Defaults of a single group.
void SetConfigurationDefaults(ProjectStore& store);
void SetScanDefaults(ProjectStore& store);
// `table` from 1; `clearSelections` also clears the table's output selections in all blocks.
void SetTableDefaults(ProjectStore& store, int table, bool clearSelections);

// Releases blocks: all from `first`, counted from 0, get their defaults, and BlockCount is lowered
// to `first`; SEChannelCount is cleared if no block is left.
void SetTempDefaults(ProjectStore& store, int first);
void SetVoltDefaults(ProjectStore& store, int first);
void SetBridgeDefaults(ProjectStore& store, int first);
void SetTK40MDefaults(ProjectStore& store, int first);
void SetPulseDefaults(ProjectStore& store, int slot, int first);
// Releases blocks of a group outside the store: a screen's copy.
void SetTempDefaults(TempBlockGroup& group, int first);
void SetVoltDefaults(VoltBlockGroup& group, int first);
void SetTK40MDefaults(TK40MBlockGroup& group, int first);

void SetPortDefaults(ProjectStore& store, int slot);
void SetExciteDefaults(ProjectStore& store, int slot);
// Flags, CAN items and calculated fields from `first`, counted from 0, to the last.
void SetFlagDefaults(ProjectStore& store, int first);
void SetCanModuleDefaults(ProjectStore& store, int module);  // module from 1
void SetCanItemDefaults(ProjectStore& store, int first);
void SetCalcFieldDefaults(ProjectStore& store, int first);
void SetCalculatorDefaults(ProjectStore& store);

}  // namespace ostrand::ORVUS_COMMON
