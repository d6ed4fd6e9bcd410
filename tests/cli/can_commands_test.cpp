// The command that looks at lists of CAN items.
#include <gtest/gtest.h>

#include <filesystem>

#include "support/cli_run.h"
#include "support/temp_folder.h"

namespace ostrand {
namespace {

using testing::Outcome;
using testing::ReadDisk;
using testing::RunOstrand;
using testing::TempFolder;
using testing::WriteDisk;

constexpr std::string_view kBase =
    "Description,Priority,Reserved,DataPage,PDUFormat,PDUSpecific,SourceAddress,DataType,StartBit,"
    "Numbits,Alias,Mult,Offset,Units";

class CliCan : public ::testing::Test {
 protected:
  // A list with these lines behind its header.
  std::string listOf(std::string_view header, std::string_view lines) {
    std::string path = folder / "engine.29LST";
    WriteDisk(path, "' engine\r\nORVUSV5\r\n" + std::string(header) + "\r\n" + std::string(lines));
    return path;
  }
  TempFolder folder;
};

TEST_F(CliCan, ListsAndChecksItems) {
  const std::string path =
      listOf(std::string(kBase) + ",TxDataID,TxDataFrame,RxDataMatch,RxTimeout",
             "\"&HSpeed, EEC1\",3,0,0,240,4,0,2,25,16,EngSpeed,0.125,0,RPM,0,"
             "&H0000000000000000,&HXXXXXXXXXXXXXXXX,1000\r\n"
             "\"Oil \xB0\",291,-1,-1,-1,-1,0,2,25,8,OilTemp,1,-40,Deg_C,&H18DB33F1,"
             "&H00000000005C0102,&HXXXXXXXXXX5C41XX,200\r\n");
  const std::string bytes = ReadDisk(path);
  const Outcome list = RunOstrand({"can", "list", path});
  EXPECT_EQ(list.code, 0);
  EXPECT_EQ(list.err, "");
  // 3 * 2^26 + 240 * 2^16 + 4 * 2^8 = 0xCF00400
  EXPECT_EQ(
      list.out,
      path +
          ": 2 items, identifiers of 29 bits\n"
          "No.  Identifier  PGN     Message  Type  Bit  Bits  Mult   Offset  Units  Alias     "
          "Description\n"
          "1    &HCF00400   &HF004  Rx       2     25   16    0.125  0       RPM    EngSpeed  "
          "Speed, EEC1\n"
          "2    291         1       Tx/Rx    2     25   8     1      -40     Deg_C  OilTemp   "
          "Oil \xC2\xB0\n"
          "     sends &H00000000005C0102 to &H18DB33F1, takes &HXXXXXXXXXX5C41XX within 200 "
          "ms\n");
  const Outcome check = RunOstrand({"can", "check", path});
  EXPECT_EQ(check.code, 0);
  EXPECT_EQ(check.out, path + ": all items can be picked\n");
  EXPECT_EQ(ReadDisk(path), bytes);
  EXPECT_EQ(RunOstrand({"can", "list", path}, {.out = "/dev/full"}).code, 1);
}

TEST_F(CliCan, ListingStopsAtWhatCannotBeReadAndCheckingGoesOn) {
  const std::string path = listOf(kBase,
                                  "\"Speed\",3,0,0,240,4,0,2,25,16,EngSpeed,0.125,0,RPM\r\n"
                                  "\"Cut off\",3,0,0,240\r\n"
                                  "\r\n"
                                  "\"Seventh\",3,0,0,240,4,0,7,25,16,Other,1,0,RPM\r\n");
  const Outcome list = RunOstrand({"can", "list", path});
  EXPECT_EQ(list.code, 1);
  EXPECT_EQ(list.out, "");
  EXPECT_EQ(list.err,
            "ostrand: An error occurred while reading the pick list.\nCheck Line Number : 5\n");
  const Outcome check = RunOstrand({"can", "check", path});
  EXPECT_EQ(check.code, 1);
  EXPECT_EQ(check.err, "");
  EXPECT_EQ(check.out, path + ": line 5: 5 fields where the header has 14\n" + path +
                           ": line 7: DataType \"7\" is out of the range from 1 to 6\n");
}

TEST_F(CliCan, FilesThatAreNoListsAreTold) {
  const std::string none = folder / "none.11PCK";
  const std::string code = folder / "code.29LST";
  const std::string header = folder / "header.11LST";
  WriteDisk(code, "ORVUSv5\r\n" + std::string(kBase) + "\r\n");
  WriteDisk(header, "ORVUSV5\r\n" + std::string(kBase) + " \r\n");
  struct Case {
    std::string path;
    std::string place;
    std::string text;
  };
  const Case cases[] = {
      {none, "", "The file " + none + " is not available."},
      {code, "line 1: ", "The file " + code + " is available but the code is incorrect."},
      {header, "line 2: ", "The file " + header + " is available but the header is incorrect."},
  };
  for (const Case& row : cases) {
    const Outcome list = RunOstrand({"can", "list", row.path});
    EXPECT_EQ(list.code, 1);
    EXPECT_EQ(list.err, "ostrand: " + row.text + "\n");
    const Outcome check = RunOstrand({"can", "check", row.path});
    EXPECT_EQ(check.code, 1);
    EXPECT_EQ(check.out, row.path + ": " + row.place + row.text + "\n");
  }
  EXPECT_EQ(RunOstrand({"can", "show", code}).code, 2);
  EXPECT_EQ(RunOstrand({"can", "list"}).code, 2);
}

}  // namespace
}  // namespace ostrand
