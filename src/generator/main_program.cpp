// The program body: from BeginProg through the scan to the closing logic.
#include <algorithm>
#include <array>

#include "generator/bridge_style.h"
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

// The length of a burst; the unit's own blank makes two blanks before it.
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

}  // namespace

void SAVEDLD::MainProgram() {
  PutSectionTitle(" PROGRAM ");
  PutEmpty();
  Put({"BeginProg"}, {"'Program begins here"});
  Put({"   'MainSequence"});
  if (store_.Tables.HDU7 == 1) {
    Put({"   HDU7(Flag,200)"}, {"'HDU7 displays public vars every 200 mSecs"});
  }
  for (const Family family : {Family::kTemp, Family::kVolt, Family::kBridge, Family::kPulse}) {
    startUpAssignments(family);
  }
  if (store_.Config.TK40MQty > 0) startUpAssignments(Family::kTK40M);
  if (canInUse()) startUpAssignments(Family::kCan);
  calcFieldLevelReads();
  section("SAVEDLD.Exceptions", &SAVEDLD::Exceptions);
  flaggedScanHead();
  if (canInUse()) canPreliminaryScans();
  if (needs_.ZeroFlagUsed) zeroFlagStart();
  if (needsFieldCal()) fieldCalStart();
  scanLine();
  if (store_.Config.MonitorPower[kMonitorBattery] != 0) {
    Put({"      Battery(BattVolt)"}, {"'Battery voltage measurement"});
  }
  flagControl();
  portControl();
  portSet();
  section("SAVEDLD.ExciteControl", &SAVEDLD::ExciteControl);
  ZeroFlagLogic();
  measurements();
  FieldCalCalls();
  if (needsFieldCal()) Put({"      CallTable(CalHist)"});
  calculatedFields();
  PutEmpty();
  levelSources();
  section("SAVEDLD.MainProgram2", &SAVEDLD::MainProgram2);
}

void SAVEDLD::startUpAssignments(Family family) {
  for (const BlockView& view : blocksOf(family)) {
    if (!HasReps(view)) continue;
    if (family == Family::kCan && store_.Can.Item[view.n].Enabled == 0) continue;
    scalingLoop(view);
    for (int t = 1; t <= kTables; ++t) {
      levelReads(view.data->Output, t, Joined({view.names.source, t}));
    }
  }
}

void SAVEDLD::scalingLoop(const BlockView& view) {
  const MeasBlock& block = *view.data;
  const bool ownScaling = block.CalOnSite != 0 || view.except->Any();
  if (!ownScaling && block.ZeroFlag == 0) return;
  Put({"   For I = 1 To ", view.names.reps}, {"'Do the following to all of ", view.names.source});
  if (ownScaling) {
    Put({"      ", view.names.mult, "(I) = ", view.names.multConst},
        {"'Assign default multiplier (", block.DefaultMult, ") to ", view.names.mult});
  }
  if (view.Kind() == Family::kBridge && IsStrain(store_.BridgeBlock[view.n])) {
    Put({"      GBBlk", view.n, "(I) = BGF", view.n},
        {"'Assign default gauge factor (", store_.BridgeBlock[view.n].GageFactor, ") to GBBlk",
         view.n});
  } else {
    Put({"      ", view.names.offset, "(I) = ", view.names.offsetConst},
        {"'Assign default offset (", block.DefaultOffset, ") to ", view.names.offset});
  }
  Put({"   Next I"}, {"'Repeat above until finished"});
}

void SAVEDLD::levelReads(const OutputSet& output, int t, std::string_view array) {
  if (!IsSelected(output, t, kLevelCrossing)) return;
  const auto readLoop = [&](int count, std::string_view suffix) {
    Put({"   For I = 1 To ", count}, {"'Do to all of ", array, suffix});
    Put({"      Read ", array, suffix, "(I)"}, {"'Read data into ", array, suffix});
    Put({"   Next I"}, {"'Repeat above until finished"});
  };
  const HistoSet& level = output.Histo[t];
  readLoop(level.LevNumLevels, "LC1");
  if (level.NumDims == 1) readLoop(level.LevNumTests, "LC2");
}

