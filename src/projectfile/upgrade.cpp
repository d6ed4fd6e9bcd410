#include "projectfile/upgrade.h"

#include "model/alias_except.h"
#include "model/channels.h"
#include "projectfile/genfile.h"
#include "projectfile/tables.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

// An event of the old form, "DataEvent (10,start,stop,10)", holds the two expressions.
void splitEvent(OutputTable& table) {
  const std::string_view event = table.DataEventCode;
  std::string& start = table.Trigger[0][1].StartTrigIndvExpress;
  if (!start.empty() || !Holds(event, "DataEvent") || !Holds(event, ",")) return;
  const std::string_view arguments = After(event, ",");
  start = Before(arguments, ",");
  if (Holds(arguments, ",")) {
    table.Trigger[1][1].StartTrigIndvExpress = Before(After(arguments, ","), ",");
  }
}

// Older files have conditions without a count; they are kept, but disabled.
void countTrigger(OutputTable& table) {
  if (table.TrigTable > 0 || table.Trigger[0][1].StartMeasVar.empty()) return;
  table.DisableTrigger = 1;
  table.TrigTable = 1;
  if (table.SingleTrigger == 0) table.TrigTabStop = 1;
}

void countWriteCondition(OutputTable& table) {
  if (table.WriteIf > 0 || table.Write[1].MeasureVar.empty()) return;
  table.DisableWriteIf = 1;
  table.WriteIf = 1;
  table.GroupWriteIf = "1";
}

bool differs(const std::string& text, float value) {
  const auto number = ToSingle(text);
  return number && *number != value;
}

// The gauge factor column of strain kinds is padded with meaningless zeros.
bool isFiller(const MeasBlock&, const std::string&) { return false; }
bool isFiller(const BridgeBlockData& block, const std::string& offset) {
  return IsStrainStyle(block.Style) && offset == "0";
}

template <class Family>
void recount(ProjectStore& store) {
  for (int b = 1; b <= Family::Count(store); ++b) {
    auto& block = Family::Item(store, b);
    for (int r = 1; r <= CountOf(block.Reps, block.Alias); ++r) {
      RepAlias& alias = block.Alias[r];
      int bits = 0;
      if (!alias.AliasUnits.empty() && alias.AliasUnits != block.Units) bits |= kUnitsByHand;
      if (differs(alias.AliasMult, block.DefaultMult)) bits |= kMultByHand;
      if (!isFiller(block, alias.AliasOffset) && differs(alias.AliasOffset, block.DefaultOffset)) {
        bits |= kOffsetByHand;
      }
      alias.AliasExcept = bits > 0 ? NumberText(bits) : "";
    }
  }
}

}  // namespace

void UpgradeConditions(ProjectStore& store) {
  for (OutputTable& table : store.Tables.Table) {
    if (table.TableOn == 0) continue;
    splitEvent(table);
    countTrigger(table);
    countWriteCondition(table);
  }
}

void RecountAliasExcept(ProjectStore& store) {
  recount<TK40MFamily>(store);
  recount<TempFamily>(store);
  recount<VoltFamily>(store);
  recount<BridgeFamily>(store);
  recount<PulseFamily<0>>(store);
}

}  // namespace ostrand::ORVUS_GENFILE
