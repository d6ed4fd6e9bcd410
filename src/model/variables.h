// The variables of a project that conditions and formulas can name.
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/store.h"

namespace ostrand {

// Kinds of variables, as bits; users order and select them by these numbers.
enum VariableKind : i32 {
  kBatteryVariable = 1,
  kStatusVariables = 2,
  kTempVariables = 16,
  kVoltVariables = 32,
  kBridgeVariables = 64,
  kPulseVariables = 128,
  kHighVoltVariables = 256,  // none on this logger, as the four that follow
  kFilterVoltVariables = 512,
  kFilterVoltVariables2 = 1024,
  kFilterFftVariables = 2048,
  kIsolatedVariables = 4096,
  kTK40MVariables = 65536,
  kTK40RefVariables = 131072,
  kCanVariables = 262144,
  kPortVariables = 16777216,
  kCaoVariables = 33554432,
  kFlagVariables = 67108864,
  kCalcVariables = 268435456
};

// All kinds in the order of the list.
inline constexpr std::array<i32, 18> kVariableKinds = {
    kPortVariables,        kFlagVariables,     kCalcVariables,      kBatteryVariable,
    kStatusVariables,      kTempVariables,     kVoltVariables,      kBridgeVariables,
    kPulseVariables,       kHighVoltVariables, kFilterFftVariables, kFilterVoltVariables,
    kFilterVoltVariables2, kIsolatedVariables, kTK40MVariables,     kTK40RefVariables,
    kCanVariables,         kCaoVariables};

// "Battery Volts", "Temperature Blocks"; "??" for a number that is not a kind.
std::string_view VariableKindName(i32 kind);

struct PickVariable {
  std::string name;     // in the program: the alias, or the array, or its element
  std::string element;  // element of its array, "TBlk1(2)", also known to the program; empty
                        // for a variable that is not in an array
  i32 kind = 0;         // VariableKind
};

// The variables now available.
class VarPickList {
 public:
  // The variables of the named kinds, kind by kind in the given order; other numbers give none.
  explicit VarPickList(const ProjectStore& store, std::span<const i32> kinds = kVariableKinds);

  [[nodiscard]] const std::vector<PickVariable>& Variables() const { return variables_; }

  // Whether a variable has this name or is this element of its array, case-insensitive.
  [[nodiscard]] bool Holds(std::string_view name) const;
  // Whether any name or element begins with `head`: "TBlk1(" finds any element of TBlk1.
  [[nodiscard]] bool HoldsAnyWith(std::string_view head) const;

 private:
  [[nodiscard]] const std::vector<std::string>& spellings() const;

  std::vector<PickVariable> variables_;
  mutable std::vector<std::string> spellings_;  // upper case, sorted; made on first use
};

// The names of variables that the formulas of calculated fields used when the project was opened. A
// running average over a whole array is listed by the start of its elements, "TBlk1(".
struct CalcVarRefs {
  std::vector<std::string> names;
};
CalcVarRefs CollectCalcVarRefs(const ProjectStore& store);

// Whether a formula or condition contains a name, case-insensitive.
bool ExpressionHolds(std::string_view expression, std::string_view name);

}  // namespace ostrand
