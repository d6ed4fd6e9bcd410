// Flags that two settings want for themselves.
#pragma once

#include <string>

#include "model/store.h"
#include "platform/forms.h"

namespace ostrand {

// Tells that the flags screen drives the flag, from 1, that is to start bursts.
void ShowBurstFlagNotice(platform::Forms& forms, int flagNumber);

// Asks whether tables that use the flag as their write, file mark or full flag should let it go.
// True for Yes; false also when there is none, without a box.
bool AskToFreeTables(platform::Forms& forms, const ProjectStore& store, int flagNumber);
void FreeTables(ProjectStore& store, int flagNumber);

// The same of blocks that are zeroed by the flag.
bool AskToFreeZeroBlocks(platform::Forms& forms, const ProjectStore& store, int flagNumber);
void FreeZeroBlocks(ProjectStore& store, int flagNumber);

// Flags that tables in use have more than once, a line with its end for each pair; empty for none.
std::string DuplicateTableFlags(const TableSetup& tables);
// Whether a table in use has the flag, from 1.
bool TablesInUseHaveFlag(const TableSetup& tables, int flagNumber);

}  // namespace ostrand
