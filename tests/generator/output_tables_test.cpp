// Data tables: their heads, what they store, their ends.
#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class OutputTablesTest : public Generated {
 protected:
  OutputTablesTest() { table.TableOn = kTrue; }
  OutputTable& table = store.Tables[1];
};

TEST_F(OutputTablesTest, HeadsAndSizes) {
  struct Case {
    int interval, unit, records, sync, autoSize, location, calcTime;
    Lines lines;
  };
  const std::string dash(28, '-');
  const Case cases[] = {
      {10,
       1,
       5,
       0,
       0,
       1,
       0,
       {At66("DataTable(Table1,True,5)", "'Trigger, 5 records"),
        At66("   DataInterval(0,INTERVAL1,UNITS1,1)", "'10 mSec interval, 1 lapses, 50.00 mSecs")}},
      {10,
       1,
       100000,
       0,
       0,
       1,
       0,
       {At66("DataTable(Table1,True,100000)", "'Trigger, 100000 records"),
        At66("   DataInterval(0,INTERVAL1,UNITS1,1000)",
             "'10 mSec interval, 1000 lapses, 16.67 Mins")}},
      // 500 records of 207 ms are 1.725 minutes: a half is rounded up
      {207,
       1,
       500,
       0,
       0,
       1,
       0,
       {At66("DataTable(Table1,True,500)", "'Trigger, 500 records"),
        At66("   DataInterval(0,INTERVAL1,UNITS1,50)",
             "'207 mSec interval, 50 lapses, 1.73 Mins")}},
      {10,
       1,
       10000000,
       0,
       0,
       1,
       1,
       {At66("DataTable(Table1,True,10000000)", "'Trigger, 10000000 records"),
        At66("   DataInterval(0,INTERVAL1,UNITS1,0)", "'10 mSec interval, 0 lapses, 1.16 Days")}},
      {3,
       4,
       96,
       0,
       1,
       1,
       0,
       {At66("DataTable(Table1,True,-1)", "'Trigger, auto size"),
        At66("   DataInterval(0,INTERVAL1,UNITS1,9)", "'3 Hour interval, 9 lapses, autosize")}},
      {3,
       4,
       96,
       0,
       0,
       2,
       0,
       {At66("DataTable(Table1,True,-1)", "'Trigger, auto size"),
        At66("   DataInterval(0,INTERVAL1,UNITS1,9)", "'3 Hour interval, 9 lapses, 0.00"),
        At66("   CardOut(0,96)", "'PC card , size 96)")}},
      {3,
       9,
       96,
       -1,
       1,
       2,
       0,
       {At66("DataTable(Table1,True,-1)", "'Trigger, auto size"),
        At66("   DataInterval(0,0,0,9)", "'Synchronous, 9 lapses, autosize"),
        At66("   CardOut(0,-1)", "'PC card , size Auto")}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.lines[1]);
    table.OutInt = c.interval;
    table.OutIntUnits = static_cast<i16>(c.unit);
    table.Buffer = c.records;
    table.SyncTable = static_cast<flag>(c.sync);
    table.AutoSize = static_cast<flag>(c.autoSize);
    table.TableLocation = static_cast<i16>(c.location);
    table.CalcTime = static_cast<flag>(c.calcTime);
    Run();
    Lines expected = {"'" + dash + " Table 1" + dash};
    expected.insert(expected.end(), c.lines.begin(), c.lines.end());
    ExpectRun(expected);
  }
  EXPECT_EQ(table.OutIntUnits, 2);  // a synchronous table counts in seconds from now on
}

