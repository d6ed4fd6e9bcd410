// Constants, arrays and the variables behind them.
#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class ConstantsTest : public Generated {
 protected:
  VoltBlockData& Volt(int reps) {
    store.VoltBlock.BlockCount = 1;
    store.VoltBlock[1].Reps = static_cast<i16>(reps);
    return store.VoltBlock[1];
  }
  BridgeBlockData& Bridge(int reps) {
    store.BridgeBlock.BlockCount = 1;
    store.BridgeBlock[1].Reps = static_cast<i16>(reps);
    return store.BridgeBlock[1];
  }
};

TEST_F(ConstantsTest, TimingAndTriggerNeeds) {
  store.Scan.ExecutionTime = 0.1F;
  store.Scan.ExecTimeUnits = 2;
  for (const int t : {1, 3, 5}) store.Tables[t].TableOn = kTrue;
  store.Tables[3].SyncTable = kTrue;
  store.Tables[3].TrigTable = 1;
  store.Tables[3].SingleTrigger = kTrue;
  store.Tables[3].TrigTabStop = 1;  // a single trigger has no stop
  store.Tables[5].OutIntUnits = 9;
  store.Tables[5].DisableTrigger = 1;
  store.Tables[5].TrigTable = 1;
  store.Tables[5].WriteIf = 1;
  store.Tables[5].Write[1].Expression = "Flag(1) = True";
  store.Tables[5].GroupWriteIf = "1";
  Run();
  ExpectRun({At66("Const PERIOD = 0.1", "'Scan interval number"),
             At66("Const P_UNITS = 2", "'Scan interval units (Secs)"), "",
             At66("Const INTERVAL1 = 10", "'Table 1 interval number"),
             At66("Const UNITS1 = 1", "'Table 1 interval units (mSecs)"), "",
             At66("Const INTERVAL5 = 10", "'Table 5 interval number"),
             At66("Const UNITS5 = 9", "'Table 5 interval units (s)"),
             "Dim bStartTrigger As Boolean", "Dim bWriteIfCall As Boolean"});
  EXPECT_EQ(Count("Dim bStopTrigger As Boolean"), 0);
}

TEST_F(ConstantsTest, ExceptionsDecideTheArrays) {
  struct Case {
    const char* except;
    bool arrays;
  };
  for (const Case& c : {Case{"1", false}, Case{"3", true}, Case{"4", true}, Case{"", false},
                        Case{"8", false}, Case{"7 by hand", true}}) {
    SCOPED_TRACE(c.except);
    store.TempBlock.BlockCount = 1;
    store.TempBlock[1].Reps = 2;
    store.TempBlock[1].Units = "";
    store.TempBlock[1].Alias[2].AliasExcept = c.except;
    Run();
    Lines expected = {At66("Dim TBlk1(TREP1)", "'Block1 dimensioned source")};
    if (c.arrays) {
      expected.push_back(At66("Dim MTBlk1(TREP1)", "'Block1 dimensioned multiplier"));
      expected.push_back(At66("Dim OTBlk1(TREP1)", "'Block1 dimensioned offset"));
    }
    expected.push_back(At66("Units TBlk1 = ", "'Block1 default units ()"));
    ExpectRun(expected);
    EXPECT_EQ(Count(At66("Dim I", "'Declare I as a variable")), c.arrays ? 1 : 0);
  }
}

