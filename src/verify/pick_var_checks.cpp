#include "verify/pick_var_checks.h"

#include <optional>
#include <string>

#include "platform/box.h"
#include "platform/guarded.h"
#include "text/strings.h"
#include "verify/finding_boxes.h"
#include "verify/project_keys.h"

namespace ostrand {
namespace {

using namespace project_keys;

constexpr std::string_view kPowerOffTitle = "INVALID POWER OFF TRIGGER";
constexpr std::string_view kTableTriggerTitle = " INVALID TRIGGERED TABLE\"";
constexpr std::string_view kTriggerTitle = "INVALID TRIGGER CONDITION";
constexpr std::string_view kLevelTitle = "INVALID LEVEL CROSSING 2ND DIMENSION";
constexpr std::string_view kWriteIfTitle = "INVALID WRITE IF TRIGGER";
constexpr std::string_view kCalcFieldTitle = "INVALID CALCULATED FIELD";

bool isEmpty(std::string_view name) { return Trim(name).empty(); }

// The display of a lost variable; nothing for an existing one. A condition without a variable was
// never set up, unless it has a value.
std::optional<std::string> lostName(const VarPickList& list, const std::string& name, float value) {
  if (isEmpty(name)) {
    return value >= 1 ? std::optional<std::string>(kMissingVariable) : std::nullopt;
  }
  return list.Holds(name) ? std::nullopt : std::optional<std::string>(name);
}

constexpr std::string_view kGone = " is no longer available.";

std::string stateText(const std::string& user, const std::string& name, int state) {
  return user + " Trigger ( " + name + " ) for State " + NumberText(state) + std::string(kGone);
}

void addLostOutput(Findings& findings, const VarPickList& list, const ExciteChannel& channel,
                   int k) {
  if (channel.Include == 0 || channel.DynamicStatic != 0) return;
  const auto addLost = [&](int state, const std::string& name, float value) {
    if (const auto lost = lostName(list, name, value)) {
      findings.push_back({kTriggerTitle, stateText("CAO Port " + NumberText(k), *lost, state),
                          kExciteControlSection, KeyOf(kExciteMeasVar[state - 1], k)});
    }
  };
  addLost(1, channel.Excite1MeasVar, channel.Excite1Value);
  addLost(2, channel.Excite2MeasVar, channel.Excite2Value);
}

Findings lostOutputVariables(const ProjectStore& store, const VarPickList& list) {
  Findings findings;
  for (const auto& slot : store.ExciteOut.Slot) {
    for (int k = 1; k <= 2; ++k) addLostOutput(findings, list, slot[k], k);
  }
  return findings;
}

Findings lostFlagVariables(const ProjectStore& store, const VarPickList& list) {
  Findings findings;
  for (int f = 1; f <= kFlags; ++f) {
    if (store.Flags[f].FlagInclude == 0) continue;
    for (int s = 1; s <= 2; ++s) {
      const FlagState& state = store.Flags[f].State[s];
      const auto lost = lostName(list, state.FlagVar, state.FlagValue);
      if (!lost) continue;
      findings.push_back({kTriggerTitle, stateText("Flag " + NumberText(f), *lost, s),
                          kFlagControlSection, KeyOf(kFlagVar[s - 1], f)});
    }
  }
  return findings;
}

Findings lostPortVariables(const ProjectStore& store, const VarPickList& list) {
  Findings findings;
  for (int slot = 0; slot <= 1; ++slot) {
    const PortSlot& group = store.Ports.Slot[slot];
    if (group.ReadMode != 0) continue;
    for (int p = 1; p <= kPorts; ++p) {
      if (group.Ports[p].Include == 0) continue;
      const std::string user = "I/O Port Slot " + NumberText(slot + 1) + " " + NumberText(p);
      for (int s = 0; s <= 1; ++s) {
        const PortState& state = group.Ports[p].State[s];
        const auto lost = lostName(list, state.MeasureVar, state.Value);
        if (!lost) continue;
        findings.push_back({kTriggerTitle, stateText(user, *lost, s + 1), kPortSetupSection,
                            PortKey(kMeasureVar, s, p)});
      }
    }
  }
  return findings;
}

// The number of conditions in use: a single trigger has no stop.
int conditionCount(const OutputTable& table, int state) {
  if (state == 0) return table.TrigTable;
  return table.SingleTrigger != 0 ? 0 : table.TrigTabStop;
}

// Covers tables not in use too, since their trigger subroutines are in the program.
Findings lostTriggerVariables(const ProjectStore& store, const VarPickList& list) {
  Findings findings;
  for (int t = 1; t <= kTables; ++t) {
    const OutputTable& table = store.Tables[t];
    if (table.TrigTable <= 0) continue;
    for (int s = 0; s <= 1; ++s) {
      for (int i = 1; i <= conditionCount(table, s); ++i) {
        const TriggerCondition& condition = table.Trigger[s][i];
        const auto lost = lostName(list, condition.StartMeasVar, condition.StartTrigValue);
        if (!lost) continue;
        const std::string text = (s == 0 ? "START" : "STOP") + (" Trigger ( " + *lost) +
                                 " ) for table " + NumberText(t) + std::string(kGone);
        findings.push_back(
            {kTableTriggerTitle, text, kTableSetupSection, TriggerKey(kTriggerMeasVar[s], t, i)});
      }
    }
  }
  return findings;
}

// A family of items with level crossings: its name in the check and its prefix in the project file.
struct LevelFamily {
  std::string_view name;
  std::string_view section;
  std::string_view keyPrefix;
};

void addLostLevels(Findings& findings, const ProjectStore& store, const VarPickList& list,
                   const LevelFamily& family, int number, const OutputSet& output) {
  for (int t = 1; t <= kTables; ++t) {
    const HistoSet& level = output.Histo[t];
    const bool hasSecond = output.OutputSelect[t][kLevelCrossing] != 0 && level.NumDims == 1;
    if (store.Tables[t].TableOn == 0 || !hasSecond || list.Holds(level.LevelMeasName)) continue;
    const std::string name =
        isEmpty(level.LevelMeasName) ? std::string(kMissingVariable) : level.LevelMeasName;
    const std::string text = "'" + name + "', " + std::string(family.name) + " Block " +
                             NumberText(number) + ", Table " + store.Tables[t].TableName;
    const std::string key = std::string(family.keyPrefix).append(kLevelMeasName);
    findings.push_back({kLevelTitle, text, family.section, KeyOf(key, t, number)});
  }
}

}  // namespace

Findings LostPowerOffVariable(const ProjectStore& store, const VarPickList& list) {
  const Configuration& config = store.Config;
  if (config.MonitorPower[kMonitorPowerControl] == 0 || config.EnablePowerOff == 0) return {};
  if (list.Holds(config.PowerOffMeasVar)) return {};
  const std::string name =
      isEmpty(config.PowerOffMeasVar) ? std::string(kMissingVariable) : config.PowerOffMeasVar;
  return {{kPowerOffTitle, "Variable " + name + " used in Power Off trigger" + std::string(kGone),
           kConfigurationSection, std::string(kPowerOffMeasVar)}};
}

Findings LostTwoStateVariables(const ProjectStore& store, const VarPickList& list,
                               TwoStateUser user) {
  switch (user) {
    case TwoStateUser::kAnalogOutput:
      return lostOutputVariables(store, list);
    case TwoStateUser::kFlag:
      return lostFlagVariables(store, list);
    case TwoStateUser::kPort:
      return lostPortVariables(store, list);
    case TwoStateUser::kTable:
      return lostTriggerVariables(store, list);
  }
  return {};
}

Findings LostLevelVariables(const ProjectStore& store, const VarPickList& list) {
  Findings findings;
  const auto look = [&](const LevelFamily& family, int number, const OutputSet& output) {
    addLostLevels(findings, store, list, family, number, output);
  };
  const auto lookAtBlocks = [&](const LevelFamily& family, const auto& group) {
    for (int b = 1; b <= group.BlockCount; ++b) {
      if (group[b].Reps > 0) look(family, b, group[b].Output);
    }
  };
  lookAtBlocks({"Thermocouple", kTempBlocksSection, "Tm"}, store.TempBlock);
  lookAtBlocks({"Voltage", kVoltBlocksSection, "Vo"}, store.VoltBlock);
  lookAtBlocks({"Bridge", kBridgeBlocksSection, "Br"}, store.BridgeBlock);
  for (const PulseBlockGroup& slot : store.PulseBlock) {
    lookAtBlocks({"Pulse", kPulseBlocksSection, "Pu"}, slot);
  }
  if (store.Config.TK40MQty > 0)
    lookAtBlocks({"TK40M", kTK40MBlocksSection, "Tk"}, store.TK40MBlock);
  if (store.Config.CanBusQty > 0 && store.Can.Module[1].CanBusEnabled != 0) {
    for (int i = 1; i <= store.Can.CanCount; ++i) {
      const CanItemData& item = store.Can.Item[i];
      if (item.Enabled != 0 && item.Reps > 0) look({"CAN", kCanItemsSection, "Ca"}, i, item.Output);
    }
  }
  for (int c = 1; c <= store.CalcFields.CalcFieldCount; ++c) {
    look({"Calc", kCalcFieldsSection, "Ca"}, c, store.CalcFields.Field[c].Output);
  }
  return findings;
}

Findings LostWriteIfVariables(const ProjectStore& store, const VarPickList& list) {
  Findings findings;
  for (int t = 1; t <= kTables; ++t) {
    const OutputTable& table = store.Tables[t];
    if (table.WriteIf == 0) continue;
    const auto lost = lostName(list, table.Write[1].MeasureVar, table.Write[1].Value);
    if (!lost) continue;
    findings.push_back(
        {kWriteIfTitle,
         "Variable " + *lost + ",  Table #" + NumberText(t) + " (" + Upper(table.TableName) + ")",
         kTableSetupSection, WriteConditionKey(kMeasureVar, t, 1, table.WriteIf)});
  }
  return findings;
}

Findings LostFormulaVariables(const ProjectStore& store, const VarPickList& list,
                              const CalcVarRefs& refs) {
  Findings findings;
  for (const std::string& name : refs.names) {
    if (name.ends_with('(') ? list.HoldsAnyWith(name) : list.Holds(name)) continue;
    for (int c = 1; c <= store.CalcFields.CalcFieldCount; ++c) {
      const auto& field = store.CalcFields.Field[c].CalcField;
      if (!ExpressionHolds(field[2], name)) continue;
      findings.push_back({kCalcFieldTitle,
                          name + " - used in expression " + NumberText(c) + " (" + field[1] + ")",
                          kCalcFieldsSection, KeyOf(kCalcField, c, 2)});
    }
  }
  return findings;
}

namespace ORVUS_COMMON {
namespace {

constexpr std::string_view kPowerOffRoutine = "ORVUS_COMMON.VerifyPickVar_PowerOff";
constexpr std::string_view kTwoStateRoutine = "ORVUS_COMMON.VerifyPickVar_TwoState";
constexpr std::string_view kLevelCrossRoutine = "ORVUS_COMMON.VerifyPickVar_LevelCross";
constexpr std::string_view kWriteIfRoutine = "ORVUS_COMMON.VerifyPickVar_WriteIf";
constexpr std::string_view kCalcFieldRoutine = "ORVUS_COMMON.VerifyPickVar_CalcField";

}  // namespace

void VerifyPickVar_PowerOff(const CheckContext& context, const VarPickList& list) {
  Guarded(context.forms, kPowerOffRoutine,
          [&] { ShowEach(context.forms, LostPowerOffVariable(context.store, list)); });
}

void VerifyPickVar_TwoState(const CheckContext& context, const VarPickList& list,
                            TwoStateUser user) {
  Guarded(context.forms, kTwoStateRoutine,
          [&] { ShowEach(context.forms, LostTwoStateVariables(context.store, list, user)); });
}

void VerifyPickVar_LevelCross(const CheckContext& context, const VarPickList& list) {
  Guarded(context.forms, kLevelCrossRoutine, [&] {
    const Findings findings = LostLevelVariables(context.store, list);
    if (findings.empty()) return;
    ShowWarning(context.forms, kLevelTitle,
                JoinLines({"The following variables, configured as Level Crossing Histogram 2nd "
                           "dimension variables, ",
                           "are no longer available for use:", "", TextsOf(findings)}));
  });
}

void VerifyPickVar_WriteIf(const CheckContext& context, const VarPickList& list) {
  Guarded(context.forms, kWriteIfRoutine, [&] {
    const Findings findings = LostWriteIfVariables(context.store, list);
    if (findings.empty()) return;
    ShowWarning(context.forms, kWriteIfTitle,
                JoinLines({"The following variables, used in conditional CallTable statements, are "
                           "no longer available:",
                           "", TextsOf(findings)}));
  });
}

void VerifyPickVar_CalcField(const CheckContext& context, const VarPickList& list) {
  Guarded(context.forms, kCalcFieldRoutine, [&] {
    const Findings findings = LostFormulaVariables(context.store, list, context.calcVarRefs);
    if (findings.empty()) return;
    ShowWarning(
        context.forms, kCalcFieldTitle,
        JoinLines({"The variable(s) used in the following expressions are no longer available:", "",
                   TextsOf(findings), "GO CHECK \"CALCULATED FIELDS\" NOW!"}));
  });
}

void VerifyPickVars(const CheckContext& context, i32 mask) {
  if (!context.Warns(mask)) return;
  Guarded(context.forms, "ORVUS_COMMON.VerifyPickVars", [&] {
    const VarPickList list(context.store);
    VerifyPickVar_PowerOff(context, list);
    VerifyPickVar_TwoState(context, list, TwoStateUser::kAnalogOutput);
    VerifyPickVar_TwoState(context, list, TwoStateUser::kFlag);
    VerifyPickVar_LevelCross(context, list);
    VerifyPickVar_TwoState(context, list, TwoStateUser::kPort);
    VerifyPickVar_TwoState(context, list, TwoStateUser::kTable);
    VerifyPickVar_WriteIf(context, list);
    VerifyPickVar_CalcField(context, list);
  });
}

Findings PickVarFindings(const CheckContext& context) {
  Findings findings;
  const ProjectStore& store = context.store;
  Guarded(context.forms, "ORVUS_COMMON.VerifyPickVars", [&] {
    const VarPickList list(store);
    const auto collect = [&](std::string_view routine, auto&& find) {
      Guarded(context.forms, routine, [&] { Append(findings, find()); });
    };
    const auto collectTwoState = [&](TwoStateUser user) {
      collect(kTwoStateRoutine, [&] { return LostTwoStateVariables(store, list, user); });
    };
    collect(kPowerOffRoutine, [&] { return LostPowerOffVariable(store, list); });
    collectTwoState(TwoStateUser::kAnalogOutput);
    collectTwoState(TwoStateUser::kFlag);
    collect(kLevelCrossRoutine, [&] { return LostLevelVariables(store, list); });
    collectTwoState(TwoStateUser::kPort);
    collectTwoState(TwoStateUser::kTable);
    collect(kWriteIfRoutine, [&] { return LostWriteIfVariables(store, list); });
    collect(kCalcFieldRoutine,
            [&] { return LostFormulaVariables(store, list, context.calcVarRefs); });
  });
  return findings;
}

}  // namespace ORVUS_COMMON
}  // namespace ostrand