// A table that sets no size shows what the one before left: 1000 records of 10 ms are 10 s.
TEST_F(OutputTablesTest, SizesCarryOver) {
  store.Tables[2].TableOn = kTrue;
  store.Tables[2].OutIntUnits = 3;
  store.Tables[4].TableOn = kTrue;
  store.Tables[4].SyncTable = kTrue;
  store.Tables[4].Buffer = 250;
  Run();
  const std::string second = "   DataInterval(0,INTERVAL2,UNITS2,100)";
  EXPECT_EQ(Count(At66(second, "'10 Min interval, 100 lapses, 10.00 Secs")), 1);
  EXPECT_EQ(Count(At66("   DataInterval(0,0,0,25)", "'Synchronous, 25 lapses, 2.50 Secs")), 1);
}

TEST_F(OutputTablesTest, FillStopAndDisplay) {
  table.FillStop = kTrue;
  store.Tables.HDU7 = 2;
  Run();
  EXPECT_EQ(Count(At66("   FillStop", "'Fill the buffer and stop")), 1);
  ExpectRun({At66("   HDU7(Flag,200)", "'HDU7 displays table Table1 every 200 mSecs"),
             At66("EndTable", "'End of table Table1"), ""});
  table.TableLocation = 2;
  store.Tables.HDU7 = 1;
  Run();
  EXPECT_EQ(Count(At66("   FillStop", "'Fill the buffer and stop")), 0);
  EXPECT_EQ(Count(At66("   CardOut(1,1000)", "'PC card , size 1000)")), 1);
  EXPECT_EQ(Count(At66("   HDU7(Flag,200)", "'HDU7 displays public vars every 200 mSecs")), 1);
}

TEST_F(OutputTablesTest, EventConditions) {
  struct Case {
    const char *code, *line;
  };
  const Case cases[] = {
      {"DataEvent (10,,,20)", "   DataEvent (10,bStartTrigger,bStopTrigger,20)"},
      {"DataEvent(10,bStartTrigger,True,10)", "   DataEvent(10,bStartTrigger,True,10)"},
      {"DataEvent(10,Flag(1),bStopTrigger,10)", "   DataEvent(10,bStartTrigger,bStopTrigger,10)"},
      {"DataEvent(10,true,FALSE,10)", "   DataEvent(10,bStartTrigger,bStopTrigger,10)"},
      {"DataEvent(0,False,x,5,6)", "   DataEvent(0,False,bStopTrigger,5,6)"},
      {"DataEvent(10,x,y)", "   DataEvent(10,bStartTrigger,y)"},
      {"DataEvent(10)", "   DataEvent(10)"},
  };
  table.TrigTable = 1;
  for (const Case& c : cases) {
    table.DataEventCode = c.code;
    Run();
    EXPECT_EQ(Count(c.line), 1) << c.code;
  }
  table.DisableTrigger = 1;
  Run();
  EXPECT_EQ(Count("   DataEvent(10)"), 0);
}

TEST_F(OutputTablesTest, EveryInstructionOfABlock) {
  store.TempBlock.BlockCount = 3;
  store.TempBlock[3].Reps = 2;
  TempBlockData& block = store.TempBlock[3];
  for (int code = kSample; code <= kLevelCrossing; ++code) block.Output.OutputSelect[1][code] = 1;
  HistoSet& histo = block.Output.Histo[1];
  histo.HistogramCode = "10,0,100,1,1";
  histo.RainHistoCode = "5,6,0,100,1";
  histo.LevelCode = "4,3,TBlk31LC1(),TBlk31LC2()";
  Run();
  ExpectRun(
      {"   '" + std::string(20, '_') + " Thermocouple Blocks " + std::string(20, '_'),
       At66("   Sample (TREP3,TBlk3(),FP2)", "'2 Reps,Source,Res"),
       At66("   Maximum(TREP3,TBlk3(),FP2,False,False)", "'2 Reps,Source,Res,Enabled,Time of Max"),
       At66("   Minimum(TREP3,TBlk3(),FP2,False,False)", "'2 Reps,Source,Res,Enabled,Time of Min"),
       At66("   Average(TREP3,TBlk3(),FP2,False)", "'2 Reps,Source,Res,Enabled"),
       At66("   StdDev (TREP3,TBlk3(),FP2,False)", "'2 Reps,Source,Res,Enabled"),
       "   Histogram(TBlk3(1),FP2,False,10,0,100,1,1)",
       "   Histogram(TBlk3(2),FP2,False,10,0,100,1,1)",
       "   RainFlow(TBlk3(1),FP2,False,5,6,0,100,1)", "   RainFlow(TBlk3(2),FP2,False,5,6,0,100,1)",
       "   LevelCrossing(LCTBlk3_1_1(),FP2,False,4,1,TBlk31LC1(),TBlk31LC2())",
       "   LevelCrossing(LCTBlk3_1_2(),FP2,False,4,1,TBlk31LC1(),TBlk31LC2())"});
  histo.NumDims = 1;
  Run();
  EXPECT_EQ(Count("   LevelCrossing(LCTBlk3_1_1(),FP2,False,4,3,TBlk31LC1(),TBlk31LC2())"), 1);
  histo.NumDims = 2;
  histo.LevelCode = "4,3";
  Run();
  EXPECT_EQ(Count("   LevelCrossing(LCTBlk3_1_1(),FP2,False,4,1)"), 1);
}

