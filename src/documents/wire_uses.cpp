#include "documents/wire_uses.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "model/channels.h"
#include "text/mask.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

// The terminals of a block's sensors.
struct SensorKind {
  std::string_view word;  // of the block
  int terminals;          // of one sensor
  bool twoInputs;         // half of the terminals are one input, half the other
};

bool isSingleEnded(const AnalogBlock& block) { return SameText(block.MeasType, "SE"); }

int terminalsOf(const AnalogBlock& block) { return isSingleEnded(block) ? 1 : 2; }

SensorKind bridgeKindOf(const BridgeBlockData& block) {
  switch (block.Style) {
    case 1:  // six wires: the excitation at the bridge is measured, then its output
      return {" B6WBlk", 4, true};
    case 3:  // three wires, and the resistance bridge, which is measured in the same way
    case 4:
      return {" B3WBlk", 2, true};
    default:
      return {" BBlk", terminalsOf(block), false};
  }
}

struct PulseKind {
  std::string_view meas;
  std::string_view word;
};
constexpr std::array<PulseKind, 3> kPulseKinds = {
    {{"LOLEV", " (LO)PBlk"}, {"HILEV", " (HI)PBlk"}, {"SWTCH", " (SW)PBlk"}}};

// A label cut to fit; characters that would move a printer's head become blanks.
std::string labelOf(std::string text) {
  text.resize(std::min(text.size(), std::size_t{kLabelWidth}));
  std::replace_if(
      text.begin(), text.end(),
      [](char c) { return static_cast<unsigned char>(c) < ' ' || c == '\x7F'; }, ' ');
  return text;
}

// " TBlk1(2)", or " BBlk1(2-4)" for several repetitions.
std::string repsText(std::string_view word, int n, int first, int last) {
  std::string text = std::string(word) + NumberText(n) + "(" + NumberText(first);
  if (last != first) text += "-" + NumberText(last);
  return text + ")";
}

template <class Block>
std::string aliasOf(const Block& block, int rep) {
  return block.Alias.Holds(rep) ? block.Alias[rep].AliasName : std::string();
}

std::string withAlias(const std::string& text, const std::string& alias) {
  return labelOf(alias.empty() ? text : text + " " + alias);
}

template <class Group>
int countOf(const Group& group) {
  return std::min(int{group.BlockCount}, Group::kLast);
}

template <class Group>
void takeUserChannels(Row<int, 1, kBlocks>& channels, const Group& group) {
  for (int n = 1; n <= kBlocks; ++n) channels[n] = group[n].StartChan;
}

// A block whose statement was lost with its section is wired by the allocation, since its sensors
// still exist.
void fillLost(Row<int, 1, kBlocks>& channels, const Row<int, 1, kBlocks>& starts) {
  for (int n = 1; n <= kBlocks; ++n) {
    if (channels[n] == 0) channels[n] = starts[n];
  }
}

// Lost excitations follow each other in the order of the blocks.
void fillLostExcitations(Row<int, 1, kBlocks>& excitations, const BridgeBlockGroup& group) {
  int vxUsed = 0;
  int caoUsed = 0;
  for (int n = 1; n <= countOf(group); ++n) {
    const BridgeBlockData& block = group[n];
    if (block.Reps < 1) continue;
    const bool cao = block.CheckCAO != 0;
    int& used = cao ? caoUsed : vxUsed;
    if (excitations[n] == 0) excitations[n] = used + 1;
    used += cao ? block.Reps : ExcitePortsOf(block.Reps, std::max(int{block.ExciteReps}, 1));
  }
}

// The statements determine the excitation even if the user selects the channels.
StatementChannels channelsOf(const ProjectStore& store, const StatementChannels& statements) {
  StatementChannels channels = statements;
  fillLostExcitations(channels.Excite, store.BridgeBlock);
  if (store.Config.AutoChan == 0) {
    takeUserChannels(channels.Temp, store.TempBlock);
    takeUserChannels(channels.Volt, store.VoltBlock);
    takeUserChannels(channels.Bridge, store.BridgeBlock);
    return channels;
  }
  StartChans starts;
  ComputeStartChans(ChannelBlocksOf(store.TempBlock), ChannelBlocksOf(store.VoltBlock),
                    ChannelBlocksOf(store.BridgeBlock), starts);
  fillLost(channels.Temp, starts.Temp);
  fillLost(channels.Volt, starts.Volt);
  fillLost(channels.Bridge, starts.Bridge);
  return channels;
}

class Using {
 public:
  Using(const ProjectStore& store, const StatementChannels& statements)
      : store_(store), channels_(channelsOf(store, statements)) {}