void SAVEDLD::calcFieldLevelReads() {
  if (store_.CalcFields.CalcFieldCount <= 0) return;
  for (int t = 1; t <= kTables; ++t) {
    int c = 0;
    for (const CalcFieldData& field : store_.CalcFields.Field.Made()) {  // whatever the count
      ++c;
      if (!IsSelected(field.Output, t, kLevelCrossing)) continue;
      levelReads(field.Output, t, Joined({"Calc", c, t}));
    }
  }
}

void SAVEDLD::flaggedScanHead() {
  const int scanFlag = store_.Scan.FlagScan;
  if (scanFlag <= 0 || store_.Scan.BurstMode == 0) return;
  PutEmpty();
  Put({"Do"}, {"'Loop to allow scan on flag repeat"});
  Put({"   Do Until Flag(", scanFlag, "): Loop"}, {"'Loop Until Flag(", scanFlag, ") is pressed"});
  for (const PulseBlockGroup& group : store_.PulseBlock) {
    if (group.BlockCount > 0) Put({"   PulseCountReset()"}, {"'Reset Pulse Counter"});
  }
}

void SAVEDLD::canPreliminaryScans() {
  const CanModuleData& module = store_.Can.Module[1];
  const auto hyphens = [this] { Put({"   '", Fill{'-', 62}}); };
  const auto heading = [&](std::string_view title) {
    hyphens();
    Put({"   '", title});
    hyphens();
  };
  PutEmpty();
  heading("Preliminary CANBUS Configuration Scan(s) ");
  PutEmpty();
  for (const CanSwitches& switches : kCanSwitches) {
    if (switches.transmit == (module.CanEnableTransmit != 0) &&
        switches.nanOldData == (module.CanNaNOldData != 0)) {
      Put({switches.line});
    }
  }
  PutEmpty();
  Put({"   'QB-CAN Switch-Setting Scan (EnableTransmit and NANOldData)"});
  hyphens();
  for (const std::string_view line : kCanSwitchScan) Put({line});
  PutEmpty();
  if (module.CanGetOSVerSig != 0) {
    Put({"   'QB-CAN Operating System Signature and Version Scan"});
    hyphens();
    for (const std::string_view line : kCanVersionScan) Put({line});
    PutEmpty();
  }
  Put({"   CallTable CANChk             'Persist QB-CAN Specific Settings"});
  PutEmpty();
  heading("Main Scan");
  PutEmpty();
}

void SAVEDLD::zeroFlagStart() {
  Put({"   For I = 1 To 8"});
  Put({"      ScanFlg1x(I) = True"});
  Put({"   Next I"});
  PutEmpty();
  for (const Family family : {Family::kVolt, Family::kBridge, Family::kTK40M}) {
    for (const BlockView& view : blocksOf(family)) {
      if (!HasReps(view) || view.data->ZeroFlag == 0) continue;
      if (family == Family::kBridge && IsStrain(store_.BridgeBlock[view.n])) {
        Put({"   For I = 1 To BREP", view.n});
        Put({"      GBBlk", view.n, "Raw(I) = GBBlk", view.n, "(I)"});
        Put({"   Next I"});
      } else {
        Put({"   ", ConstantName(view.texts->kind, "CalReps", view.n), " = ", view.names.reps});
      }
    }
  }
  PutEmpty();
}

void SAVEDLD::fieldCalStart() {
  Put({"   CalFileLoaded = false"});
  Put({"   CalFileLoaded = LoadFieldCal(1)"});
  Put({"   FieldCalAvgs = ", needs_.StrainCalMask != 0 ? 1 : 20});
  Put({"   CalStartIdx = 1"});
  PutEmpty();
}

