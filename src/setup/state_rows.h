// Conditions of outputs that have two states: how they are stored.
#pragma once

#include <string>
#include <string_view>

#include "platform/forms.h"
#include "setup/conditions.h"

namespace ostrand {

// The expression of a state without a measurement.
inline constexpr std::string_view kNoCondition = "False";

// A stored condition as the controls of a row take it. What the expression says goes before the
// code of the comparison: older projects count their codes in another list, and a sign that the
// screen does not offer must stay as long as the row is only looked at.
ConditionRow StoredState(std::string_view measurement, int compare, float value,
                         std::string_view expression, Compares compares);

// What an output that is included still lacks, as its message line tells it; empty for nothing.
std::string_view MissingStates(const ConditionControls& state1, const ConditionControls& state2);

// Shows or hides the controls of a state.
void ShowState(ConditionControls& state, bool visible);

// Shows program text in a box.
void ShowCode(platform::Forms& forms, std::string_view title, std::string code);

}  // namespace ostrand
