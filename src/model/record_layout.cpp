#include "model/record_layout.h"

#include <algorithm>

#include "model/names.h"
#include "model/output_table.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

class Sources {
 public:
  void AddSingle(OutputFamily family, std::string_view name, const ReferenceOutput& value,
                 std::string_view units) {
    OutputSource& source = add(family, value.DataResolution, value.Output);
    source.name = name;
    source.units = units;
  }

  template <class Block>
  void AddBlock(OutputFamily family, int n, std::string name, const Block& block) {
    OutputSource& source = add(family, block.DataResolution, block.Output);
    source.n = n;
    source.name = std::move(name);
    source.reps = source.histoReps = source.levelReps = block.Reps;
    source.numbered = true;
    source.aliases = block.Alias.Made();
    source.units = block.Units;
  }

  template <class Group>
  void AddBlocks(OutputFamily family, OrvusDataObjTypes kind, const Group& group) {
    for (int b = 1; b <= group.BlockCount; ++b) {
      if (group[b].Reps < 1) continue;
      AddBlock(family, b, SourceName(kind, b), group[b]);
      list_.back().kind = kind;
    }
  }

  void AddMuxReference(const ProjectStore& store) {
    AddSingle(OutputFamily::kTK40MRef, kTK40Ref, store.TK40MRef, "Deg_C");
    list_.back().reps = store.Config.TK40MQty;
    list_.back().levelReps = store.TK40MBlock[1].Reps;
  }

  void AddCanItem(int i, const CanItemData& item) {
    if (item.Enabled == 0 || item.Reps < 1) return;
    AddBlock(OutputFamily::kCan, i, item.Name, item);
    list_.back().levelReps = 1;  // an item has one level crossing, of its first value
  }

  void AddPort(int n, const PortSlot& slot) {
    const bool bytePort = slot.Ports[kPorts].Include != 0;
    if (!bytePort && slot.ReadMode == 0) return;
    OutputSource& source = add(OutputFamily::kPort, slot.DataResolution, slot.Output);
    source.n = n;
    source.name = slot.ReadMode != 0 ? kReadPort : kWritPort;
    source.lastCode = bytePort ? kHistogram : kStdDev;
  }

  void AddCalcField(int f, const CalcFieldData& field) {
    OutputSource& source = add(OutputFamily::kCalcField, field.DataResolution, field.Output);
    source.n = f;
    source.name = field.CalcField[1];
    source.units = field.CalcField[3];
  }

  std::vector<OutputSource> Take() { return std::move(list_); }

 private:
  OutputSource& add(OutputFamily family, std::string_view resolution, const OutputSet& output) {
    list_.push_back({.family = family, .resolution = resolution, .output = &output});
    return list_.back();
  }

  std::vector<OutputSource> list_;
};

bool anySelected(const OutputSet* output, int table) {
  if (output == nullptr) return false;
  const auto& codes = output->OutputSelect[table];
  return std::any_of(codes.begin(), codes.end(), [](i16 selected) { return selected != 0; });
}

}  // namespace

std::vector<OutputSource> OutputSourcesOf(const ProjectStore& store) {
  const Configuration& config = store.Config;
  Sources sources;
  if (config.MonitorPower[kMonitorBattery] != 0) {
    sources.AddSingle(OutputFamily::kBattery, kBattVolt, store.PowerOut, "Volts");
  }
  if (config.MonitorPower[kMonitorPanel] != 0) {
    sources.AddSingle(OutputFamily::kPanel, kTRef, store.TcRef, "Deg_C");
  }
  if (config.TK40MQty > 0 && store.TK40MBlock.BlockCount > 0 && config.TcConfigOpts[1] != 0) {
    sources.AddMuxReference(store);
  }
  sources.AddBlocks(OutputFamily::kTemp, ORVUS_DOBJ_BLK_TEMP, store.TempBlock);
  sources.AddBlocks(OutputFamily::kVolt, ORVUS_DOBJ_BLK_VOLT, store.VoltBlock);
  sources.AddBlocks(OutputFamily::kBridge, ORVUS_DOBJ_BLK_BRIDGE, store.BridgeBlock);
  for (const PulseBlockGroup& slot : store.PulseBlock) {
    sources.AddBlocks(OutputFamily::kPulse, ORVUS_DOBJ_BLK_PULSE, slot);
  }
  if (config.TK40MQty > 0) {
    sources.AddBlocks(OutputFamily::kTK40M, ORVUS_DOBJ_BLK_TK40M, store.TK40MBlock);
  }
  if (config.CanBusQty > 0 && store.Can.Module[1].CanBusEnabled != 0) {
    for (int i = 1; i <= store.Can.CanCount; ++i) sources.AddCanItem(i, store.Can.Item[i]);
  }
  for (int slot = 0; slot <= 1; ++slot) sources.AddPort(slot + 1, store.Ports.Slot[slot]);
  for (int f = 1; f <= store.CalcFields.CalcFieldCount; ++f) {
    sources.AddCalcField(f, store.CalcFields.Field[f]);
  }
  return sources.Take();
}

i16 FirstTableUsed(const ProjectStore& store, const OutputSet* output) {
  i16 firstInUse = 0;
  for (i16 table = 1; table <= kTables; ++table) {
    if (store.Tables[table].TableOn == kFalse) continue;
    if (anySelected(output, table)) return table;
    if (firstInUse == 0) firstInUse = table;
  }
  return std::max<i16>(firstInUse, 1);
}

void RenameLevelArrays(OutputSet& output, std::string_view before, std::string_view after) {
  for (int table = 1; table <= kTables; ++table) {
    std::string& code = output.Histo[table].LevelCode;
    for (const std::string_view array : {"LC1()", "LC2()"}) {
      const std::string tail = NumberText(table) + std::string(array);
      const std::string old = "," + std::string(before) + tail;
      const std::size_t at = code.find(old);
      if (at != std::string::npos) {
        code.replace(at, old.size(), "," + std::string(after) + tail);
      }
    }
  }
}

int OutputValues(const OutputSource& source, int code) {
  if (code < kHistogram) return source.reps;
  return code == kLevelCrossing ? source.levelReps : source.histoReps;
}

std::string LevelArguments(const HistoSet& histo) {
  if (histo.NumDims == 1) return histo.LevelCode;
  const std::string_view code = histo.LevelCode;
  const std::string_view rest = After(code, ",");
  const std::size_t third = rest.find(',');
  std::string arguments(Before(code, ","));
  arguments += ",1";
  if (third != std::string_view::npos) arguments += rest.substr(third);
  return arguments;
}

i32 OutputColumns(const OutputSet& output, int t, int code) {
  const HistoSet& histo = output.Histo[t];
  return std::max(0, ORVUS_COMMON::OutputFieldCount(1, code, histo.HistogramCode,
                                                    histo.RainHistoCode, LevelArguments(histo)));
}

}  // namespace ostrand
