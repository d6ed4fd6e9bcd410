#include "calc/variable_uses.h"

#include <algorithm>
#include <initializer_list>
#include <string>

#include "calc/formula.h"
#include "model/table_outputs.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// Looks for one name all over a project.
class Search {
 public:
  Search(const ProjectStore& store, std::string_view name) : store_(store), name_(name) {}

  [[nodiscard]] bool InConditions() const {
    return inPowerOff() || inTables() || inPorts() || inFlags() || inAnalogOutputs();
  }

  [[nodiscard]] bool InFormulas(int but) const {
    for (int c = 1; c <= store_.CalcFields.CalcFieldCount; ++c) {
      if (c != but && in({store_.CalcFields.Field[c].CalcField[2]})) return true;
    }
    return false;
  }

  [[nodiscard]] bool InLevelCrossings(int butOfField) const {
    for (const OutputSource& source : OutputSourcesOf(store_)) {
      if (source.family == OutputFamily::kCalcField && source.n == butOfField) continue;
      for (int t = 1; t <= kTables; ++t) {
        if (IsSelected(*source.output, t, kLevelCrossing) &&
            in({source.output->Histo[t].LevelMeasName})) {
          return true;
        }
      }
    }
    return false;
  }

 private:
  [[nodiscard]] bool in(std::initializer_list<std::string_view> texts) const {
    return std::any_of(texts.begin(), texts.end(),
                       [&](std::string_view text) { return NamesVariable(text, name_); });
  }

  [[nodiscard]] bool inPowerOff() const {
    return in({store_.Config.PowerOffMeasVar, store_.Config.PowerOffLine});
  }

  [[nodiscard]] bool inTables() const {
    for (const OutputTable& table : store_.Tables.Table) {
      if (in({table.DataEventCode, table.DataEventCodeStart, table.DataEventCodeStop,
              table.GroupWriteIf})) {
        return true;
      }
      for (const auto& conditions : table.Trigger) {
        for (const TriggerCondition& condition : conditions) {
          if (in({condition.StartMeasVar, condition.StartTrigVarb,
                  condition.StartTrigIndvExpress})) {
            return true;
          }
        }
      }
      for (const WriteCondition& condition : table.Write) {
        if (in({condition.MeasureVar, condition.Varb, condition.Expression})) return true;
      }
    }
    return false;
  }

  [[nodiscard]] bool inPorts() const {
    for (const PortSlot& slot : store_.Ports.Slot) {
      for (const Port& port : slot.Ports) {
        for (const PortState& state : port.State) {
          if (in({state.MeasureVar, state.Expression})) return true;
        }
      }
    }
    return false;
  }

  [[nodiscard]] bool inFlags() const {
    for (const FlagControl& control : store_.Flags) {
      for (const FlagState& state : control.State) {
        if (in({state.FlagVar, state.FlagExpression})) return true;
      }
    }
    return false;
  }

  [[nodiscard]] bool inAnalogOutputs() const {
    for (const auto& slot : store_.ExciteOut.Slot) {
      for (const ExciteChannel& channel : slot) {
        if (in({channel.Excite1MeasVar, channel.Excite2MeasVar, channel.Excite1Expression,
                channel.Excite2Expression})) {
          return true;
        }
      }
    }
    return false;
  }

  const ProjectStore& store_;
  std::string_view name_;
};

}  // namespace

bool NamesVariable(std::string_view text, std::string_view name) {
  if (name.empty()) return false;
  const std::string held = Upper(text);
  const std::string wanted = Upper(name);
  for (std::size_t at = held.find(wanted); at != std::string::npos;
       at = held.find(wanted, at + 1)) {
    const std::size_t behind = at + wanted.size();
    const bool begins = at == 0 || !IsNameLetter(held[at - 1]);
    if (begins && (behind == held.size() || !IsNameLetter(held[behind]))) return true;
  }
  return false;
}

bool IsVariableUsed(const ProjectStore& store, int field) {
  const std::string& name = store.CalcFields.Field[field].CalcField[1];
  const Search search(store, Trim(name));
  return search.InConditions() || search.InFormulas(field) || search.InLevelCrossings(field);
}

}  // namespace ostrand