  PanelUses Uses() {
    analogChannels();
    multiplexers();
    if (store_.Config.CanBusQty >= 1) {
      putFirst(uses_.Others[kCanGround], {.kind = WireKind::kCan,
                                          .function = WireFunction::kGround,
                                          .source = "QB-CAN C",
                                          .label = "QB-CAN C"});
    }
    pulses();
    ports();
    excitation();
    return std::move(uses_);
  }

 private:
  [[nodiscard]] bool hasMultiplexers() const { return store_.Config.TK40MQty > 0; }

  // The diagram names this user.
  static void putFirst(WireUses& users, WireUse use) {
    users.insert(users.begin(), std::move(use));
  }

  void analogChannels() {
    for (int n = 1; n <= countOf(store_.TempBlock); ++n) {
      const TempBlockData& block = store_.TempBlock[n];
      sensors(WireKind::kThermocouple, block, {" TBlk", terminalsOf(block), false}, n,
              channels_.Temp[n]);
    }
    for (int n = 1; n <= countOf(store_.VoltBlock); ++n) {
      const VoltBlockData& block = store_.VoltBlock[n];
      sensors(WireKind::kVoltage, block, {" VBlk", terminalsOf(block), false}, n,
              channels_.Volt[n]);
    }
    for (int n = 1; n <= countOf(store_.BridgeBlock); ++n) {
      const BridgeBlockData& block = store_.BridgeBlock[n];
      sensors(WireKind::kBridge, block, bridgeKindOf(block), n, channels_.Bridge[n]);
    }
  }

  // The sensors of a block that starts at `channel` of its kind of channel; nothing below 1.
  void sensors(WireKind kind, const AnalogBlock& block, const SensorKind& sensor, int n,
               int channel) {
    const bool single = isSingleEnded(block);
    int terminal = single ? channel : 2 * channel - 1;
    for (int rep = 1; rep <= block.Reps; ++rep) {
      WireUse use = nextSensor(kind, sensor.word, n, rep);
      const std::string text = use.label;
      use.alias = aliasOf(block, rep);
      for (int t = 0; t < sensor.terminals; ++t, ++terminal) {
        if (channel < 1 || terminal > kPanelTerminals) continue;
        use.input = !sensor.twoInputs ? "" : t < sensor.terminals / 2 ? "In" : "Out";
        use.function = single       ? WireFunction::kSingleEnded
                       : t % 2 == 0 ? WireFunction::kHigh
                                    : WireFunction::kLow;
        // The input comes before the alias, so that it is not cut.
        use.label =
            withAlias(use.input.empty() ? text : text + " " + std::string(use.input), use.alias);
        putFirst(uses_.Analog[terminal], use);
      }
    }
  }

  // The label begins with the number of the sensor in the whole project.
  WireUse nextSensor(WireKind kind, std::string_view word, int n, int rep) {
    const std::string source = repsText(word, n, rep, rep);
    return {.kind = kind,
            .number = n,
            .rep = rep,
            .lastRep = rep,
            .source = std::string(Trim(source)),
            .label = FormatNumber(++sensors_, "00") + source};
  }

  // The first multiplexer is measured on the last differential channel, each further one on the
  // next lower channel; all share the other wires.
  void multiplexers() {
    if (!hasMultiplexers()) return;
    const int count = std::min(int{store_.Config.TK40MQty}, kPanelTerminals / 2);
    for (int m = 1; m <= count; ++m) {
      const int low = kPanelTerminals - 2 * (m - 1);
      const std::string name = " TK40M " + NumberText(m);
      multiplexer(uses_.Analog[low - 1], WireFunction::kHigh, m, name + " High");
      multiplexer(uses_.Analog[low], WireFunction::kLow, m, name + " Low");
    }
    multiplexer(uses_.Others[kMuxAnalogGround], WireFunction::kGround, 0, " TK40M AG");
    multiplexer(uses_.Others[kC1 + 6], WireFunction::kClock, 0, " TK40M Clock Port");
    multiplexer(uses_.Others[kC1 + 7], WireFunction::kReset, 0, " TK40M Reset Port");
    multiplexer(uses_.Others[kVX1 + 3], WireFunction::kExcitation, 0, " TK40M Excitation");
    multiplexer(uses_.Others[kMuxPower], WireFunction::kPower, 0, " TK40M 12V");
    multiplexer(uses_.Others[kMuxPowerGround], WireFunction::kGround, 0, " TK40M Gnd");
  }

  static void multiplexer(WireUses& users, WireFunction function, int number,
                          const std::string& label) {
    putFirst(users, {.kind = WireKind::kMultiplexer,
                     .function = function,
                     .number = number,
                     .source = std::string(Trim(label)),
                     .label = label});
  }

