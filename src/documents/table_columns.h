// The columns of a data table, for its description and for every other list of them.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "model/record_layout.h"
#include "model/store.h"

namespace ostrand {

// A value that one instruction stores: several columns if it is a histogram.
struct TableColumn {
  std::int64_t number = 1;  // of its first column in a record, from 1
  std::int64_t count = 1;   // of its columns
  std::int64_t bytes = 0;   // of all of them
  int group = 0;            // from 1; values of the same source follow each other
  std::string groupTitle;   // "Voltage Block 2"
  OrvusDataObjTypes kind = ORVUS_DOBJ_SYS_BATT;  // of a block
  int block = 0;                                 // block, item or calculated field, from 1
  std::string resolution;                        // "FP2"
  std::string_view processing;                   // "Sample ", "Maximum": always seven letters
  std::string field;                             // "VBlk2(1)_Max"
  std::string alias;                             // empty if there is none
  std::string units;                             // empty if there are none
};

// The columns of table `t`, from 1, in the order of a record. The store's texts are copied.
std::vector<TableColumn> ColumnsOf(const ProjectStore& store, int t);

// "10 Sec", or "100 (mSec) Synchronous".
std::string TableIntervalText(const ProjectStore& store, int t);

// The time that the records of the table take to fill: "0 Days, 0 Hours, 10 Mins, 0.00000 Secs".
std::string TimeToFillText(const ProjectStore& store, int t);

}  // namespace ostrand
