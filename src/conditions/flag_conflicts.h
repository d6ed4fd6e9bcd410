// Flags claimed by two settings.
#pragma once

#include <string>

#include "model/store.h"
#include "platform/forms.h"

namespace ostrand {

// Reports that the flags screen drives the flag, from 1, that is to start bursts.
void ShowBurstFlagNotice(platform::Forms& forms, int flagNumber);

// Asks whether to release the flag from tables that use it as write, file mark or full flag. True
// for Yes; false for No, and without a box when no table uses it.
bool AskToFreeTables(platform::Forms& forms, const ProjectStore& store, int flagNumber);
void FreeTables(ProjectStore& store, int flagNumber);

// The same for blocks that the flag zeroes.
bool AskToFreeZeroBlocks(platform::Forms& forms, const ProjectStore& store, int flagNumber);
void FreeZeroBlocks(ProjectStore& store, int flagNumber);

// Flags used more than once by tables in use, one line with its line end for each pair; empty for
// none.
std::string DuplicateTableFlags(const TableSetup& tables);
// Whether a table in use uses the flag, from 1.
bool TablesInUseHaveFlag(const TableSetup& tables, int flagNumber);

}  // namespace ostrand
