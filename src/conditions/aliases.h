// Values of single repetitions of a block, and how they follow the block's defaults.
//
// A column set by hand for a repetition is marked in its `AliasExcept` and keeps its value when the
// block's defaults change. For strain kinds the offset column of a bridge holds the gauge factor,
// `AliasGFactor`.
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

// Defaults of a block for its repetitions.
struct DefaultScaling {
  std::string Units;
  float Mult = 1;
  float Offset = 0;  // gauge factor of strain

  friend bool operator==(const DefaultScaling&, const DefaultScaling&) = default;
};
DefaultScaling DefaultScalingOf(const MeasBlock& block);

// Asks before the defaults of a block change while some repetitions have values set by hand, which
// keep theirs. Yes opens the field names through `openFieldNames`. False when the user cancelled
// and stays on the screen. Asks nothing when no default changed or no repetition has an exception.
bool AskDefaultScaling(platform::Forms& forms, const DefaultScaling& before,
                       const DefaultScaling& after, std::span<const RepAlias> aliases,
                       const std::function<void()>& openFieldNames);

// Entries that equal the old default, compared by value, take the new one unless protected. A blank
// entry stays blank: it follows the default anyway.
void FollowDefaults(std::span<RepAlias> aliases, const DefaultScaling& before,
                    const DefaultScaling& after);

// Sets all unprotected entries to these values.
void OverwriteAliases(std::span<RepAlias> aliases, const DefaultScaling& scaling);

// Clears all unprotected entries, so that they follow the default.
void ClearAliases(std::span<RepAlias> aliases);

// Clears a column, including values set by hand, and its bit.
void ResetColumn(std::span<RepAlias> aliases, int column);

// Clears the rows after the first `reps`. While the setup of a block is open they keep their
// values, so that raising the count again restores them.
void ClearRowsBeyond(std::span<RepAlias> rows, int reps);

// The scaling of a block while its setup is open. Keeps all rows of the block in step with it,
// including those beyond the count.
class ScalingEdit {
 public:
  explicit ScalingEdit(const DefaultScaling& onOpening)
      : opened_(onOpening), followed_(onOpening) {}

  // Entries that equal the previous scaling take the present one.
  void Follow(std::span<RepAlias> rows, const DefaultScaling& now);
  // The rows follow this scaling from here on: they were set to it, or cleared.
  void Restart(const DefaultScaling& now) { followed_ = now; }
  void RestartOffset(float now) { followed_.Offset = now; }
  // Asks as AskDefaultScaling does, against the scaling on opening.
  [[nodiscard]] bool Ask(platform::Forms& forms, const DefaultScaling& now,
                         std::span<const RepAlias> aliases,
                         const std::function<void()>& openFieldNames) const;

 private:
  DefaultScaling opened_;
  DefaultScaling followed_;
};

}  // namespace ostrand
