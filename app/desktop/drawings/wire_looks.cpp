#include "drawings/wire_looks.h"

#include <QStringList>
#include <algorithm>
#include <array>

#include "model/units.h"
#include "text/number.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// By the values of WireKind.
constexpr std::array<WireLook, 9> kLooks = {{
    {WireKind::kThermocouple, u'T', "thermocouples", "Thermocouple block", 0xFFCE9522},
    {WireKind::kVoltage, u'V', "voltages", "Voltage block", 0xFF766DFF},
    {WireKind::kBridge, u'B', "bridges", "Bridge block", 0xFF39974C},
    {WireKind::kPulse, u'P', "pulse inputs", "Pulse block", 0xFFDD5A92},
    {WireKind::kMultiplexed, u'A', "on a multiplexer", "Multiplexer block", 0xFFF7B4FF},
    {WireKind::kMultiplexer, u'M', "multiplexers", "Multiplexer", 0xFF9973C9},
    {WireKind::kPort, u'D', "control ports", "Control port", 0xFFE7F525},
    {WireKind::kAnalogOutput, u'O', "analog outputs", "Analog output", 0xFFACF083},
    {WireKind::kCan, u'C', "CAN", "CAN module", 0xFF3DFCC9},
}};

// By the values of WireFunction.
constexpr std::array<const char*, 12> kFunctions = {
    "high wire (H)", "low wire (L)", "single-ended", "high and low wire (H, L)",
    "excitation",    "pulse input",  "control port", "analog output",
    "clock",         "reset",        "ground",       "12 V power"};

QString pulseText(const PulseBlockData& block) {
  const QString count = block.Opt == 0 ? QStringLiteral("counts") : QStringLiteral("frequency");
  return FromProject(block.Meas) + QStringLiteral(", ") + count;
}

void addAnalog(QStringList& facts, const AnalogBlock& block) {
  if (!block.Range.empty()) facts << QStringLiteral("Range: ") + FromProject(block.Range);
}

void addType(QStringList& facts, i32 type) {
  const std::string_view letter = ThermocoupleLetter(type);
  if (!letter.empty()) facts << QStringLiteral("Thermocouple type: ") + FromProject(letter);
}

void addBlock(QStringList& facts, const ProjectStore& store, const WireUse& use) {
  switch (use.kind) {
    case WireKind::kThermocouple:
      addType(facts, store.TempBlock[use.number].TypeNo);
      return addAnalog(facts, store.TempBlock[use.number]);
    case WireKind::kVoltage:
      return addAnalog(facts, store.VoltBlock[use.number]);
    case WireKind::kBridge: {
      const BridgeBlockData& block = store.BridgeBlock[use.number];
      addAnalog(facts, block);
      facts << QStringLiteral("Excitation: ") + FromProject(NumberText(block.Excite)) +
                   QStringLiteral(" mV on ") +
                   (block.CheckCAO != 0 ? QStringLiteral("CAO") : QStringLiteral("VX"));
      return;
    }
    case WireKind::kPulse:
      facts << QStringLiteral("Input: ") + pulseText(store.PulseBlock[use.slot][use.number]);
      return;
    case WireKind::kMultiplexed: {
      const TK40MBlockData& block = store.TK40MBlock[use.number];
      if (block.TK40Volts == 0) addType(facts, block.TypeNo);
      return addAnalog(facts, block);
    }
    default:
      return;
  }
}

bool isBlock(WireKind kind) { return kind <= WireKind::kMultiplexed; }

}  // namespace

std::span<const WireLook> WireLooks() { return kLooks; }

const WireLook& LookOf(WireKind kind) { return kLooks[static_cast<std::size_t>(kind)]; }

QString UserText(const WireUse& use) {
  QString text = QString::fromLatin1(LookOf(use.kind).item);
  if (use.number > 0) text += u' ' + QString::number(use.number);
  if (use.rep == 0) return text;
  text += use.lastRep > use.rep ? QStringLiteral(", sensors %1 to %2").arg(use.rep).arg(use.lastRep)
                                : QStringLiteral(", sensor %1").arg(use.rep);
  return text;
}

QString ExplainUse(const ProjectStore& store, const WireUse& use) {
  QStringList facts;
  QString user = UserText(use);
  if (!use.alias.empty()) user += QStringLiteral(": ") + FromProject(use.alias);
  facts << user;
  QString wire = QString::fromLatin1(kFunctions[static_cast<std::size_t>(use.function)]);
  if (!use.input.empty()) {
    wire += use.input == "In" ? QStringLiteral(" of the excitation sensed at the bridge")
                              : QStringLiteral(" of the output");
  }
  facts << QStringLiteral("Wire: ") + wire;
  addBlock(facts, store, use);
  if (isBlock(use.kind)) facts << QStringLiteral("In the program: ") + FromProject(use.source);
  return facts.join(u'\n');
}

ScreenPlace PlaceOfUse(const WireUse& use) {
  const std::string number = "(" + NumberText(use.number) + ")";
  switch (use.kind) {
    case WireKind::kThermocouple:
      return PlaceOfKey("[THERMOCOUPLE BLOCKS]", "Reps" + number).screen;
    case WireKind::kVoltage:
      return PlaceOfKey("[VOLTAGE BLOCKS]", "Reps" + number).screen;
    case WireKind::kBridge:
      return PlaceOfKey("[BRIDGE BLOCKS]", "Reps" + number).screen;
    case WireKind::kPulse:
      return PlaceOfKey("[PULSE BLOCKS]", "Reps" + number).screen;
    case WireKind::kMultiplexed:
      return PlaceOfKey("[TK40M BLOCKS]", "Reps" + number).screen;
    case WireKind::kPort:
      return {{{"frmPorts"}}, {}};
    case WireKind::kAnalogOutput:
      return {{{"frmExcite"}}, {}};
    case WireKind::kMultiplexer:
    case WireKind::kCan:
      return {{{"frmConfig"}}, {}};
  }
  return {};
}

}  // namespace ostrand::desktop