void SAVEDLD::scanLine() {
  const ScanSetup& scan = store_.Scan;
  const bool burst = scan.BurstMode != 0;
  const std::string unit(UnitAbbreviation(scan.ExecTimeUnits));
  std::string comment = Joined({"'Scan once every ", scan.ExecutionTime, " ", unit, "s"});
  if (burst) {
    const double micros = scan.BurstScans * ORVUS_COMMON::ScanIntervalMicros(store_) + 0.000001;
    comment += ", burst to CPU S-RAM, " + burstLength(micros);
  } else {
    comment += ", non-burst";
  }
  const int buffer = burst || scan.ScanMode != 0 ? scan.BufferScans : 0;
  Put({"   Scan(PERIOD,P_UNITS,", buffer, ",", burst ? scan.BurstScans : 0, ")"}, {comment});
}

void SAVEDLD::flagControl() {
  const auto& flags = store_.Flags;
  if (std::none_of(flags.begin(), flags.end(),
                   [](const FlagControl& control) { return control.FlagInclude != 0; })) {
    return;
  }
  PutTitle(kBody, " Flag Control ");
  for (int i = 1; i <= kFlags; ++i) {
    const FlagControl& control = flags[i];
    if (control.FlagInclude == 0) continue;
    const bool on = control.FlagOn != 0;
    Put({"      If ", control.State[1].FlagExpression, " Then"}, {"'Test measurement"},
        Pad::kGuarded);
    Put({"         Flag(", i, ") = ", trueOrFalse(on)},
        {"'Flag(", i, ") if test condition is true"});
    Put({"      ElseIf ", control.State[2].FlagExpression, " Then"}, {"'Other condition"},
        Pad::kGuarded);
    Put({"         Flag(", i, ") = ", trueOrFalse(!on)},
        {"'Flag(", i, ") if test condition is true"});
    Put({"      End If"}, {"'End of If"});
    putSeparator();
  }
}

void SAVEDLD::portControl() {
  const auto& slots = store_.Ports.Slot;
  const auto bytePort = [](const PortSlot& slot) -> const Port& { return slot.Ports[kPorts]; };
  const auto mask = [&](const PortSlot& slot, int which) {
    return PortMaskText(slot.BinaryMask[which], store_.Ports.CodeType);
  };
  // The second group does not count for the title.
  if (slots[0].ByteMode != 0 && bytePort(slots[0]).Include != 0) {
    PutTitle(kBody, " Port Control ");
  }
  for (const PortSlot& slot : slots) {
    if (slot.ReadMode != 0 || slot.ByteMode == 0 || bytePort(slot).Include == 0) continue;
    Put({"      If ", bytePort(slot).State[0].Expression, " Then"}, {"'Test measurement"},
        Pad::kGuarded);
    Put({"         WritPort = ", mask(slot, 0)}, {"'Port(1-8) setup if test condition is true"},
        Pad::kGuarded);
    Put({"      ElseIf ", bytePort(slot).State[1].Expression, " Then"}, {"'Other condition"},
        Pad::kGuarded);
    const std::string second = "         WritPort = " + mask(slot, 1);
    if (static_cast<int>(second.size()) > kCommentColumn) {
      Put({second}, {"'Port (1-8)setup if test condition is true"}, Pad::kGuarded);
    } else {
      Put({second}, {"'Port(1-8) setup if test condition is true"});
    }
    Put({"      End If"}, {"'End of If"});
    Put({"      WriteIO(", mask(slot, 2), ",WritPort)"}, {"'Mask, ports"}, Pad::kGuarded);
    putSeparator();
  }
  for (const PortSlot& slot : slots) {
    if (slot.ReadMode == 0 || bytePort(slot).Include == 0) continue;
    Put({"      ReadIO(ReadPort,", mask(slot, 2), ")"}, {"'Destination, mask"}, Pad::kGuarded);
  }
}

