// Whether the measurements fit into the scan, and the scan into the tables.
#pragma once

#include "verify/check_context.h"
#include "verify/finding.h"

namespace ostrand {

Findings MeasTimeFindings(const ProjectStore& store);
Findings SlowSequenceFindings(const ProjectStore& store);
// One for each table in use that is not synchronous and whose interval is not a multiple of the
// scan period. None for a scan period of 0.
Findings TableIntervalFindings(const ProjectStore& store);

// Whether the table's interval equals the scan period.
bool StoresEveryScan(const ProjectStore& store, int t);

namespace ORVUS_COMMON {

// Asks if the estimate is longer than the scan period; No sets `bad`. Switched by kWarnMeasTime.
void CheckMeasTime(const CheckContext& context, bool& bad);

// A scan of more than 30 seconds is too long for the slow sequence: OK switches the battery saver
// off, Cancel sets `bad`.
void CheckSlowSequence(const CheckContext& context, bool& bad);

// Reports the first table whose interval is not a multiple of the scan period; sets `table` to its
// number, 0 for none. `mode` -1 is the save, the only mode that returns false for such a table; any
// other is a screen's warning, 2 that of the scan screen, switched by kWarnTableIntervals.
bool CheckTableIntervals(const CheckContext& context, i16 mode, i16& table);

}  // namespace ORVUS_COMMON
}  // namespace ostrand
