#include "verify/pick_var_checks.h"

#include "verify/check_fixture.h"

namespace ostrand {
namespace {

class PickVarChecks : public testing::CheckTest {
 protected:
  PickVarChecks() {
    use(store.TempBlock, 1, 2);
    store.TempBlock[1].Alias[1].AliasName = "Oil";
  }
  void verify() { ORVUS_COMMON::VerifyPickVars(context, kWarnVariablesOnSave); }

  void condition(int t, int state, int i, const char* variable, float value) {
    store.Tables[t].Trigger[state][i].StartMeasVar = variable;
    store.Tables[t].Trigger[state][i].StartTrigValue = value;
  }
  static void level(OutputSet& output, int t, const char* second, i16 dims = 1) {
    output.OutputSelect[t][kLevelCrossing] = kTrue;
    output.Histo[t].LevelMeasName = second;
    output.Histo[t].NumDims = dims;
  }
  std::string onlyKey() {
    const Findings findings = ORVUS_COMMON::PickVarFindings(context);
    EXPECT_EQ(findings.size(), 1U);
    if (findings.empty()) return {};
    EXPECT_FALSE(findings[0].againstSaving);
    return std::string(findings[0].section) + findings[0].key;
  }
};

TEST_F(PickVarChecks, NothingIsLostInANewProject) { verify(); }

TEST_F(PickVarChecks, MaskSwitchesThemAll) {
  store.Flags[1].FlagInclude = kTrue;
  store.Flags[1].State[1].FlagVar = "Gone";
  context.WarningMessageMask = 8191 - kWarnVariablesOnSave;
  verify();
  forms.ExpectBoxWith("INVALID TRIGGER CONDITION", "Flag 1 ");
  ORVUS_COMMON::VerifyPickVars(context, 1);  // the bit of another caller
}

TEST_F(PickVarChecks, PowerOff) {
  Configuration& config = store.Config;
  config.MonitorPower[kMonitorPowerControl] = kTrue;
  config.PowerOffMeasVar = "Gone";
  verify();
  config.EnablePowerOff = kTrue;
  forms.ExpectBox("INVALID POWER OFF TRIGGER",
                  "Variable Gone used in Power Off trigger is no longer available.");
  verify();
  EXPECT_EQ(onlyKey(), "[CONFIGURATION]PowerOffMeasVar");
  config.PowerOffMeasVar.clear();
  forms.ExpectBox("INVALID POWER OFF TRIGGER",
                  "Variable ## MISSING ## used in Power Off trigger is no longer available.");
  verify();
  config.PowerOffMeasVar = "oil";
  verify();
}

TEST_F(PickVarChecks, AnalogOutputs) {
  ExciteChannel& output = store.ExciteOut.Slot[0][2];
  output.Include = kTrue;
  output.Excite1MeasVar = "Oil";
  output.Excite2MeasVar = "Gone";
  forms.ExpectBox("INVALID TRIGGER CONDITION",
                  "CAO Port 2 Trigger ( Gone ) for State 2 is no longer available.");
  verify();
  EXPECT_EQ(onlyKey(), "[EXCITE CONTROL]Excite2MeasVar(2)");
  output.DynamicStatic = 1;
  verify();
}

TEST_F(PickVarChecks, Flags) {
  FlagControl& control = store.Flags[3];
  control.State[1].FlagVar = "Gone";
  control.State[2].FlagValue = 0.5F;
  verify();
  control.FlagInclude = kTrue;
  forms.ExpectBox("INVALID TRIGGER CONDITION",
                  "Flag 3 Trigger ( Gone ) for State 1 is no longer available.");
  verify();
  EXPECT_EQ(onlyKey(), "[FLAG CONTROL]State1FlagVar(3)");
  control.State[1].FlagVar = "TBlk1(1)";
  control.State[2].FlagValue = 1;  // a value without a variable
  forms.ExpectBox("INVALID TRIGGER CONDITION",
                  "Flag 3 Trigger ( ## MISSING ## ) for State 2 is no longer available.");
  verify();
}

TEST_F(PickVarChecks, Ports) {
  PortSlot& slot = store.Ports.Slot[0];
  slot.Ports[3].Include = kTrue;
  slot.Ports[3].State[1].MeasureVar = "Gone";
  forms.ExpectBox("INVALID TRIGGER CONDITION",
                  "I/O Port Slot 1 3 Trigger ( Gone ) for State 2 is no longer available.");
  verify();
  EXPECT_EQ(onlyKey(), "[PORT SETUP]MeasureVar(1,0,3)");
  slot.ReadMode = kTrue;
  verify();
  store.Ports.Slot[1].Ports[9].Include = kTrue;
  store.Ports.Slot[1].Ports[9].State[0].MeasureVar = "Lost";
  forms.ExpectBox("INVALID TRIGGER CONDITION",
                  "I/O Port Slot 2 9 Trigger ( Lost ) for State 1 is no longer available.");
  verify();
}

TEST_F(PickVarChecks, TriggersOfTables) {
  OutputTable& table = store.Tables[2];  // not in use: its trigger is in the program all the same
  table.TrigTable = 3;
  condition(2, 0, 1, "Oil", 0);
  condition(2, 0, 2, "", 0.99F);
  condition(2, 0, 3, "Gone", 0);
  condition(2, 0, 4, "Past", 0);
  table.TrigTabStop = 1;
  condition(2, 1, 1, "", 1);
  forms.ExpectBox(" INVALID TRIGGERED TABLE\"",
                  "START Trigger ( Gone ) for table 2 is no longer available.");
  forms.ExpectBox(" INVALID TRIGGERED TABLE\"",
                  "STOP Trigger ( ## MISSING ## ) for table 2 is no longer available.");
  verify();
  table.SingleTrigger = kTrue;
  EXPECT_EQ(onlyKey(), "[TABLE SETUP]StartMeasVar(23)");
  condition(2, 0, 3, "Flag(2)", 0);
  verify();
  table.TrigTable = 0;
  table.SingleTrigger = kFalse;  // no start, no trigger
  verify();
}

TEST_F(PickVarChecks, ManyConditionsHaveRowsOfTheirOwn) {
  store.Tables[6].TrigTable = 10;
  condition(6, 0, 10, "Gone", 0);
  EXPECT_EQ(onlyKey(), "[TABLE SETUP]StartMeasVar(610)");
  condition(6, 0, 10, "", 0);
  store.Tables[6].TrigTabStop = 1;
  condition(6, 1, 1, "Gone", 0);
  EXPECT_EQ(onlyKey(), "[TABLE SETUP]StopMeasVar(6)");
}

// A count that no file can hold: the others still run.
TEST_F(PickVarChecks, FailureOfOneIsReportedAndLeavesTheOthers) {
  store.Tables[1].TrigTable = 11;
  store.Tables[2].WriteIf = 1;
  store.Tables[2].Write[1].MeasureVar = "Gone";
  forms.ExpectBoxWith("TROUBLE",
                      "Unexpected error 9, \"Subscript out of range\" has occurred in "
                      "ORVUS_COMMON.VerifyPickVar_TwoState.");
  forms.ExpectBoxWith("INVALID WRITE IF TRIGGER", "Gone");
  verify();
}

TEST_F(PickVarChecks, SecondDimensionsOfLevelCrossings) {
  store.Tables[1].TableOn = kTrue;
  store.Tables[4].TableOn = kTrue;
  store.Tables[4].TableName = "Fatigue";
  level(store.TempBlock[1].Output, 4, "Gone");
  level(store.TempBlock[1].Output, 2, "Gone");     // table not in use
  level(store.TempBlock[1].Output, 1, "Gone", 0);  // one dimension only
  use(store.VoltBlock, 1, 1);
  level(store.VoltBlock[1].Output, 4, "oil");
  use(store.BridgeBlock, 2, 1);
  level(store.BridgeBlock[2].Output, 1, "");
  use(store.PulseBlock[0], 1, 1);
  level(store.PulseBlock[0][1].Output, 1, "Lost");
  use(store.TK40MBlock, 1, 1);
  level(store.TK40MBlock[1].Output, 1, "Unplugged");  // no multiplexer yet
  store.CalcFields.CalcFieldCount = 1;
  level(store.CalcFields.Field[1].Output, 4, "Old");
  const std::string head =
      "The following variables, configured as Level Crossing Histogram 2nd dimension variables, "
      "\r\nare no longer available for use:\r\n\r\n"
      "'Gone', Thermocouple Block 1, Table Fatigue\r\n"
      "'## MISSING ##', Bridge Block 2, Table Table1\r\n"
      "'Lost', Pulse Block 1, Table Table1\r\n";
  forms.ExpectBox("INVALID LEVEL CROSSING 2ND DIMENSION",
                  head + "'Old', Calc Block 1, Table Fatigue");
  verify();

  store.Config.TK40MQty = 1;
  store.Config.CanBusQty = 1;
  store.Can.Module[1].CanBusEnabled = kTrue;
  store.Can.CanCount = 3;
  store.Can.Item[3].Reps = 1;
  level(store.Can.Item[3].Output, 1, "Bus");
  forms.ExpectBox("INVALID LEVEL CROSSING 2ND DIMENSION",
                  head +
                      "'Unplugged', TK40M Block 1, Table Table1\r\n"
                      "'Bus', CAN Block 3, Table Table1\r\n"
                      "'Old', Calc Block 1, Table Fatigue");
  verify();
  const Findings findings = ORVUS_COMMON::PickVarFindings(context);
  std::string keys;
  for (const Finding& finding : findings) keys += std::string(finding.section) + finding.key + "\n";
  EXPECT_EQ(keys,
            "[THERMOCOUPLE BLOCKS]TmLevelMeasName(4,1)\n[BRIDGE BLOCKS]BrLevelMeasName(1,2)\n"
            "[PULSE BLOCKS]PuLevelMeasName(1,1)\n[TK40M BLOCKS]TkLevelMeasName(1,1)\n"
            "[CANBUS ITEMS]CaLevelMeasName(1,3)\n[CALCULATED FIELDS]CaLevelMeasName(4,1)\n");
}

TEST_F(PickVarChecks, WriteConditions) {
  store.Tables[1].WriteIf = 1;
  store.Tables[1].Write[1].MeasureVar = "Gone";
  store.Tables[5].WriteIf = 2;
  store.Tables[5].TableName = "Peaks";
  store.Tables[5].Write[1].MeasureVar = "Lost";
  store.Tables[5].Write[2].MeasureVar = "Second";  // only the first is looked at
  store.Tables[6].Write[1].MeasureVar = "NotInUse";
  forms.ExpectBox("INVALID WRITE IF TRIGGER",
                  "The following variables, used in conditional CallTable statements, are no "
                  "longer available:\r\n\r\n"
                  "Variable Gone,  Table #1 (TABLE1)\r\n"
                  "Variable Lost,  Table #5 (PEAKS)");
  verify();
  store.Tables[1].WriteIf = 0;
  EXPECT_EQ(onlyKey(), "[TABLE SETUP]MeasureVar(5, 1)");
  store.Tables[5].WriteIf = 1;
  EXPECT_EQ(onlyKey(), "[TABLE SETUP]MeasureVar(5)");
}

TEST_F(PickVarChecks, FormulasWhoseVariablesWentAway) {
  auto& fields = store.CalcFields;
  fields.CalcFieldCount = 3;
  fields.Field[1].CalcField[1] = "Hot";
  fields.Field[1].CalcField[2] = "OIL - TBlk1(2)";
  fields.Field[2].CalcField[1] = "Mean()";
  fields.Field[2].CalcField[2] = "AvgRun(Mean(),2,TBlk1(),10)";
  fields.Field[3].CalcField[1] = "Hotter";
  fields.Field[3].CalcField[2] = "Oil + Hot";
  refs = CollectCalcVarRefs(store);
  verify();
  store.TempBlock[1].Reps = 1;  // the array is still there, its second element is not
  store.TempBlock[1].Alias[1].AliasName = "Water";
  forms.ExpectBox("INVALID CALCULATED FIELD",
                  "The variable(s) used in the following expressions are no longer available:"
                  "\r\n\r\n"
                  "Oil - used in expression 1 (Hot)\r\n"
                  "Oil - used in expression 3 (Hotter)\r\n"
                  "TBlk1(2) - used in expression 1 (Hot)\r\n"
                  "GO CHECK \"CALCULATED FIELDS\" NOW!");
  verify();
  fields.CalcFieldCount = 0;  // nothing uses them any more
  verify();
}

TEST_F(PickVarChecks, RunningAverageOverAnArrayThatWentAway) {
  store.CalcFields.CalcFieldCount = 1;
  store.CalcFields.Field[1].CalcField[1] = "Mean()";
  store.CalcFields.Field[1].CalcField[2] = "AvgRun(Mean(),2,TBlk1(),10)";
  refs = CollectCalcVarRefs(store);
  store.TempBlock.BlockCount = 0;
  forms.ExpectBoxWith("INVALID CALCULATED FIELD", "TBlk1( - used in expression 1 (Mean())");
  verify();
  EXPECT_EQ(onlyKey(), "[CALCULATED FIELDS]CalcField(1,2)");
}

}  // namespace
}  // namespace ostrand
