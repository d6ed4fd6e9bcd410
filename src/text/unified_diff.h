// Differences of two texts by lines.
#pragma once

#include <string>
#include <string_view>

namespace ostrand {

// What to change in `before` to get `after`, as `diff -u` writes it; empty when they are equal.
// Lines end in LF; a CR before it is part of the line. Texts that have little in common may get a
// longer difference than necessary.
std::string UnifiedDiff(std::string_view beforeName, std::string_view before,
                        std::string_view afterName, std::string_view after);

}  // namespace ostrand
