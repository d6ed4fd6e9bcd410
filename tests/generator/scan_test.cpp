// The scan: its line, its channels, flags and ports.
#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class ScanTest : public Generated {};

struct ChannelCase {
  const char* temps;  // blocks as type and repetitions: "S3 D2 D0"
  const char* volts;
  std::vector<int> automatic;  // channels of the blocks with repetitions
  std::vector<int> byHand;     // start channels are 11, 12, ... for temps, 31, 32, ... for volts
};

template <class Group>
void setBlocks(Group& group, std::string_view text, int firstStart) {
  group.BlockCount = 0;
  for (; !text.empty(); text.remove_prefix(std::min<std::size_t>(3, text.size()))) {
    auto& block = group[++group.BlockCount];
    block.MeasType = text[0] == 'S' ? "SE" : text[0] == 'D' ? "Diff" : "Other";
    block.Reps = static_cast<i16>(text[1] - '0');
    block.StartChan = static_cast<i16>(firstStart + group.BlockCount - 1);
  }
}

// The channel arguments of thermocouple and voltage statements in their order.
std::vector<int> channelsOf(const Lines& program) {
  std::vector<int> channels;
  for (const std::string& line : program) {
    const std::size_t range = line.find("RNG");
    if ((line.rfind("      TC", 0) != 0 && line.rfind("      Volt", 0) != 0) ||
        range == std::string::npos) {
      continue;
    }
    channels.push_back(std::stoi(line.substr(line.find(',', range) + 1)));
  }
  return channels;
}

TEST_F(ScanTest, ChannelsFollowTheirRules) {
  const ChannelCase cases[] = {
      {"S3", "S3", {1, 4}, {1, 31}},
      {"S3", "D1", {1, 3}, {1, 31}},  // cursor 3 goes to 4
      {"D2 S3", "", {1, 5}, {11, 12}},
      {"S1 D2 S1", "", {1, 2, 7}, {1, 12, 13}},
      {"S1 S1 S2", "S1", {1, 2, 3, 5}, {1, 12, 13, 31}},
      {"D1 D2", "D1 S1 S1", {1, 2, 4, 9, 10}, {11, 12, 31, 32, 33}},
      {"S0 D1", "", {1}, {12}},  // a block without repetitions is the one before
      {"D0 S2", "", {1}, {12}},
      {"O1 D1", "", {1, 2}, {1, 12}},  // unknown types take two terminals
  };
  for (const ChannelCase& c : cases) {
    for (const bool automatic : {true, false}) {
      SCOPED_TRACE(std::string(c.temps) + " | " + c.volts + (automatic ? " automatic" : ""));
      SAVEDLD fresh(store, files, clock, forms);
      setBlocks(store.TempBlock, c.temps, 11);
      setBlocks(store.VoltBlock, c.volts, 31);
      store.Config.AutoChan = automatic ? kTrue : kFalse;
      EXPECT_EQ(channelsOf(LinesOf(fresh.ProgramText())), automatic ? c.automatic : c.byHand);
    }
  }
}

// The type of the last block outlives a run: a second one follows the end of the first.
TEST_F(ScanTest, TheFirstVoltageBlockRemembersTheLastRun) {
  store.Config.AutoChan = kFalse;
  setBlocks(store.VoltBlock, "S2", 31);
  Run();
  EXPECT_EQ(channelsOf(program), std::vector<int>({1}));
  Run();
  EXPECT_EQ(channelsOf(program), std::vector<int>({31}));
}

TEST_F(ScanTest, VoltageEndings) {
  struct Case {
    int zeroFlag, calOnSite;
    const char* ending;
  };
  for (const Case& c : {Case{0, 0, ",VMULT1,VOSET1)"}, Case{3, 0, ",VMULT1,OVBlk1())"},
                        Case{3, 1, ",MVBlk1(),OVBlk1())"}}) {
    setBlocks(store.VoltBlock, "S2", 1);
    store.VoltBlock[1].ZeroFlag = static_cast<i16>(c.zeroFlag);
    store.VoltBlock[1].CalOnSite = static_cast<i16>(c.calOnSite);
    SAVEDLD fresh(store, files, clock, forms);
    program = LinesOf(fresh.ProgramText());
    EXPECT_EQ(Count(std::string("      VoltSE(VBlk1(),VREP1,VRNG1,1,True,VSETL1,VINT1") + c.ending),
              1);
  }
  EXPECT_EQ(Count("      VoltSE(VBlk1Zero(),VREP1,VRNG1,1,True,VSETL1,VINT1,MVBlk1(),0)"), 1);
}

