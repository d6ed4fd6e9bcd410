// Variables that conditions and formulas name and that no longer exist. These checks only report:
// they neither prevent saving nor change the store.
#pragma once

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {

// Shown for a condition without a variable.
inline constexpr std::string_view kMissingVariable = "## MISSING ##";

// Users of two states with a variable for each.
enum class TwoStateUser { kAnalogOutput, kFlag, kPort, kTable };

Findings LostPowerOffVariable(const ProjectStore& store, const VarPickList& list);
Findings LostTwoStateVariables(const ProjectStore& store, const VarPickList& list,
                               TwoStateUser user);
// Second dimensions of level crossings, in tables in use.
Findings LostLevelVariables(const ProjectStore& store, const VarPickList& list);
Findings LostWriteIfVariables(const ProjectStore& store, const VarPickList& list);
Findings LostFormulaVariables(const ProjectStore& store, const VarPickList& list,
                              const CalcVarRefs& refs);

namespace ORVUS_COMMON {

// Runs all of them in their order, unless WarningMessageMask has none of the bits of `mask`.
void VerifyPickVars(const CheckContext& context, i32 mask);

void VerifyPickVar_PowerOff(const CheckContext& context, const VarPickList& list);
void VerifyPickVar_TwoState(const CheckContext& context, const VarPickList& list,
                            TwoStateUser user);
void VerifyPickVar_LevelCross(const CheckContext& context, const VarPickList& list);
void VerifyPickVar_WriteIf(const CheckContext& context, const VarPickList& list);
void VerifyPickVar_CalcField(const CheckContext& context, const VarPickList& list);

// The findings of all of them, without their boxes; a failure of one is still reported.
Findings PickVarFindings(const CheckContext& context);

}  // namespace ORVUS_COMMON
}  // namespace ostrand
