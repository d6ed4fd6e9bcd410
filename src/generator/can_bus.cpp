// Declarations and statements of the CAN items.
#include "generator/can_bus.h"

#include <algorithm>

#include "generator/level_arrays.h"
#include "generator/savedld.h"
#include "text/number.h"

namespace ostrand {
namespace {

bool isMeasured(const CanItemData& item) { return item.Reps >= 1 && item.Enabled != 0; }

void canModuleConstants(ProgramRun& run) {
  const CanModuleData& module = run.store.Can.Module[1];
  run.PutSectionTitle(TextsOf(Family::kCan).constantsTitle);
  run.PutEmpty();
  run.Put({"Const CanAddress = ", module.CanAddress},
          {"'Decimal number for address ", HexText(static_cast<std::uint16_t>(module.CanAddress))});
  run.Put({"Const CanQuanta = ", module.CanQuanta}, {"'Quanta for baud ", module.CanBaud});
  run.Put({"Const CanSeg1 = ", module.CanSeg1}, {"'Seg1 for baud ", module.CanBaud});
  run.Put({"Const CanSeg2 = ", module.CanSeg2}, {"'Seg2 for baud ", module.CanBaud});
  run.Put({"Public CanSwitchTx, CanSwitchRx"},
          {"'Config values to send (Tx) and confirm (Rx) on QB-CAN"});
  if (module.CanGetOSVerSig == 0) return;
  run.Put({"Public QBCANInfo(2)"}, {"'Version and Signature values from QB-CAN"});
  run.Put({"Alias  QBCANInfo(1)=QBCanSig"});
  run.Put({"Alias  QBCANInfo(2)=QBCanVer"});
}

void canItemConstants(ProgramRun& run, const BlockView& view, const CanItemData& item) {
  const std::string& name = item.Name;
  const auto constant = [&](std::string_view what, auto value, std::string_view comment) {
    const auto put = [&](const auto&... statement) {
      run.Put({statement...}, {"'", name, comment});
    };
    ItemConstantStatement(put, name, what, value);
  };
  run.PutTitle("", Joined({view.texts->blockTitle, view.n, " "}));
  constant("DataType", item.DataStyle, " data type");
  constant("StartBit", item.StartBit, " start bit");
  constant("NumBits", item.NumBits, " number of bits");
  constant("NumVals", item.Reps, " number of values");
  constant("Mult", item.DefaultMult, " multiplier");
  constant("OSet", item.DefaultOffset, " offset");
  const auto source = [&](const auto&... statement) {
    run.Put({statement...}, {"'", name, " dimensioned source"});
  };
  ItemArrayStatement(source, item.Public != 0, name, view.names.reps);
  if (view.except->Any()) {
    const auto scaling = [&](std::string_view array, std::string_view what) {
      const auto put = [&](const auto&... statement) {
        run.Put({statement...}, {"'Item", view.n, what});
      };
      ItemArrayStatement(put, false, array, view.names.reps);
    };
    scaling(view.names.mult, " dimensioned multiplier");
    scaling(view.names.offset, " dimensioned offset");
    run.needs.NeedLoopIndex = true;
  }
  if (!item.Units.empty()) {
    const auto put = [&](const auto&... statement) {
      run.Put({statement...}, {"'", name, " units (", item.Units, ")"});
    };
    UnitsStatement(put, name, item.Units);
  }
}

// Level crossing of an item has one source for each table, not one for each value.
void canLevelLines(ProgramRun& run, const BlockView& view) {
  const OutputSet& output = view.data->Output;
  const std::string& name = view.names.source;
  for (int t = 1; t <= kTables; ++t) {
    if (!IsSelected(output, t, kLevelCrossing)) continue;
    const std::string label = Joined({"'", name, " Table", t});
    PutLevelArrays(run, output, t, Joined({name, t}), label, label + " data for array 2");
  }
  for (int t = 1; t <= kTables; ++t) {
    if (!IsSelected(output, t, kLevelCrossing)) continue;
    const auto put = [&](const auto&... statement) {
      run.Put({statement...}, {"'", name, " Table", t, " source for level crossing"});
    };
    ItemLevelStatement(put, name, t);
  }
}

}  // namespace

bool CanInUse(const ProjectStore& store) {
  return store.Config.CanBusQty > 0 && store.Can.Module[1].CanBusEnabled != 0;
}

std::string CanArguments(const ProjectStore& store, std::string_view array, std::string_view id) {
  const bool shortId = store.Can.Module[1].CanDataIDType == 0;
  return Joined({array, "(),CanAddress,CanQuanta,CanSeg1,CanSeg2,", shortId ? "-" : "", id, ","});
}

std::string CanPlace(std::string_view name) {
  return Joined({name, "DataType,", name, "StartBit,", name, "NumBits,", name, "NumVals"});
}

void SAVEDLD::CanDeclarations() {
  if (!CanInUse(run_.store)) return;
  const bool anyItems = run_.store.Can.CanCount > 0;
  if (anyItems) {
    CollectExceptFlags(run_.Blocks(Family::kCan));
    run_.PutEmpty();
  }
  canModuleConstants(run_);
  if (!anyItems) return;
  for (const BlockView& view : run_.Blocks(Family::kCan)) {
    const CanItemData& item = run_.store.Can.Item[view.n];
    if (item.Enabled != 1) continue;
    if (HasReps(view)) canItemConstants(run_, view, item);
    canLevelLines(run_, view);
  }
}

void SAVEDLD::CanBus() {
  if (!CanInUse(run_.store)) return;
  const auto& views = run_.Blocks(Family::kCan);
  const auto itemOf = [&](const BlockView& view) -> const CanItemData& {
    return run_.store.Can.Item[view.n];
  };
  if (std::any_of(views.begin(), views.end(),
                  [&](const BlockView& view) { return isMeasured(itemOf(view)); })) {
    run_.PutTitle("      ", TextsOf(Family::kCan).bodyTitle);
  }
  bool inSlowSequence = false;
  for (const BlockView& view : views) {
    const CanItemData& item = itemOf(view);
    if (item.ItemMessageType == 1) inSlowSequence = true;
    if (item.ItemMessageType != 0 || !isMeasured(item)) continue;
    const std::string& mult = view.except->Any() ? view.names.mult : view.names.multConst;
    const std::string& offset = view.except->Any() ? view.names.offset : view.names.offsetConst;
    run_.Put({"      Canbus(", CanArguments(run_.store, item.Name, item.DataId),
              CanPlace(item.Name), ",", mult, ",", offset, ")"});
  }
  if (inSlowSequence) {
    run_.Put({"      'Canbus items are (also) found in the SlowSequence Section"});
  }
}

}  // namespace ostrand
