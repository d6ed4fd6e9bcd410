#include "logger/frm_execute.h"

#include <array>

#include "conditions/flag_conflicts.h"
#include "conditions/flag_usage.h"
#include "logger/faces.h"
#include "model/burst_buffer.h"
#include "model/intervals.h"
#include "platform/box.h"
#include "text/letters.h"
#include "text/mask.h"
#include "text/number.h"
#include "verify/check_context.h"
#include "verify/timing_checks.h"

namespace ostrand {
namespace {

constexpr double kMicrosPerSecond = 1e6;
constexpr double kMaxMinutes = 30;
constexpr double kRamBytes = 1e6;  // of the medium for bursts
constexpr i16 kScanScreen = 2;     // caller of the check of table intervals

enum Unit : int { kMicroseconds, kMilliseconds, kSeconds, kMinutes };

// Format of scans per second for each unit.
constexpr std::array<std::string_view, 4> kRateMasks = {"#,##0.0", "#,##0.000", "#,##0.00000",
                                                        "#,##0.00000"};

i32 wholeNumber(const NumericField& field) { return static_cast<i32>(field.Value()); }

}  // namespace

frmExecute::frmExecute(const ScreenContext& context)
    : Screen(context, "frmExecute"),
      ExecutionTime(*this, "ExecutionTime", NumberType::kSingle),
      ExecTimeUnits(*this, "ExecTimeUnits"),
      ScansPerSec(*this, "ScansPerSec"),
      ScanMode(*this, "ScanMode"),
      BurstMode(*this, "BurstMode"),
      BurstScans(*this, "BurstScans", NumberType::kLong),
      FlagScan(*this, "FlagScan"),
      BurstTime(*this, "BurstTime"),
      BufferScans(*this, "BufferScans", NumberType::kLong),
      BufferBytes(*this, "BufferBytes"),
      AvailableBytes(*this, "AvailableBytes"),
      before_(context.store.Scan) {
  Caption = "SCAN INTERVAL";
  ExecTimeUnits.SetItems({"uSecs", "mSecs", "Secs", "Mins"});
  ScanMode.SetItems({"No Buffer", "Buffer"});
  FlagScan.SetItems({"None", "1", "2", "3", "4", "5", "6", "7", "8"});
  BufferBytes.ToolTip =
      "The total number of bytes required for the buffer."
      " Flashing indicates media size has been exceeded.";
  AvailableBytes.Text(FormatNumber(kRamBytes, "#,##0"));
  BurstScans.Limits(0, BurstScans.Max());
  BufferScans.Limits(0, BufferScans.Max());
  bindInterval();
  bindScans();
  Describe(*this, kExecuteFaces);
  load();
}

void frmExecute::load() {
  const Loading loading(*this);
  const ScanSetup& scan = store().Scan;
  interval_ = scan.ExecutionTime;
  ExecTimeUnits.PickAt(scan.ExecTimeUnits);
  ScanMode.PickAt(scan.ScanMode != kFalse ? 1 : 0);
  BurstMode.Check(scan.BurstMode != kFalse);
  BurstScans.Value(scan.BurstScans);
  FlagScan.PickAt(scan.FlagScan);
  BufferScans.Value(scan.BufferScans);
  showInterval();
  refresh();
}

void frmExecute::bindInterval() {
  ExecutionTime.OnChange = [this] {
    const std::string text = ExecutionTime.Text();
    const bool leadingZero = text.size() > 1 && text[0] == '0' && IsDigit(text[1]);
    if (leadingZero) ExecutionTime.Correct(text.substr(1));
  };
  ExecutionTime.OnTake = [this] { takeInterval(); };
  ExecTimeUnits.OnPick = [this] {
    if (!IsLoading()) takeUnit();
  };
}

void frmExecute::bindScans() {
  ScanMode.OnPick = [this] {
    if (IsLoading()) return;
    store().Scan.ScanMode = ScanMode.Index() == 1 ? kTrue : kFalse;
    refresh();
  };
  BurstMode.OnClick = [this] {
    if (!IsLoading()) takeBurst();
  };
  BurstScans.OnTake = [this] {
    store().Scan.BurstScans = wholeNumber(BurstScans);
    refresh();
  };
  FlagScan.OnPick = [this] {
    if (IsLoading()) return;
    store().Scan.FlagScan = static_cast<i16>(FlagScan.Index());
    warnOfFlag();
  };
  BufferScans.OnTake = [this] {
    store().Scan.BufferScans = wholeNumber(BufferScans);
    refresh();
  };
}

void frmExecute::takeInterval() {
  const float taken = ToSingle(ExecutionTime.Text()).value_or(0);
  if (taken == 0) {
    ShowWarning(Forms(), Caption, "Can't do Zero!");
  } else {
    interval_ = taken;
    store().Scan.ExecutionTime = taken;
  }
  showInterval();
  refresh();
}

void frmExecute::takeUnit() {
  store().Scan.ExecTimeUnits = static_cast<i16>(ExecTimeUnits.Index());
  if (ExecTimeUnits.Index() == kMinutes && interval_ > kMaxMinutes) {
    interval_ = kMaxMinutes;
    store().Scan.ExecutionTime = interval_;
  }
  showInterval();
  refresh();
}

void frmExecute::takeBurst() {
  store().Scan.BurstMode = BurstMode.Checked() ? kTrue : kFalse;
  if (BurstMode.Checked()) warnOfFlag();
  refresh();
}

// The burst and the flags screen would both set the flag, and perhaps others too.
void frmExecute::warnOfFlag() {
  const int flagNumber = store().Scan.FlagScan;
  if (flagNumber < 1 || flagNumber > kFlags) return;
  if (store().Flags[flagNumber].FlagInclude != kFalse) ShowBurstFlagNotice(Forms(), flagNumber);
  CheckFlagUsage(Forms(), store(), flagNumber, kScanBurstUser);
}

void frmExecute::showInterval() {
  const bool inMinutes = store().Scan.ExecTimeUnits == kMinutes;
  ExecutionTime.Limits(0, inMinutes ? kMaxMinutes : 3.402e38);
  ExecutionTime.Value(DecimalValue(interval_));
}

void frmExecute::refresh() {
  const ScanSetup& scan = store().Scan;
  const bool burst = scan.BurstMode != kFalse;
  const double seconds = ORVUS_COMMON::ScanIntervalMicros(store()) / kMicrosPerSecond;
  ScansPerSec.Text({});
  if (seconds > 0 && ExecTimeUnits.Index() >= 0) {
    ScansPerSec.Text(
        FormatNumber(1 / seconds, kRateMasks[static_cast<std::size_t>(ExecTimeUnits.Index())]));
  }
  const bool inMinutes = scan.ExecTimeUnits == kMinutes;
  BurstTime.Caption = inMinutes ? "Burst Minutes" : "Burst Seconds";
  BurstTime.Text(FormatNumber(scan.BurstScans * (inMinutes ? seconds / 60 : seconds), "#,##0.0##"));
  BurstScans.Enabled = FlagScan.Enabled = BurstTime.Enabled = burst;
  BufferScans.Enabled = burst || scan.ScanMode != kFalse;
  showBuffer();
}

void frmExecute::showBuffer() {
  const double bytes = PROGGEN::BufferBytes(store(), store().Scan.BufferScans);
  BufferBytes.Text(FormatNumber(bytes, "#,##0"));
  BufferBytes.Flashes = BufferScans.Enabled && bytes > kRamBytes;
}

bool frmExecute::onDone() {
  ScanSetup& scan = store().Scan;
  scan.ScanBuffer = scan.BurstMode != kFalse ? "1" : "0";
  const bool sameInterval = scan.ExecutionTime == before_.Before().ExecutionTime &&
                            scan.ExecTimeUnits == before_.Before().ExecTimeUnits;
  if (!sameInterval) {
    const CalcVarRefs noRefs;
    const CheckContext checks{store(), Forms(), context().WarningMessageMask, noRefs};
    i16 table = 0;
    ORVUS_COMMON::CheckTableIntervals(checks, kScanScreen, table);
  }
  before_.Keep();
  return true;
}

bool frmExecute::onCancel() {
  before_.PutBack();
  return true;
}

}  // namespace ostrand