TEST_F(OutputTablesTest, SingleSources) {
  store.Config.MonitorPower[kMonitorBattery] = kTrue;
  store.Config.MonitorPower[kMonitorPanel] = kTrue;
  store.PowerOut.Output.OutputSelect[1][kMinimum] = 1;
  store.PowerOut.Output.OutputSelect[1][kHistogram] = 1;
  store.PowerOut.Output.Histo[1].HistogramCode = "5";
  store.TcRef.Output.OutputSelect[1][kSample] = 1;
  store.TcRef.Output.OutputSelect[1][kRainFlow] = 1;
  store.Ports.Slot[1].ReadMode = 1;  // without the byte: no histogram
  store.Ports.Slot[0].Ports[9].Include = kTrue;
  for (PortSlot& slot : store.Ports.Slot) {
    slot.Output.OutputSelect[1][kHistogram] = 1;
    slot.Output.OutputSelect[1][kSample] = 1;
    slot.Output.OutputSelect[1][kRainFlow] = 1;
  }
  store.CalcFields.CalcFieldCount = 1;
  CalcFieldData& field = store.CalcFields.Field[1];
  field.CalcField[1] = "Slip";
  field.Output.OutputSelect[1][kRainFlow] = 1;
  field.Output.OutputSelect[1][kLevelCrossing] = 1;
  Run();
  ExpectRun(
      {"   '" + std::string(24, '_') + " Logger Power " + std::string(24, '_'),
       At66("   Minimum(1,BattVolt,FP2,False,False)", "'1 Reps,Source,Res,Enabled,Time of Min"),
       "   Histogram(BattVolt,FP2,False,5)",
       "   '" + std::string(22, '_') + " Panel Ref Temp " + std::string(22, '_'),
       At66("   Sample (1,TRef,FP2)", "'1 Reps,Source,Res"),
       At66("   RainFlow(1,TRef,FP2)", "'1 Reps,Source,Res"),
       "   '" + std::string(24, '_') + " Port Blocks " + std::string(24, '_'),
       At66("   Sample (1,WritPort,IEEE4)", "'1 Reps,Source,Res"),
       "   Histogram(WritPort,IEEE4,False,)",
       At66("   Sample (1,ReadPort,IEEE4)", "'1 Reps,Source,Res"),
       "   '" + std::string(21, '_') + " Calculated Fields " + std::string(21, '_'),
       "   RainFlow(Slip,FP2,False,)", "   LevelCrossing(LCCalc1_1(),FP2,False,,1)"});
}

