#include "documents/wire_labels.h"

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

// "TBlk1(2)", or "BBlk1(2-4)" for several repetitions.
std::string repsText(std::string_view word, int n, int first, int last) {
  std::string text = std::string(word) + NumberText(n) + "(" + NumberText(first);
  if (last != first) text += "-" + NumberText(last);
  return text + ")";
}

template <class Block>
std::string aliasText(const Block& block, int rep) {
  if (!block.Alias.Holds(rep) || block.Alias[rep].AliasName.empty()) return "";
  return " " + block.Alias[rep].AliasName;
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

class Labelling {
 public:
  Labelling(const ProjectStore& store, const StatementChannels& statements)
      : store_(store), channels_(channelsOf(store, statements)) {}

  WireLabels Labels() {
    analogChannels();
    multiplexers();
    if (store_.Config.CanBusQty >= 1) labels_.Others[kCanGround] = "QB-CAN C";
    pulses();
    ports();
    excitation();
    return std::move(labels_);
  }

 private:
  [[nodiscard]] bool hasMultiplexers() const { return store_.Config.TK40MQty > 0; }

  // The number of a sensor in the whole project, its block and repetition.
  std::string nextSensor(std::string_view word, int n, int rep) {
    return FormatNumber(++sensors_, "00") + repsText(word, n, rep, rep);
  }

  void analogChannels() {
    for (int n = 1; n <= countOf(store_.TempBlock); ++n) {
      const TempBlockData& block = store_.TempBlock[n];
      sensors(block, {" TBlk", terminalsOf(block), false}, n, channels_.Temp[n]);
    }
    for (int n = 1; n <= countOf(store_.VoltBlock); ++n) {
      const VoltBlockData& block = store_.VoltBlock[n];
      sensors(block, {" VBlk", terminalsOf(block), false}, n, channels_.Volt[n]);
    }
    for (int n = 1; n <= countOf(store_.BridgeBlock); ++n) {
      const BridgeBlockData& block = store_.BridgeBlock[n];
      sensors(block, bridgeKindOf(block), n, channels_.Bridge[n]);
    }
  }

  // The sensors of a block that starts at `channel` of its kind of channel; nothing below 1.
  void sensors(const AnalogBlock& block, const SensorKind& kind, int n, int channel) {
    int terminal = isSingleEnded(block) ? channel : 2 * channel - 1;
    for (int rep = 1; rep <= block.Reps; ++rep) {
      const std::string sensor = nextSensor(kind.word, n, rep);
      for (int t = 0; t < kind.terminals; ++t, ++terminal) {
        if (channel < 1 || terminal > kPanelTerminals) continue;
        // The input comes before the alias, so that it is not cut.
        const std::string_view input = !kind.twoInputs          ? ""
                                       : t < kind.terminals / 2 ? " In"
                                                                : " Out";
        labels_.Analog[terminal] = labelOf(sensor + std::string(input) + aliasText(block, rep));
      }
    }
  }

  // The first multiplexer is measured on the last differential channel, each further one on the
  // next lower channel; all share the other wires.
  void multiplexers() {
    if (!hasMultiplexers()) return;
    const int count = std::min(int{store_.Config.TK40MQty}, kPanelTerminals / 2);
    for (int m = 1; m <= count; ++m) {
      const int low = kPanelTerminals - 2 * (m - 1);
      labels_.Analog[low - 1] = " TK40M " + NumberText(m) + " High";
      labels_.Analog[low] = " TK40M " + NumberText(m) + " Low";
    }
    labels_.Others[kMuxAnalogGround] = " TK40M AG";
    labels_.Others[kC1 + 6] = " TK40M Clock Port";
    labels_.Others[kC1 + 7] = " TK40M Reset Port";
    labels_.Others[kVX1 + 3] = " TK40M Excitation";
    labels_.Others[kMuxPower] = " TK40M 12V";
    labels_.Others[kMuxPowerGround] = " TK40M Gnd";
  }

  // The statement of a block names the next channel, whatever the repetitions of the block before;
  // its repetitions continue from it.
  void pulses() {
    int first = 0;
    for (const PulseBlockGroup& group : store_.PulseBlock) {
      for (int n = 1; n <= countOf(group); ++n) {
        const PulseBlockData& block = group[n];
        const auto kind =
            std::find_if(kPulseKinds.begin(), kPulseKinds.end(),
                         [&](const PulseKind& k) { return SameText(block.Meas, k.meas); });
        if (block.Reps < 1 || kind == kPulseKinds.end()) continue;
        ++first;
        for (int rep = 1; rep <= block.Reps; ++rep) {
          const std::string sensor = nextSensor(kind->word, n, rep);
          const int channel = first + rep - 1;
          if (channel > kPanelPulses) continue;
          labels_.Others[kP1 + channel - 1] = labelOf(sensor + aliasText(block, rep));
        }
      }
    }
  }

  // A byte reads or writes all ports at once. The multiplexers use two of them.
  void ports() {
    const int last = hasMultiplexers() ? 6 : kPanelPorts;
    for (const PortSlot& slot : store_.Ports.Slot) {
      const bool byteInUse =
          (slot.ByteMode != 0 || slot.ReadMode != 0) && slot.Ports[kPorts].Include != 0;
      for (int p = 1; p <= last; ++p) {
        std::string& label = labels_.Others[kC1 + p - 1];
        if (byteInUse) label = "  I/O Port " + NumberText(p);
        if (slot.ByteMode == 0 && slot.Ports[p].Include != 0) label = "  Port Set " + NumberText(p);
      }
    }
  }

  // Terminals in use are skipped: the multiplexers' excitation, and an analog output that excites a
  // bridge.
  void excitation() {
    const auto excite = [this](int wire, const std::string& what) {
      std::string& label = labels_.Others[wire];
      if (label.empty()) label = labelOf("  Excite " + what);
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
        excite((cao ? kCAO1 : kVX1) + channel - 1,
               repsText(word, n, rep, std::min(rep + share - 1, int{block.Reps})));
      }
    }
    for (const auto& slot : store_.ExciteOut.Slot) {
      for (int a = 1; a <= kPanelAnalogOutputs; ++a) {
        if (slot[a].Include != 0) excite(kCAO1 + a - 1, NumberText(a));
      }
    }
  }

  const ProjectStore& store_;
  const StatementChannels channels_;
  WireLabels labels_;
  int sensors_ = 0;  // numbered so far
};

}  // namespace

WireLabels LabelsOf(const ProjectStore& store, const StatementChannels& statements) {
  return Labelling(store, statements).Labels();
}

}  // namespace ostrand
