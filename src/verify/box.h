// The boxes of the checks.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

#include "platform/forms.h"
#include "verify/finding.h"

namespace ostrand {

// Lines one below the other, parted by CR LF; an empty one is a blank line.
std::string JoinLines(std::initializer_list<std::string_view> lines);

// The texts of the findings, one below the other.
std::string TextsOf(const Findings& findings);

// A warning that the user can only take note of.
void ShowWarning(platform::Forms& forms, std::string_view title, std::string text);

// Shows the warning of each finding in a box of its own.
void ShowEach(platform::Forms& forms, const Findings& findings);

platform::Answer Ask(platform::Forms& forms, std::string_view title, std::string text,
                     platform::Buttons buttons,
                     platform::Answer preselected = platform::Answer::kOk);

}  // namespace ostrand
