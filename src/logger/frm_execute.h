// The scan: its interval, its buffer, and measuring in bursts.
#pragma once

#include "conditions/backup.h"
#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "model/store.h"

namespace ostrand {

// Edits the scan in place; Cancel restores it.
class frmExecute final : public Screen {
 public:
  explicit frmExecute(const ScreenContext& context);

  NumericField ExecutionTime;
  Choice ExecTimeUnits;  // in the order of their codes
  Label ScansPerSec;

  Choice ScanMode;  // without a buffer, with one
  CheckBox BurstMode;
  NumericField BurstScans;
  Choice FlagScan;  // "None", then the flags, so that the index is the flag number
  Label BurstTime;  // its caption shows the unit
  NumericField BufferScans;
  Label BufferBytes;  // flashes when more than the logger has
  Label AvailableBytes;

 protected:
  bool onDone() override;
  bool onCancel() override;

 private:
  void load();
  void bindInterval();
  void bindScans();

  void takeInterval();
  void takeUnit();
  void takeBurst();
  void warnOfFlag();

  void refresh();
  void showInterval();
  void showBuffer();

  Backup<ScanSetup> before_;
  float interval_ = 0;  // the last valid interval
};

}  // namespace ostrand
