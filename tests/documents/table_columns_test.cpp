// The columns of tables; what they are called is in the cases of the table description.
#include "documents/table_columns.h"

#include <gtest/gtest.h>

#include "model/new_store.h"
#include "model/output_table.h"
#include "support/project_random.h"

namespace ostrand {
namespace {

// Without what the size of a record counts otherwise: CAN items, ports, the reference temperatures.
TEST(TableColumns, AddUpToTheRecord) {
  for (std::uint32_t seed = 1; seed <= 100; ++seed) {
    const auto store = NewStore();
    testing::MakeRandomProject(*store, seed);
    store->Config.CanBusQty = 0;
    store->Config.TcConfigOpts[1] = store->Config.MonitorPower[kMonitorPanel] = kFalse;
    store->Ports.Slot[0].Ports[kPorts].Include = store->Ports.Slot[1].Ports[kPorts].Include = 0;
    store->Ports.Slot[0].ReadMode = store->Ports.Slot[1].ReadMode = 0;
    for (int t = 1; t <= kTables; ++t) {
      std::int64_t number = 1;
      std::int64_t bytes = 0;
      int group = 0;
      for (const TableColumn& column : ColumnsOf(*store, t)) {
        EXPECT_EQ(column.number, number);
        EXPECT_TRUE(column.group == group || column.group == group + 1);
        group = column.group;
        number += column.count;
        bytes += column.bytes;
      }
      EXPECT_EQ(bytes, ORVUS_COMMON::SizeOfRecord(*store, t).bytes) << seed << " table " << t;
    }
  }
}

}  // namespace
}  // namespace ostrand
