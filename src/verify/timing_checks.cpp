#include "verify/timing_checks.h"

#include <cmath>
#include <limits>
#include <string>

#include "model/intervals.h"
#include "platform/box.h"
#include "platform/guarded.h"
#include "text/mask.h"
#include "verify/project_keys.h"

namespace ostrand {
namespace {

using platform::Answer;
using platform::Buttons;

constexpr std::string_view kMeasTimeTitle = "INCORRECT PROGRAM TIMING";
constexpr std::string_view kSlowSequenceTitle = "SLOW SEQUENCE NOT POSSIBLE";
constexpr std::string_view kIntervalTitle = "TIMING PROBLEM";
constexpr double kSlowSequenceLimit = 30e6;  // microseconds

constexpr i16 kOnSave = -1;

struct IntervalBox {
  std::string_view title;
  std::string_view lastLine;
};
constexpr std::string_view kMustCheck = "*** MUST CHECK SCAN INTERVALS FOR OUTPUT TABLES ***";

constexpr IntervalBox boxOf(i16 mode) {
  if (mode == kOnSave) return {kIntervalTitle, "THIS MUST BE CORRECTED BEFORE EXITING"};
  return {mode == 2 ? "TIMING PROBLEM 2" : "TIMING PROBLEM 1", kMustCheck};
}

// The nearest whole number of a value that differs from it only by calculation noise: 1.005
// milliseconds are 1005 microseconds.
double withoutNoise(double value) {
  const double whole = std::round(value);
  const double noise = 4 * std::numeric_limits<double>::epsilon() * std::abs(value);
  return std::abs(value - whole) <= noise ? whole : value;
}

double scanMicros(const ProjectStore& store) {
  return withoutNoise(ORVUS_COMMON::ScanIntervalMicros(store));
}

std::string multipleText(double micros) {
  return MicrosText(micros) + "   (" + FormatNumber(micros / 1000, "#,##0.000") + " mSecs)";
}

bool isWhole(double value) { return value == std::trunc(value); }

// Whole microseconds are divided exactly.
bool isMultiple(double interval, double scan) {
  if (isWhole(scan)) return std::fmod(interval, scan) == 0;
  return isWhole(withoutNoise(interval / scan));
}

// Whether a table's own interval is not a multiple of the scan period.
bool isUneven(const ProjectStore& store, int t) {
  const OutputTable& table = store.Tables[t];
  const double scan = scanMicros(store);
  if (table.TableOn == 0 || table.SyncTable != 0 || scan == 0) return false;
  return !isMultiple(ORVUS_COMMON::TableIntervalMicros(store, t), scan);
}

std::string intervalText(const ProjectStore& store, int t) {
  const double scan = scanMicros(store);
  const std::string first = "TABLE " + NumberText(t) + " interval (" +
                            MicrosText(ORVUS_COMMON::TableIntervalMicros(store, t)) +
                            ") is not evenly divisible by the program scan";
  const std::string second =
      "rate (" + MicrosText(scan) + "). New records will be added to the table";
  return JoinLines({first, second,
                    "only when the table interval is an exact multiple of the scan rate.", "",
                    "WORKABLE TABLE INTERVALS ARE:", multipleText(scan), multipleText(2 * scan),
                    multipleText(3 * scan), "etc."});
}

}  // namespace

Findings MeasTimeFindings(const ProjectStore& store) {
  const double scan = scanMicros(store);
  if (scan >= store.EstMeasTime) return {};
  const std::string text =
      JoinLines({"Estimated measurement time is greater than the execution interval.", "",
                 "Execution interval time  = " + MicrosText(scan),
                 "Estimated total measurement time = " + MicrosText(store.EstMeasTime)});
  return {{kMeasTimeTitle, text, project_keys::kScanSetupSection,
           std::string(project_keys::kExecutionTime), true}};
}

Findings SlowSequenceFindings(const ProjectStore& store) {
  if (scanMicros(store) <= kSlowSequenceLimit) return {};
  if (store.Config.MonitorPower[kMonitorBatterySaver] == 0) return {};
  return {{kSlowSequenceTitle,
           "Because the scan interval is greater than 30 seconds, Battery Saver will be disabled.",
           project_keys::kConfigurationSection,
           project_keys::KeyOf(project_keys::kMonitorPower, kMonitorBatterySaver), true}};
}

Findings TableIntervalFindings(const ProjectStore& store) {
  Findings findings;
  for (int t = 1; t <= kTables; ++t) {
    if (!isUneven(store, t)) continue;
    findings.push_back({kIntervalTitle, intervalText(store, t), project_keys::kTableSetupSection,
                        project_keys::KeyOf(project_keys::kOutInt, t), true});
  }
  return findings;
}

bool StoresEveryScan(const ProjectStore& store, int t) {
  return store.Tables[t].SyncTable != 0 ||
         withoutNoise(ORVUS_COMMON::TableIntervalMicros(store, t)) == scanMicros(store);
}

namespace ORVUS_COMMON {

void CheckMeasTime(const CheckContext& context, bool& bad) {
  bad = false;
  Guarded(context.forms, "ORVUS_COMMON.CheckMeasTime", [&] {
    if (!context.Warns(kWarnMeasTime)) return;
    const Findings findings = MeasTimeFindings(context.store);
    if (findings.empty()) return;
    context.forms.Beep();
    const std::string text =
        JoinLines({findings.front().text, "", "THIS SHOULD BE CORRECTED BEFORE SAVING.", "",
                   "Do you wish to continue?"});
    bad = Ask(context.forms, kMeasTimeTitle, text, Buttons::kYesNo, Answer::kNo) != Answer::kYes;
  });
}

void CheckSlowSequence(const CheckContext& context, bool& bad) {
  bad = false;
  Guarded(context.forms, "ORVUS_COMMON.CheckSlowSequence", [&] {
    const Findings findings = SlowSequenceFindings(context.store);
    if (findings.empty()) return;
    context.forms.Beep();
    bad = Ask(context.forms, kSlowSequenceTitle, findings.front().text, Buttons::kOkCancel) !=
          Answer::kOk;
    if (!bad) context.store.Config.MonitorPower[kMonitorBatterySaver] = kFalse;
  });
}

bool CheckTableIntervals(const CheckContext& context, i16 mode, i16& table) {
  bool fine = true;
  table = 0;
  Guarded(context.forms, "ORVUS_COMMON.CheckTableIntervals", [&] {
    if (mode != kOnSave && !context.Warns(kWarnTableIntervals)) return;
    int first = 1;
    while (first <= kTables && !isUneven(context.store, first)) ++first;
    if (first > kTables) return;
    table = static_cast<i16>(first);
    fine = mode != kOnSave;
    const IntervalBox box = boxOf(mode);
    context.forms.Beep();
    ShowWarning(context.forms, box.title,
                JoinLines({intervalText(context.store, first), "", box.lastLine}));
  });
  return fine;
}

}  // namespace ORVUS_COMMON
}  // namespace ostrand
