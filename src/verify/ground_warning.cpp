#include "verify/ground_warning.h"

#include <string>

#include "platform/box.h"
#include "platform/guarded.h"
#include "text/strings.h"
#include "verify/finding_boxes.h"
#include "verify/project_keys.h"

namespace ostrand {
namespace {

using namespace project_keys;

constexpr std::string_view kTitle = "FLOATING GROUND WARNING";
constexpr int kFirstOpenSensorRange =
    2;  // code of the 200 mV range; open sensors need it or a finer one

bool isDifferential(const AnalogBlock& block) { return SameText(block.MeasType, "Diff"); }

// Adds the blocks in use for which `faultyKey` returns a key: the one that leaves the block
// floating.
template <class Group, class FaultyKey>
void addBlocks(Findings& findings, const Group& blocks, const std::string& name,
               std::string_view section, FaultyKey faultyKey) {
  for (int b = 1; b <= blocks.BlockCount; ++b) {
    const std::string_view key = faultyKey(blocks[b]);
    if (blocks[b].Reps <= 0 || key.empty()) continue;
    findings.push_back({kTitle, name + NumberText(b) + ".", section, KeyOf(key, b)});
  }
}

// An open sensor test pulls the inputs to ground.
std::string_view openSensorKey(const AnalogBlock& block) {
  return block.OpenSensDetect == 0 ? kOpenSensDetect : std::string_view{};
}

}  // namespace

Findings FloatingBlocks(const ProjectStore& store, GroundGroup group) {
  Findings findings;
  switch (group) {
    case GroundGroup::kThermocouples:
      addBlocks(findings, store.TempBlock, "Thermocouple block ", kTempBlocksSection,
                [](const TempBlockData& block) {
                  return isDifferential(block) ? openSensorKey(block) : std::string_view{};
                });
      break;
    case GroundGroup::kTK40MThermocouples:  // multiplexer channels are differential
      if (store.Config.TK40MQty <= 0) break;
      addBlocks(findings, store.TK40MBlock, "TK40M Thermocouple block ", kTK40MBlocksSection,
                [](const TK40MBlockData& block) {
                  return block.TK40Volts == 0 ? openSensorKey(block) : std::string_view{};
                });
      break;
    case GroundGroup::kVoltages:
      addBlocks(findings, store.VoltBlock, "Voltage block ", kVoltBlocksSection,
                [](const VoltBlockData& block) {
                  if (!isDifferential(block)) return std::string_view{};
                  return block.RangeNo < kFirstOpenSensorRange ? kRangeNo : openSensorKey(block);
                });
      break;
  }
  return findings;
}

Findings FloatingGroundFindings(const ProjectStore& store) {
  Findings findings;
  for (const GroundGroup group :
       {GroundGroup::kThermocouples, GroundGroup::kTK40MThermocouples, GroundGroup::kVoltages}) {
    Append(findings, FloatingBlocks(store, group));
  }
  return findings;
}

namespace ORVUS_COMMON {

void FloatingGroundWarning(const CheckContext& context) {
  Guarded(context.forms, "ORVUS_COMMON.FloatingGroundWarning", [&] {
    if (!context.Warns(kWarnFloatingGround)) return;
    std::string groups;
    for (const GroundGroup group :
         {GroundGroup::kThermocouples, GroundGroup::kTK40MThermocouples, GroundGroup::kVoltages}) {
      const Findings findings = FloatingBlocks(context.store, group);
      if (!findings.empty()) groups += JoinLines({TextsOf(findings), "", ""});
    }
    if (groups.empty()) return;
    ShowWarning(
        context.forms, kTitle,
        JoinLines({"The following measurement blocks are NOT automatically",
                   "referenced to ground in the data logger:", "",
                   groups + "If any differential measurements are floating (not referenced",
                   "to ground) then the low terminal may need to be",
                   "connected to the adjacent ground terminal.", "", "SEE WIRING DIAGRAM"}));
  });
}

}  // namespace ORVUS_COMMON
}  // namespace ostrand
