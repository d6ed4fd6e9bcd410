// The program body: from BeginProg through the scan to the closing logic.
#include <algorithm>
#include <array>

#include "generator/bridge_style.h"
#include "generator/can_bus.h"
#include "generator/savedld.h"
#include "model/intervals.h"
#include "model/names.h"
#include "model/port_mask.h"
#include "model/units.h"
#include "text/mask.h"
#include "text/number.h"

namespace ostrand {
namespace {

constexpr std::string_view kBody = "      ";

std::string_view trueOrFalse(bool value) { return value ? "True" : "False"; }

struct LengthUnit {
  double below;    // microseconds
  double divisor;  // microseconds of the unit
  std::string_view text;
};
constexpr std::array<LengthUnit, 4> kBurstUnits = {{
    {1000, 1, " uSecs"},
    {1e6, 1000, " mSecs"},
    {6e7, 1e6, " Secs"},
    {3.6e9, 6e7, " Mins"},
}};
constexpr LengthUnit kBurstHours = {0, 3.6e9, " Hours"};

// The length of a burst; two blanks precede the unit.
std::string burstLength(double micros) {
  const auto* fit = std::find_if(kBurstUnits.begin(), kBurstUnits.end(),
                                 [&](const LengthUnit& unit) { return micros < unit.below; });
  const LengthUnit& unit = fit == kBurstUnits.end() ? kBurstHours : *fit;
  return Joined({Val(FormatNumber(micros / unit.divisor, "0.00")), " ", unit.text});
}

bool hasIncludedPort(const PortSlot& slot) {
  return std::any_of(slot.Ports.begin(), slot.Ports.end() - 1,
                     [](const Port& port) { return port.Include != 0; });
}

struct CanSwitches {
  bool transmit;
  bool nanOldData;
  std::string_view line;
};
constexpr std::array<CanSwitches, 4> kCanSwitches = {{
    {true, true, "   CanSwitchTx=0104  'EnableTransmit, SetOldDataToNAN"},
    {true, false, "   CanSwitchTx=0004  'EnableTransmit, UseOldData"},
    {false, true, "   CanSwitchTx=0100  'DisableTransmit, SetOldDataToNAN"},
    {false, false, "   CanSwitchTx=0000  'DisableTransmit, UseOldData"},
}};

constexpr std::string_view kCanSwitchScan[] = {
    "   Scan(1,Sec,0,10) 'Set Switches - NAN and  TxEnable",
    "      'CANBUS ID 1 = Config QB-CAN, DataType32 = SetSwitch, NumVals = 1",
    "      CANBus(CanSwitchTx,CanAddress,CanQuanta,CanSeg1,CanSeg2,1,32,0,0,1,1.0,0.0)",
    "      'CANBUS ID 1 = Config QB-CAN, DataType33 = ReadSwitch, NumVals = 1",
    "      CANBus(CanSwitchRx,CanAddress,CanQuanta,CanSeg1,CanSeg2,1,33,0,0,1,1.0,0.0)",
    "      If CanSwitchRx = CanSwitchTx Then ExitScan",
    "   NextScan",
};

constexpr std::string_view kCanVersionScan[] = {
    "   Scan(1,Sec,0,10)",
    "      'CANBUS ID 1 = Config QB-CAN, DataType30 = Read Sig/OS, NumVals = 0",
    "      CANBus(QBCANInfo(),CanAddress,CanQuanta,CanSeg1,CanSeg2,1,30,0,0,0,1.0,0.0)",
    "      If QBCANInfo(1) > 0 Then ExitScan",
    "   NextScan",
};

void scalingLoop(ProgramRun& run, const BlockView& view) {
  const MeasBlock& block = *view.data;
  const bool ownScaling = block.CalOnSite != 0 || view.except->Any();
  if (!ownScaling && block.ZeroFlag == 0) return;
  run.Put({"   For I = 1 To ", view.names.reps},
          {"'Do the following to all of ", view.names.source});
  if (ownScaling) {
    run.Put({"      ", view.names.mult, "(I) = ", view.names.multConst},
            {"'Assign default multiplier (", block.DefaultMult, ") to ", view.names.mult});
  }
  if (IsStrain(view)) {
    run.Put({"      GBBlk", view.n, "(I) = BGF", view.n},
            {"'Assign default gauge factor (", run.store.BridgeBlock[view.n].GageFactor,
             ") to GBBlk", view.n});
  } else {
    run.Put({"      ", view.names.offset, "(I) = ", view.names.offsetConst},
            {"'Assign default offset (", block.DefaultOffset, ") to ", view.names.offset});
  }
  run.Put({"   Next I"}, {"'Repeat above until finished"});
}

void levelReads(ProgramRun& run, const OutputSet& output, int t, std::string_view array) {
  if (!IsSelected(output, t, kLevelCrossing)) return;
  const auto readLoop = [&](int count, std::string_view suffix) {
    run.Put({"   For I = 1 To ", count}, {"'Do to all of ", array, suffix});
    run.Put({"      Read ", array, suffix, "(I)"}, {"'Read data into ", array, suffix});
    run.Put({"   Next I"}, {"'Repeat above until finished"});
  };
  const HistoSet& level = output.Histo[t];
  readLoop(level.LevNumLevels, "LC1");
  if (level.NumDims == 1) readLoop(level.LevNumTests, "LC2");
}

void startUpAssignments(ProgramRun& run, Family family) {
  for (const BlockView& view : run.Blocks(family)) {
    if (!HasReps(view)) continue;
    if (family == Family::kCan && run.store.Can.Item[view.n].Enabled == 0) continue;
    scalingLoop(run, view);
    for (int t = 1; t <= kTables; ++t) {
      levelReads(run, view.data->Output, t, Joined({view.names.source, t}));
    }
  }
}

void calcFieldLevelReads(ProgramRun& run) {
  if (run.store.CalcFields.CalcFieldCount <= 0) return;
  for (int t = 1; t <= kTables; ++t) {
    int c = 0;
    for (const CalcFieldData& field : run.store.CalcFields.Field.Made()) {  // even past the count
      ++c;
      if (!IsSelected(field.Output, t, kLevelCrossing)) continue;
      levelReads(run, field.Output, t, Joined({"Calc", c, t}));
    }
  }
}

void flaggedScanHead(ProgramRun& run) {
  const int scanFlag = run.store.Scan.FlagScan;
  if (scanFlag <= 0 || run.store.Scan.BurstMode == 0) return;
  run.PutEmpty();
  run.Put({"Do"}, {"'Loop to allow scan on flag repeat"});
  run.Put({"   Do Until Flag(", scanFlag, "): Loop"},
          {"'Loop Until Flag(", scanFlag, ") is pressed"});
  for (const PulseBlockGroup& group : run.store.PulseBlock) {
    if (group.BlockCount > 0) run.Put({"   PulseCountReset()"}, {"'Reset Pulse Counter"});
  }
}

void canPreliminaryScans(ProgramRun& run) {
  const CanModuleData& module = run.store.Can.Module[1];
  const auto hyphens = [&] { run.Put({"   '", Fill{'-', 62}}); };
  const auto heading = [&](std::string_view title) {
    hyphens();
    run.Put({"   '", title});
    hyphens();
  };
  run.PutEmpty();
  heading("Preliminary CANBUS Configuration Scan(s) ");
  run.PutEmpty();
  for (const CanSwitches& switches : kCanSwitches) {
    if (switches.transmit == (module.CanEnableTransmit != 0) &&
        switches.nanOldData == (module.CanNaNOldData != 0)) {
      run.Put({switches.line});
    }
  }
  run.PutEmpty();
  run.Put({"   'QB-CAN Switch-Setting Scan (EnableTransmit and NANOldData)"});
  hyphens();
  for (const std::string_view line : kCanSwitchScan) run.Put({line});
  run.PutEmpty();
  if (module.CanGetOSVerSig != 0) {
    run.Put({"   'QB-CAN Operating System Signature and Version Scan"});
    hyphens();
    for (const std::string_view line : kCanVersionScan) run.Put({line});
    run.PutEmpty();
  }
  run.Put({"   CallTable CANChk             'Persist QB-CAN Specific Settings"});
  run.PutEmpty();
  heading("Main Scan");
  run.PutEmpty();
}

void zeroFlagStart(ProgramRun& run) {
  run.Put({"   For I = 1 To 8"});
  run.Put({"      ScanFlg1x(I) = True"});
  run.Put({"   Next I"});
  run.PutEmpty();
  for (const Family family : {Family::kVolt, Family::kBridge, Family::kTK40M}) {
    for (const BlockView& view : run.Blocks(family)) {
      if (!HasReps(view) || view.data->ZeroFlag == 0) continue;
      if (IsStrain(view)) {
        run.Put({"   For I = 1 To BREP", view.n});
        run.Put({"      GBBlk", view.n, "Raw(I) = GBBlk", view.n, "(I)"});
        run.Put({"   Next I"});
      } else {
        run.Put({"   ", ConstantName(view.texts->kind, "CalReps", view.n), " = ", view.names.reps});
      }
    }
  }
  run.PutEmpty();
}

void fieldCalStart(ProgramRun& run) {
  run.Put({"   CalFileLoaded = false"});
  run.Put({"   CalFileLoaded = LoadFieldCal(1)"});
  run.Put({"   FieldCalAvgs = ", run.needs.StrainCalMask != 0 ? 1 : 20});
  run.Put({"   CalStartIdx = 1"});
  run.PutEmpty();
}

void scanLine(ProgramRun& run) {
  const ScanSetup& scan = run.store.Scan;
  const bool burst = scan.BurstMode != 0;
  const std::string unit(UnitAbbreviation(scan.ExecTimeUnits));
  std::string comment = Joined({"'Scan once every ", scan.ExecutionTime, " ", unit, "s"});
  if (burst) {
    const double micros = scan.BurstScans * ORVUS_COMMON::ScanIntervalMicros(run.store) + 0.000001;
    comment += ", burst to CPU S-RAM, " + burstLength(micros);
  } else {
    comment += ", non-burst";
  }
  const int buffer = burst || scan.ScanMode != 0 ? scan.BufferScans : 0;
  run.Put({"   Scan(PERIOD,P_UNITS,", buffer, ",", burst ? scan.BurstScans : 0, ")"}, {comment});
}

void putSeparator(ProgramRun& run) { run.Put({"      '", Fill{'-', 64}}); }

void flagControl(ProgramRun& run) {
  const auto& flags = run.store.Flags;
  if (std::none_of(flags.begin(), flags.end(),
                   [](const FlagControl& control) { return control.FlagInclude != 0; })) {
    return;
  }
  run.PutTitle(kBody, " Flag Control ");
  for (int i = 1; i <= kFlags; ++i) {
    const FlagControl& control = flags[i];
    if (control.FlagInclude == 0) continue;
    const bool on = control.FlagOn != 0;
    run.Put({"      If ", control.State[1].FlagExpression, " Then"}, {"'Test measurement"},
            Pad::kGuarded);
    run.Put({"         Flag(", i, ") = ", trueOrFalse(on)},
            {"'Flag(", i, ") if test condition is true"});
    run.Put({"      ElseIf ", control.State[2].FlagExpression, " Then"}, {"'Other condition"},
            Pad::kGuarded);
    run.Put({"         Flag(", i, ") = ", trueOrFalse(!on)},
            {"'Flag(", i, ") if test condition is true"});
    run.Put({"      End If"}, {"'End of If"});
    putSeparator(run);
  }
}

void portControl(ProgramRun& run) {
  const auto& slots = run.store.Ports.Slot;
  const auto bytePort = [](const PortSlot& slot) -> const Port& { return slot.Ports[kPorts]; };
  const auto mask = [&](const PortSlot& slot, int which) {
    return PortMaskText(slot.BinaryMask[which], run.store.Ports.CodeType);
  };
  // Only the first slot decides on the title.
  if (slots[0].ByteMode != 0 && bytePort(slots[0]).Include != 0) {
    run.PutTitle(kBody, " Port Control ");
  }
  for (const PortSlot& slot : slots) {
    if (slot.ReadMode != 0 || slot.ByteMode == 0 || bytePort(slot).Include == 0) continue;
    run.Put({"      If ", bytePort(slot).State[0].Expression, " Then"}, {"'Test measurement"},
            Pad::kGuarded);
    run.Put({"         WritPort = ", mask(slot, 0)}, {"'Port(1-8) setup if test condition is true"},
            Pad::kGuarded);
    run.Put({"      ElseIf ", bytePort(slot).State[1].Expression, " Then"}, {"'Other condition"},
            Pad::kGuarded);
    const std::string second = "         WritPort = " + mask(slot, 1);
    if (static_cast<int>(second.size()) > kCommentColumn) {
      run.Put({second}, {"'Port (1-8)setup if test condition is true"}, Pad::kGuarded);
    } else {
      run.Put({second}, {"'Port(1-8) setup if test condition is true"});
    }
    run.Put({"      End If"}, {"'End of If"});
    run.Put({"      WriteIO(", mask(slot, 2), ",WritPort)"}, {"'Mask, ports"}, Pad::kGuarded);
    putSeparator(run);
  }
  for (const PortSlot& slot : slots) {
    if (slot.ReadMode == 0 || bytePort(slot).Include == 0) continue;
    run.Put({"      ReadIO(ReadPort,", mask(slot, 2), ")"}, {"'Destination, mask"}, Pad::kGuarded);
  }
}

void portSet(ProgramRun& run) {
  const int last = run.store.Config.TK40MQty >= 1 ? 6 : 8;  // ports 7 and 8 drive the multiplexer
  for (const PortSlot& slot : run.store.Ports.Slot) {
    if (slot.ByteMode != 0 || !hasIncludedPort(slot)) continue;
    run.PutTitle(kBody, " Port Set ");
    for (int i = 1; i <= last; ++i) {
      const Port& port = slot.Ports[i];
      if (port.Include == 0) continue;
      const bool on = port.Polarity != 0;
      run.Put({"      If ", port.State[0].Expression, " Then"}, {"'Test measurement"},
              Pad::kGuarded);
      run.Put({"         Port(", i, ") = ", trueOrFalse(on)},
              {"'Port ", i, " if test condition is true"});
      run.Put({"      ElseIf ", port.State[1].Expression, " Then"}, {"'Other condition"},
              Pad::kGuarded);
      run.Put({"         Port(", i, ") = ", trueOrFalse(!on)},
              {"'Port ", i, " if test condition is true"});
      run.Put({"      End If"}, {"'End of If"});
      run.Put({"      PortSet(", i, ",Port(", i, "))"}, {"'Port ", i, ", state"});
      putSeparator(run);
    }
  }
}

void calculatedFields(ProgramRun& run) {
  const CalcFieldGroup& fields = run.store.CalcFields;
  if (fields.CalcFieldCount <= 0) return;
  run.Put({"      '", Fill{'_', 20}, " Calculated Fields ", Fill{'_', 20}});
  for (int f = 1; f <= fields.CalcFieldCount; ++f) {
    const auto& field = fields.Field[f].CalcField;
    run.Put({"      ", field[1], " = ", field[2]});
  }
}

void levelSource(ProgramRun& run, const HistoSet& level, std::string_view name,
                 std::string_view source) {
  const auto putSource = [&](int dimension, std::string_view value, std::string_view nth) {
    const auto put = [&](const auto&... statement) {
      run.Put({statement...}, {nth, " source dimension for ", name, "()"});
    };
    LevelSourceStatement(put, name, dimension, value);
  };
  putSource(1, source, "'1st");
  if (level.NumDims == 1) putSource(2, level.LevelMeasName, "'2nd");
}

void levelSourcesOfBlock(ProgramRun& run, const BlockView& view) {
  const std::string& source = view.names.source;
  for (int t = 1; t <= kTables; ++t) {
    if (!IsSelected(view.data->Output, t, kLevelCrossing)) continue;
    for (int i = 1; i <= view.data->Reps; ++i) {
      levelSource(run, view.data->Output.Histo[t], Joined({"LC", source, "_", t, "_", i}),
                  Joined({source, "(", i, ")"}));
    }
  }
}

void levelSourcesOfItem(ProgramRun& run, const BlockView& view) {
  if (!HasReps(view) || run.store.Can.Item[view.n].Enabled == 0) return;
  const std::string& source = view.names.source;
  for (int t = 1; t <= kTables; ++t) {
    if (!IsSelected(view.data->Output, t, kLevelCrossing)) continue;
    levelSource(run, view.data->Output.Histo[t], Joined({"LC", source, t}), source + "(1)");
  }
}

void levelSources(ProgramRun& run) {
  for (const Family family :
       {Family::kTemp, Family::kVolt, Family::kBridge, Family::kPulse, Family::kTK40M}) {
    for (const BlockView& view : run.Blocks(family)) levelSourcesOfBlock(run, view);
  }
  if (CanInUse(run.store)) {
    for (const BlockView& view : run.Blocks(Family::kCan)) levelSourcesOfItem(run, view);
  }
  for (int t = 1; t <= kTables; ++t) {
    for (int c = 1; c <= run.store.CalcFields.CalcFieldCount; ++c) {
      const CalcFieldData& field = run.store.CalcFields.Field[c];
      if (!IsSelected(field.Output, t, kLevelCrossing)) continue;
      levelSource(run, field.Output.Histo[t], CalcFieldLevelName(c, t), field.CalcField[1]);
    }
  }
}

}  // namespace

void SAVEDLD::MainProgram() {
  run_.PutSectionTitle(" PROGRAM ");
  run_.PutEmpty();
  run_.Put({"BeginProg"}, {"'Program begins here"});
  run_.Put({"   'MainSequence"});
  if (run_.store.Tables.HDU7 == 1) {
    run_.Put({"   HDU7(Flag,200)"}, {"'HDU7 displays public vars every 200 mSecs"});
  }
  for (const Family family : {Family::kTemp, Family::kVolt, Family::kBridge, Family::kPulse}) {
    startUpAssignments(run_, family);
  }
  if (run_.store.Config.TK40MQty > 0) startUpAssignments(run_, Family::kTK40M);
  if (CanInUse(run_.store)) startUpAssignments(run_, Family::kCan);
  calcFieldLevelReads(run_);
  section("SAVEDLD.Exceptions", &SAVEDLD::Exceptions);
  flaggedScanHead(run_);
  if (CanInUse(run_.store)) canPreliminaryScans(run_);
  if (run_.needs.ZeroFlagUsed) zeroFlagStart(run_);
  if (run_.NeedsFieldCal()) fieldCalStart(run_);
  scanLine(run_);
  if (run_.store.Config.MonitorPower[kMonitorBattery] != 0) {
    run_.Put({"      Battery(BattVolt)"}, {"'Battery voltage measurement"});
  }
  flagControl(run_);
  portControl(run_);
  portSet(run_);
  section("SAVEDLD.ExciteControl", &SAVEDLD::ExciteControl);
  ZeroFlagLogic();
  run_.BlockChan = 1;
  run_.ChanCursor = 0;
  section("SAVEDLD.Temperature", &SAVEDLD::Temperature);
  section("SAVEDLD.Voltage", &SAVEDLD::Voltage);
  section("SAVEDLD.Bridges", &SAVEDLD::Bridges);
  section("SAVEDLD.Pulses", &SAVEDLD::Pulses);
  if (run_.store.Config.TK40MQty > 0) section("SAVEDLD.TK40Ms", &SAVEDLD::TK40Ms);
  if (run_.store.Config.CanBusQty > 0) section("SAVEDLD.CanBus", &SAVEDLD::CanBus);
  FieldCalCalls();
  if (run_.NeedsFieldCal()) run_.Put({"      CallTable(CalHist)"});
  calculatedFields(run_);
  run_.PutEmpty();
  levelSources(run_);
  section("SAVEDLD.MainProgram2", &SAVEDLD::MainProgram2);
}

}  // namespace ostrand