TEST_F(ScanTest, ScanLines) {
  struct Case {
    float time;
    int unit, scanMode, burst, scans;
    const char *arguments, *comment;
  };
  const Case cases[] = {
      {10, 1, -1, 0, 0, "10,0", "10 mSecs, non-burst"},
      {10, 1, 0, 0, 0, "0,0", "10 mSecs, non-burst"},
      {0.5F, 3, 1, 0, 0, "10,0", "0.5 Mins, non-burst"},
      {2, 7, 1, 0, 0, "10,0", "2 s, non-burst"},
      {125, 0, 0, -1, 7, "10,7", "125 uSecs, burst to CPU S-RAM, 875  uSecs"},
      {125, 0, 0, -1, 8, "10,8", "125 uSecs, burst to CPU S-RAM, 1  mSecs"},
      {10, 1, 0, -1, 1250, "10,1250", "10 mSecs, burst to CPU S-RAM, 12.5  Secs"},
      {10, 2, 0, -1, 7, "10,7", "10 Secs, burst to CPU S-RAM, 1.17  Mins"},
      {30, 3, 0, -1, 100, "10,100", "30 Mins, burst to CPU S-RAM, 50  Hours"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.comment);
    store.Scan.ExecutionTime = c.time;
    store.Scan.ExecTimeUnits = static_cast<i16>(c.unit);
    store.Scan.ScanMode = static_cast<flag>(c.scanMode);
    store.Scan.BurstMode = static_cast<flag>(c.burst);
    store.Scan.BurstScans = c.scans;
    Run();
    EXPECT_EQ(Count(At66(std::string("   Scan(PERIOD,P_UNITS,") + c.arguments + ")",
                         std::string("'Scan once every ") + c.comment)),
              1);
  }
}

TEST_F(ScanTest, ABurstWaitsForItsFlag) {
  store.Scan.FlagScan = 2;
  store.PulseBlock[0].BlockCount = 1;
  Run();
  EXPECT_EQ(Count(At66("Do", "'Loop to allow scan on flag repeat")), 0);
  store.Scan.BurstMode = kTrue;
  Run();
  ExpectRun({"", At66("Do", "'Loop to allow scan on flag repeat"),
             At66("   Do Until Flag(2): Loop", "'Loop Until Flag(2) is pressed"),
             At66("   PulseCountReset()", "'Reset Pulse Counter")});
  ExpectRun({At66("   Flag(2) = False", "'Set Flag(2) back to false"),
             At66("Loop", "'Loop up to allow scan on flag")});
}

TEST_F(ScanTest, FlagsAndTheirLongTests) {
  store.Flags[7].FlagInclude = kTrue;
  store.Flags[7].FlagOn = kFalse;
  store.Flags[7].State[1].FlagExpression = std::string(51, 'a');  // 65 with If and Then
  store.Flags[7].State[2].FlagExpression = std::string(90, 'b');
  Run();
  ExpectRun({"      '" + std::string(25, '_') + " Flag Control " + std::string(25, '_'),
             "      If " + std::string(51, 'a') + " Then 'Test measurement",
             At66("         Flag(7) = False", "'Flag(7) if test condition is true"),
             "      ElseIf " + std::string(90, 'b') + " Then 'Other condition",
             At66("         Flag(7) = True", "'Flag(7) if test condition is true"),
             At66("      End If", "'End of If"), "      '" + std::string(64, '-')});
}

