#include "model/output_table.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "model/intervals.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

constexpr i32 kTimestampBytes = 12;

i32 limited(double value) {
  if (std::isnan(value)) return 0;  // sizes of nothing times infinity
  return static_cast<i32>(
      std::clamp<double>(value, std::numeric_limits<i32>::min(), std::numeric_limits<i32>::max()));
}

// Sums fields and bytes of the sources of one table.
class RecordSum {
 public:
  explicit RecordSum(int table) : table_(table) {}

  void Add(const OutputSet& output, std::string_view resolution, int reps = 1) {
    const HistoSet& histo = output.Histo[table_];
    const i32 bytes = ORVUS_COMMON::BytesPerValue(resolution);
    for (int code = 0; code < kOutputCodes; ++code) {
      const std::int64_t fields =
          std::int64_t{reps} * ORVUS_COMMON::OutputFieldCount(output.OutputSelect[table_][code],
                                                              code, histo.HistogramCode,
                                                              histo.RainHistoCode, histo.LevelCode);
      fields_ += fields;
      bytes_ += fields * bytes;
    }
  }

  void Add(const MeasBlock& block) { Add(block.Output, block.DataResolution, block.Reps); }

  template <class Blocks>
  void AddAll(const Blocks& blocks) {
    for (const auto& block : blocks) Add(block);
  }

  [[nodiscard]] i32 Fields() const { return limited(static_cast<double>(fields_)); }
  [[nodiscard]] i32 Bytes() const { return limited(static_cast<double>(bytes_)); }

 private:
  int table_;
  std::int64_t fields_ = 0;
  std::int64_t bytes_ = 0;
};

}  // namespace

i32 cOutputTable::RecordBytes() const {
  return limited(static_cast<double>(FieldBytes) + (StoreEveryTS != 0 ? kTimestampBytes : 0));
}

namespace ORVUS_COMMON {

i32 OutputFieldCount(i16 selected, int code, std::string_view histogramCode,
                     std::string_view rainHistoCode, std::string_view levelCode) {
  if (selected == 0 || code < kSample || code > kLevelCrossing) return 0;
  if (code < kHistogram) return 1;
  if (code == kHistogram) return limited(std::trunc(Val(histogramCode)));
  const auto parts = Split(code == kRainFlow ? rainHistoCode : levelCode, ',');
  return parts.size() < 3 ? 0 : limited(std::trunc(Val(parts[0]) * Val(parts[1])));
}

i32 BytesPerValue(std::string_view resolution) {
  if (resolution == "FP2") return 2;
  return resolution == "IEEE4" ? 4 : 0;
}

RecordSize SizeOfRecord(const ProjectStore& store, int t) {
  const Configuration& config = store.Config;
  RecordSum size(t);
  if (config.MonitorPower[1] != 0) size.Add(store.PowerOut.Output, store.PowerOut.DataResolution);
  if (config.TK40MQty > 0 && config.TcConfigOpts[1] != 0) {
    size.Add(store.TK40MRef.Output, store.TK40MRef.DataResolution);
  }
  // All rows, in use or not: those not in use have no repetitions.
  size.AddAll(store.TempBlock.Blocks);
  size.AddAll(store.VoltBlock.Blocks);
  size.AddAll(store.BridgeBlock.Blocks);
  for (const PulseBlockGroup& group : store.PulseBlock) size.AddAll(group.Blocks);
  size.AddAll(store.TK40MBlock.Blocks);
  for (const PortSlot& slot : store.Ports.Slot) {
    if (slot.Ports[kPorts].Include != 0 && slot.ReadMode != 0) {
      size.Add(slot.Output, slot.DataResolution);
    }
  }
  if (config.CanBusQty >= 1 && store.Can.Module[1].CanBusEnabled != 0) {
    for (int i = 1; i <= store.Can.CanCount; ++i) {  // the number of values doesn't count here
      size.Add(store.Can.Item[i].Output, store.Can.Item[i].DataResolution);
    }
  }
  for (int f = 1; f <= store.CalcFields.CalcFieldCount; ++f) {
    size.Add(store.CalcFields.Field[f].Output, store.CalcFields.Field[f].DataResolution);
  }
  return {size.Fields(), size.Bytes()};
}

i32 BytesPerRecord(ProjectStore& store, int t, cOutputTable* table) {
  const RecordSize size = SizeOfRecord(store, t);
  if (table != nullptr) {
    table->NumFields = size.fields;
    table->FieldBytes = size.bytes;
  } else {
    store.Tables[t].NumFields = size.fields;
    store.Tables[t].FieldBytes = static_cast<float>(size.bytes);
  }
  return size.bytes;
}

double TableIntervalMicros(const ProjectStore& store, const cOutputTable& table) {
  if (table.SyncToScan != 0) return ScanIntervalMicros(store);
  const double interval = table.Interval == 0 ? 1 : table.Interval;
  return interval * TableUnitMicros(table.IntervalUnits);
}

}  // namespace ORVUS_COMMON
}  // namespace ostrand
