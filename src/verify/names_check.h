// Names that collide with each other or with words of the logger's language.
#pragma once

#include <string_view>

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {

// Maximum number of pairs of equal names that are listed; further pairs are only counted.
inline constexpr int kMaxDuplicatesReported = 10000;

// Pairs of equal names among tables, aliases of thermocouple, voltage, bridge and pulse blocks and
// calculated fields, and `newName`, unless it is empty. Case-insensitive.
Findings DuplicateNames(const ProjectStore& store, std::string_view newName);

// Names among these that are key words.
Findings KeywordNames(const ProjectStore& store, std::string_view newName);

namespace ORVUS_COMMON {

// Reports both; sets `bad` to whether there are any. `newName` is the name of a field about to be
// created; empty for none.
void CheckNames(const CheckContext& context, bool& bad, std::string_view newName);

}  // namespace ORVUS_COMMON
}  // namespace ostrand
