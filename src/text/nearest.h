// Suggestions for misspelled names.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace ostrand {

// The candidates that were probably meant by `name`, without regard to case: those with the fewest
// typing errors, if these are few for the length of the name; otherwise those that contain the
// name. At most three, in their order; none for a name that looks like no candidate.
std::vector<std::string_view> NearestNames(std::string_view name,
                                           std::span<const std::string_view> candidates);

// "; did you mean A, B or C?" for the end of an error; empty without a suggestion.
std::string DidYouMean(std::string_view name, std::span<const std::string_view> candidates);

}  // namespace ostrand
