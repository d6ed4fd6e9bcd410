// How many records a table needs for a time.
#pragma once

#include "controls/numeric_field.h"
#include "controls/screen.h"
#include "tables/table_objects.h"

namespace ostrand {

// Which of the tables; they outlive the screen.
struct TableTimesRequest {
  TableObjects& tables;
  int table;  // from 1
};

// Done gives the records to the table. It is disabled while there would be none, or more than a
// table can have.
class frmTableTimes final : public Screen {
 public:
  frmTableTimes(const ScreenContext& context, const TableTimesRequest& request);

  NumericField Days;
  NumericField Hours;
  NumericField Minutes;
  NumericField Seconds;
  Label Buffer;      // records
  Label TotalBytes;  // of all tables in the same place; flashes when they are too many
  Label Space;       // of that place
  Label BurstNote;
  Button AllTables;

 protected:
  bool onDone() override;

 private:
  void load();
  void CalcTableRecs();
  void onTake();

  TableObjects& tables_;
  cOutputTable& table_;
  double records_ = 0;  // for the time wanted; not a number or past the limit of a table as well
};

}  // namespace ostrand