  // The statement of a block names the next channel, whatever the repetitions of the block before;
  // its repetitions continue from it.
  void pulses() {
    int first = 0;
    int slot = 0;
    for (const PulseBlockGroup& group : store_.PulseBlock) {
      for (int n = 1; n <= countOf(group); ++n) {
        const PulseBlockData& block = group[n];
        const auto kind =
            std::find_if(kPulseKinds.begin(), kPulseKinds.end(),
                         [&](const PulseKind& k) { return SameText(block.Meas, k.meas); });
        if (block.Reps < 1 || kind == kPulseKinds.end()) continue;
        ++first;
        for (int rep = 1; rep <= block.Reps; ++rep) {
          WireUse use = nextSensor(WireKind::kPulse, kind->word, n, rep);
          const int channel = first + rep - 1;
          if (channel > kPanelPulses) continue;
          use.function = WireFunction::kPulse;
          use.slot = slot;
          use.alias = aliasOf(block, rep);
          use.label = withAlias(use.label, use.alias);
          putFirst(uses_.Others[kP1 + channel - 1], std::move(use));
        }
      }
      ++slot;
    }
  }

  // A byte reads or writes all ports at once. The multiplexers use two of them.
  void ports() {
    const int last = hasMultiplexers() ? 6 : kPanelPorts;
    int number = 0;
    for (const PortSlot& slot : store_.Ports.Slot) {
      const bool byteInUse =
          (slot.ByteMode != 0 || slot.ReadMode != 0) && slot.Ports[kPorts].Include != 0;
      for (int p = 1; p <= last; ++p) {
        if (byteInUse) port(p, number, "  I/O Port ");
        if (slot.ByteMode == 0 && slot.Ports[p].Include != 0) port(p, number, "  Port Set ");
      }
      ++number;
    }
  }

  void port(int p, int slot, std::string_view what) {
    const std::string label = std::string(what) + NumberText(p);
    putFirst(uses_.Others[kC1 + p - 1], {.kind = WireKind::kPort,
                                         .function = WireFunction::kPort,
                                         .number = p,
                                         .slot = slot,
                                         .source = std::string(Trim(label)),
                                         .label = label});
  }

  // The users of an excitation that come later are not named: they do not replace the
  // multiplexers' excitation, nor a bridge on an analog output.
  void excitation() {
    const auto excite = [this](int wire, WireUse use, const std::string& what) {
      use.label = labelOf("  Excite " + what);
      use.source = "Excite " + what;
      uses_.Others[wire].push_back(std::move(use));
    };
    for (int n = 1; n <= countOf(store_.BridgeBlock); ++n) {
      const BridgeBlockData& block = store_.BridgeBlock[n];
      int channel = channels_.Excite[n];
      if (channel < 1) continue;
      const bool cao = block.CheckCAO != 0;
      const int last = cao ? kPanelAnalogOutputs : kPanelExcitations;
      const int share = std::max(int{block.ExciteReps}, 1);
      const std::string_view word = Trim(bridgeKindOf(block).word);
      for (int rep = 1; rep <= block.Reps && channel <= last; rep += share, ++channel) {
        const int lastRep = std::min(rep + share - 1, int{block.Reps});
        excite((cao ? kCAO1 : kVX1) + channel - 1,
               {.kind = WireKind::kBridge,
                .function = WireFunction::kExcitation,
                .number = n,
                .rep = rep,
                .lastRep = lastRep},
               repsText(word, n, rep, lastRep));
      }
    }
    int number = 0;
    for (const auto& slot : store_.ExciteOut.Slot) {
      for (int a = 1; a <= kPanelAnalogOutputs; ++a) {
        if (slot[a].Include == 0) continue;
        excite(kCAO1 + a - 1,
               {.kind = WireKind::kAnalogOutput,
                .function = WireFunction::kOutput,
                .number = a,
                .slot = number},
               NumberText(a));
      }
      ++number;
    }
  }

  const ProjectStore& store_;
  const StatementChannels channels_;
  PanelUses uses_;
  int sensors_ = 0;  // numbered so far
};

}  // namespace

bool IsConflict(const WireUses& users) {
  return std::any_of(users.begin(), users.end(), [&](const WireUse& use) {
    const WireUse& first = users.front();
    return use.kind != first.kind || use.number != first.number || use.rep != first.rep;
  });
}

PanelUses PanelUsesOf(const ProjectStore& store, const StatementChannels& statements) {
  return Using(store, statements).Uses();
}

}  // namespace ostrand
