// Reading project files of this and older versions, shown by the lines of the next save.
#include <gtest/gtest.h>

#include "model/defaults.h"
#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "text/strings.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

std::unique_ptr<ProjectStore> readText(std::string_view text) {
  auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  ReadProjectText(*store, text);
  return store;
}

struct Case {
  std::string text;
  std::vector<std::string> lines;  // of the next save; after a "!" the end of lines not in it
};

void expectAll(const std::string& before, const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    const std::string saved = ProjectFileText(*readText(before + c.text), {2003, 3, 10, 14, 5, 0});
    for (const std::string& line : c.lines) {
      const bool absent = line[0] == '!';
      EXPECT_NE(Holds(saved, absent ? line.substr(1) + "\r\n" : "\r\n" + line + "\r\n"), absent)
          << c.text << "does not give " << line;
    }
  }
}

TEST(ProjectReader, ReadsLinesAndSections) {
  const std::string config = "[CONFIGURATION]\n";
  const std::string nul("Operator=a\0b", 12);
  expectAll("", {
                    {"[CONFIGURATION]\r\nOperator=B\r\nOperator=A\r\n", {"Operator=A"}},
                    {config + "Operator=A\rB\n", {"Operator=A\rB"}},  // a lone CR is data
                    {config + "Operator=A\r", {"Operator=A"}},        // but not at the end
                    {config + nul + "\n", {nul}},
                    {config + "Operator=a=b\n", {"Operator=a=b"}},
                    {config + "Operator=\n", {"Operator="}},
                    {config + "nothing\n\n=5\nOperator=A", {"Operator=A"}},
                    {config + "operator=A\nOperator =A\n", {"Operator=Name"}},
                    {"Version=9\n" + config + "Operator=A\n", {"Version=6.0", "Operator=Name"}},
                    {"[OTHER]\nx\n" + config + "Operator=A\n", {"Operator=A"}},
                    {"[OTHER]\nx=1\n" + config + "Operator=A\n", {"Operator=Name"}},
                    {"[CONFIGURATION] \nOperator=A\n", {"Operator=Name"}},
                    {config + "IDNumber=a[1\nOperator=A\n", {"Operator=Name"}},
                    {config + "IDNumber=[\n" + config + "Operator=A\n", {"Operator=A"}},
                    {"[GENVERSION]\nVersion=5.1\n", {"Version=5.1"}},
                    {"[TK40MREF TABLES]\nPublic=1\n[GEN VERSION]\nVersion=5\n", {"Version=6.0"}},
                    {"5.3.1\r\n[GEN VERSION]\r\n", {"Version=5.3.1"}},
                    {"4.2\n[GEN VERSION]\nVersion=5\n", {"Version=5"}},
                    {"4\n5.3.1\n", {"Version=6.0"}},
                    {"[V.1]\nVersion=5\n", {"Version=[V.1]"}},
                    {"[GEN VERSION]\nVersionLastSaved=1\n", {"VersionLastSaved=6.1.0.07"}},
                });
}

TEST(ProjectReader, ReadsIndices) {
  expectAll(
      "[TABLE SETUP]\nTableOn(6)=1\n[VOLTAGE BLOCKS]\nBlockCount=2\n",
      {
          {"Reps( 1)= 8\nReps(01)= 8\nReps(+1)= 8\nReps(0)= 8\nReps(4294967297)= 8\nReps(1,1)= 8\n"
           "Reps= 8\nReps(1)x= 8\nReps(1}= 8\nReps(1= 8\nReps1)= 8\n",
           {"!= 8"}},
          {"Reps(3)= 8\nBlockCount=3\n", {"Reps(3)= 0"}},
          {"Reps(1)=2\nAliasName(1,2)=Oil\n", {"Reps(1)= 2", "Reps(2)= 0", "AliasName(1,2)=Oil"}},
          {"AliasName(1,2)=Oil\nReps(1)=2\nAliasName(1, 2)=Oil\n", {"!=Oil"}},
          {"BlockCount=9\nReps(7)=999\n", {"BlockCount= 7", "Reps(7)= 100"}},
          {"Table(5,1,1)=1\nTable(6,1,1)=1\n[TABLE SETUP]\nTableOn(5)=1\n",
           {"Table(6,1,1)= 1", "!Table(5,1,1)= 1"}},
          {"Table(6,2,8)=1\nVoLevelVarOne(6,2,0)=1\nVoLevNumLevels(6,2)=2\n"
           "VoLevelVarOne(6,2,1)=2.5\nTmLevNumTests(6,2)=3\n",
           {"VoLevelVarOne(6,2,0)= 0", "VoLevelVarOne(6,2,1)= 2.5", "VoLevNumTests(6,2)= 0"}},
          {"[TK40M REF TABLES]\nTable(6,5)=1\nTable(6,6)=1\n", {"Table(6,5)= 1", "!Table(6,6)= 1"}},
          // The second slot goes into the first.
          {"[PORT SETUP]\nInclude(0,9)=-1\nInclude(1,2)=-1\nMeasureVar(1,0,9)=a\n"
           "MeasureVar(1,0,9)=b\nBinaryMask(2,0,1)=m\nBinaryMask(2,0,2)=n\n",
           {"Include(0,9)=-1", "!Include(0,2)=-1", "MeasureVar(1,0,9)=b", "BinaryMask(2,0,1)=m"}},
      });
}

