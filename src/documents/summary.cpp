#include "documents/summary.h"

#include <algorithm>
#include <optional>

#include "documents/document_head.h"
#include "model/output_table.h"
#include "model/scan_time.h"
#include "model/units.h"
#include "platform/guarded.h"
#include "platform/moment_text.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// Columns, counted from 1, in which right-aligned fields end.
constexpr int kRepsEdge = 15;
constexpr int kRangeEdge = 20;
constexpr int kDataIdEdge = 26;
constexpr int kExciteEdge = 27;
constexpr int kVoltMultEdge = 34;  // of CAN items too
constexpr int kBridgeMultEdge = 35;
constexpr int kPulseMultEdge = 36;
constexpr int kOutputState1Edge = 23;
constexpr int kOutputState2Edge = 33;
constexpr int kByteState1Edge = 26;
constexpr int kByteState2Edge = 35;
constexpr int kEqualsEdge = 40;
constexpr int kMaskEdge = 44;
constexpr int kTimeEdge = 52;
constexpr int kOffsetDistance = 8;  // from the end of a multiplier to the end of its offset

// Columns in which left-aligned fields begin.
constexpr int kPulseTypeColumn = 17;
constexpr int kPortStateColumn = 21;
constexpr int kMeasColumn = 23;
constexpr int kPulseOptionColumn = 23;
constexpr int kUnitColumn = 29;
constexpr int kTcTypeColumn = 37;

struct Section {
  std::string_view heading;
  std::string_view total;
};
constexpr Section kThermo = {" THERMO    Reps  Rng  Meas   Unit Type        (uSec)",
                             "Total Thermocouple Time ="};
constexpr Section kVolts = {" VOLTS     Reps  Rng  Meas   Mult   Offset    (uSec)",
                            "Total Voltage Time ="};
constexpr Section kBridges = {" BRIDGES   Reps  Rng  Ex mv   Mult   Offset   (uSec)",
                              "Total Bridge Time ="};
constexpr Section kPulses = {" PULSES    Reps Type  Option   Mult   Offset  (uSec)",
                             "Total Pulse Time ="};
constexpr Section kTK40M = {" TK40M     Reps  Rng  Meas   Unit Type        (uSec)",
                            "Total TK40M Time ="};
constexpr Section kCan = {" CAN       Reps  Data ID     Mult   Offset    (uSec)",
                          "Total Canbus Time ="};
constexpr Section kCaoOutput = {" CAO OUTPUT     State 1   State 2             (uSec)",
                                "Total CAO Output Time ="};
constexpr Section kPortSet = {" PORT SET           State1   State2           (uSec)",
                              "Total Port Time ="};
constexpr Section kFlagSet = {" FLAGS          State 1   State 2            (uSec)",
                              "Total Flag Time ="};
constexpr std::string_view kPortRead = " I/O CONTROL READ MODE                 Mask   (uSec)";
constexpr std::string_view kPortWrite = " I/O CONTROL WRITE  State1   State2    Mask   (uSec)";

constexpr i32 kNotKnown = 0;  // a time that was neither measured nor calculated
constexpr i32 kNotTimed = 0;  // sum of a section whose rows have no times
constexpr i32 kTKVolts = 1;   // TK40Volts of a block of voltages

// Appends a field that ends in column `edge`, or after one blank if it does not fit.
void putRight(std::string& line, int edge, std::string_view field) {
  const auto end = static_cast<std::size_t>(edge);
  line.resize(std::max(line.size() + 1, end - std::min(end, field.size())), ' ');
  line += field;
}

// Appends a field that begins in `column`, or after one blank if it does not fit.
void putLeft(std::string& line, int column, std::string_view field) {
  TabTo(line, column);
  line += field;
}

std::string grouped(i32 number) { return FormatNumber(number, "#,##0"); }

void putTime(std::string& line, i32 micros) {
  putRight(line, kTimeEdge, micros == kNotKnown ? "...." : grouped(micros));
}

