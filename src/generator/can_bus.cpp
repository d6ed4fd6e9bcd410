// Declarations and statements of the CAN items.
#include <algorithm>

#include "generator/savedld.h"
#include "text/number.h"

namespace ostrand {
namespace {

bool isMeasured(const CanItemData& item) { return item.Reps >= 1 && item.Enabled != 0; }

}  // namespace

void SAVEDLD::CanDeclarations() {
  if (!canInUse()) return;
  const bool anyItems = store_.Can.CanCount > 0;
  if (anyItems) {
    collectExceptFlags(Family::kCan);
    PutEmpty();
  }
  canModuleConstants();
  if (!anyItems) return;
  for (const BlockView& view : blocksOf(Family::kCan)) {
    const CanItemData& item = store_.Can.Item[view.n];
    if (item.Enabled != 1) continue;
    if (HasReps(view)) canItemConstants(view, item);
    canLevelLines(view);
  }
}

void SAVEDLD::canModuleConstants() {
  const CanModuleData& module = store_.Can.Module[1];
  PutSectionTitle(TextsOf(Family::kCan).constantsTitle);
  PutEmpty();
  Put({"Const CanAddress = ", module.CanAddress},
      {"'Decimal number for address ", HexText(static_cast<std::uint16_t>(module.CanAddress))});
  Put({"Const CanQuanta = ", module.CanQuanta}, {"'Quanta for baud ", module.CanBaud});
  Put({"Const CanSeg1 = ", module.CanSeg1}, {"'Seg1 for baud ", module.CanBaud});
  Put({"Const CanSeg2 = ", module.CanSeg2}, {"'Seg2 for baud ", module.CanBaud});
  Put({"Public CanSwitchTx, CanSwitchRx"},
      {"'Config values to send (Tx) and confirm (Rx) on QB-CAN"});
  if (module.CanGetOSVerSig == 0) return;
  Put({"Public QBCANInfo(2)"}, {"'Version and Signature values from QB-CAN"});
  Put({"Alias  QBCANInfo(1)=QBCanSig"});
  Put({"Alias  QBCANInfo(2)=QBCanVer"});
}

void SAVEDLD::canItemConstants(const BlockView& view, const CanItemData& item) {
  const std::string& name = item.Name;
  const auto constant = [&](std::string_view what, auto value, std::string_view comment) {
    const auto put = [&](const auto&... statement) { Put({statement...}, {"'", name, comment}); };
    ItemConstantStatement(put, name, what, value);
  };
  PutTitle("", Joined({view.texts->blockTitle, view.n, " "}));
  constant("DataType", item.DataStyle, " data type");
  constant("StartBit", item.StartBit, " start bit");
  constant("NumBits", item.NumBits, " number of bits");
  constant("NumVals", item.Reps, " number of values");
  constant("Mult", item.DefaultMult, " multiplier");
  constant("OSet", item.DefaultOffset, " offset");
  const auto source = [&](const auto&... statement) {
    Put({statement...}, {"'", name, " dimensioned source"});
  };
  ItemArrayStatement(source, item.Public != 0, name, view.names.reps);
  if (view.except->Any()) {
    const auto scaling = [&](std::string_view array, std::string_view what) {
      const auto put = [&](const auto&... statement) {
        Put({statement...}, {"'Item", view.n, what});
      };
      ItemArrayStatement(put, false, array, view.names.reps);
    };
    scaling(view.names.mult, " dimensioned multiplier");
    scaling(view.names.offset, " dimensioned offset");
    needs_.NeedLoopIndex = true;
  }
  if (!item.Units.empty()) {
    const auto put = [&](const auto&... statement) {
      Put({statement...}, {"'", name, " units (", item.Units, ")"});
    };
    UnitsStatement(put, name, item.Units);
  }
}

// Level crossing of an item has one source for each table, not one for each value.
void SAVEDLD::canLevelLines(const BlockView& view) {
  const OutputSet& output = view.data->Output;
  const std::string& name = view.names.source;
  for (int t = 1; t <= kTables; ++t) {
    if (!IsSelected(output, t, kLevelCrossing)) continue;
    const std::string label = Joined({"'", name, " Table", t});
    putLevelArrays(output, t, Joined({name, t}), label, label + " data for array 2");
  }
  for (int t = 1; t <= kTables; ++t) {
    if (!IsSelected(output, t, kLevelCrossing)) continue;
    const auto put = [&](const auto&... statement) {
      Put({statement...}, {"'", name, " Table", t, " source for level crossing"});
    };
    ItemLevelStatement(put, name, t);
  }
}

void SAVEDLD::CanBus() {
  if (!canInUse()) return;
  const auto views = blocksOf(Family::kCan);
  const auto itemOf = [this](const BlockView& view) -> const CanItemData& {
    return store_.Can.Item[view.n];
  };
  if (std::any_of(views.begin(), views.end(),
                  [&](const BlockView& view) { return isMeasured(itemOf(view)); })) {
    PutTitle("      ", TextsOf(Family::kCan).bodyTitle);
  }
  bool inSlowSequence = false;
  for (const BlockView& view : views) {
    const CanItemData& item = itemOf(view);
    if (item.ItemMessageType == 1) inSlowSequence = true;
    if (item.ItemMessageType != 0 || !isMeasured(item)) continue;
    const std::string& mult = view.except->Any() ? view.names.mult : view.names.multConst;
    const std::string& offset = view.except->Any() ? view.names.offset : view.names.offsetConst;
    Put({"      Canbus(", canArguments(item.Name, item.DataId), canPlace(item.Name), ",", mult, ",",
         offset, ")"});
  }
  if (inSlowSequence) {
    Put({"      'Canbus items are (also) found in the SlowSequence Section"});
  }
}

std::string SAVEDLD::canArguments(std::string_view array, std::string_view id) const {
  const bool shortId = store_.Can.Module[1].CanDataIDType == 0;
  return Joined({array, "(),CanAddress,CanQuanta,CanSeg1,CanSeg2,", shortId ? "-" : "", id, ","});
}

std::string SAVEDLD::canPlace(std::string_view name) {
  return Joined({name, "DataType,", name, "StartBit,", name, "NumBits,", name, "NumVals"});
}

}  // namespace ostrand
