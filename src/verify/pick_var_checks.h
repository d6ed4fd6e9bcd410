// Variables that conditions and formulas name and that are gone. These checks only tell: none
// stands against a save, and none changes the store.
#pragma once

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {

// Shown for a condition without a variable.
inline constexpr std::string_view kMissingVariable = "## MISSING ##";

// What switches between two states by a variable for each of them.
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

// All of them in their order, unless WarningMessageMask has none of the bits of `mask`.
void VerifyPickVars(const CheckContext& context, i32 mask);

void VerifyPickVar_PowerOff(const CheckContext& context, const VarPickList& list);
void VerifyPickVar_TwoState(const CheckContext& context, const VarPickList& list,
                            TwoStateUser user);
void VerifyPickVar_LevelCross(const CheckContext& context, const VarPickList& list);
void VerifyPickVar_WriteIf(const CheckContext& context, const VarPickList& list);
void VerifyPickVar_CalcField(const CheckContext& context, const VarPickList& list);

// What all of them find, without their boxes; a failure of one is reported all the same.
Findings PickVarFindings(const CheckContext& context);

}  // namespace ORVUS_COMMON
}  // namespace ostrand