// Empty for the general form, which has no mask.
std::string maskOf(const NumberFormat& format) {
  const auto digits = static_cast<std::size_t>(std::clamp(format.digits, 0, kMaxFormDigits));
  const auto places = [digits](char place) {
    return digits > 0 ? "." + std::string(digits, place) : std::string();
  };
  switch (format.form) {
    case NumberForm::kNumber:
      return "#,##0" + places('0');
    case NumberForm::kScientific:
      return "0" + places('0') + "e-##";
    case NumberForm::kCustom:
      return "0" + places('#');
    case NumberForm::kGeneral:
      break;
  }
  return {};
}

std::string blockRow(int number, const MeasBlock& block) {
  std::string line = " " + NumberText(number) + " Block...";
  putRight(line, kRepsEdge, NumberText(block.Reps));
  return line;
}

// "50 mV" without its unit; "Auto" has none.
std::string analogRow(int number, const AnalogBlock& block) {
  std::string line = blockRow(number, block);
  putRight(line, kRangeEdge, Before(Trim(block.Range), " "));
  return line;
}

// A length of time; with an unknown unit just the number, so that it isn't taken for seconds.
std::string intervalText(const std::string& number, int unit) {
  const std::string_view abbreviation = UnitAbbreviation(unit);
  return abbreviation.empty() ? number : number + " " + std::string(abbreviation) + "s";
}

std::string scanIntervalText(const ScanSetup& scan) {
  return intervalText(NumberText(scan.ExecutionTime), scan.ExecTimeUnits);
}

// The time of the last save in the form of document heads; unchanged if it is not a time.
std::string lastSaved(const std::string& text) {
  const std::optional<platform::Moment> moment = MomentOfShortText(text);
  return moment ? DateText(*moment) + " " + TimeText(*moment) : text;
}

const Port& bytePort(const PortSlot& slot) { return slot.Ports[kPorts]; }
bool readsByte(const PortSlot& slot) { return slot.ReadMode != 0 && bytePort(slot).Include != 0; }
bool writesByte(const PortSlot& slot) {
  return slot.ReadMode == 0 && slot.ByteMode != 0 && bytePort(slot).Include != 0;
}

// One run; writes each line into the box as soon as it is made.
class Writer {
 public:
  Writer(ProjectStore& store, const SummaryLook& look, RichText& box)
      : store_(store), look_(look), box_(box) {}

  void Write() {
    box_.Text("");
    box_.SelStart(0);
    box_.SelColor(look_.text);
    head();
    tables();
    battery();
    thermocouples();
    voltages();
    bridges();
    pulses();
    multiplexers();
    canItems();
    analogOutputs();
    bytePorts();
    ports();
    flags();
    store_.EstMeasTime = ORVUS_COMMON::EstMeasTime(store_);
    put("");
    total("Shortest Possible Scan Time (uSec) =", store_.EstMeasTime);
  }

 private:
  void put(std::string_view line) { box_.SelText(std::string(line) + "\r\n"); }

  // Begins a section unless it has begun.
  void heading(std::string_view text) {
    if (text == heading_) return;
    heading_ = text;
    put("");
    box_.SelUnderline(true);
    box_.SelColor(look_.heading);
    box_.SelText(text);
    box_.SelUnderline(false);
    box_.SelColor(look_.text);
    put("");
  }

  void putRow(std::string_view heading, std::string line, i32 micros) {
    this->heading(heading);
    putTime(line, micros);
    put(line);
  }

  void total(std::string_view label, i32 micros) {
    std::string line;
    putRight(line, kEqualsEdge, label);
    putRight(line, kTimeEdge, grouped(micros));
    put(line);
  }

  void putScaling(std::string& line, int multEdge, const MeasBlock& block) const {
    putRight(line, multEdge, FormattedNumber(block.DefaultMult, look_.numbers));
    putRight(line, multEdge + kOffsetDistance, FormattedNumber(block.DefaultOffset, look_.numbers));
  }

  // Ends a section if it has any rows.
  void endSection(const Section& section, i32 micros) {
    if (heading_ == section.heading) total(section.total, micros);
  }

  void head() {
    put(" Program Name: " + Upper(look_.projectName));
    put(" QUILLON Version: " + store_.Gen.VersionLastSaved);
    put(" VK7300 OS Version Compatibility: 05-15-08 or later");
    put(" Last Saved: " + lastSaved(store_.Gen.PCTime));
    put("");
    put((store_.Scan.BurstMode != 0 ? " Burst Scan Interval = " : " Scan Interval = ") +
        scanIntervalText(store_.Scan));
    put("");
  }

