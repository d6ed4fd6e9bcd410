// Old forms of a project's content, brought up to date after reading.
#pragma once

#include "model/store.h"

namespace ostrand::ORVUS_GENFILE {

// Triggers and write conditions of the tables in use, as older versions stored them.
void UpgradeConditions(ProjectStore& store);

}  // namespace ostrand::ORVUS_GENFILE