TEST_F(ConstantsTest, VoltageArraysByCase) {
  const std::string source = At66("Dim VBlk1(VREP1)", "'Block1 dimensioned source");
  const std::string publicSource = At66("Public VBlk1(VREP1)", "'Block1 dimensioned source");
  const std::string mult = At66("Public MVBlk1(VREP1)", "'Block1 dimensioned multiplier");
  const std::string offset = At66("Public OVBlk1(VREP1)", "'Block1 dimensioned offset");
  const std::string units = At66("Units VBlk1 = mVolts", "'Block1 default units (mVolts)");
  struct Case {
    int zeroFlag, calOnSite;
    const char* host;
    Lines lines;
  };
  for (const Case& c :
       {Case{0, 0, "", {source, units}}, Case{0, 1, "", {source, mult, offset, units}},
        Case{2, 0, "", {publicSource, offset, units, "Public VCalReps1"}},
        Case{2,
             1,
             "hArRiEr",
             {source, mult, offset, "Public VCalMode1", "Public VKnownVar1(VREP1)", units,
              "Public VCalReps1"}}}) {
    VoltBlockData& block = Volt(3);
    block.ZeroFlag = static_cast<i16>(c.zeroFlag);
    block.CalOnSite = static_cast<i16>(c.calOnSite);
    generator.HostApp(c.host);
    Run();
    ExpectRun(c.lines);
    // The host counts the zero measurements itself.
    EXPECT_EQ(Count(At66("Dim Count", "'Declare Count as a variable")),
              c.zeroFlag != 0 && *c.host == '\0' ? 1 : 0);
  }
}

TEST_F(ConstantsTest, BridgeArraysByCase) {
  const auto array = [](const char* text, const char* what) {
    return At66(std::string(text) + "(BREP1)", std::string("'Block1 dimensioned ") + what);
  };
  const std::string gauge = array("Public GBBlk1", "gauge factor");
  const std::string zero = At66("Public BBlk1ZeroMv(BREP1)", "'Block1 zero mV variable");
  const Lines raw = {"Public BBlk1mV_V(BREP1)", "Public GBBlk1Raw(BREP1)"};
  struct Case {
    int style, zeroFlag, calOnSite;
    const char* except;
    Lines lines;
  };
  const Case cases[] = {
      {0, 0, 0, "0", {array("Dim BBlk1", "source")}},
      {0,
       1,
       0,
       "0",
       {array("Public BBlk1", "source"), array("Public OBBlk1", "offset"), zero,
        "Public BCalReps1"}},
      {0,
       0,
       1,
       "2",
       {array("Dim BBlk1", "source"), array("Public MBBlk1", "multiplier"),
        array("Public OBBlk1", "offset")}},
      {0,
       0,
       0,
       "4",
       {array("Public BBlk1", "source"), array("Dim MBBlk1", "multiplier"),
        array("Dim OBBlk1", "offset")}},
      {6,
       1,
       0,
       "0",
       {array("Public BBlk1", "source"), raw[0], raw[1], gauge, zero, "Public BCalMode1",
        "Public BKnownVar1(BREP1)", "Public BCalReps1"}},
      {6,
       1,
       0,
       "6",
       {array("Public BBlk1", "source"), array("Dim MBBlk1", "multiplier"), gauge, raw[0], raw[1],
        zero}},
      {7, 0, 1, "0", {array("Dim BBlk1", "source"), array("Public MBBlk1", "multiplier"), gauge}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.lines.back());
    BridgeBlockData& block = Bridge(2);
    block.Style = static_cast<i16>(c.style);
    block.ZeroFlag = static_cast<i16>(c.zeroFlag);
    block.CalOnSite = static_cast<i16>(c.calOnSite);
    block.Alias[1].AliasExcept = c.except;
    Run();
    ExpectRun(c.lines);
  }
}

