// The parameters of outputs that have any: histogram, rainflow, level crossing.
#pragma once

#include <string_view>

#include "controls/screen.h"
#include "model/store.h"
#include "tables/histo_screen.h"

namespace ostrand {

// The screen of an output that has parameters.
std::string_view ParameterScreenOf(OutputCode code);

// Asks for the parameters of an output by the screen of its instruction. False when the user
// cancelled.
bool AskOutputParameters(const ScreenContext& context, OutputCode code, const HistoTarget& target);

}  // namespace ostrand
