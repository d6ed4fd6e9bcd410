#include "verify/zero_burst_check.h"

#include <string>

#include "platform/box.h"
#include "platform/guarded.h"
#include "verify/finding_boxes.h"
#include "verify/project_keys.h"

namespace ostrand {
namespace {

using namespace project_keys;
using platform::Answer;
using platform::Buttons;

constexpr std::string_view kTitle = "ZERO SUBROUTINE WARNING";

using Switch = i16 MeasBlock::*;

struct ZeroFamily {
  std::string_view name;
  std::string_view section;
};

// A line for each block with the switch set, of all seven of a family. `lineEnd` returns the text
// after the block's number.
template <class LineEnd>
Findings setBlocks(const ProjectStore& store, Switch setting, std::string_view key,
                   LineEnd lineEnd) {
  Findings findings;
  if (store.Scan.BurstMode == 0) return findings;
  const auto look = [&](const ZeroFamily& family, const MeasBlock& block, int b) {
    if (block.*setting == 0) return;
    findings.push_back({kTitle, std::string(family.name) + NumberText(b) + lineEnd(block),
                        family.section, KeyOf(key, b), true});
  };
  for (int b = 1; b <= kBlocks; ++b)
    look({"Voltage Block ", kVoltBlocksSection}, store.VoltBlock[b], b);
  for (int b = 1; b <= kBlocks; ++b) {
    look({"Bridge   Block ", kBridgeBlocksSection}, store.BridgeBlock[b], b);
  }
  for (int b = 1; b <= kBlocks && store.Config.TK40MQty > 0; ++b) {
    const TK40MBlockData& block = store.TK40MBlock[b];
    if (block.TK40Volts == 1) look({"TK40M Block ", kTK40MBlocksSection}, block, b);
  }
  return findings;
}

void clearAll(ProjectStore& store, Switch setting) {
  for (int b = 1; b <= kBlocks; ++b) {
    store.VoltBlock[b].*setting = 0;
    store.BridgeBlock[b].*setting = 0;
    store.TK40MBlock[b].*setting = 0;
  }
}

}  // namespace

Findings ZeroFlagFindings(const ProjectStore& store) {
  return setBlocks(store, &MeasBlock::ZeroFlag, kZeroFlag,
                   [](const MeasBlock& block) { return "  Flag " + NumberText(block.ZeroFlag); });
}

Findings CalOnSiteFindings(const ProjectStore& store) {
  return setBlocks(store, &MeasBlock::CalOnSite, kCalOnSite,
                   [](const MeasBlock&) { return std::string(); });
}

namespace ORVUS_COMMON {
namespace {

void askToDropZeroFlags(const CheckContext& context, bool& bad) {
  const Findings findings = ZeroFlagFindings(context.store);
  if (findings.empty()) return;
  const std::string text =
      JoinLines({"The Program Generator will not allow zero subroutines in conjunction with",
                 "burst mode, as this operation may not achieve the results desired.", "",
                 "The following blocks have been configured with zero flags:", "",
                 TextsOf(findings), "Proceeding will disable all flags now.  Continue?"});
  bad = Ask(context.forms, kTitle, text, Buttons::kOkCancel) != Answer::kOk;
  if (!bad) clearAll(context.store, &MeasBlock::ZeroFlag);
}

void askToDropCalibrations(const CheckContext& context, bool& bad) {
  const Findings findings = CalOnSiteFindings(context.store);
  if (findings.empty()) return;
  const std::string text =
      JoinLines({"Cal-On-Site previously selected may not give the results desired",
                 "with burst mode. These are selected:", "", TextsOf(findings),
                 "WOULD YOU LIKE THEM DISABLED NOW?"});
  const Answer answer = Ask(context.forms, kTitle, text, Buttons::kYesNoCancel);
  if (answer == Answer::kYes) clearAll(context.store, &MeasBlock::CalOnSite);
  bad = answer != Answer::kYes && answer != Answer::kNo;
}

}  // namespace

void VerifyZeroBurst(const CheckContext& context, bool& bad) {
  bad = false;
  Guarded(context.forms, "ORVUS_COMMON.VerifyZeroBurst", [&] {
    askToDropZeroFlags(context, bad);
    if (!bad) askToDropCalibrations(context, bad);
  });
}

}  // namespace ORVUS_COMMON
}  // namespace ostrand
