// The texts of a project that name variables: conditions, formulas, level crossings.
#pragma once

#include "model/store.h"

namespace ostrand {

// The kinds of text that name variables.
enum class VariableText {
  kVariable,    // one name, as lists of variables show it
  kExpression,  // composed of names, signs and values; it has elements of arrays for aliases
  kFormula,     // of a calculated field, as the user wrote it
};

// Each routine calls `visit(text, kind)` with every text of its part that was ever written, in use
// or not, always in the same order; all others are empty. A const part gives const texts.

template <class Tables, class Visit>
void VisitTableConditions(Tables& tables, Visit visit) {
  for (auto& table : tables.Table) {
    for (auto& conditions : table.Trigger) {
      for (auto& condition : conditions.Made()) {
        visit(condition.StartMeasVar, VariableText::kVariable);
        visit(condition.StartTrigVarb, VariableText::kVariable);
        visit(condition.StartTrigIndvExpress, VariableText::kExpression);
      }
    }
    for (auto& condition : table.Write.Made()) {
      visit(condition.MeasureVar, VariableText::kVariable);
      visit(condition.Varb, VariableText::kVariable);
      visit(condition.Expression, VariableText::kExpression);
    }
    visit(table.DataEventCode, VariableText::kExpression);
    visit(table.DataEventCodeStart, VariableText::kExpression);
    visit(table.DataEventCodeStop, VariableText::kExpression);
    visit(table.GroupWriteIf, VariableText::kExpression);
  }
}

// Of tables, flags, ports, analog outputs and the power off.
template <class Store, class Visit>
void VisitConditions(Store& store, Visit visit) {
  VisitTableConditions(store.Tables, visit);
  for (auto& control : store.Flags) {
    for (auto& state : control.State) {
      visit(state.FlagVar, VariableText::kVariable);
      visit(state.FlagExpression, VariableText::kExpression);
    }
  }
  for (auto& slot : store.Ports.Slot) {
    for (auto& port : slot.Ports) {
      for (auto& state : port.State) {
        visit(state.MeasureVar, VariableText::kVariable);
        visit(state.Expression, VariableText::kExpression);
      }
    }
  }
  for (auto& slot : store.ExciteOut.Slot) {
    for (auto& channel : slot) {
      visit(channel.Excite1MeasVar, VariableText::kVariable);
      visit(channel.Excite1Expression, VariableText::kExpression);
      visit(channel.Excite2MeasVar, VariableText::kVariable);
      visit(channel.Excite2Expression, VariableText::kExpression);
    }
  }
  visit(store.Config.PowerOffMeasVar, VariableText::kVariable);
  visit(store.Config.PowerOffLine, VariableText::kExpression);
}

template <class Store, class Visit>
void VisitFormulas(Store& store, Visit visit) {
  for (auto& field : store.CalcFields.Field.Made())
    visit(field.CalcField[2], VariableText::kFormula);
}

// The second dimensions of the level crossings of one block, item or formula.
template <class Output, class Visit>
void VisitLevelNames(Output& output, Visit visit) {
  for (auto& histo : output.Histo.Made()) visit(histo.LevelMeasName, VariableText::kVariable);
}

// All texts of a project.
template <class Store, class Visit>
void VisitVariableTexts(Store& store, Visit visit) {
  VisitConditions(store, visit);
  VisitFormulas(store, visit);
  const auto visitLevels = [&visit](auto& group) {
    for (auto& block : group.Blocks.Made()) VisitLevelNames(block.Output, visit);
  };
  visitLevels(store.TempBlock);
  visitLevels(store.VoltBlock);
  visitLevels(store.BridgeBlock);
  for (auto& slot : store.PulseBlock) visitLevels(slot);
  visitLevels(store.TK40MBlock);
  for (auto& item : store.Can.Item.Made()) VisitLevelNames(item.Output, visit);
  for (auto& field : store.CalcFields.Field.Made()) VisitLevelNames(field.Output, visit);
}

}  // namespace ostrand
