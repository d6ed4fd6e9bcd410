// Leaving a screen with edits.
#pragma once

#include "platform/forms.h"

namespace ostrand {

// The question when a list of measurements is left by Cancel with edits: Yes saves them, No drops
// them, Cancel stays.
platform::Answer AskSaveEdits(platform::Forms& forms);

}  // namespace ostrand
