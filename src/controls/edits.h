// Leaving a screen with edits.
#pragma once

#include "platform/forms.h"

namespace ostrand {

// Asks when a list of measurements with edits is left by Cancel: Yes saves the edits, No drops
// them, Cancel stays on the screen.
platform::Answer AskSaveEdits(platform::Forms& forms);

}  // namespace ostrand
