// Files with lists of CAN items: reading, writing, and reports on faulty ones.
#include "can/pick_list.h"

#include <gtest/gtest.h>

#include <random>

#include "can/pick_list_report.h"
#include "support/memory_filesystem.h"
#include "text/number.h"

namespace ostrand {
namespace {

const std::string kBase =
    "Description,Priority,Reserved,DataPage,PDUFormat,PDUSpecific,SourceAddress,DataType,StartBit,"
    "Numbits,Alias,Mult,Offset,Units";
const std::string kLong = kBase + ",TxDataID,TxDataFrame,RxDataMatch,RxTimeout";

std::string linesOf(std::initializer_list<std::string> lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\r\n";
  return text;
}

template <typename... Parts>
std::string joined(const Parts&... parts) {
  std::string all;
  ((all += parts, all += '|'), ...);
  return all;
}

// All members of an item that a list stores.
std::string memberText(const CanListItem& item) {
  const cCanConfig& c = item.Config;
  const auto number = [](auto value) { return NumberText(static_cast<int>(value)); };
  return joined(c.Description, c.DataID(), c.DataIDIsHex() ? "hex" : "decimal",
                item.J1939Fields ? "fields" : "plain", number(c.DataStyle), number(c.StartBit),
                number(c.NumBits), item.Alias, NumberText(item.Mult), NumberText(item.Offset),
                item.Units, number(c.MessageType()), c.TxDataID(), c.TxDataFrame, c.RxDataMatch,
                number(c.RxTimeout));
}

// The values of a new item, after whether it transmits.
constexpr std::string_view kReceiveOnly = "0|0|&H0000000000000000|&HXXXXXXXXXXXXXXXX|1000|";

TEST(PickList, ItemsAreReadFieldByField) {
  const std::string content = linesOf({
      "' engine, second edition",
      "",
      "QRLVXMPTEN",
      "'Description,Priority",
      kLong,
      // 6 * 2^26 + 254 * 2^16 + 202 * 2^8 + 3 = 0x18FECA03
      "\"&HEngine, \"\"hot\"\" side\",6,0,0,254,202,3,2,9,16,EngTemp,0.125,-40,degC,&H18EA0003,"
      "&H00FECA0000000000,&HXXXXCA00XXXXXXXX,250",
      "  ",
      "Speed , &H7 ,1,1,&HFF,0,255,6,1,8,,1E-3,0,,,,,",
      "\"Plain\",&H1ABC,-1,-1,-1,-1,0,1,64,1,Raw,1,0,\"\",,,,",
      "\"&HShown in hex\",2748,-1,-1,-1,-1,99,1,64,1,Raw2,1,0,,0,&H0000000000000000,"
      "&HXXXXXXXXXXXXXXXX,1000",
  });
  // The last line needs no line break.
  const auto list =
      CanListOf("/lists/Engine.29pck", std::string_view(content).substr(0, content.size() - 2));
  ASSERT_TRUE(list) << list.ErrorText();
  const auto& items = list.Value().Items;
  ASSERT_EQ(items.size(), 4U);
  EXPECT_EQ(memberText(items[0]),
            "Engine, \"hot\" side|&H18FECA03|hex|fields|2|9|16|EngTemp|0.125|-40|degC|1|"
            "&H18EA0003|&H00FECA0000000000|&HXXXXCA00XXXXXXXX|250|");
  // 7 * 2^26 + 3 * 2^24 + 255 * 2^16 + 255 = 0x1FFF00FF
  EXPECT_EQ(memberText(items[1]),
            "Speed|536805631|decimal|fields|6|1|8||0.001|0||" + std::string(kReceiveOnly));
  EXPECT_EQ(memberText(items[2]),
            "Plain|&H1ABC|hex|plain|1|64|1|Raw|1|0||" + std::string(kReceiveOnly));
  EXPECT_EQ(memberText(items[3]),
            "Shown in hex|&HABC|hex|plain|1|64|1|Raw2|1|0||1" + std::string(kReceiveOnly.substr(1)))
      << "filled, though as a new item has it";
}

TEST(PickList, WritesTheListLineByLine) {
  CanList list;
  list.DataIDType = ORVUS_CAN_DATAID_29BIT;
  CanListItem item;
  item.Config.DataID("&H18FECA03");
  item.Config.Description = "Engine, hot";
  item.Config.DataStyle = 2;
  item.J1939Fields = true;
  item.Alias = "EngTemp";
  item.Mult = 0.1F;
  item.Offset = -40;
  item.Units = "degC";
  list.Items.push_back(item);
  EXPECT_EQ(
      CanListContent(list),
      linesOf({"ORVUSV5", kBase, "\"&HEngine, hot\",6,0,0,254,202,3,2,1,1,EngTemp,0.1,-40,degC"}));

  CanListItem plain;
  plain.Config.SetMode(ORVUS_CAN_DATAID_11BIT);
  plain.Config.DataID("2016");
  plain.Config.Description = "Request";
  plain.Config.SetMsgMode(ORVUS_CAN_MSGTYPE_TxRxPair);
  plain.Config.TxDataID("&H7DF");
  plain.Config.TxDataFrame = "&H02010C0000000000";
  plain.Config.RxTimeout = 50;
  plain.Config.StartBit = 25;
  plain.Config.NumBits = 16;
  list.Items.push_back(plain);
  EXPECT_EQ(
      CanListContent(list),
      linesOf({"ORVUSV5", kLong, "\"&HEngine, hot\",6,0,0,254,202,3,2,1,1,EngTemp,0.1,-40,degC,,,,",
               "\"Request\",2016,-1,-1,-1,-1,0,0,25,16,,1,0,,&H7DF,&H02010C0000000000,"
               "&HXXXXXXXXXXXXXXXX,50"}));
}

TEST(PickList, TransmittingItemAddsColumnsToTheHeader) {
  CanList list;
  list.Items.resize(1);
  list.Items[0].Config.SetMsgMode(ORVUS_CAN_MSGTYPE_TxOnly);
  EXPECT_TRUE(CanListContent(list).starts_with("ORVUSV5\r\n" + kLong + "\r\n"));
}

CanListItem randomItem(std::mt19937& random, OrvusCanDataIDTypes type) {
  const auto below = [&](unsigned most) { return static_cast<int>(random() % most); };
  const auto text = [&] {
    constexpr std::string_view kLetters = "ab,\r\"' &H\\\xE9\t;";
    std::string letters;
    for (int n = below(9); n > 0; --n) letters += kLetters[random() % kLetters.size()];
    return letters;
  };
  const auto identifier = [&] {
    return (below(2) != 0 ? "&H" + HexText(random()) : NumberText(static_cast<int>(random() >> 1)));
  };
  CanListItem item;
  cCanConfig& config = item.Config;
  config.SetMode(type);
  config.DataID(identifier());
  config.Description = text();
  if (config.Description.starts_with("&H")) config.Description.clear();
  item.J1939Fields = type == ORVUS_CAN_DATAID_29BIT && below(2) != 0;
  config.DataStyle = static_cast<i16>(random());
  config.StartBit = static_cast<i16>(random());
  config.NumBits = static_cast<i16>(random());
  item.Alias = text();
  item.Mult = static_cast<float>(below(1000000)) / 3E7F - 0.01F;
  item.Offset = static_cast<float>(below(1000)) * 1E12F;
  item.Units = text();
  if (below(2) != 0) {
    config.SetMsgMode(ORVUS_CAN_MSGTYPE_TxRxPair);
    if (below(4) == 0) return item;  // with the values of a new item
    config.TxDataID(identifier());
    config.TxDataFrame = text();
    config.RxDataMatch = text();
    config.RxTimeout = below(50000) + 1;
  }
  return item;
}

TEST(PickList, ListSurvivesWritingAndReading) {
  std::mt19937 random(8);
  constexpr std::string_view kNames[] = {"a.11LST", "a.11PCK", "a.29LST", "a.29PCK"};
  for (int round = 0; round < 400; ++round) {
    const std::string_view name = kNames[round % 4];
    CanList list;
    list.DataIDType = *CanListTypeOf(name);
    for (int n = round % 7; n > 0; --n) {
      list.Items.push_back(randomItem(random, list.DataIDType));
    }
    testing::MemoryFileSystem files;
    ASSERT_TRUE(WriteCanList(files, name, list));
    const auto back = ReadCanList(files, name);
    ASSERT_TRUE(back) << back.ErrorText() << files.files.begin()->second;
    EXPECT_EQ(back.Value().DataIDType, list.DataIDType);
    ASSERT_EQ(back.Value().Items.size(), list.Items.size());
    for (std::size_t at = 0; at < list.Items.size(); ++at) {
      EXPECT_EQ(memberText(back.Value().Items[at]), memberText(list.Items[at]));
    }
    EXPECT_EQ(CanListContent(back.Value()), files.files.begin()->second);
  }
}

TEST(PickList, FilesOtherThanListsAreRefused) {
  struct Case {
    std::string name, content, message;
  };
  const std::string item = "\"A\",6,0,0,254,202,3,2,9,16,A,1,0,";
  const std::string code = " is available but the code is incorrect.";
  const std::string header = " is available but the header is incorrect.";
  const Case cases[] = {
      {"/l/a.29LST", "", code},
      {"/l/a.29LST", "'ORVUSV5\r\n\r\n", code},
      {"/l/a.29LST", linesOf({"orvusv5", kBase, item}), code},
      {"/l/a.29LST", linesOf({" ORVUSV5", kBase, item}), code},
      {"/l/a.29LST", std::string("\0\x01\xFF\n\xFE", 5), code},
      {"/l/a.29LST", linesOf({"ORVUSV5"}), header},
      {"/l/a.29LST", linesOf({"ORVUSV5", kBase + " ", item}), header},
      {"/l/a.29LST", linesOf({"ORVUSV5", kBase + ",TxDataID", item}), header},
      {"/l/a.29LST", linesOf({"ORVUSV5", item}), header},
      {"/l/a.30LST", linesOf({"ORVUSV5", kBase, item}),
       " is not a pick list: its name must end in .11LST, .11PCK, .29LST or .29PCK."},
  };
  for (const Case& row : cases) {
    testing::MemoryFileSystem files;
    files.files[row.name] = row.content;
    const auto list = ReadCanList(files, row.name);
    ASSERT_FALSE(list) << row.content;
    EXPECT_EQ(list.ErrorText(), "The file " + row.name + row.message);
  }
  testing::MemoryFileSystem none;
  EXPECT_EQ(ReadCanList(none, "/l/no.29LST").ErrorText(), "The file /l/no.29LST is not available.");
  none.files["/l/big.29LST"] = std::string(kMaxCanListBytes + 1, '\'');
  EXPECT_FALSE(ReadCanList(none, "/l/big.29LST"));
}

TEST(PickList, FaultyItemStopsReadingAndReportsItsLine) {
  const std::string good = "\"A\",6,0,0,254,202,3,2,9,16,A,1,0,";
  constexpr std::string_view kFaulty[] = {
      "\"B\",6,0,0,254,202,3,2,9,16,A,1,0",            // a field too few
      "\"B\",6,0,0,254,202,3,2,9,16,A,1,0,,",          // one too many
      "B, hot,6,0,0,254,202,3,2,9,16,A,1,0,",          // an open comma
      "\"B,6,0,0,254,202,3,2,9,16,A,1,0,",             // an open quote
      "\"B\" hot,6,0,0,254,202,3,2,9,16,A,1,0,",       // text after a quote
      "\"B\",256,0,0,254,202,3,2,9,16,A,1,0,",         // more than a byte
      "\"B\",6,-1,0,254,202,3,2,9,16,A,1,0,",          // one field absent
      "\"B\",,0,0,254,202,3,2,9,16,A,1,0,",            // a blank field
      "\"B\",&HG,-1,-1,-1,-1,0,2,9,16,A,1,0,",         // no identifier
      "\"B\",4294967296,-1,-1,-1,-1,0,2,9,16,A,1,0,",  // beyond 32 bits
      "\"B\",6,0,0,254,202,3,32768,9,16,A,1,0,",       // beyond 16 bits
      "\"B\",6,0,0,254,202,3,2,x,16,A,1,0,",           //
      "\"B\",6,0,0,254,202,3,2,9,,A,1,0,",             //
      "\"B\",6,0,0,254,202,3,2,9,16,A,1.0.0,0,",       //
      "\"B\",6,0,0,254,202,3,2,9,16,A,1,1E39,",        // beyond a single
      "\xFF\xFE\x01",
  };
  for (const std::string_view faulty : kFaulty) {
    const std::string content =
        linesOf({"'", "ORVUSV5", kBase, good, "' more", "", std::string(faulty), good, "?"});
    const auto list = CanListOf("a.29LST", content);
    ASSERT_FALSE(list) << faulty;
    EXPECT_EQ(list.ErrorText(),
              "An error occurred while reading the pick list.\r\nCheck Line Number : 7");
    const auto findings = CheckCanListContent("a.29LST", content);
    ASSERT_GE(findings.size(), 2U);
    EXPECT_EQ(findings[0].Line, 7) << "and the check goes on";
    EXPECT_TRUE(findings[0].Wrong);
    EXPECT_EQ(findings.back().Line, 9);
  }
  for (const std::string_view tail : {"x,f,m,1", "1,f,m,x", ",f,m,1", "1,f,m,", "1,f,m"}) {
    EXPECT_FALSE(CanListOf("a.29LST", linesOf({"ORVUSV5", kLong, good + "," + std::string(tail)})))
        << tail;
  }
  EXPECT_FALSE(CanListOf("a.11LST", linesOf({"ORVUSV5", kBase, good})))
      << "J1939 fields in a list of short identifiers";
}

TEST(PickList, CheckReportsSuspiciousValues) {
  const std::string content = linesOf({
      "ORVUSV5",
      kLong,
      "\"A[1\",9,0,0,254,202,3,7,0,65,9A,1,0,deg C,&H20000000,&H12,&HX0,20001",
      "\"B\",536870912,-1,-1,-1,-1,0,1,1,1,Oil,1,0,,,,,",
      "\"b\",-1,-1,-1,-1,-1,0,1,1,1,OIL,1,0,,,,,",
      "\"\",&H1FFFFFFF,-1,-1,-1,-1,0,1,1,1,,1,0,,1,&H0000000000000000,&HXX00XXffXXXXXXXX,1",
  });
  // The line, "!" for an item that cannot be picked, and the start of the text.
  constexpr std::string_view kExpected[] = {
      R"(3!Description "A[1")",
      R"(3 Priority "9" is too large and is read as 7)",
      R"(3!DataType "7")",
      R"(3!StartBit "0")",
      R"(3!Numbits "65")",
      R"(3!Alias "9A")",
      R"(3!Units "deg C")",
      R"(3 TxDataID "&H20000000" is out of range and is read as &H1FFFFFFF)",
      R"(3!TxDataFrame "&H12")",
      R"(3!RxDataMatch "&HX0")",
      R"(3!RxTimeout "20001")",
      R"(4 Priority "536870912" is out of range and is read as 536870911)",
      R"(5 Priority "-1" is out of range and is read as 0)",
      R"(5 Alias "OIL" is in line 4 too)",
      R"(5 Description "b" is in line 4 too)",
  };
  const auto findings = CheckCanListContent("a.29LST", content);
  ASSERT_EQ(findings.size(), std::size(kExpected));
  for (std::size_t at = 0; at < findings.size(); ++at) {
    const CanListFinding& found = findings[at];
    const std::string text = NumberText(found.Line) + (found.Wrong ? "!" : " ") + found.Text;
    EXPECT_TRUE(text.starts_with(kExpected[at])) << text;
  }
  EXPECT_EQ(CheckCanListContent("a.29LST", linesOf({"ORVUSV5", kBase})).size(), 1U) << "empty";
  const auto broken = CheckCanListContent("a.29LST", linesOf({"", "ORVUSV5", "'", "Description"}));
  ASSERT_EQ(broken.size(), 1U);
  EXPECT_EQ(broken[0].Line, 4);
}

TEST(PickList, FailedWriteKeepsOldList) {
  CanList list;
  list.Items.resize(3);
  testing::MemoryFileSystem disk;
  disk.files["/l/a.29LST"] = "before";
  testing::FaultyFileSystem counting(disk, 0);
  ASSERT_TRUE(WriteCanList(counting, "/l/count.29LST", list));
  ASSERT_GT(counting.Calls(), 3);
  for (int call = 1; call < counting.Calls(); ++call) {
    testing::FaultyFileSystem faulty(disk, call);
    EXPECT_FALSE(WriteCanList(faulty, "/l/a.29LST", list)) << call;
    EXPECT_EQ(disk.files["/l/a.29LST"], "before");
  }
  disk.readOnly.insert("/l/a.29LST");
  EXPECT_FALSE(WriteCanList(disk, "/l/a.29LST", list));
  EXPECT_EQ(disk.files["/l/a.29LST"], "before");
  EXPECT_EQ(disk.files.size(), 2U) << "no temporary file remains";

  testing::FaultyFileSystem unreadable(disk, 1, true);
  const auto back = ReadCanList(unreadable, "/l/a.29LST");
  ASSERT_FALSE(back);
  EXPECT_TRUE(back.ErrorText().starts_with("The file /l/a.29LST is not available."));
}

}  // namespace
}  // namespace ostrand
