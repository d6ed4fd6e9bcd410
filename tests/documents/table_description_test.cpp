#include "documents/table_description.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <vector>

#include "documents/table_columns.h"
#include "generator/savedld.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "model/output_table.h"
#include "platform/posix/posix_filesystem.h"
#include "support/fixed_clock.h"
#include "support/project_random.h"
#include "support/scripted_forms.h"
#include "text/number.h"
#include "text/strings.h"

namespace ostrand {
namespace {

const DocumentHead kHead = {"PUMP", {2025, 11, 24, 9, 30, 0}};

// A stored column of a table in a description or a program.
struct Column {
  std::string meas;
  std::string source;  // empty if the two use different names
  std::string resolution;
  std::int64_t first;

  bool operator==(const Column&) const = default;
};
using Tables = std::vector<std::vector<Column>>;

std::vector<std::string> linesOf(std::string_view text) {
  std::vector<std::string> lines;
  for (std::string_view line : Split(text, '\n')) {
    if (line.ends_with('\r')) line.remove_suffix(1);
    lines.emplace_back(line);
  }
  return lines;
}

// Reads the data tables of a program column by column.
class ProgramColumns {
 public:
  explicit ProgramColumns(std::string_view program) {
    for (const std::string& line : linesOf(program)) read(line);
  }
  [[nodiscard]] const Tables& All() const { return tables_; }

 private:
  static constexpr std::array<std::string_view, kOutputCodes> kInstructions = {
      "Sample ", "Maximum",   "Minimum",  "Average",
      "StdDev ", "Histogram", "RainFlow", "LevelCrossing"};

  // The arguments of a call, up to the parenthesis that closes it.
  static std::vector<std::string> argumentsOf(std::string_view call) {
    std::vector<std::string> arguments(1);
    int depth = 0;
    for (const char c : call.substr(call.find('(') + 1)) {
      if (c == ')' && depth-- == 0) break;
      if (c == '(') ++depth;
      if (c == ',' && depth == 0) {
        arguments.emplace_back();
      } else {
        arguments.back() += c;
      }
    }
    return arguments;
  }

  void read(const std::string& line) {
    if (line.starts_with("Const ")) {
      const std::string_view rest = std::string_view(line).substr(6);
      constants_[std::string(Trim(Before(rest, "=")))] = static_cast<int>(Val(After(rest, "=")));
    }
    if (line.starts_with("   DataInterval(")) {  // the project's own tables have one
      tables_.emplace_back();
      column_ = 1;
      open_ = true;
    }
    if (line.starts_with("EndTable")) open_ = false;
    if (!open_) return;
    for (int code = kSample; code <= kLevelCrossing; ++code) {
      const std::string_view name = kInstructions[static_cast<std::size_t>(code)];
      if (!line.starts_with("   " + std::string(name) + "(")) continue;
      store(code, argumentsOf(line), static_cast<int>(Val(After(line, "'"))));
    }
  }

  // `commented` is the count in the comment, used for a constant that a CAN item of another mark
  // than 1 has not declared.
  void store(int code, const std::vector<std::string>& arguments, int commented) {
    static constexpr std::array<std::string_view, kOutputCodes> kMeas = {
        "Sample ", "Maximum", "Minimum", "Average", "Std Dev", "Histgrm", "Rainflo", "LevelCr"};
    static constexpr std::array<std::string_view, kHistogram> kSuffix = {"", "_Max", "_Min", "_Avg",
                                                                         "_Std"};
    const std::string meas(kMeas[static_cast<std::size_t>(code)]);
    const auto number = [&](std::size_t at) {
      return at < arguments.size() ? Val(arguments[at]) : 0;
    };
    if (code < kHistogram) {
      const auto known = constants_.find(arguments[0]);
      const int reps = known != constants_.end() ? known->second : commented;
      const std::string name(Before(arguments[1], "("));
      for (int i = 1; i <= reps; ++i) {
        std::string source;
        if (name != "TK40Ref") {
          source = name + (name == arguments[1] ? "" : "(" + NumberText(i) + ")") +
                   std::string(kSuffix[static_cast<std::size_t>(code)]);
        }
        tables_.back().push_back({meas, source, arguments[2], column_++});
      }
      return;
    }
    // Value, resolution, switch, then the sizes; a rainflow or level crossing has more after two.
    const bool flat = code == kHistogram;
    const double columns = flat ? number(3) : arguments.size() > 5 ? number(3) * number(4) : 0;
    tables_.back().push_back({meas, "", arguments[1], column_});
    column_ += static_cast<std::int64_t>(columns);
  }

  std::map<std::string, int> constants_;
  Tables tables_;
  std::int64_t column_ = 1;
  bool open_ = false;
};

Tables describedColumns(std::string_view description) {
  Tables tables;
  for (const std::string& line : linesOf(description)) {
    if (line.starts_with("FIELD NO")) tables.emplace_back();
    if (line.empty() || line[0] < '0' || line[0] > '9') continue;
    const std::string meas = line.substr(23, 7);
    std::string source(Before(std::string_view(line).substr(33), " "));
    const bool shaped = meas == "Histgrm" || meas == "Rainflo" || meas == "LevelCr";
    if (shaped || source.starts_with("TK40MRef")) source.clear();
    tables.back().push_back({meas, source,
                             std::string(Before(std::string_view(line).substr(16), " ")),
                             static_cast<std::int64_t>(Val(Before(line, ".")))});
  }
  return tables;
}

class DescriptionAndProgram : public ::testing::Test {
 protected:
  // The description numbers the columns that the program of the same project stores, both before
  // and after the program is made.
  void expectSameColumns() {
    const std::string description = TableDescriptionText(*store, kHead);
    SAVEDLD generator(*store, files, clock, forms);
    const ProgramColumns program(generator.ProgramText());
    if (!forms.shown.empty()) return;  // the program is too long and was cut
    ++whole;
    const Tables described = describedColumns(description);
    ASSERT_EQ(described.size(), program.All().size());
    for (std::size_t t = 0; t < described.size(); ++t) {
      const auto& left = described[t];
      const auto& right = program.All()[t];
      columns += left.size();
      ASSERT_EQ(left.size(), right.size()) << "table " << t;
      for (std::size_t i = 0; i < left.size(); ++i) {
        ASSERT_EQ(left[i], right[i]) << left[i].first << " " << left[i].source << " "
                                     << right[i].first << " " << right[i].source;
      }
    }
    EXPECT_TRUE(TableDescriptionText(*store, kHead) == description);
  }

  std::unique_ptr<ProjectStore> store = NewStore();
  platform::PosixFileSystem files;
  testing::FixedClock clock;
  testing::ScriptedForms forms;
  int whole = 0;
  std::size_t columns = 0;
};

TEST_F(DescriptionAndProgram, CountSameColumnsInRandomProjects) {
  forms.CollectBoxes();
  for (std::uint32_t seed = 1; seed <= 120 && !HasFailure(); ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    forms.shown.clear();
    testing::MakeRandomProject(*store, seed);
    // Level crossings over a second dimension, and without one though the code has a size for it.
    for (auto& block : store->VoltBlock.Blocks) {
      for (HistoSet& histo : block.Output.Histo) {
        if (!histo.LevelCode.empty()) histo.LevelCode = "4,3,0,0.5";
      }
    }
    expectSameColumns();
  }
  EXPECT_GT(whole, 100);
  EXPECT_GT(columns, 20'000U);
}

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
