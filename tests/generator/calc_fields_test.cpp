#include "generator/calc_fields.h"

#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class CalcFieldsTest : public Generated {
 protected:
  CalcFieldData& Field(int f, const char* name) {
    store.CalcFields.CalcFieldCount = static_cast<i16>(f);
    store.CalcFields.Field[f].CalcField[1] = name;
    return store.CalcFields.Field[f];
  }
};

// Of equal names the last field declares; "Speed 1" must not come between them.
TEST_F(CalcFieldsTest, RepeatedNames) {
  const char* names[] = {"Speed", "Force", " SPEED ", "Speed 1", "force", "Speed", ""};
  const bool repeated[] = {true, true, true, false, false, false, false};
  for (int f = 1; f <= 7; ++f) Field(f, names[f - 1]);
  const auto found = CalcFieldRepeated(store.CalcFields);
  for (int f = 1; f <= 7; ++f) EXPECT_EQ(found[f], repeated[f - 1]) << f;
}

// A repeated field keeps its arrays. Long data of array 1 keep their comment, those of array 2 take
// a shorter one.
TEST_F(CalcFieldsTest, DeclarationsAndLevelCrossing) {
  OutputSet& output = Field(1, "Power").Output;
  Field(2, "power").CalcField[3] = "kW";
  output.OutputSelect[6][kLevelCrossing] = 1;
  HistoSet& level = output.Histo[6];
  level.NumDims = 1;
  level.LevNumLevels = level.LevNumTests = 30;
  std::string data = "Data 0";  // with 30 values of one digit 64 characters
  for (int i = 1; i < 30; ++i) data += ",0";
  for (const bool tooLong : {false, true}) {
    if (tooLong) data.insert(5, "1");
    level.LevelVarOne[0] = level.LevelVarTwo[0] = tooLong ? 10 : 0;
    Run();
    ExpectText(Bars("", 26, " Calc Field ") +
               "|Dim power~'Declare power as variable|"
               "Units power = kW~'power Units|Dim Calc16LC1(30)~'Formula1 level crossing array 1|" +
               data +
               " 'Formula1 data for array 1|Dim Calc16LC2(30)~'Formula1 level crossing array 2"
               "|" +
               data + (tooLong ? " 'Data for array 2" : " 'Formula1 data for array 2") +
               "|Dim LCCalc1_6(2)~'Formula1 source for level crossing|");
  }
}

TEST_F(CalcFieldsTest, ALongNameEndsTheSection) {
  Field(1, "First");
  Field(2, "A_name_that_is_far_too_long_for_a_statement_with_a_comment_behind_it");
  Field(3, "Third");
  ExpectFault(5, kBadCall, "CalcVarConstants");
  Run();
  ExpectText("Dim First~'Declare First as variable||'" + std::string(18, '\\') +
             " ALIASES & OTHER VARIABLES " + std::string(18, '/'));
}

}  // namespace
}  // namespace ostrand::testing
