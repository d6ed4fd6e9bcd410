#include "model/format_version.h"

#include <gtest/gtest.h>

#include "model/defaults.h"

namespace ostrand {
namespace {

TEST(NeedsUpgrade, ConditionsInAnOlderFormat) {
  const auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  OutputTable& table = store->Tables[6];
  const struct {
    const char* version;
    i16 trigTable, writeIf;
    bool needed;
  } cases[] = {
      {"5.3.1", 0, 0, false}, {"5.3.1", 1, 0, true}, {"5.9", 0, 2, true},
      {"6.0", 3, 3, false},   {"7", 1, 0, false},    {"", 1, 0, true},
      {"x6", 1, 0, true},     {"10.0", 1, 0, true},  {"5.3", -1, -1, false},
  };
  for (const auto& c : cases) {
    store->Gen.Version = c.version;
    table.TrigTable = c.trigTable;
    table.WriteIf = c.writeIf;
    EXPECT_EQ(ORVUS_COMMON::NeedsUpgrade(*store), c.needed) << c.version;
  }
}

}  // namespace
}  // namespace ostrand
