// Parameters of outputs: histogram, rainflow, level crossing.
#pragma once

#include <string_view>

#include "controls/screen.h"
#include "model/store.h"
#include "tables/histo_screen.h"

namespace ostrand {

// The screen for the parameters of an output.
std::string_view ParameterScreenOf(OutputCode code);

// Edits the parameters of an output on the screen of its instruction. False when the user
// cancelled.
bool AskOutputParameters(const ScreenContext& context, OutputCode code, const HistoTarget& target);

}  // namespace ostrand