void SAVEDLD::portSet() {
  const int last = store_.Config.TK40MQty >= 1 ? 6 : 8;  // ports 7 and 8 drive the multiplexer
  for (const PortSlot& slot : store_.Ports.Slot) {
    if (slot.ByteMode != 0 || !hasIncludedPort(slot)) continue;
    PutTitle(kBody, " Port Set ");
    for (int i = 1; i <= last; ++i) {
      const Port& port = slot.Ports[i];
      if (port.Include == 0) continue;
      const bool on = port.Polarity != 0;
      Put({"      If ", port.State[0].Expression, " Then"}, {"'Test measurement"}, Pad::kGuarded);
      Put({"         Port(", i, ") = ", trueOrFalse(on)},
          {"'Port ", i, " if test condition is true"});
      Put({"      ElseIf ", port.State[1].Expression, " Then"}, {"'Other condition"},
          Pad::kGuarded);
      Put({"         Port(", i, ") = ", trueOrFalse(!on)},
          {"'Port ", i, " if test condition is true"});
      Put({"      End If"}, {"'End of If"});
      Put({"      PortSet(", i, ",Port(", i, "))"}, {"'Port ", i, ", state"});
      putSeparator();
    }
  }
}

void SAVEDLD::putSeparator() { Put({"      '", Fill{'-', 64}}); }

void SAVEDLD::measurements() {
  BlockChan_ = 1;
  ChanCursor_ = 0;
  section("SAVEDLD.Temperature", &SAVEDLD::Temperature);
  section("SAVEDLD.Voltage", &SAVEDLD::Voltage);
  section("SAVEDLD.Bridges", &SAVEDLD::Bridges);
  section("SAVEDLD.Pulses", &SAVEDLD::Pulses);
  if (store_.Config.TK40MQty > 0) section("SAVEDLD.TK40Ms", &SAVEDLD::TK40Ms);
  if (store_.Config.CanBusQty > 0) section("SAVEDLD.CanBus", &SAVEDLD::CanBus);
}

void SAVEDLD::calculatedFields() {
  const CalcFieldGroup& fields = store_.CalcFields;
  if (fields.CalcFieldCount <= 0) return;
  Put({"      '", Fill{'_', 20}, " Calculated Fields ", Fill{'_', 20}});
  for (int f = 1; f <= fields.CalcFieldCount; ++f) {
    const auto& field = fields.Field[f].CalcField;
    Put({"      ", field[1], " = ", field[2]});
  }
}

void SAVEDLD::levelSources() {
  for (const Family family : {Family::kTemp, Family::kVolt, Family::kBridge, Family::kPulse,
                              Family::kTK40M, Family::kCan}) {
    const bool item = family == Family::kCan;
    if (item && !canInUse()) continue;
    for (const BlockView& view : blocksOf(family)) {
      if (item && (!HasReps(view) || store_.Can.Item[view.n].Enabled == 0)) continue;
      const std::string& source = view.names.source;
      for (int t = 1; t <= kTables; ++t) {
        if (!IsSelected(view.data->Output, t, kLevelCrossing)) continue;
        const HistoSet& level = view.data->Output.Histo[t];
        if (item) {
          levelSource(level, Joined({"LC", source, t}), source + "(1)");
          continue;
        }
        for (int i = 1; i <= view.data->Reps; ++i) {
          levelSource(level, Joined({"LC", source, "_", t, "_", i}), Joined({source, "(", i, ")"}));
        }
      }
    }
  }
  for (int t = 1; t <= kTables; ++t) {
    for (int c = 1; c <= store_.CalcFields.CalcFieldCount; ++c) {
      const CalcFieldData& field = store_.CalcFields.Field[c];
      if (!IsSelected(field.Output, t, kLevelCrossing)) continue;
      levelSource(field.Output.Histo[t], CalcFieldLevelName(c, t), field.CalcField[1]);
    }
  }
}

void SAVEDLD::levelSource(const HistoSet& level, std::string_view name, std::string_view source) {
  const auto putSource = [&](int dimension, std::string_view value, std::string_view nth) {
    const auto put = [&](const auto&... statement) {
      Put({statement...}, {nth, " source dimension for ", name, "()"});
    };
    LevelSourceStatement(put, name, dimension, value);
  };
  putSource(1, source, "'1st");
  if (level.NumDims == 1) putSource(2, level.LevelMeasName, "'2nd");
}

}  // namespace ostrand
