// Names that collide with each other or with the words of the logger's language.
#pragma once

#include <string_view>

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {

// The most pairs of equal names that are told one by one; the rest is told as a count.
inline constexpr int kMaxDuplicatesReported = 10000;

// Pairs of equal names among tables, aliases of thermocouple, voltage, bridge and pulse blocks and
// calculated fields, and `newName`, unless it is empty. Letter case makes no difference.
Findings DuplicateNames(const ProjectStore& store, std::string_view newName);

// Those of the same names that are key words.
Findings KeywordNames(const ProjectStore& store, std::string_view newName);

namespace ORVUS_COMMON {

// Tells of both; `bad` becomes whether there are any. `newName` is the name of a field about to be
// made, empty when there is none.
void CheckNames(const CheckContext& context, bool& bad, std::string_view newName);

}  // namespace ORVUS_COMMON
}  // namespace ostrand