TEST_F(ScanTest, PortMasks) {
  PortSlot& slot = store.Ports.Slot[0];
  slot.Ports[9].Include = kTrue;
  slot.BinaryMask[0] = "10100001";
  slot.BinaryMask[1] = "00000011";
  slot.BinaryMask[2] = "1x111111";  // any other digit counts nothing
  struct Case {
    const char *code, *first, *second, *third;
  };
  for (const Case& c : {Case{"HEX", "&HA1", "&H3", "&HBF"}, Case{"Dec", "161", "3", "191"},
                        Case{"bin", "&B10100001", "&B00000011", "&B1x111111"}}) {
    store.Ports.CodeType = c.code;
    Run();
    ExpectRun({At66("      If False Then", "'Test measurement"),
               At66(std::string("         WritPort = ") + c.first,
                    "'Port(1-8) setup if test condition is true"),
               At66("      ElseIf False Then", "'Other condition"),
               At66(std::string("         WritPort = ") + c.second,
                    "'Port(1-8) setup if test condition is true"),
               At66("      End If", "'End of If"),
               At66(std::string("      WriteIO(") + c.third + ",WritPort)", "'Mask, ports")});
  }
  slot.BinaryMask[1] = std::string(44, '1');  // 66 characters in all
  Run();
  EXPECT_EQ(Count("         WritPort = &B" + std::string(44, '1') +
                  " 'Port (1-8)setup if test condition is true"),
            1);
  slot.ReadMode = kTrue;
  Run();
  EXPECT_EQ(Count(At66("      ReadIO(ReadPort,&B1x111111)", "'Destination, mask")), 1);
}

TEST_F(ScanTest, TheMultiplexerKeepsItsPorts) {
  PortSlot& slot = store.Ports.Slot[1];
  slot.ByteMode = 0;
  for (const int p : {6, 7}) slot.Ports[p].Include = kTrue;
  slot.Ports[6].Polarity = kFalse;
  const Lines six = {"      '" + std::string(27, '_') + " Port Set " + std::string(27, '_'),
                     At66("      If False Then", "'Test measurement"),
                     At66("         Port(6) = False", "'Port 6 if test condition is true"),
                     At66("      ElseIf False Then", "'Other condition"),
                     At66("         Port(6) = True", "'Port 6 if test condition is true"),
                     At66("      End If", "'End of If"),
                     At66("      PortSet(6,Port(6))", "'Port 6, state"),
                     "      '" + std::string(64, '-')};
  for (const int multiplexers : {0, 1}) {
    store.Config.TK40MQty = static_cast<i16>(multiplexers);
    Run();
    ExpectRun(six);
    EXPECT_EQ(Count(At66("      PortSet(7,Port(7))", "'Port 7, state")), 1 - multiplexers);
  }
}

TEST_F(ScanTest, CanSwitches) {
  store.Config.CanBusQty = 1;
  store.Can.Module[1].CanBusEnabled = 1;
  struct Case {
    int transmit, nan;
    const char* line;
  };
  for (const Case& c : {Case{-1, -1, "   CanSwitchTx=0104  'EnableTransmit, SetOldDataToNAN"},
                        Case{1, 0, "   CanSwitchTx=0004  'EnableTransmit, UseOldData"},
                        Case{0, 1, "   CanSwitchTx=0100  'DisableTransmit, SetOldDataToNAN"},
                        Case{0, 0, "   CanSwitchTx=0000  'DisableTransmit, UseOldData"}}) {
    store.Can.Module[1].CanEnableTransmit = static_cast<flag>(c.transmit);
    store.Can.Module[1].CanNaNOldData = static_cast<flag>(c.nan);
    Run();
    EXPECT_EQ(Count(c.line), 1);
  }
}

// Only the first group of ports has a title; a group that reads needs no test.
TEST_F(ScanTest, TheTitleOfPortsIsTheFirstGroups) {
  const std::string title = Bars("      ", 25, " Port Control ");
  for (PortSlot& slot : store.Ports.Slot) slot.ByteMode = 0;
  store.Ports.Slot[1].ByteMode = kTrue;
  store.Ports.Slot[1].Ports[9].Include = kTrue;
  Run();
  EXPECT_EQ(Count(title), 0);
  EXPECT_EQ(Count(At66("      If False Then", "'Test measurement")), 1);
  store.Ports.Slot[0] = store.Ports.Slot[1];
  store.Ports.Slot[0].ReadMode = kTrue;
  Run();
  EXPECT_EQ(Count(title), 1);
  EXPECT_EQ(Count(At66("      If False Then", "'Test measurement")), 1);
  EXPECT_TRUE(AnyHolds("      ReadIO(ReadPort,"));
}

