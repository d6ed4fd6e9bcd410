#include "conditions/condition_variables.h"

#include <algorithm>

#include "model/names_in_text.h"
#include "model/variables.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// Kinds whose values are elements of a block's array.
bool isOfBlock(i32 kind) {
  return kind == kTempVariables || kind == kVoltVariables || kind == kBridgeVariables ||
         kind == kPulseVariables || kind == kTK40MVariables;
}

}  // namespace

ConditionVariables::ConditionVariables(const ProjectStore& store, std::span<const i32> kinds) {
  const VarPickList available(store);
  all_.reserve(available.Variables().size());
  for (const PickVariable& variable : available.Variables()) {
    all_.push_back({std::string(Trim(variable.name)),
                    isOfBlock(variable.kind) ? variable.element : std::string()});
  }
  const VarPickList listed(store, kinds);
  const VarPickList& shown = kinds.empty() ? available : listed;
  names_.reserve(shown.Variables().size());
  for (const PickVariable& variable : shown.Variables()) {
    names_.emplace_back(Trim(variable.name));
  }
}

int ConditionVariables::Find(std::string_view name) const {
  const std::string wanted = Variable(Trim(name));
  // Only these names can mean the element. Looking up every name of the list would take quadratic
  // time.
  std::vector<std::string_view> candidates = {wanted};
  for (const Entry& entry : all_) {
    if (!entry.element.empty() && SameText(entry.element, wanted)) candidates.push_back(entry.name);
  }
  const auto at = std::find_if(names_.begin(), names_.end(), [&](const std::string& listed) {
    return std::any_of(candidates.begin(), candidates.end(),
                       [&](std::string_view candidate) { return SameText(listed, candidate); }) &&
           SameText(Variable(listed), wanted);
  });
  return at == names_.end() ? -1 : static_cast<int>(at - names_.begin());
}

std::optional<std::string> ConditionVariables::elementOf(std::string_view name) const {
  for (const Entry& entry : all_) {
    if (!entry.element.empty() && SameText(entry.name, name)) return entry.element;
  }
  return std::nullopt;
}

std::string ConditionVariables::Variable(std::string_view name) const {
  return elementOf(name).value_or(std::string(name));
}

std::string ConditionVariables::InVariables(std::string_view expression) const {
  return ReplaceNames(expression,
                      [this](const NameInText& name) { return elementOf(name.Text()); });
}

std::string ConditionVariables::InAliases(std::string_view expression) const {
  return ReplaceNames(expression, [this](const NameInText& name) -> std::optional<std::string> {
    const std::string element = name.Text();
    for (const Entry& entry : all_) {
      if (!entry.element.empty() && SameText(entry.element, element)) return entry.name;
    }
    return std::nullopt;
  });
}

}  // namespace ostrand
