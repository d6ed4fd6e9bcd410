// Start and stop triggers and write conditions of the tables.
#include "generator/triggers.h"

#include "generator/savedld.h"
#include "text/strings.h"

namespace ostrand {
namespace {

bool writesOnCondition(const OutputTable& table) {
  return table.WriteIf != 0 && table.DisableWriteIf == 0;
}

bool storesOnTrigger(const OutputTable& table) {
  return table.TrigTable != 0 && table.DisableTrigger == 0;
}

// The text with each number replaced by the condition that `conditionOf` returns for it.
template <class ConditionOf>
std::string expand(std::string_view rest, ConditionOf&& conditionOf) {
  std::string out;
  for (int p = FirstDigit(rest); p != 0; p = FirstDigit(rest)) {
    out.append(rest.substr(0, static_cast<std::size_t>(p - 1)));
    rest.remove_prefix(static_cast<std::size_t>(p - 1));
    const int n = LeadingNumber(rest);
    rest.remove_prefix(n > 9 ? 2 : 1);
    out.append(conditionOf(n));
  }
  out.append(rest);
  return out;
}

// Older projects compare a flag without an equal sign: "Flag(2) True".
void repairFlagTest(std::string& expression) {
  const std::size_t close = expression.find(')');
  if (close == std::string::npos || Holds(expression, "=") || !Holds(Upper(expression), "FLAG")) {
    return;
  }
  expression.insert(close + 1, " =");
}

}  // namespace

int FirstDigit(std::string_view text) {
  const std::size_t at = text.find_first_of("123456789");
  return at == std::string_view::npos ? 0 : static_cast<int>(at) + 1;
}

int LeadingNumber(std::string_view text) {
  if (FirstDigit(text) != 1) return 0;
  const int first = text[0] - '0';
  const bool second = text.size() > 1 && text[1] >= '0' && text[1] <= '9';
  return second ? first * 10 + (text[1] - '0') : first;
}

std::string SAVEDLD::ExpandTriggerGroup(int s, int t) const {
  const OutputTable& table = run_.store.Tables[t];
  return expand(s == 0 ? table.DataEventCodeStart : table.DataEventCodeStop,
                [&](int n) { return table.Trigger[s][n].StartTrigIndvExpress; });
}

std::string SAVEDLD::ExpandWriteIfGroup(int t) const {
  const OutputTable& table = run_.store.Tables[t];
  return expand(table.GroupWriteIf, [&](int n) { return table.Write[n].Expression; });
}

void SAVEDLD::TriggerCallSub(int t) {
  if (!decltype(run_.store.Tables.Table)::Holds(t)) return;
  OutputTable& table = run_.store.Tables[t];
  if (!writesOnCondition(table) && !storesOnTrigger(table)) return;
  const auto condition = [&](int s, int count) {
    return count == 1 ? table.Trigger[s][1].StartTrigIndvExpress : ExpandTriggerGroup(s, t);
  };
  run_.Put({"Sub TriggerCall", table.TableName});
  if (storesOnTrigger(table)) run_.Put({"  bStartTrigger = (", condition(0, table.TrigTable), ")"});
  // A stop condition is evaluated even if the trigger is disabled.
  if (table.TrigTabStop != 0 && table.SingleTrigger == 0) {
    run_.Put({"  bStopTrigger = (", condition(1, table.TrigTabStop), ")"});
  }
  if (writesOnCondition(table)) {
    repairFlagTest(table.Write[1].Expression);
    run_.Put({"  bWriteIfCall = (", ExpandWriteIfGroup(t), ")"});
  }
  run_.Put({"End Sub"});
}

void SAVEDLD::TableCallLines(int t) {
  const OutputTable& table = run_.store.Tables[t];
  const std::string& name = table.TableName;
  const std::string flagTest = table.FlagTable != 0 ? Joined({"Flag(", table.FlagTable, ")"}) : "";
  const auto callOnFlag = [&] {
    if (flagTest.empty()) {
      run_.Put({"      CallTable ", name});
    } else {
      run_.Put({"      If ", flagTest, " Then CallTable ", name});
    }
  };
  if (writesOnCondition(table)) {
    run_.Put({"      Call TriggerCall", name});
    run_.Put({"      If bWriteIfCall", flagTest.empty() ? "" : " And ", flagTest,
              " Then CallTable ", name});
  } else if (storesOnTrigger(table)) {
    run_.Put({"      Call TriggerCall", name});
    callOnFlag();
  }
  // A Disable flag other than 0 and 1 leaves its table without a call.
  const bool triggerCounts = table.TrigTable != 0 && table.DisableTrigger != 1;
  const bool writeIfCounts = table.WriteIf != 0 && table.DisableWriteIf != 1;
  if (!triggerCounts && !writeIfCounts) callOnFlag();
}

}  // namespace ostrand
