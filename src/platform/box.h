// Message boxes as the system makes them.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "platform/forms.h"

namespace ostrand {

// Lines one below the other, separated by CR LF; an empty one is a blank line.
std::string JoinLines(std::initializer_list<std::string_view> lines);

// A warning that the user can only take note of.
void ShowWarning(platform::Forms& forms, std::string_view title, std::string text);

platform::Answer Ask(platform::Forms& forms, std::string_view title, std::string text,
                     platform::Buttons buttons,
                     platform::Answer preselected = platform::Answer::kOk);

// An answer as it is written on command lines and in scripts: yes, no, cancel, ok, overwrite; in
// any case.
std::optional<platform::Answer> AnswerNamed(std::string_view word);

}  // namespace ostrand
