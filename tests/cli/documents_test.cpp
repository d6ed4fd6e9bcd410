// The command diff, and documents in JSON.
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include "support/cli_run.h"
#include "support/temp_folder.h"
#include "text/strings.h"

namespace ostrand {
namespace {

using testing::Outcome;
using testing::ReadDisk;
using testing::RunOstrand;
using testing::WriteDisk;

const std::string kExample = OSTRAND_SOURCE_DIR "/examples/engine-test-cell.VKG";

class CliDocuments : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string bytes = ReadDisk(kExample);
    WriteDisk(folder / "a.VKG", bytes);
    const std::string scan = "\r\nExecutionTime=";
    const std::size_t at = bytes.find(scan) + scan.size();
    before = Trim(bytes.substr(at, bytes.find("\r\n", at) - at));
    bytes.replace(at, bytes.find("\r\n", at) - at, " 77");
    WriteDisk(folder / "b.VKG", bytes);
  }
  Outcome run(const std::vector<std::string>& words) const {
    return RunOstrand(words, {.folder = folder.Path()});
  }
  const testing::TempFolder folder;
  std::string before;
};

TEST_F(CliDocuments, DiffShowsWordsOrKeys) {
  const Outcome words = run({"diff", "a.VKG", "b.VKG"});
  EXPECT_EQ(words.code, 1);
  EXPECT_TRUE(Holds(words.out, " 77, was " + before + "\n")) << words.out;
  EXPECT_EQ(run({"diff", "--keys", "a.VKG", "b.VKG"}).out,
            "[SCAN SETUP] ExecutionTime: " + before + " -> 77\n");
  const std::string json = run({"diff", "a.VKG", "b.VKG", "--format=json"}).out;
  for (const std::string& part :
       {std::string(R"("change": "value")"), std::string(R"("key": "ExecutionTime")"),
        R"("before": ")" + before + "\"", std::string(R"("after": "77")")}) {
    EXPECT_TRUE(Holds(json, part)) << part << json;
  }
  // Equal but for the moment of the last save.
  const Outcome same = run({"diff", "a.VKG", kExample});
  EXPECT_EQ(same.code, 0);
  EXPECT_EQ(same.out, "");
  const Outcome missing = run({"diff", "a.VKG", "none.VKG"});
  EXPECT_EQ(missing.code, 1);
  EXPECT_EQ(missing.err, "ostrand: none.VKG: No such file or directory\n");
  WriteDisk(folder / "bad.VKG", "[SCAN SETUP]\r\nNothing=1\r\n");
  EXPECT_TRUE(Holds(run({"diff", "bad.VKG", "a.VKG"}).err, "bad.VKG: warning: line 2: Nothing=1"));
}

// As git calls it for one state of a file, and for a file that one state does not have.
TEST_F(CliDocuments, DiffOfOneProjectShowsWhatItSets) {
  const Outcome alone = run({"diff", "b.VKG"});
  EXPECT_EQ(alone.code, 0);
  EXPECT_TRUE(Holds(alone.out, "Voltage block 1: added\nVoltage block 1: ")) << alone.out;
  EXPECT_FALSE(Holds(alone.out, "\"")) << "values in words" << alone.out;
  // Each change of a block is seen between two states.
  std::string bytes = ReadDisk(folder / "b.VKG");
  const std::size_t units = bytes.find("\r\nUnits(1)=", bytes.find("[VOLTAGE BLOCKS]"));
  bytes.insert(units + 11, "furlongs per ");
  WriteDisk(folder / "c.VKG", bytes);
  EXPECT_TRUE(Holds(run({"diff", "c.VKG"}).out, "Voltage block 1: units furlongs per "));
  EXPECT_TRUE(
      Holds(run({"diff", "--keys", "c.VKG"}).out, "[VOLTAGE BLOCKS] Units(1): furlongs per "));
  const Outcome added = run({"diff", "/dev/null", "b.VKG"});
  EXPECT_EQ(added.code, 1);
  EXPECT_EQ(added.out, alone.out);
}

TEST_F(CliDocuments, JsonHasTheFiguresOfTheText) {
  const std::string summary = run({"summary", "--format=json", "a.VKG", "b.VKG"}).out;
  EXPECT_TRUE(summary.starts_with("[{\n  \"file\": \"a.VKG\"")) << summary;
  for (const std::string_view part :
       {R"("file": "b.VKG")", R"("interval": 77, "unit": )", R"("kind": "Voltage", "block": 1)"}) {
    EXPECT_TRUE(Holds(summary, part)) << part << summary;
  }
  const std::string text = run({"summary", "a.VKG"}).out;
  std::string shortest(Trim(Before(After(After(text, "Shortest Possible"), "="), "\n")));
  std::erase(shortest, ',');
  EXPECT_TRUE(Holds(summary, "\"shortestScan\": " + shortest + "\n")) << shortest << summary;

  const std::string wiring = run({"wiring", "--format=json", "a.VKG"}).out;
  EXPECT_TRUE(Holds(wiring, R"("kind": "voltage", "number": 1, "sensor": 1, "function": "high")"))
      << wiring;
  const std::string settings = run({"settings", "list", "--format=json"}).out;
  EXPECT_TRUE(Holds(settings, R"("DefaultNumFlags": {"value": "8", "default": "8"})")) << settings;

  ::setenv("STAND_IN", "good", 1);
  const Outcome times = run({"compile", "a.VKG", "--compiler", OSTRAND_STAND_IN, "--format=json"});
  EXPECT_EQ(times.code, 0) << times.err;
  EXPECT_TRUE(Holds(times.out, R"("kind": "Voltage", "block": 1, "time": )")) << times.out;
  EXPECT_FALSE(Holds(times.out, "test compiled")) << times.out;

  WriteDisk(folder / "engine.29LST",
            "ORVUSV5\r\nDescription,Priority,Reserved,DataPage,PDUFormat,PDUSpecific,"
            "SourceAddress,DataType,StartBit,Numbits,Alias,Mult,Offset,Units\r\n"
            "\"Speed\",3,0,0,240,4,0,2,25,16,EngSpeed,0.125,0,RPM\r\n"
            "\"Other\",3,0,0,240,4,0,7,25,16,Other,1,0,RPM\r\n");
  const Outcome check = run({"can", "check", "engine.29LST", "--format=json"});
  EXPECT_EQ(check.code, 1);
  EXPECT_TRUE(Holds(check.out, R"("severity": "error", "line": 4)")) << check.out;
  std::string good = ReadDisk(folder / "engine.29LST");
  good.resize(good.find("\"Other\""));
  WriteDisk(folder / "engine.29LST", good);
  const std::string list = run({"can", "list", "engine.29LST", "--format=json"}).out;
  EXPECT_TRUE(Holds(list, R"("identifierBits": 29)")) << list;
  EXPECT_TRUE(
      Holds(list, R"("multiplier": 0.125, "offset": 0, "units": "RPM", "alias": "EngSpeed")"))
      << list;
}

}  // namespace
}  // namespace ostrand