  void tables() {
    bool any = false;
    for (int t = 1; t <= kTables; ++t) {
      if (store_.Tables[t].TableOn == 0) continue;
      table(t);
      any = true;
    }
    if (any) put("");
  }

  void table(int t) {
    const i32 bytes = ORVUS_COMMON::BytesPerRecord(store_, t, nullptr);
    const OutputTable& table = store_.Tables[t];
    put(" Table " + NumberText(t) + "         Output Interval = " +
        (table.SyncTable != 0 ? scanIntervalText(store_.Scan)
                              : intervalText(NumberText(table.OutInt), table.OutIntUnits)));
    put("               Fields per Record = " + grouped(table.NumFields));
    put("                Bytes per Record = " + grouped(bytes));
    put("                    Record Count = " +
        (table.AutoSize != 0 ? "Auto Size" : grouped(table.Buffer)));
  }

  void battery() {
    put("                                              (uSec)");
    if (store_.Config.MonitorPower[kMonitorBattery] == 0) return;
    std::string line = " Main Battery Volts Time    =";
    putRight(line, kTimeEdge, grouped(store_.Config.BatteryTime));
    put(line);
  }

  void thermocouples() {
    const TempBlockGroup& group = store_.TempBlock;
    for (int b = 1; b <= group.BlockCount; ++b) {
      const TempBlockData& block = group[b];
      std::string line = analogRow(b, block);
      putLeft(line, kMeasColumn, Before(Trim(block.MeasType), " "));
      putLeft(line, kUnitColumn, block.Units);
      putLeft(line, kTcTypeColumn, ThermocoupleLetter(block.TypeNo));
      putRow(kThermo.heading, line, block.BlockTime);
    }
    // The panel is measured for thermocouples; its time is shown even if there are none left.
    if (group.BlockCount <= 0 && store_.Config.PanelTime <= 0) return;
    heading(kThermo.heading);
    total("Panel RefTemp Time =", store_.Config.PanelTime);
    endSection(kThermo, ORVUS_COMMON::ThermocoupleTime(store_));
  }

  void voltages() {
    const VoltBlockGroup& group = store_.VoltBlock;
    for (int b = 1; b <= group.BlockCount; ++b) {
      const VoltBlockData& block = group[b];
      std::string line = analogRow(b, block);
      putLeft(line, kMeasColumn, Before(Trim(block.MeasType), " "));
      putScaling(line, kVoltMultEdge, block);
      putRow(kVolts.heading, line, block.BlockTime);
    }
    endSection(kVolts, ORVUS_COMMON::VoltageTime(store_));
  }

  void bridges() {
    const BridgeBlockGroup& group = store_.BridgeBlock;
    for (int b = 1; b <= group.BlockCount; ++b) {
      const BridgeBlockData& block = group[b];
      std::string line = analogRow(b, block);
      putRight(line, kExciteEdge, NumberText(block.Excite));
      putScaling(line, kBridgeMultEdge, block);
      putRow(kBridges.heading, line, block.BlockTime);
    }
    endSection(kBridges, ORVUS_COMMON::BridgeTime(store_));
  }

  void pulses() {
    for (const PulseBlockGroup& group : store_.PulseBlock) {
      for (int b = 1; b <= group.BlockCount; ++b) {
        const PulseBlockData& block = group[b];
        std::string line = blockRow(b, block);
        putLeft(line, kPulseTypeColumn, block.Meas);
        putLeft(line, kPulseOptionColumn, block.Opt == 0 ? "Totl" : "Freq");
        putScaling(line, kPulseMultEdge, block);
        putRow(kPulses.heading, line, block.BlockTime);
      }
    }
    endSection(kPulses, ORVUS_COMMON::PulseTime(store_));
  }