TEST_F(OutputTablesTest, MultiplexerReferenceAndCanItems) {
  store.Config.TK40MQty = 2;
  store.Config.TcConfigOpts[1] = 1;
  store.TK40MBlock.BlockCount = 1;
  store.TK40MBlock[1].Reps = 2;
  for (const int code : {kAverage, kRainFlow, kLevelCrossing}) {
    store.TK40MRef.Output.OutputSelect[1][code] = 1;
  }
  store.Config.CanBusQty = 1;
  store.Can.Module[1].CanBusEnabled = 1;
  store.Can.CanCount = 2;
  for (int i = 1; i <= 2; ++i) {
    CanItemData& item = store.Can.Item[i];
    item.Name = i == 1 ? "Rpm" : "Off";
    item.Enabled = static_cast<i16>(2 - i);
    item.Reps = 2;
    item.Output.OutputSelect[1][kHistogram] = 1;
    item.Output.OutputSelect[1][kLevelCrossing] = 1;
  }
  Run();
  ExpectRun({"   '" + std::string(22, '_') + " TK40M Ref Temp " + std::string(22, '_'),
             At66("   Average(2,TK40Ref(),FP2,False)", "'2 Reps,Source,Res,Enabled"),
             "   RainFlow(TK40Ref(),FP2,False,)", "   LevelCrossing(LCABlk1_1_1(),FP2,False,,1)",
             "   LevelCrossing(LCABlk1_1_2(),FP2,False,,1)",
             "   '" + std::string(24, '_') + " Canbus items " + std::string(24, '_'),
             "   Histogram(Rpm(1),IEEE4,False,)", "   Histogram(Rpm(2),IEEE4,False,)",
             "   LevelCrossing(LCRpm1(),IEEE4,False,,1)",
             At66("EndTable", "'End of table Table1")});
}

// 65 characters still leave no room: the comment touches.
TEST_F(OutputTablesTest, LongOutputsTouchTheirComments) {
  store.CalcFields.CalcFieldCount = 1;
  CalcFieldData& field = store.CalcFields.Field[1];
  field.CalcField[1] = std::string(44, 'x');
  field.Output.OutputSelect[1][kAverage] = 1;
  Run();
  EXPECT_EQ(Count("   Average(1," + std::string(44, 'x') + ",FP2,False)'1 Reps,Source,Res,Enabled"),
            1);
}

TEST_F(OutputTablesTest, ZeroTables) {
  store.Scan.ExecutionTime = 0.2F;
  store.Scan.ExecTimeUnits = 2;
  store.VoltBlock.BlockCount = store.BridgeBlock.BlockCount = store.TK40MBlock.BlockCount = 1;
  store.Config.TK40MQty = 1;
  for (MeasBlock* block : {static_cast<MeasBlock*>(&store.VoltBlock[1]),
                           static_cast<MeasBlock*>(&store.BridgeBlock[1]),
                           static_cast<MeasBlock*>(&store.TK40MBlock[1])}) {
    block->Reps = 3;
    block->ZeroFlag = 4;
  }
  store.BridgeBlock[1].Style = 5;
  store.BridgeBlock[1].ExciteReps = 1;
  store.TK40MBlock[1].TK40Volts = 1;
  Run();
  const std::string dash(15, '-');
  const std::string comment = "'3 Reps,Source,Res,Enabled";
  ExpectRun({"'" + dash + " Store zero values from Sub Zero4 " + dash,
             At66("DataTable(ZERO_4,Count>49,100)", "'Trigger on Count 50"),
             At66("   Average(VREP1,VBlk1Zero(),IEEE4,False)", comment),
             At66("   Average(BREP1,BBlk1ZeroMv(),IEEE4,False)", comment),
             At66("   Average(BREP1,BBlk1ZeroUs(),IEEE4,False)", comment),
             At66("   Average(AREP1,ABlk1Zero(),IEEE4,False)", comment),
             At66("EndTable", "'End of table ZERO_4"), "", "DataTable(CalHist,NewFieldCal,50)",
             "   SampleFieldCal", "EndTable", ""});
}

}  // namespace
}  // namespace ostrand::testing
