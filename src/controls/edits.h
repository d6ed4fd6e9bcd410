// Leaving a screen with edits, and opening one by its button.
#pragma once

#include <string_view>

#include "controls/screen.h"
#include "platform/forms.h"

namespace ostrand {

// A screen that a button opens, for who asks for it by its name. The button outlives it.
Screen::Opener OpenedBy(Button& button, std::string_view screen);

// The question when a list of measurements is left by Cancel with edits: Yes saves them, No drops
// them, Cancel stays.
platform::Answer AskSaveEdits(platform::Forms& forms);

}  // namespace ostrand
