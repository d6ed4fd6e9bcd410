#include "conditions/aliases.h"

#include <algorithm>

#include "text/number.h"

namespace ostrand {
namespace {

// A column of numbers or of texts of a repetition.
struct Column {
  int byHand;
  std::string RepAlias::*entry;
};
constexpr Column kUnits = {kUnitsByHand, &RepAlias::AliasUnits};
constexpr Column kMult = {kMultByHand, &RepAlias::AliasMult};
constexpr Column kOffset = {kOffsetByHand, &RepAlias::AliasOffset};
constexpr Column kColumns[] = {kUnits, kMult, kOffset};

bool isProtected(const RepAlias& alias, const Column& column) {
  return (ExceptionsOf(alias) & column.byHand) != 0;
}

void set(RepAlias& alias, const Column& column, std::string_view value) {
  if (!isProtected(alias, column)) alias.*column.entry = value;
}

void follow(RepAlias& alias, const Column& column, float before, float after) {
  if (before == after) return;  // "1.0" stays as it is written
  const std::optional<float> value = ToSingle(alias.*column.entry);
  if (value && *value == before) set(alias, column, NumberText(after));
}

}  // namespace

DefaultScaling DefaultScalingOf(const MeasBlock& block) {
  return {block.Units, block.DefaultMult, block.DefaultOffset};
}

bool AskDefaultScaling(platform::Forms& forms, const DefaultScaling& before,
                       const DefaultScaling& after, std::span<const RepAlias> aliases,
                       const std::function<void()>& openFieldNames) {
  const bool exceptions = std::any_of(aliases.begin(), aliases.end(), [](const RepAlias& alias) {
    return ExceptionsOf(alias) != 0;
  });
  if (before == after || !exceptions) return true;
  platform::MessageBox box;
  box.title = "DEFAULT SCALING CHANGED";
  box.text =
      "\r\nIndividual multipliers and offsets are not all the same as the defaults."
      "\r\nWOULD YOU LIKE TO EXAMINE SCALARS NOW?";
  box.icon = platform::Icon::kQuestion;
  box.buttons = platform::Buttons::kYesNoCancel;
  const platform::Answer answer = forms.ShowBox(box);
  if (answer == platform::Answer::kCancel) return false;
  if (answer == platform::Answer::kYes && openFieldNames) openFieldNames();
  return true;
}

void FollowDefaults(std::span<RepAlias> aliases, const DefaultScaling& before,
                    const DefaultScaling& after) {
  for (RepAlias& alias : aliases) {
    if (!alias.AliasUnits.empty() && alias.AliasUnits == before.Units) {
      set(alias, kUnits, after.Units);
    }
    follow(alias, kMult, before.Mult, after.Mult);
    follow(alias, kOffset, before.Offset, after.Offset);
  }
}

void OverwriteAliases(std::span<RepAlias> aliases, const DefaultScaling& scaling) {
  for (RepAlias& alias : aliases) {
    set(alias, kUnits, scaling.Units);
    set(alias, kMult, NumberText(scaling.Mult));
    set(alias, kOffset, NumberText(scaling.Offset));
  }
}

void ClearAliases(std::span<RepAlias> aliases) {
  for (RepAlias& alias : aliases) {
    for (const Column& column : kColumns) set(alias, column, {});
  }
}

void ResetColumn(std::span<RepAlias> aliases, int column) {
  for (RepAlias& alias : aliases) {
    MarkByHand(alias, column, false);
    for (const Column& candidate : kColumns) {
      if (candidate.byHand == column) (alias.*candidate.entry).clear();
    }
  }
}

void ClearRowsBeyond(std::span<RepAlias> rows, int reps) {
  const auto count = static_cast<std::size_t>(std::max(reps, 0));
  for (std::size_t at = count; at < rows.size(); ++at) {
    rows[at] = {};
    rows[at].AliasExcept = "0";
  }
}

void ScalingEdit::Follow(std::span<RepAlias> rows, const DefaultScaling& now) {
  FollowDefaults(rows, followed_, now);
  followed_ = now;
}

bool ScalingEdit::Ask(platform::Forms& forms, const DefaultScaling& now,
                      std::span<const RepAlias> aliases,
                      const std::function<void()>& openFieldNames) const {
  return AskDefaultScaling(forms, opened_, now, aliases, openFieldNames);
}

}  // namespace ostrand
