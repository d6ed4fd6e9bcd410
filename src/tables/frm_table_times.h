// How many records a table needs for a period of time.
#pragma once

#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "tables/table_objects.h"

namespace ostrand {

// The table to calculate for. The tables must outlive the screen.
struct TableTimesRequest {
  TableObjects& tables;
  int table;  // from 1
};

// Done sets the records of the table. It is disabled at 0 records, and above the maximum of a
// table.
class frmTableTimes final : public Screen {
 public:
  frmTableTimes(const ScreenContext& context, const TableTimesRequest& request);

  NumericField Days;
  NumericField Hours;
  NumericField Minutes;
  NumericField Seconds;
  Label Buffer;      // records
  Label TotalBytes;  // of all tables on the same medium; flashes when too many
  Label Space;       // of that medium
  Label BurstNote;
  Button AllTables;

 protected:
  bool onDone() override;

 private:
  void load();
  void CalcTableRecs();
  void showRecords();
  void onTake();

  TableObjects& tables_;
  cOutputTable& table_;
  double records_ = 0;  // for the time entered; can be NaN or past the limit of a table
};

}  // namespace ostrand
