#include "verify/verify_before_save.h"

#include "model/format_version.h"
#include "platform/guarded.h"
#include "verify/ground_warning.h"
#include "verify/names_check.h"
#include "verify/pick_var_checks.h"
#include "verify/scan_rate_tables.h"
#include "verify/status_flags_check.h"
#include "verify/timing_checks.h"
#include "verify/zero_burst_check.h"

namespace ostrand {
namespace ORVUS_COMMON {

void VerifyBeforeSave(const CheckContext& context, bool& bad, bool& upgrade) {
  bad = false;
  upgrade = false;
  Guarded(context.forms, "ORVUS_COMMON.VerifyBeforeSave", [&] {
    bool duplicates = false;
    bool timing = false;
    bool slowSequence = false;
    i16 table = 0;
    CheckNames(context, duplicates, "");
    CheckMeasTime(context, timing);
    CheckSlowSequence(context, slowSequence);
    const bool intervalsFine = CheckTableIntervals(context, -1, table);
    bad = duplicates || timing || slowSequence || !intervalsFine;
    if (!bad) {
      VerifyPickVars(context, kWarnVariablesOnSave);
      CheckStatusFlags(context, bad, 1);
    }
    if (!bad) VerifyZeroBurst(context, bad);
    upgrade = NeedsUpgrade(context.store);
  });
}

}  // namespace ORVUS_COMMON

Findings CheckAll(const CheckContext& context) {
  using namespace ORVUS_COMMON;
  Findings findings;
  const ProjectStore& store = context.store;
  const auto collect = [&](std::string_view routine, auto&& find) {
    Guarded(context.forms, routine, [&] { Append(findings, find()); });
  };
  collect("ORVUS_COMMON.CheckNames", [&] { return DuplicateNames(store, ""); });
  collect("ORVUS_COMMON.CheckNames", [&] { return KeywordNames(store, ""); });
  if (context.Warns(kWarnMeasTime)) {
    collect("ORVUS_COMMON.CheckMeasTime", [&] { return MeasTimeFindings(store); });
  }
  collect("ORVUS_COMMON.CheckSlowSequence", [&] { return SlowSequenceFindings(store); });
  collect("ORVUS_COMMON.CheckTableIntervals", [&] { return TableIntervalFindings(store); });
  if (context.Warns(kWarnVariablesOnSave)) Append(findings, PickVarFindings(context));
  collect("ORVUS_COMMON.CheckStatusFlags", [&] { return StatusFlagFindings(store); });
  collect("ORVUS_COMMON.VerifyZeroBurst", [&] { return ZeroFlagFindings(store); });
  collect("ORVUS_COMMON.VerifyZeroBurst", [&] { return CalOnSiteFindings(store); });
  if (context.Warns(kWarnFloatingGround)) {
    collect("ORVUS_COMMON.FloatingGroundWarning", [&] { return FloatingGroundFindings(store); });
  }
  collect("ORVUS_COMMON.CheckScanRateTables", [&] { return ScanRateFindings(store); });
  return findings;
}

}  // namespace ostrand