// A zeroed block loads its offsets, a strain block its gauge factors, and neither a multiplier.
TEST_F(ScanTest, StartUpOfZeroedBlocks) {
  setBlocks(store.VoltBlock, "S1", 1);
  store.VoltBlock[1].ZeroFlag = 1;
  store.VoltBlock[1].DefaultOffset = -0.25F;
  setBlocks(store.BridgeBlock, "D1 D1", 1);
  for (int b = 1; b <= 2; ++b) {
    store.BridgeBlock[b].ZeroFlag = 2;
    store.BridgeBlock[b].Style = static_cast<i16>(3 + b);
    store.BridgeBlock[b].ExciteReps = 1;
  }
  store.BridgeBlock[2].GageFactor = 2.08F;
  Run();
  ExpectText(
      "   'MainSequence|   For I = 1 To VREP1~'Do the following to all of VBlk1|"
      "      OVBlk1(I) = VOSET1~'Assign default offset (-0.25) to OVBlk1|"
      "   Next I~'Repeat above until finished|"
      "   For I = 1 To BREP1~'Do the following to all of BBlk1|"
      "      OBBlk1(I) = BOSET1~'Assign default offset (0) to OBBlk1|"
      "   Next I~'Repeat above until finished|"
      "   For I = 1 To BREP2~'Do the following to all of BBlk2|"
      "      GBBlk2(I) = BGF2~'Assign default gauge factor (2.08) to GBBlk2|"
      "   Next I~'Repeat above until finished|"
      "   For I = 1 To 8|      ScanFlg1x(I) = True|   Next I||   VCalReps1 = VREP1|"
      "   BCalReps1 = BREP1|   For I = 1 To BREP2|      GBBlk2Raw(I) = GBBlk2(I)|   Next I||"
      "   CalFileLoaded = false|   CalFileLoaded = LoadFieldCal(1)|   FieldCalAvgs = 1|"
      "   CalStartIdx = 1|");
}

// In a block tables stand outermost, then repetitions; a CAN item has one source in each table.
TEST_F(ScanTest, LevelSourcesOfBlocksAndItems) {
  setBlocks(store.TempBlock, "S2", 1);
  OutputSet& temps = store.TempBlock[1].Output;
  for (const int t : {2, 5}) temps.OutputSelect[t][kLevelCrossing] = 1;
  temps.Histo[5].NumDims = 1;
  temps.Histo[5].LevelMeasName = "Speed";
  store.Config.CanBusQty = 1;
  store.Can.Module[1].CanBusEnabled = 1;
  store.Can.CanCount = 2;
  for (int i = 1; i <= 2; ++i) {
    CanItemData& item = store.Can.Item[i];
    item.Name = i == 1 ? "Off" : "Rpm";
    item.Enabled = static_cast<i16>(i - 1);
    item.Reps = 2;
    item.Output.OutputSelect[3][kLevelCrossing] = 1;
  }
  Run();
  std::string expected;
  const auto source = [&](const std::string& name, const char* dimension, const char* from) {
    expected += "|      " + name + "(" + dimension[0] + ") = " + from + "~'" + dimension +
                " source dimension for " + name + "()";
  };
  source("LCTBlk1_2_1", "1st", "TBlk1(1)");
  source("LCTBlk1_2_2", "1st", "TBlk1(2)");
  source("LCTBlk1_5_1", "1st", "TBlk1(1)");
  source("LCTBlk1_5_1", "2nd", "Speed");
  source("LCTBlk1_5_2", "1st", "TBlk1(2)");
  source("LCTBlk1_5_2", "2nd", "Speed");
  source("LCRpm3", "1st", "Rpm(1)");
  ExpectText(expected + "|" + kNextScan);
}

// Positions beyond the count read their level data too; their code alone decides.
TEST_F(ScanTest, LevelDataOfCalculatedFields) {
  store.CalcFields.CalcFieldCount = 1;
  store.CalcFields.Field[1].CalcField[1] = "Slip";
  store.CalcFields.Field[1].CalcField[2] = "1";
  for (const int c : {1, 50}) {
    store.CalcFields.Field[c].Output.OutputSelect[4][kLevelCrossing] = 1;
    store.CalcFields.Field[c].Output.Histo[4].LevNumLevels = 2;
  }
  Run();
  ExpectRun({At66("   For I = 1 To 2", "'Do to all of Calc14LC1"),
             At66("      Read Calc14LC1(I)", "'Read data into Calc14LC1"),
             At66("   Next I", "'Repeat above until finished"),
             At66("   For I = 1 To 2", "'Do to all of Calc504LC1")});
  ExpectRun({"      '" + std::string(20, '_') + " Calculated Fields " + std::string(20, '_'),
             "      Slip = 1", "",
             At66("      LCCalc1_4(1) = Slip", "'1st source dimension for LCCalc1_4()")});
}

}  // namespace
}  // namespace ostrand::testing