TEST_F(ConstantsTest, MultiplexerArraysByCase) {
  const std::string source = At66("Dim ABlk1(AREP1)", "'Block1 dimensioned source");
  const std::string publicSource = At66("Public ABlk1(AREP1)", "'Block1 dimensioned source");
  const std::string mult = At66("Public MABlk1(AREP1)", "'Block1 dimensioned multiplier");
  const std::string offset = At66("Public OABlk1(AREP1)", "'Block1 dimensioned offset");
  const std::string units = At66("Units ABlk1 = ", "'Block1 default units ()");
  const std::string global = "Const ZeroingCalib = 0";
  store.Config.TK40MQty = 1;
  store.TK40MBlock.BlockCount = 1;
  TK40MBlockData& block = store.TK40MBlock[1];
  block.Units = "";
  block.TypeNo = 2;
  struct Case {
    int volts, zeroFlag, calOnSite, reps;
    const char* type;
    Lines lines;
  };
  const std::string volt = At66("Const ATYPE1 = -1", "'Block1 volt measurement");
  const std::string couple = At66("Const ATYPE1 = 2", "'Block1 thermocouple type (K)");
  for (const Case& c :
       {Case{0, 0, 0, 2, couple.c_str(), {source, units}},
        Case{0, 4, 0, 2, couple.c_str(), {source, units}},  // thermocouples are not zeroed
        Case{1, 4, 0, 2, volt.c_str(), {publicSource, offset, units, "Public ACalReps1"}},
        Case{1, 4, 1, 2, volt.c_str(), {source, mult, offset, units, "Public ACalReps1"}},
        Case{2, 0, 1, 2, couple.c_str(), {source, mult, offset, units}},
        Case{1, 4, 0, 0, "none", {global}}}) {
    SCOPED_TRACE(std::string(c.type) + c.lines.front());
    block.TK40Volts = c.volts;
    block.ZeroFlag = static_cast<i16>(c.zeroFlag);
    block.CalOnSite = static_cast<i16>(c.calOnSite);
    block.Reps = static_cast<i16>(c.reps);
    Run();
    ExpectRun(c.lines);
    EXPECT_EQ(Count(c.type) > 0, c.reps > 0);
    // The flag alone asks for the calibration, whatever the block measures.
    EXPECT_EQ(Count(global), c.zeroFlag > 0 ? 1 : 0);
    EXPECT_EQ(Count(At66("Dim Count", "'Declare Count as a variable")), c.zeroFlag > 0 ? 1 : 0);
  }
  store.Config.TK40MQty = 0;  // the family is left out as a whole
  Run();
  EXPECT_EQ(Count(global), 0);
}

TEST_F(ConstantsTest, SixWireAndStrainConstants) {
  BridgeBlockData& block = Bridge(1);
  block.Type = "BrFull6w";
  block.Style = 7;
  block.GageCode = 4;
  block.DefaultOffset = 12;  // strain has no offset of its own
  Run();
  ExpectRun({At66("Const BRNG1_1 = 0", "'Block1 input measurement range 5000 mV"),
             At66("Const BRNG1_2 = 50", "'Block1 output measurement range (200 mV)"),
             At66("Const BREP1 = 1", "'Block1 repetitions"),
             At66("Const BEXCIT1 = 5000", "'Block1 excitation mVolts"),
             At66("Const BSETL1 = 200", "'Block1 settling time (usecs)"),
             At66("Const BINT1 = 250", "'Block1 integration time (usecs)"),
             At66("Const BGF1 = 2", "'Block1 gauge factor"),
             At66("Const BCODE1 = -4", "'Block1 gauge code for full bridge strain"),
             At66("Const BMULT1 = 1", "'Block1 default multiplier"),
             At66("Const BOSET1 = 0", "'Block1 default offset")});
  block.RevOutput = kTrue;
  Run();
  EXPECT_EQ(Count(At66("Const BCODE1 = 4", "'Block1 gauge code for full bridge strain")), 1);
}

TEST_F(ConstantsTest, PulseInputsAndOptions) {
  struct Case {
    const char* meas;
    int opt;
    std::string config, option;
  };
  for (const Case& c : {Case{"HiLev", 0, "0|(Hi Level)", "(Totalize)"},
                        Case{"LOLEV", 1, "1|(Lo Level)", "(Frequency)"},
                        Case{"Swtch", 250, "2|(Switch Closure)", "(Freq over 250 mSecs))"},
                        Case{"other", 1, "0|(Hi Level)", "(Frequency)"}}) {
    store.PulseBlock[0].BlockCount = 1;
    PulseBlockData& block = store.PulseBlock[0][1];
    block.Reps = 1;
    block.Meas = c.meas;
    block.Opt = static_cast<i16>(c.opt);
    Run();
    ExpectRun(
        {At66("Const PCONF1 = " + c.config.substr(0, 1), "'Block1 config " + c.config.substr(2)),
         At66("Const POPT1 = " + std::to_string(c.opt), "'Block1 option " + c.option)});
  }
  EXPECT_EQ(Count("'" + std::string(24, '\\') + " PULSE CONSTANTS" + std::string(24, '/')), 1);
}

