// Shows findings in message boxes.
#pragma once

#include <string>

#include "platform/forms.h"
#include "verify/finding.h"

namespace ostrand {

// The texts of the findings, one below the other.
std::string TextsOf(const Findings& findings);

// Shows the warning of each finding in a separate box.
void ShowEach(platform::Forms& forms, const Findings& findings);

}  // namespace ostrand
