#include <gtest/gtest.h>

#include <functional>

#include "model/defaults.h"
#include "projectfile/genfile.h"

namespace ostrand::ORVUS_GENFILE {
namespace {

std::unique_ptr<ProjectStore> readText(std::string_view text) {
  auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  ReadProjectText(*store, text);
  return store;
}

using Got = std::function<std::string(ProjectStore&)>;

struct Case {
  std::string_view name;
  std::string text;
  std::string want;
  Got got;
};

void expectAll(const std::vector<Case>& cases) {
  for (const Case& c : cases) EXPECT_EQ(c.got(*readText(c.text)), c.want) << c.name;
}

std::string operatorOf(ProjectStore& store) { return store.Gen.Operator; }
std::string versionOf(ProjectStore& store) { return store.Gen.Version; }

TEST(ProjectReader, LinesAndSections) {
  const std::string config = "[CONFIGURATION]\n";
  const std::string nul("a\0b", 3);
  expectAll({
      {"LF", config + "Operator=A\nIDNumber=1\n", "A", operatorOf},
      {"CR LF", "[CONFIGURATION]\r\nOperator=A\r\n", "A", operatorOf},
      {"no line end at the end", config + "Operator=A", "A", operatorOf},
      {"a lone CR is data", config + "Operator=A\rB\n", "A\rB", operatorOf},
      {"NUL is data", config + "Operator=" + nul + "\n", nul, operatorOf},
      {"the first = splits", config + "Operator=a=b\n", "a=b", operatorOf},
      {"an empty value", config + "Operator=\n", "", operatorOf},
      {"the later line wins", config + "Operator=A\nOperator=B\n", "B", operatorOf},
      {"lines without =", config + "nothing\n\nOperator=A\n", "A", operatorOf},
      {"keys know case", config + "operator=A\n", "Name", operatorOf},
      {"blank before =", config + "Operator =A\n", "Name", operatorOf},
      {"an empty key", config + "=5\nOperator=A\n", "A", operatorOf},
      {"no header before a key", "Version=9\n[CONFIGURATION]\nOperator=A\n", "Name", operatorOf},
      {"unknown section", "[OTHER]\nx\n[CONFIGURATION]\nOperator=A\n", "A", operatorOf},
      {"key in it", "[OTHER]\nx=1\n[CONFIGURATION]\nOperator=A\n", "Name", operatorOf},
      {"header spelled apart", "[CONFIGURATION] \nOperator=A\n", "Name", operatorOf},
      {"[ in a value", config + "IDNumber=a[1\nOperator=A\n", "Name", operatorOf},
      {"header again behind it", config + "IDNumber=[\n" + config + "Operator=A\n", "A",
       operatorOf},
      {"empty file", "", "6.0", versionOf},
      {"blank-free header", "[GENVERSION]\nVersion=5.1\n", "5.1", versionOf},
      {"half of its blanks", "[TK40MREF TABLES]\nPublic=1\n[GEN VERSION]\nVersion=5\n", "6.0",
       versionOf},
      {"bare version", "5.3.1\r\n[GEN VERSION]\r\n", "5.3.1", versionOf},
      {"bare version, then its key", "4.2\n[GEN VERSION]\nVersion=5\n", "5", versionOf},
      {"a point in the second line", "4\n5.3.1\n", "6.0", versionOf},
      {"a first line goes on as a header", "[V.1]\nVersion=5\n", "[V.1]", versionOf},
      {"the writing version stays", "[GEN VERSION]\nVersionLastSaved=1\n", "6.1.0.07",
       [](ProjectStore& s) { return s.Gen.VersionLastSaved; }},
  });
}

TEST(ProjectReader, Indices) {
  const std::string volts = "[VOLTAGE BLOCKS]\nBlockCount=2\n";
  const Got reps = [](ProjectStore& s) { return std::to_string(s.VoltBlock[1].Reps); };
  const Got name = [](ProjectStore& s) { return s.VoltBlock[1].Alias[2].AliasName; };
  expectAll({
      {"plain", volts + "Reps(1)= 8\n", "8", reps},
      {"blank", volts + "Reps( 1)= 8\n", "0", reps},
      {"leading zero", volts + "Reps(01)= 8\n", "0", reps},
      {"sign", volts + "Reps(+1)= 8\n", "0", reps},
      {"zero", volts + "Reps(0)= 8\n", "0", reps},
      {"past the count", volts + "Reps(3)= 8\nBlockCount=3\n", "0",
       [](ProjectStore& s) { return std::to_string(s.VoltBlock[3].Reps); }},
      {"huge", volts + "Reps(4294967297)= 8\n", "0", reps},
      {"an index too many", volts + "Reps(1,1)= 8\n", "0", reps},
      {"no index", volts + "Reps= 8\n", "0", reps},
      {"text behind", volts + "Reps(1)x= 8\n", "0", reps},
      {"no closing bracket", volts + "Reps(1= 8\n", "0", reps},
      {"no opening bracket", volts + "Reps1)= 8\n", "0", reps},
      {"alias", volts + "Reps(1)=2\nAliasName(1,2)=Oil\n", "Oil", name},
      {"alias before its count", volts + "AliasName(1,2)=Oil\nReps(1)=2\n", "", name},
      {"alias with a blank", volts + "Reps(1)=2\nAliasName(1, 2)=Oil\n", "", name},
      {"count above the limit", "[VOLTAGE BLOCKS]\nBlockCount=9\nReps(7)=999\n", "7 100",
       [](ProjectStore& s) {
         return std::to_string(s.VoltBlock.BlockCount) + " " + std::to_string(s.VoltBlock[7].Reps);
       }},
      {"table not in use", volts + "Table(1,1,1)=1\n", "0",
       [](ProjectStore& s) {
         return std::to_string(s.VoltBlock[1].Output.OutputSelect[1][kSample]);
       }},
      {"levels up to their count",
       "[TABLE SETUP]\nTableOn(6)=1\n" + volts +
           "VoLevelVarOne(6,2,0)=1\nVoLevNumLevels(6,2)=1\nVoLevelVarOne(6,2,0)=2.5\n"
           "VoLevelVarOne(6,2,1)=3\nTmLevNumTests(6,2)=3\n",
       "2.500000 0.000000 0",
       [](ProjectStore& s) {
         HistoSet& histo = s.VoltBlock[2].Output.Histo[6];
         return std::to_string(histo.LevelVarOne[0]) + " " + std::to_string(histo.LevelVarOne[1]) +
                " " + std::to_string(histo.LevNumTests);
       }},
      {"references keep five selections",
       "[TABLE SETUP]\nTableOn(1)=1\n[TK40M REF TABLES]\nTable(1,5)=1\nTable(1,6)=1\n"
       "RainHistoCode(1)=no\nRainCode(1)=yes\n",
       "10yes",
       [](ProjectStore& s) {
         OutputSet& output = s.TK40MRef.Output;
         return std::to_string(output.OutputSelect[1][4]) +
                std::to_string(output.OutputSelect[1][5]) + output.Histo[1].RainHistoCode;
       }},
      {"the second slot lands in the first",
       "[PORT SETUP]\nInclude(0,9)=-1\nPolarity(0,9)=7\nInclude(1,2)=-1\nMeasureVar(1,0,3)=a\n"
       "MeasureVar(1,0,3)=b\nBinaryMask(2,0,1)=m\nBinaryMask(2,0,2)=n\n",
       "-1 0 0 b m",
       [](ProjectStore& s) {
         PortSlot& slot = s.Ports.Slot[0];
         return std::to_string(slot.Ports[9].Include) + " " +
                std::to_string(slot.Ports[9].Polarity) + " " +
                std::to_string(slot.Ports[2].Include) + " " + slot.Ports[3].State[1].MeasureVar +
                " " + slot.BinaryMask[2];
       }},
  });
}

TEST(ProjectReader, TableSetup) {
  const std::string on = "[TABLE SETUP]\nTableOn(1)=-1\nTableOn(2)=1\n";
  const Got start = [](ProjectStore& s) {
    std::string all;
    for (int t = 1; t <= kTables; ++t) {
      for (int i = 1; i <= kConditions; ++i) all += s.Tables[t].Trigger[0][i].StartTrigVarb + "/";
    }
    return all;
  };
  const auto at = [](int table, int condition) {
    std::string all;
    for (int i = 1; i <= 60; ++i) all += i == (table - 1) * 10 + condition ? "x/" : "/";
    return all;
  };
  const std::string nowhere(60, '/');
  const Got write = [](ProjectStore& s) {
    return s.Tables[1].Write[1].Varb + "/" + s.Tables[1].Write[3].Varb;
  };
  const Got events = [](ProjectStore& s) {
    return s.Tables[1].DataEventCodeStart + "/" + s.Tables[1].DataEventCodeStop + "/" +
           s.Tables[1].DataEventCode;
  };
  expectAll({
      {"condition 1", on + "StartTrigVarb(2)=x\n", at(2, 1), start},
      {"condition 3", on + "StartTrigVarb(23)=x\n", at(2, 3), start},
      {"condition 10", on + "StartTrigVarb(110)=x\n", at(1, 10), start},
      {"condition 1 spelled out", on + "StartTrigVarb(21)=x\n", nowhere, start},
      {"condition 5 in two digits", on + "StartTrigVarb(105)=x\n", nowhere, start},
      {"condition 11", on + "StartTrigVarb(111)=x\n", nowhere, start},
      {"table not in use", on + "StartTrigVarb(33)=x\n", nowhere, start},
      {"separated", on + "StartTrigVarb(2,3)=x\n", nowhere, start},
      {"stop condition", on + "StopTrigVarb(23)=x\n", "x",
       [](ProjectStore& s) { return s.Tables[2].Trigger[1][3].StartTrigVarb; }},
      {"write condition", on + "Varb(1)=a\n", "a/", write},
      {"of several", on + "Varb(1, 1)=a\nVarb(1, 3)=b\n", "a/b", write},
      {"no blank", on + "Varb(1,3)=b\n", "/", write},
      {"two blanks", on + "Varb(1,  3)=b\n", "/", write},
      {"past ten", on + "Varb(1, 11)=b\n", "/", write},
      {"events", on + "DataEventCode(1 Start)=a\nDataEventCode(1 Stop)=b\nDataEventCode(1)=c\n",
       "a/b/c", events},
      {"events know case", on + "DataEventCode(1 start)=a\nDataEventCode(1Stop)=b\n", "//", events},
      {"member above its switch", "[TABLE SETUP]\nTableName(1)=a\nTableOn(1)=1\n", "Table1",
       [](ProjectStore& s) { return s.Tables[1].TableName; }},
      {"no seventh table", "[TABLE SETUP]\nTableOn(7)=-1\nTableOn(6)=1\n", "1",
       [](ProjectStore& s) { return std::to_string(s.Tables[6].TableOn); }},
  });
}

TEST(ProjectReader, Values) {
  const std::string temp = "[THERMOCOUPLE BLOCKS]\nBlockCount=1\n";
  const Got time = [](ProjectStore& s) { return std::to_string(s.TempBlock[1].BlockTime); };
  const Got qty = [](ProjectStore& s) { return std::to_string(s.Config.TK40MQty); };
  const std::string mux = "[TK40M BLOCKS]\nBlockCount=1 block\n";
  const Got block = [](ProjectStore& s) {
    TK40MBlockData& b = s.TK40MBlock[1];
    return std::to_string(b.Reps) + "/" + std::to_string(b.RangeNo) + "/" + b.Range + "/" + b.Units;
  };
  const std::string can = "[CANBUS ITEMS]\nCanCount=1\n";
  const Got type = [](ProjectStore& s) { return s.Can.Item[1].DataResolution; };
  const Got truth = [](ProjectStore& s) { return std::to_string(s.Can.Module[1].CanNaNOldData); };
  expectAll({
      {"microseconds", temp + "BlockTime(1)=12\n", "12", time},
      {"milliseconds", temp + "BlockTime(1)=12 mSecs\n", "12000", time},
      {"with a fraction", temp + "BlockTime(1)=1.5mSecs\n", "1500", time},
      {"other case", temp + "BlockTime(1)=12 msecs\n", "12", time},
      {"out of range", temp + "BlockTime(1)=7\nBlockTime(1)=9E9 mSecs\n", "7", time},
      {"multiplexer blocks have no milliseconds", mux + "BlockTime(1)=12 mSecs\n", "0",
       [](ProjectStore& s) { return std::to_string(s.TK40MBlock[1].BlockTime); }},
      {"whole text only", "[CONFIGURATION]\nTK40MQty= 2 units\n", "0", qty},
      {"half to even", "[CONFIGURATION]\nTK40MQty= 2.5\n", "2", qty},
      {"too large", "[CONFIGURATION]\nTK40MQty= 3\nTK40MQty=32768\n", "3", qty},
      {"empty", "[CONFIGURATION]\nTK40MQty= 3\nTK40MQty=\n", "3", qty},
      {"numbers at the head", mux + "Reps(1)= 8 chans\nRangeNo(1)=30x\n", "8/30/50 mV/Deg_F",
       block},
      {"old units", mux + "Units(1)=Hz\n", "0/30/50 mV/Hz", block},
      {"old thermocouple range", mux + "TCRange(1)=1 V\nVoltRange(1)=2 V\nTCRangeNo(1)=3\n",
       "0/3/1 V/Deg_F", block},
      {"old voltage range",
       mux + "TK40Volts(1)=1\nTCRange(1)=1 V\nVoltRange(1)=2 V\nVoltRangeNo(1)=4 x\n",
       "0/4/2 V/Deg_F", block},
      {"CAN type 0", can + "DataType(1)= 0\n", "FP2", type},
      {"CAN type 1", can + "DataType(1)= 1\n", "IEEE4", type},
      {"CAN type text", can + "DataType(1)=FP2\n", "FP2", type},
      {"True", "[CANBUS ITEMS]\nCanNaNOldData=True\n", "-1", truth},
      {"False", "[CANBUS ITEMS]\nCanNaNOldData=-1\nCanNaNOldData=False\n", "0", truth},
      {"-1", "[CANBUS ITEMS]\nCanNaNOldData=-1\n", "-1", truth},
      {"old rainflow key",
       "[TABLE SETUP]\nTableOn(1)=1\n[BRIDGE BLOCKS]\nBlockCount=1\n"
       "RainHistCode(1,1)=r\n",
       "r", [](ProjectStore& s) { return s.BridgeBlock[1].Output.Histo[1].RainHistoCode; }},
      {"old pulse count", "[PULSE BLOCKS]\nPulseBlockCount=1\nDataType(1)= 0\n", " 0",
       [](ProjectStore& s) { return s.PulseBlock[0][1].DataResolution; }},
  });
}

TEST(ProjectReader, KeepsWhatTheFileLeavesOut) {
  auto store = NewStore();
  store->VoltBlock.BlockCount = 1;
  store->Gen.Operator = "kept";
  ReadProjectText(*store, "[VOLTAGE BLOCKS]\nReps(1)=5\n");
  EXPECT_EQ(store->VoltBlock[1].Reps, 5);
  EXPECT_EQ(store->Gen.Operator, "kept");
}

TEST(ProjectReader, OldConditions) {
  const std::string on = "[TABLE SETUP]\nTableOn(1)=1\n";
  const Got expressions = [](ProjectStore& s) {
    return s.Tables[1].Trigger[0][1].StartTrigIndvExpress + "/" +
           s.Tables[1].Trigger[1][1].StartTrigIndvExpress;
  };
  const Got trigger = [](ProjectStore& s) {
    OutputTable& t = s.Tables[1];
    return std::to_string(t.DisableTrigger) + std::to_string(t.TrigTable) +
           std::to_string(t.TrigTabStop);
  };
  const Got write = [](ProjectStore& s) {
    OutputTable& t = s.Tables[1];
    return std::to_string(t.DisableWriteIf) + std::to_string(t.WriteIf) + t.GroupWriteIf;
  };
  expectAll({
      {"event", on + "DataEventCode(1)=DataEvent (10,a = 1,b,10)\n", "a = 1/b", expressions},
      {"two arguments", on + "DataEventCode(1)=DataEvent(10,a,b)\n", "a/b)", expressions},
      {"one argument", on + "DataEventCode(1)=DataEvent(10,a)\n", "a)/", expressions},
      {"no comma", on + "DataEventCode(1)=DataEvent(10)\n", "/", expressions},
      {"no event", on + "DataEventCode(1)=Event (10,a,b,10)\n", "/", expressions},
      {"told already", on + "StartTrigIndvExpress(1)=x\nDataEventCode(1)=DataEvent (1,a,b,1)\n",
       "x/", expressions},
      {"uncounted trigger", on + "StartMeasVar(1)=x\n", "111", trigger},
      {"single trigger", on + "SingleTrigger(1)=-1\nStartMeasVar(1)=x\n", "110", trigger},
      {"counted trigger", on + "TrigTable(1)=2\nStartMeasVar(1)=x\n", "020", trigger},
      {"uncounted write condition", on + "WriteIf(1)=-1\nMeasureVar(1)=x\n", "111", write},
      {"counted write condition", on + "WriteIf(1)=2\nMeasureVar(1, 1)=x\n", "02", write},
  });
}

TEST(ProjectReader, ExceptionsAreRecountedWithoutThePanelReference) {
  const std::string strain =
      "[BRIDGE BLOCKS]\nBlockCount=1\nReps(1)=6\nStyle(1)=5\nUnits(1)=uStrain\nDefaultOffset(1)=2\n"
      "AliasUnits(1,1)=ustrain\nAliasMult(1,2)=1.0\nAliasMult(1,3)=2\nAliasGFactor(1,3)=2.05\n"
      "AliasGFactor(1,4)=0\nAliasMult(1,5)=abc\nAliasExcept(1,6)=7\n";
  const Got except = [](ProjectStore& s) {
    std::string all;
    for (int r = 1; r <= 6; ++r) all += s.BridgeBlock[1].Alias[r].AliasExcept + "/";
    return all;
  };
  expectAll({
      {"old file", strain, "1//6////", except},
      {"offset of a plain kind", strain + "Style(1)=4\n", "1//6/4///", except},
      {"file with the section", "[TCREFTABLES]\n" + strain, "0/0/0/0/0/7/", except},
  });
}

TEST(ProjectReader, AnyBytesAreHarmless) {
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
