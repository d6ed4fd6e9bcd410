// Prints the table of figures: `bench` all rows but the slow ones, `bench NAME...` the named ones.
#include "row.h"

namespace ostrand::bench {
namespace {

std::vector<Row> allRows() {
  std::vector<Row> rows = InnerRows();
  for (const auto& more : {ProcessRows(), DiskRows(), ScreenRows()}) {
    rows.insert(rows.end(), more.begin(), more.end());
  }
  return rows;
}

}  // namespace
}  // namespace ostrand::bench

int main(int count, char** arguments) {
  using namespace ostrand::bench;
  return PrintTable(allRows(), {arguments + 1, arguments + count});
}
