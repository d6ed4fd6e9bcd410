#include "verify/status_flags_check.h"

#include <string>

#include "platform/box.h"
#include "platform/guarded.h"
#include "verify/finding_boxes.h"
#include "verify/project_keys.h"

namespace ostrand {
namespace {

using namespace project_keys;

constexpr std::string_view kTitle = "DUPLICATE FLAGS";

// The uses of one flag. A screen that uses it more than once is listed once.
class FlagUses {
 public:
  FlagUses(const ProjectStore& store, int flagNumber, Findings& findings)
      : store_(store), number_(flagNumber), name_(KeyOf("Flag", flagNumber)), findings_(findings) {}

  void Find() {
    findInPorts();
    findInAnalogOutputs();
    if (store_.Flags[number_].FlagInclude != 0) {
      add(" in Flags Setup", kFlagControlSection, KeyOf(kFlagInclude, number_));
    }
    if (store_.Scan.FlagScan == number_) {
      add(" in Scan Burst", kScanSetupSection, std::string(kFlagScan));
    }
    for (int t = 1; t <= kTables; ++t) findAsTableFlag(t);
    for (int t = 1; t <= kTables; ++t) findInConditions(t);
    if (isIn(store_.Config.PowerOffLine)) {
      add(" in Power Off Trigger", kConfigurationSection, std::string(kPowerOffLine));
    }
  }

 private:
  [[nodiscard]] bool isIn(std::string_view expression) const {
    return ExpressionHolds(expression, name_);
  }

  void add(const std::string& place, std::string_view section, std::string key) {
    findings_.push_back({kTitle, name_ + place, section, std::move(key), true});
  }

  void findInPorts() {
    for (const PortSlot& slot : store_.Ports.Slot) {
      for (int p = 1; p <= kPorts; ++p) {
        if (slot.Ports[p].Include == 0) continue;
        for (int s = 0; s <= 1; ++s) {
          if (!isIn(slot.Ports[p].State[s].Expression)) continue;
          return add(" in Ports Setup", kPortSetupSection, PortKey(kExpression, s, p));
        }
      }
    }
  }

  void findInAnalogOutputs() {
    for (const auto& slot : store_.ExciteOut.Slot) {
      for (int k = 1; k <= 2; ++k) {
        if (slot[k].Include == 0) continue;
        const bool first = isIn(slot[k].Excite1Expression);
        if (!first && !isIn(slot[k].Excite2Expression)) continue;
        return add(" in CAO Trigger Setup", kExciteControlSection,
                   KeyOf(kExciteExpression[first ? 0 : 1], k));
      }
    }
  }

  void findAsTableFlag(int t) {
    const OutputTable& table = store_.Tables[t];
    const auto addUse = [&](i16 tableFlag, const std::string& role, std::string_view key) {
      if (tableFlag == number_)
        add(" Table " + NumberText(t) + role, kTableSetupSection, KeyOf(key, t));
    };
    addUse(table.FlagTable, " Control", kFlagTable);
    addUse(table.FlagMark, " File Mark", kFlagMark);
    addUse(table.FlagFull, " Full", kFlagFull);
  }

  void findInConditions(int t) {
    const OutputTable& table = store_.Tables[t];
    if (table.TrigTable != 0 && isIn(table.DataEventCode)) {
      add(" Table " + NumberText(t) + " Trigger", kTableSetupSection, KeyOf(kDataEventCode, t));
    }
    if (table.WriteIf != 0 && isIn(table.Write[1].Expression)) {
      add(" Table " + NumberText(t) + " Write If", kTableSetupSection,
          WriteConditionKey(kExpression, t, 1, table.WriteIf));
    }
  }

  const ProjectStore& store_;
  int number_;
  std::string name_;
  Findings& findings_;
};

// A row of the monitor has its flag before the state: "3 T".
bool isMonitorFlag(const Configuration& config, int number) {
  for (int i = 1; i <= config.StatusMonCount; ++i) {
    if (config.Status[i][4].starts_with(NumberText(number))) return true;
  }
  return false;
}

}  // namespace

Findings StatusFlagFindings(const ProjectStore& store) {
  Findings findings;
  if (store.Config.MonitorPower[kMonitorStatus] == 0) return findings;
  for (int f = 1; f <= kFlags; ++f) {
    if (isMonitorFlag(store.Config, f)) FlagUses(store, f, findings).Find();
  }
  return findings;
}

namespace ORVUS_COMMON {

void CheckStatusFlags(const CheckContext& context, bool& bad, i16 /*mode*/) {
  bad = false;
  Guarded(context.forms, "ORVUS_COMMON.CheckStatusFlags", [&] {
    const Findings findings = StatusFlagFindings(context.store);
    if (findings.empty()) return;
    const std::string text =
        JoinLines({"The following Flag(s) in Status Monitor were also found in:", "",
                   TextsOf(findings), "PRESS \"YES\" TO LEAVE AS IS OR \"NO\" TO EDIT."});
    bad = Ask(context.forms, kTitle, text, platform::Buttons::kYesNo) != platform::Answer::kYes;
  });
}

}  // namespace ORVUS_COMMON
}  // namespace ostrand