TEST(ProjectReader, ReadsTableSetup) {
  expectAll(
      "[TABLE SETUP]\nTableOn(1)=-1\nTableOn(2)=1\nTrigTable(1)=10\nTrigTable(2)=10\n"
      "TrigTabStop(2)=10\nWriteIf(1)=10\n",
      {
          {"StartTrigVarb(2)=w\nStartTrigVarb(23)=x\nStartTrigVarb(110)=y\nStopTrigVarb(23)=z\n",
           {"StartTrigVarb(2)=w", "StartTrigVarb(23)=x", "StartTrigVarb(110)=y",
            "StopTrigVarb(23)=z"}},
          // Old spelling, in two digits, past ten, of a table not in use, separated.
          {"StartTrigVarb(21)=x\nStartTrigVarb(105)=x\nStartTrigVarb(111)=x\n"
           "StartTrigVarb(33)=x\nStartTrigVarb(2,3)=x\nTableOn(3)=1\nTrigTable(3)=10\n",
           {"!=x"}},
          {"Varb(1)=a\nVarb(1, 3)=b\n", {"Varb(1, 1)=a", "Varb(1, 3)=b"}},
          {"Varb(1,3)=b\nVarb(1,  3)=b\nVarb(1, 11)=b\n", {"!=b"}},
          {"DataEventCode(1 Start)=a\nDataEventCode(1 Stop)=b\nDataEventCode(1)=c\n",
           {"DataEventCode(1 Start)=a", "DataEventCode(1 Stop)=b", "DataEventCode(1)=c"}},
          {"DataEventCode(1 start)=a\nDataEventCode(1Stop)=a\n", {"!=a"}},
          {"TableName(3)=a\nTableOn(3)=1\nTableOn(7)=-1\n", {"TableName(3)=Table3"}},
      });
}

TEST(ProjectReader, ReadsValues) {
  const std::string mux = "[TK40M BLOCKS]\nBlockCount=1 block\n";
  expectAll(
      "[CONFIGURATION]\nTK40MQty= 3\nCanBusQty=1\n[THERMOCOUPLE BLOCKS]\nBlockCount=1\n",
      {
          {"BlockTime(1)=12 mSecs\n", {"BlockTime(1)=12000"}},
          {"BlockTime(1)=12 msecs\n", {"BlockTime(1)=12"}},
          {"BlockTime(1)=7\nBlockTime(1)=9E9 mSecs\n", {"BlockTime(1)=7"}},
          {mux + "BlockTime(1)=12 mSecs\n", {"!=12", "!=12000"}},
          {"[CONFIGURATION]\nTK40MQty= 2.5\n", {"TK40MQty= 2"}},
          {"[CONFIGURATION]\nTK40MQty= 2 units\nTK40MQty=32768\nTK40MQty=\n", {"TK40MQty= 3"}},
          {mux + "Reps(1)= 8 chans\nRangeNo(1)=30x\n", {"Reps(1)= 8", "RangeNo(1)= 30"}},
          {mux + "Units(1)=Hz\n", {"LongUnits(1)=Hz"}},
          {mux + "TCRange(1)=1 V\nVoltRange(1)=2 V\nTCRangeNo(1)=3\n",
           {"Range(1)=1 V", "RangeNo(1)= 3"}},
          {mux + "TK40Volts(1)=1\nTCRange(1)=1 V\nVoltRange(1)=2 V\nVoltRangeNo(1)=4 x\n",
           {"Range(1)=2 V", "RangeNo(1)= 4"}},
          {"[CANBUS ITEMS]\nCanCount=3\nDataType(1)= 1\nDataType(2)= 0\nDataType(3)=x\n",
           {"DataType(1)=IEEE4", "DataType(2)=FP2", "DataType(3)=x"}},
          {"[CANBUS "
           "ITEMS]\nCanCount=1\nCanNaNOldData=True\nCanNaNOldData=False\nCanEnableTransmit=True\n",
           {"CanNaNOldData=0", "CanEnableTransmit=-1"}},
          {"[TABLE SETUP]\nTableOn(1)=1\n[BRIDGE BLOCKS]\nBlockCount=1\n"
           "RainHistCode(1,1)=r\nTable(1,1,7)=1\n",
           {"RainHistoCode(1,1)=r"}},
          {"[PULSE BLOCKS]\nPulseBlockCount=1\nDataType(1)= 0\n", {"DataType(1)= 0"}},
      });
}

