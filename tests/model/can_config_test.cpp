#include "model/can_config.h"

#include <gtest/gtest.h>

namespace ostrand {
namespace {

constexpr auto k11 = ORVUS_CAN_DATAID_11BIT;
constexpr auto k29 = ORVUS_CAN_DATAID_29BIT;

TEST(CanConfig, IdentifierIsLimitedAndKeepsItsForm) {
  const struct {
    OrvusCanDataIDTypes type;
    std::string given, held;
  } cases[] = {
      {k11, "3000", "2047"},
      {k11, "&H7FF", "&H7FF"},
      {k29, "&HFFFFFFFF", "&H1FFFFFFF"},
      {k29, "&h18feca00", "&H18FECA00"},
      {k29, "&H" + std::string(400, 'F'), "&H1FFFFFFF"},
      {k29, "&H" + std::string(400, '0') + "a", "&HA"},
      {k29, "&H0", "&H0"},
      {k29, " 217056256 ", "217056256"},
      {k29, "1E3", "1000"},
      {k29, "536870912", "536870911"},
      {k29, "2.5", "2"},
      {k29, "-5", "0"},
  };
  for (const auto& c : cases) {
    cCanConfig can;
    can.SetMode(c.type);
    can.DataID(c.given);
    can.TxDataID(c.given);
    EXPECT_EQ(can.DataID(), c.held);
    EXPECT_EQ(can.TxDataID(), c.held);
    EXPECT_EQ(can.DataIDIsHex(), c.held[0] == '&');
    for (const char* text : {"", "&H", "&HXY", "abc", "12 34", "1E400"}) {  // not a number
      can.DataID(text);
      EXPECT_EQ(can.DataID(), c.held) << text;
    }
  }
  cCanConfig can;
  can.DataID("3000");
  can.SetMode(k11);  // changing the kind does not limit
  EXPECT_EQ(can.DataID(), "3000");
  EXPECT_EQ(can.PGNVal(), "");
}

TEST(CanConfig, FieldsFollowTheIdentifier) {
  // 110 1 0 11111110 11001010 00100001
  const struct {
    OrvusCanJ1939Fields field;
    i16 startBit;
    int value;
    const char* bits;
  } cases[] = {
      {ORVUS_CAN_J1939_ID_PRIORITY, 26, 6, "110"},
      {ORVUS_CAN_J1939_ID_RESERVED, 25, 1, "1"},
      {ORVUS_CAN_J1939_ID_DATAPAGE, 24, 0, "0"},
      {ORVUS_CAN_J1939_ID_PDUFORMAT, 16, 254, "11111110"},
      {ORVUS_CAN_J1939_ID_PDUSPECIFIC, 8, 202, "11001010"},
      {ORVUS_CAN_J1939_ID_SOURCEADDR, 0, 33, "00100001"},
  };
  cCanConfig can;
  can.DataID("&H1AFECA21");
  cCanConfig rebuilt;
  for (const auto& c : cases) {
    EXPECT_EQ(can.J1939_FieldStartBit(c.field), c.startBit);
    EXPECT_EQ(can.J1939_FieldVal(c.field), c.value);
    EXPECT_EQ(can.J1939_FieldBinString(c.field), c.bits);
    rebuilt.J1939_FieldVal(c.field, static_cast<std::uint8_t>(c.value));
  }
  EXPECT_EQ(can.PGNVal(), "&HFECA");
  EXPECT_EQ(rebuilt.DataID(), "452905505");  // decimal, as its "0" was
  EXPECT_EQ(rebuilt.PGNVal(), "65226");

  const cCanConfig copy = can.Clone();
  can.J1939_FieldVal(ORVUS_CAN_J1939_ID_PRIORITY, 9);
  EXPECT_EQ(can.J1939_FieldVal(ORVUS_CAN_J1939_ID_PRIORITY), 7);
  EXPECT_EQ(can.DataID(), "&H1EFECA21");
  EXPECT_EQ(copy.DataID(), "&H1AFECA21");
}

TEST(CanConfig, ElevenBitIdentifierHasNoFields) {
  cCanConfig can;
  can.SetMode(k11);
  can.DataID("&H7FF");
  can.J1939_FieldVal(ORVUS_CAN_J1939_ID_SOURCEADDR, 1);
  EXPECT_EQ(can.DataID(), "&H7FF");
  EXPECT_EQ(can.J1939_FieldVal(ORVUS_CAN_J1939_ID_SOURCEADDR), 0);
  EXPECT_EQ(can.J1939_FieldBinString(ORVUS_CAN_J1939_ID_PRIORITY), "000");
  EXPECT_EQ(can.PGNVal(), "");
}

TEST(CanModule, TimingFollowsTheBaudRate) {
  const struct {
    i32 code;
    const char* text;
    i16 quanta, seg1, seg2;
  } cases[] = {{0, "1 M", 1, 5, 2},   {1, "800 K", 1, 7, 2}, {4, "125 K", 8, 5, 2},
               {6, "20 K", 40, 7, 2}, {7, "", 0, 0, 0},      {-1, "", 0, 0, 0}};
  for (const auto& c : cases) {
    cCanModule module;
    module.BaudRate = static_cast<OrvusCanBaudRates>(c.code);
    EXPECT_EQ(cCanModule::BaudRateText(c.code), c.text);
    EXPECT_EQ(module.TimeQuanta(), c.quanta) << c.code;
    EXPECT_EQ(module.TSeg1(), c.seg1) << c.code;
    EXPECT_EQ(module.TSeg2(), c.seg2) << c.code;
  }
}

}  // namespace
}  // namespace ostrand
