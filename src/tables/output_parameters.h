// The parameters of outputs that have any: histogram, rainflow, level crossing.
#pragma once

#include <string_view>

#include "controls/screen.h"
#include "model/store.h"
#include "tables/histo_screen.h"

namespace ostrand {

// Asks for the parameters of an output by the screen of its instruction. `stem` names the arrays of
// its levels, as LevelStem gives it. False when the user cancelled.
bool AskOutputParameters(const ScreenContext& context, OutputCode code, const HistoTarget& target,
                         std::string_view stem);

}  // namespace ostrand