TEST_F(ConstantsTest, LevelArraysAndLongData) {
  VoltBlockData& block = Volt(2);
  block.Output.OutputSelect[2][kLevelCrossing] = 1;
  HistoSet& level = block.Output.Histo[2];
  level.NumDims = 1;
  level.LevNumLevels = 3;
  level.LevelVarOne[0] = -1.5F;
  level.LevelVarOne[2] = 1e7F;
  level.LevNumTests = 30;  // "Data " and 30 times "0," less one comma: 64 characters, room for one
  Run();
  const std::string data = "Data 0" + [] {
    std::string rest;
    for (int i = 1; i < 30; ++i) rest += ",0";
    return rest;
  }();
  ASSERT_EQ(data.size(), 64U);
  ExpectRun({At66("Dim VBlk12LC1(3)", "'Block1 Table2 level crossing array 1"),
             At66("Data -1.5,0,1E+07", "'Block1 Table2 data for array 1"),
             At66("Dim VBlk12LC2(30)", "'Block1 Table2 level crossing array 2"),
             data + " 'Block1 Table2 data for array 2",
             At66("Dim LCVBlk1_2_1(2)", "'Block1 Table2 source for level crossing"),
             At66("Dim LCVBlk1_2_2(2)", "'Block1 Table2 source for level crossing")});
  level.LevelVarTwo[0] = 10;  // 65 characters: a blank all the same
  Run();
  EXPECT_EQ(Count("Data 1" + data.substr(5) + " 'Block1 Table2 data for array 2"), 1);
  // Without repetitions the arrays stay, their sources go.
  block.Reps = 0;
  Run();
  EXPECT_EQ(Count(At66("Dim VBlk12LC1(3)", "'Block1 Table2 level crossing array 1")), 1);
  EXPECT_EQ(Count(At66("Dim LCVBlk1_2_1(2)", "'Block1 Table2 source for level crossing")), 0);
}

class VariablesTest : public ConstantsTest {};

TEST_F(VariablesTest, UnitsOfSingleRepetitions) {
  VoltBlockData& block = Volt(1);
  block.Units = "Volts";
  block.Alias[1].AliasUnits = "mV";
  Run();
  EXPECT_EQ(Count(At66("Units VBlk1 = mV", "'Assign units \"mV\" to VBlk1")), 1);
  block.Reps = 3;
  block.Alias[1].AliasUnits = "VOLTS";
  block.Alias[2].AliasUnits = "mV";
  block.Alias[3].AliasName = "Oil";
  block.Alias[3].AliasUnits = "bar";
  block.CalOnSite = 1;
  Run();
  ExpectRun({At66("Alias MVBlk1(1) = M$VBlk1(1)", "'Assign alias name \"M$VBlk1(1)\" to MVBlk1_1"),
             At66("Alias OVBlk1(1) = O$VBlk1(1)", "'Assign alias name \"O$VBlk1(1)\" to OVBlk1_1"),
             At66("Units VBlk1(2) = mV", "'Assign units \"mV\" to VBlk1(2)")});
  ExpectRun({At66("Alias VBlk1(3) = Oil", "'Assign alias name \"Oil\" to VBlk1(3)"),
             At66("Units Oil = bar", "'Assign units \"bar\" to Oil"),
             At66("Alias MVBlk1(3) = M$Oil", "'Assign alias name \"M$Oil\" to MVBlk1_3"),
             At66("Alias OVBlk1(3) = O$Oil", "'Assign alias name \"O$Oil\" to OVBlk1_3")});
}

