// The scan: its interval, its buffer, and measuring in bursts.
#pragma once

#include "conditions/backup.h"
#include "controls/choice.h"
#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "model/store.h"

namespace ostrand {

// Edits the scan in place; Cancel puts back what was there.
class frmExecute final : public Screen {
 public:
  explicit frmExecute(const ScreenContext& context);

  NumericField ExecutionTime;
  Choice ExecTimeUnits;  // by their codes
  Label ScansPerSec;

  Choice ScanMode;  // without a buffer, with one
  CheckBox BurstMode;
  NumericField BurstScans;
  Choice FlagScan;  // "None", then the flags, so that the place is the number
  Label BurstTime;  // its caption tells the unit
  NumericField BufferScans;
  Label BufferBytes;  // flashes when they are more than there are
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
  float interval_ = 0;  // the last one that could be taken
};

}  // namespace ostrand