  void multiplexers() {
    const TK40MBlockGroup& group = store_.TK40MBlock;
    for (int b = 1; b <= group.BlockCount; ++b) {
      const TK40MBlockData& block = group[b];
      std::string line = analogRow(b, block);
      putLeft(line, kMeasColumn, "Diff");
      putLeft(line, kUnitColumn, "mV");
      if (block.TK40Volts != kTKVolts) {
        putLeft(line, kTcTypeColumn, ThermocoupleLetter(block.TypeNo));
      }
      putRow(kTK40M.heading, line, block.BlockTime);
    }
    endSection(kTK40M, ORVUS_COMMON::TK40MTime(store_));
  }

  // Only items in the program: the bus is fitted and switched on, and so is the item.
  void canItems() {
    const CanBus& can = store_.Can;
    if (store_.Config.CanBusQty < 1 || can.Module[1].CanBusEnabled == 0) return;
    for (int i = 1; i <= can.CanCount; ++i) {
      const CanItemData& item = can.Item[i];
      if (item.Enabled == 0) continue;
      std::string line = blockRow(i, item);
      putRight(line, kDataIdEdge, item.DataId);
      putScaling(line, kVoltMultEdge, item);
      putRow(kCan.heading, line, kNotKnown);
    }
    endSection(kCan, kNotTimed);
  }

  void analogOutputs() {
    for (const auto& slot : store_.ExciteOut.Slot) {
      for (int k = 1; k <= 2; ++k) {
        const ExciteChannel& channel = slot[k];
        if (channel.Include == 0) continue;
        std::string line = " Excite" + NumberText(k);
        putRight(line, kOutputState1Edge, NumberText(channel.State1));
        putRight(line, kOutputState2Edge,
                 channel.DynamicStatic != 0 ? "-----" : NumberText(channel.State2));
        putRow(kCaoOutput.heading, line, kNotKnown);
      }
    }
    endSection(kCaoOutput, kNotTimed);
  }

  void bytePorts() {
    for (const PortSlot& slot : store_.Ports.Slot) {
      if (!readsByte(slot)) continue;
      std::string line;
      putRight(line, kMaskEdge, slot.BinaryMask[2]);
      putRow(kPortRead, line, kNotKnown);
    }
    for (const PortSlot& slot : store_.Ports.Slot) {
      if (!writesByte(slot)) continue;
      std::string line;
      putRight(line, kByteState1Edge, slot.BinaryMask[0]);
      putRight(line, kByteState2Edge, slot.BinaryMask[1]);
      putRight(line, kMaskEdge, slot.BinaryMask[2]);
      putRow(kPortWrite, line, kNotKnown);
    }
  }

  void ports() {
    const int last = store_.Config.TK40MQty >= 1 ? 6 : 8;  // ports 7 and 8 drive the multiplexer
    for (const PortSlot& slot : store_.Ports.Slot) {
      for (int i = 1; i <= last; ++i) {
        const Port& port = slot.Ports[i];
        if (slot.ByteMode != 0 || port.Include == 0) continue;
        std::string line = " Port " + NumberText(i);
        putLeft(line, kPortStateColumn,
                port.Polarity != 0 ? "True     False    " : "False    True     ");
        putRow(kPortSet.heading, line, kNotKnown);
      }
    }
    endSection(kPortSet, kNotTimed);
  }

  void flags() {
    for (int i = 1; i <= kFlags; ++i) {
      const FlagControl& control = store_.Flags[i];
      if (control.FlagInclude == 0) continue;
      putRow(
          kFlagSet.heading,
          " Flag(" + NumberText(i) + ")" +
              (control.FlagOn != 0 ? "            True      False" : "            False     True"),
          kNotKnown);
    }
    endSection(kFlagSet, kNotTimed);
  }

  ProjectStore& store_;
  const SummaryLook& look_;
  RichText& box_;
  std::string_view heading_;  // of the section being written
};

}  // namespace

std::string FormattedNumber(float value, const NumberFormat& format) {
  const std::string mask = maskOf(format);
  if (mask.empty()) return NumberText(value);
  std::string text = FormatNumber(DecimalValue(value), mask);
  if (text.ends_with('.')) text.pop_back();
  return text;
}

bool Summarize(ProjectStore& store, const SummaryLook& look, RichText& box,
               platform::Forms& forms) {
  return Guarded(forms, ".Summarize", [&] { Writer(store, look, box).Write(); });
}

}  // namespace ostrand
