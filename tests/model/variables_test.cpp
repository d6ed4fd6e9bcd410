#include "model/variables.h"

#include <gtest/gtest.h>

#include "model/defaults.h"
#include "model/new_store.h"

namespace ostrand {
namespace {

class Variables : public testing::Test {
 protected:
  Variables() { ORVUS_COMMON::SetAllDefaults(store); }

  template <class Group>
  static void use(Group& group, int block, int reps) {
    group.BlockCount = static_cast<i16>(block);
    group[block].Reps = static_cast<i16>(reps);
  }
  void calcField(int c, const std::string& name, const std::string& expression) {
    store.CalcFields.CalcFieldCount = static_cast<i16>(c);
    store.CalcFields.Field[c].CalcField[1] = name;
    store.CalcFields.Field[c].CalcField[2] = expression;
  }
  // Uses one variable of each kind that this logger has.
  void useEverything() {
    store.Ports.Slot[0].ReadMode = kTrue;
    store.Ports.Slot[0].Ports[9].Include = kTrue;
    calcField(1, "Power", "1");
    store.Config.MonitorPower[kMonitorBattery] = kTrue;
    store.Config.StatusMonCount = 1;
    store.Config.Status[1][1] = "Status.SkippedScan(1,1)";
    use(store.TempBlock, 1, 2);
    store.TempBlock[1].Alias[2].AliasName = "Oil";
    use(store.VoltBlock, 2, 1);
    use(store.BridgeBlock, 1, 1);
    store.BridgeBlock[1].Alias[1].AliasName = "Load";
    use(store.PulseBlock[0], 1, 1);
    store.Config.TK40MQty = 2;
    use(store.TK40MBlock, 1, 1);
    store.Config.CanBusQty = 1;
    store.Can.Module[1].CanBusEnabled = kTrue;
    store.Can.CanCount = 2;
    store.Can.Item[1].Name = "Wheel";
    store.Can.Item[1].Reps = 2;
    store.Can.Item[2].Name = "Gone";
    store.Can.Item[2].Enabled = 0;
    store.ExciteOut.Slot[0][2].Include = kTrue;
    store.ExciteOut.Slot[0][1].Include = kTrue;
    store.ExciteOut.Slot[0][1].DynamicStatic = 1;  // a static output has no variable
  }
  std::string namesOf(const VarPickList& list) {
    std::string names;
    for (const PickVariable& variable : list.Variables()) names += variable.name + " ";
    return names;
  }

  std::unique_ptr<ProjectStore> owned = NewStore();
  ProjectStore& store = *owned;
};

TEST_F(Variables, ListsAllKindsInOrder) {
  const std::string flags = "Flag(1) Flag(2) Flag(3) Flag(4) Flag(5) Flag(6) Flag(7) Flag(8) ";
  EXPECT_EQ(namesOf(VarPickList(store)), flags);
  useEverything();
  EXPECT_EQ(namesOf(VarPickList(store)),
            "ReadPort " + flags +
                "Power BattVolt Status.SkippedScan(1,1) TBlk1(1) Oil VBlk2 Load PBlk1 ABlk1 "
                "TK40Ref(1) TK40Ref(2) Wheel(1) Wheel(2) Excite2 ");
  const i32 kinds[] = {kVoltVariables, 5, kTempVariables, kBatteryVariable};
  const VarPickList list(store, kinds);
  EXPECT_EQ(namesOf(list), "VBlk2 TBlk1(1) Oil BattVolt ");
  EXPECT_EQ(list.Variables()[2].kind, kTempVariables);
  EXPECT_EQ(list.Variables()[2].element, "TBlk1(2)");
  // Disabled items are not available. A port that is only stored is read all the same.
  store.Ports.Slot[0].Ports[9].Include = kFalse;
  store.Config.MonitorPower[kMonitorBattery] = kFalse;
  store.Config.TK40MQty = 0;
  store.Can.Module[1].CanBusEnabled = kFalse;
  const std::string rest =
      flags + "Power Status.SkippedScan(1,1) TBlk1(1) Oil VBlk2 Load PBlk1 Excite2 ";
  EXPECT_EQ(namesOf(VarPickList(store)), rest);
  store.Ports.Slot[0].Output.OutputSelect[6][kAverage] = kTrue;
  EXPECT_EQ(namesOf(VarPickList(store)), "ReadPort " + rest);
}

TEST_F(Variables, KindsHaveNames) {
  EXPECT_EQ(VariableKindName(1024), "Filter Voltage Blocks");
  EXPECT_EQ(VariableKindName(262144), "CANBUS Items");
  EXPECT_EQ(VariableKindName(3), "??");
  for (const i32 kind : kVariableKinds) EXPECT_NE(VariableKindName(kind), "??") << kind;
}

TEST_F(Variables, FormulasReferToTheirVariables) {
  use(store.TempBlock, 1, 12);
  store.TempBlock[1].Alias[3].AliasName = "Oil";
  calcField(1, "Sum", "oil * 2 + TBlk1(12)");
  calcField(2, "Empty", "");
  calcField(3, "Twice", "SUM * Flag(2)");
  EXPECT_EQ(CollectCalcVarRefs(store).names,
            (std::vector<std::string>{"Flag(2)", "Sum", "Oil", "TBlk1(12)"}));
}

// A running average over an array is written without an index.
TEST_F(Variables, RunningAveragesReferToArrays) {
  use(store.TempBlock, 1, 3);
  calcField(1, "Mean()", "AvgRun(Mean(),3,TBlk1(),50)");
  EXPECT_EQ(CollectCalcVarRefs(store).names, (std::vector<std::string>{"Mean(", "TBlk1("}));
  calcField(1, "Mean", "AvgRun(Mean,3,TBlk1(),50)");  // not an array itself
  EXPECT_EQ(CollectCalcVarRefs(store).names, (std::vector<std::string>{"Mean"}));
}

}  // namespace
}  // namespace ostrand