// The first skipped line, or "" for none.
std::string firstSkipped(std::string_view text, int& count) {
  auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  const ReadReport report = ReadProjectText(*store, text);
  count = report.skipped;
  return report.first.empty() ? "" : SkippedLineText(report.first.front());
}

TEST(ProjectReader, ReportsSkippedLines) {
  struct Skipped {
    std::string text;
    int count;
    std::string_view first;
  };
  const std::string config = "[CONFIGURATION]\r\n";
  const std::string mux = "[TK40MBLOCKS]\nBlockCount=1\n";
  const Skipped cases[] = {
      {"", 0, ""},
      {"5.3.1\n[GEN VERSION]\nVersionLastSaved=5\nPCTime=x\n\n \n", 0, ""},
      {"[V.1]\n[CONFIGURATION]\n", 0, ""},
      {config + "Operator=A\r", 0, ""},
      {config + "TK40MQty= \nCanBusQty=\n", 0, ""},
      {config + "Operator=H. Quist [lab]\r\n\r\nIDNumber=7\r\n[SCAN SETUP]\r\nBurstMode=1\r\n", 4,
       R"(line 2: Operator=H. Quist [lab]: "[" in a text, which begins a section)"},
      {config + "Operator=[\n[SCAN SETUP]\nBurstMode=1\n", 1,
       R"(line 2: Operator=[: "[" in a text, which begins a section)"},
      {"[OTHER]\nx\n" + config, 2, "line 1: [OTHER]: no section of a project"},
      {"[CONFIGURATION] \nOperator=A\nB=1\n", 3,
       "line 1: [CONFIGURATION] : no section of a project"},
      {"Operator=A\n" + config + "Operator=B\n", 3,
       "line 1: Operator=A: in no section of a project"},
      {config + "lone\n", 1, "line 2: lone: no \"=\" in it"},
      {config + "Foo=1\nTK40MQty= 2\n", 1, "line 2: Foo=1: unknown key"},
      {config + "TK40MQty=two\n", 1, "line 2: TK40MQty=two: not a value of this key"},
      {"[VOLTAGE BLOCKS]\nBlockCount=1\nReps(2)=1\nReps(1)=1\nAliasName(1,2)=a\n", 2,
       "line 3: Reps(2)=1: beyond the counts above it"},
      {mux + "Units(1)=Hz\nTCRange(1)=1 V\nVoltRange(1)=2 V\nVoltRangeNo(1)=3\n", 0, ""},
      {mux + "VoltRange(2)=2 V\n", 1, "line 3: VoltRange(2)=2 V: beyond the counts above it"},
      {"[PULSE BLOCKS]\nPulseBlockCount=1\n[CONFIGURATION]\n" + std::string(70, 'x'), 1,
       "line 4: xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...: no \"=\" in it"},
  };
  for (const Skipped& row : cases) {
    int count = 0;
    EXPECT_EQ(firstSkipped(row.text, count), row.first);
    EXPECT_EQ(count, row.count) << row.text;
  }
  const ReadReport many = [] {
    auto store = NewStore();
    return ReadProjectText(*store, "a\nb\nc\nd\ne\nf\n");
  }();
  EXPECT_EQ(many.first.size(), 5U);
  EXPECT_TRUE(SkippedText(many).starts_with("6 lines of the file were not read, and"));
  EXPECT_TRUE(SkippedText(many).ends_with("\r\nline 5: e: in no section of a project\r\n..."));
}

TEST(ProjectReader, MissingKeysKeepTheirValues) {
  auto store = NewStore();
  store->VoltBlock.BlockCount = 1;
  store->Gen.Operator = "kept";
  ReadProjectText(*store, "[VOLTAGE BLOCKS]\nReps(1)=5\n");
  EXPECT_EQ(store->VoltBlock[1].Reps, 5);
  EXPECT_EQ(store->Gen.Operator, "kept");
}

TEST(ProjectReader, UpgradesOldConditions) {
  const std::string on = "[TABLE SETUP]\nTableOn(1)=1\n";
  expectAll(on + "TrigTable(1)=1\nTrigTabStop(1)=1\n",
            {
                {"DataEventCode(1)=DataEvent (10,a = 1,b,10)\n",
                 {"StartTrigIndvExpress(1)=a = 1", "StopTrigIndvExpress(1)=b"}},
                {"DataEventCode(1)=DataEvent(10,a)\n",
                 {"StartTrigIndvExpress(1)=a)", "StopTrigIndvExpress(1)="}},
                {"DataEventCode(1)=DataEvent(10)\n", {"StartTrigIndvExpress(1)="}},
                {"DataEventCode(1)=Event (10,a,b,10)\n", {"StartTrigIndvExpress(1)="}},
                {"StartTrigIndvExpress(1)=x\nDataEventCode(1)=DataEvent (1,a,b,1)\n",
                 {"StartTrigIndvExpress(1)=x", "StopTrigIndvExpress(1)="}},
            });
  expectAll(on, {
                    {"StartMeasVar(1)=x\n",
                     {"DisableTrigger(1)= 1", "TrigTable(1)= 1", "TrigTabStop(1)= 1"}},
                    {"SingleTrigger(1)=-1\nStartMeasVar(1)=x\n",
                     {"DisableTrigger(1)= 1", "TrigTable(1)= 1", "TrigTabStop(1)= 0"}},
                    {"TrigTable(1)=2\nStartMeasVar(1)=x\n",
                     {"DisableTrigger(1)= 0", "TrigTable(1)= 2", "TrigTabStop(1)= 0"}},
                    {"WriteIf(1)=-1\nMeasureVar(1)=x\n",
                     {"DisableWriteIf(1)= 1", "WriteIf(1)= 1", "GroupWriteIf(1)=1"}},
                    {"WriteIf(1)=2\nMeasureVar(1, 1)=x\n",
                     {"DisableWriteIf(1)= 0", "WriteIf(1)= 2", "GroupWriteIf(1)="}},
                });
}

TEST(ProjectReader, RecountsExceptionsWithoutPanelReference) {
  const std::string strain =
      "[BRIDGE BLOCKS]\nBlockCount=1\nReps(1)=6\nStyle(1)=5\nUnits(1)=uStrain\nDefaultOffset(1)=2\n"
      "AliasUnits(1,1)=ustrain\nAliasMult(1,2)=1.0\nAliasMult(1,3)=2\nAliasGFactor(1,3)=2.05\n"
      "AliasGFactor(1,4)=0\nAliasMult(1,5)=abc\nAliasExcept(1,6)=7\n";
  expectAll("", {
                    {strain,
                     {"AliasExcept(1,1)=1", "AliasExcept(1,2)=", "AliasExcept(1,3)=6",
                      "AliasExcept(1,4)=", "AliasExcept(1,5)=", "AliasExcept(1,6)="}},
                    // For other kinds the offset counts.
                    {strain + "Style(1)=4\n", {"AliasExcept(1,3)=6", "AliasExcept(1,4)=4"}},
                    {"[TCREFTABLES]\n" + strain, {"AliasExcept(1,6)=7", "!AliasExcept(1,1)=1"}},
                });
}

TEST(ProjectReader, ToleratesAnyBytes) {
  std::string binary;
  for (int i = 0; i < 100000; ++i) binary += static_cast<char>((i * 7919 + i / 251) % 256);
  readText(binary);
  readText("[VOLTAGE BLOCKS]\nBlockCount=2\n" + binary);
  // One line of 100 MB, as a value and as a header.
  const std::string large(100'000'000, 'x');
  EXPECT_EQ(readText("[CONFIGURATION]\nOperator=" + large + "\n")->Gen.Operator.size(),
            large.size());
  EXPECT_EQ(readText(large + "[" + "\nVersion=1")->Gen.Version, "6.0");
}

}  // namespace
}  // namespace ostrand::ORVUS_GENFILE
