// Separate values of single repetitions of a block, and how they follow the block's defaults.
//
// A column that was set by hand for a repetition is marked in its `AliasExcept` and keeps its value
// whatever the block's defaults become. The offset column of a bridge holds the gauge factor of
// its strain kinds, `AliasGFactor`.
#pragma once

#include <functional>
#include <span>
#include <string>

#include "model/alias_except.h"
#include "model/store.h"
#include "platform/forms.h"

namespace ostrand {

// The rows of the repetitions that a block has.
template <int MaxReps>
std::span<RepAlias> AliasesOf(LateRow<RepAlias, 1, MaxReps>& rows, int reps) {
  return rows.Leading(reps);
}

// What a block gives to repetitions without separate values.
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

// Clears a column, values set by hand as well, and its bit.
void ResetColumn(std::span<RepAlias> aliases, int column);

// Clears the rows after the first `reps`. They keep what they hold while the setup of a block is
// open, so that a count that rises again brings it back.
void ClearRowsBeyond(std::span<RepAlias> rows, int reps);

// The scaling of a block while its setup is open, and how all rows of the block keep step with it,
// those beyond the count too.
class ScalingEdit {
 public:
  explicit ScalingEdit(const DefaultScaling& onOpening)
      : opened_(onOpening), followed_(onOpening) {}

  // Entries that equal the scaling followed so far take the present one.
  void Follow(std::span<RepAlias> rows, const DefaultScaling& now);
  // From here on the rows follow this scaling: they were given it, or cleared.
  void Restart(const DefaultScaling& now) { followed_ = now; }
  void RestartOffset(float now) { followed_.Offset = now; }
  // The question of AskDefaultScaling, against the scaling on opening.
  [[nodiscard]] bool Ask(platform::Forms& forms, const DefaultScaling& now,
                         std::span<const RepAlias> aliases,
                         const std::function<void()>& openFieldNames) const;

 private:
  DefaultScaling opened_;
  DefaultScaling followed_;
};

}  // namespace ostrand