// Strain has a gauge factor in the place of its offset, and no aliases of either.
TEST_F(VariablesTest, ScalingAliasesOfBridges) {
  for (const int style : {4, 5}) {
    BridgeBlockData& block = Bridge(1);
    block.Style = static_cast<i16>(style);
    block.CalOnSite = 1;
    block.Alias[1].AliasName = "Load";
    generator.HostApp("Harrier");
    Run();
    const long aliases = style < 5 ? 1 : 0;
    EXPECT_EQ(Count(At66("Alias MBBlk1(1) = M$Load", "'Assign alias name \"M$Load\" to MBBlk1_1")),
              aliases);
    EXPECT_EQ(Count(At66("Alias OBBlk1(1) = O$Load", "'Assign alias name \"O$Load\" to OBBlk1_1")),
              aliases);
    EXPECT_EQ(Count("Const TwoPointMultOffs = 2"), 1);  // for any style
  }
}

TEST_F(VariablesTest, PortsExcitationAndMarks) {
  PortSlot& first = store.Ports.Slot[0];
  PortSlot& second = store.Ports.Slot[1];
  first.ReadMode = 1;
  first.Output.OutputSelect[6][kRainFlow] = 1;
  second.ByteMode = 0;
  second.Ports[8].Include = kTrue;
  store.Config.TK40MQty = 1;
  store.Tables[2].TableOn = kTrue;
  store.Tables[2].FlagMark = 5;
  store.ExciteOut.ExcitePublic = kTrue;
  store.ExciteOut.Slot[1][2].Include = kTrue;
  store.ExciteOut.Slot[0][1].Include = kTrue;
  store.ExciteOut.Slot[0][1].DynamicStatic = 1;
  Run();
  ExpectRun({At66("Public ReadPort", "'Declare ReadPort (1-8) variable"),
             At66("Public Port(6)", "'Declare Port variable"),
             At66("Public Flag2Mark5", "'Declare mark table counter variable"),
             At66("Public Excite2", "'Declare Excitation variable")});
  EXPECT_EQ(Count(At66("Public Excite1", "'Declare Excitation variable")), 0);
  first.Output.OutputSelect[6][kRainFlow] = 0;
  first.Output.OutputSelect[6][kLevelCrossing] = 1;  // beyond what a port can store
  second.Ports[8].Include = kFalse;
  second.Ports[9].Include = kTrue;
  Run();
  EXPECT_EQ(Count(At66("Public ReadPort", "'Declare ReadPort (1-8) variable")), 0);
  EXPECT_EQ(Count(At66("Public Port(6)", "'Declare Port variable")), 0);
  second.ByteMode = 1;
  Run();
  EXPECT_EQ(Count(At66("Public WritPort", "'Declare WritPort variable")), 1);
}

TEST_F(VariablesTest, StrainCalibrationConstants) {
  store.BridgeBlock.BlockCount = 4;
  const int styles[] = {7, 5, 5, 6};
  for (int b = 1; b <= 4; ++b) {
    BridgeBlockData& block = store.BridgeBlock[b];
    block.Reps = 1;
    block.Style = static_cast<i16>(styles[b - 1]);
    block.ZeroFlag = static_cast<i16>(b == 4 ? 0 : b);
  }
  Run();
  ExpectRun(
      {"'" + std::string(14, '\\') + " FIELD CALIBRATION GLOBAL VARIABLES " + std::string(14, '/'),
       "Public CalFileLoaded As Boolean", "Public CalStartIdx", "Const CalStrainZero = 10",
       "Const StrainFullShunt = 43", "Const Strain1_4Shunt = 13", "Public FieldCalAvgs"});
  EXPECT_EQ(Count("Const ZeroingCalib = 0"), 0);
}

TEST_F(VariablesTest, ReferenceTemperatureAndBattery) {
  store.Config.MonitorPower[kMonitorPanel] = kTrue;
  store.Config.MonitorPower[kMonitorBattery] = kTrue;
  store.TcRef.Public = kTrue;
  Run();
  ExpectRun({At66("Public Flag(8)", "'General Purpose Flags"),
             At66("Dim BattVolt", "'Battery voltage"),
             At66("Units BattVolt = Volts", "'Battery voltage units"),
             At66("Public TRef", "'Declare Reference Temp variable")});
  // Panel temperature without thermocouples: the reference is measured, without a title.
  ExpectRun({"", At66("      PanelTemp(TRef,200)", "'RefTemp,Integrate")});
}

}  // namespace
}  // namespace ostrand::testing
