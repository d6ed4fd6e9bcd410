// What single repetitions of a block have of their own, and how it follows the block's defaults.
//
// A column that was set by hand for a repetition is marked in its `AliasExcept` and keeps its value
// whatever the block's defaults become. The offset column of a bridge holds the gauge factor of
// its strain kinds, `AliasGFactor`.
#pragma once

#include <functional>
#include <span>
#include <string>

#include "model/store.h"
#include "platform/forms.h"

namespace ostrand {

// Columns, as the bits of `AliasExcept`.
inline constexpr int kUnitsByHand = 1;
inline constexpr int kMultByHand = 2;
inline constexpr int kOffsetByHand = 4;

// The bits of a repetition; none for a text that is no number.
int ExceptionsOf(const RepAlias& alias);

// The rows of the repetitions that a block has.
template <int MaxReps>
std::span<RepAlias> AliasesOf(Row<RepAlias, 1, MaxReps>& rows, int reps) {
  const int count = reps < 0 ? 0 : (reps > MaxReps ? MaxReps : reps);
  return {rows.begin(), static_cast<std::size_t>(count)};
}

// What a block gives to repetitions that have nothing of their own.
struct DefaultScaling {
  std::string Units;
  float Mult = 1;
  float Offset = 0;  // gauge factor of strain

  friend bool operator==(const DefaultScaling&, const DefaultScaling&) = default;
};
DefaultScaling DefaultScalingOf(const MeasBlock& block);

// The question when the defaults of a block change while some repetitions have values by hand,
// which the new defaults don't reach. Yes opens the field names through `openFieldNames`. False
// when the user cancelled and stays on the screen. No question when nothing changed or no
// repetition has an exception.
bool AskDefaultScaling(platform::Forms& forms, const DefaultScaling& before,
                       const DefaultScaling& after, std::span<const RepAlias> aliases,
                       const std::function<void()>& openFieldNames);

// Entries that still equal the old default take the new one, numbers compared by value, unless they
// are protected. A blank entry stays blank: it follows the default as it is.
void FollowDefaults(std::span<RepAlias> aliases, const DefaultScaling& before,
                    const DefaultScaling& after);

// Sets all entries that are not protected to these values.
void OverwriteAliases(std::span<RepAlias> aliases, const DefaultScaling& scaling);

// Clears all entries that are not protected, so that they follow the default.
void ClearAliases(std::span<RepAlias> aliases);

}  // namespace ostrand
