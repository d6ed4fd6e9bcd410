#include "generator/calc_fields.h"

#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class CalcFieldsTest : public Generated {
 protected:
  CalcFieldData& Field(int f, const char* name) {
    store.CalcFields.CalcFieldCount = static_cast<i16>(f);
    store.CalcFields.Field[f].CalcField[1] = name;
    store.CalcFields.Field[f].CalcField[2] = "1";
    return store.CalcFields.Field[f];
  }
};

// Of equal names the last field declares; "Speed 1" must not come between "Speed" and "SPEED".
TEST_F(CalcFieldsTest, RepeatedNames) {
  const char* names[] = {"Speed", "Force", " SPEED ", "Speed 1", "force", "Speed", "", "Last"};
  const bool repeated[] = {true, true, true, false, false, false, false, false};
  for (int f = 1; f <= 8; ++f) Field(f, names[f - 1]);
  const auto found = CalcFieldRepeated(store.CalcFields);
  for (int f = 1; f <= 8; ++f) EXPECT_EQ(found[f], repeated[f - 1]) << f;
}

TEST_F(CalcFieldsTest, Declarations) {
  Field(1, "Speed").Public = kTrue;
  CalcFieldData& power = Field(2, "Power");
  power.CalcField[3] = "kW";
  Field(3, "speed").CalcField[3] = "m/s";
  Run();
  ExpectRun(
      {"", "'" + std::string(21, '\\') + " CALC FIELD CONSTANTS " + std::string(21, '/'), "",
       "'" + std::string(26, '_') + " Calc Field " + std::string(26, '_'),
       At66("Dim Power", "'Declare Power as variable"), At66("Units Power = kW", "'Power Units"),
       At66("Dim speed", "'Declare speed as variable"), At66("Units speed = m/s", "'speed Units")});
}

// A repeated field keeps its arrays. The data of array 1 are cut off from their comment by one
// blank when they are long, those of array 2 take a shorter comment.
TEST_F(CalcFieldsTest, LevelCrossing) {
  Field(1, "A");
  CalcFieldData& field = Field(2, "B");
  field.Output.OutputSelect[6][kLevelCrossing] = 1;
  store.CalcFields.Field[1].Output.OutputSelect[2][kLevelCrossing] = 1;
  HistoSet& level = field.Output.Histo[6];
  level.NumDims = 1;
  level.LevNumLevels = 30;
  level.LevNumTests = 30;
  Run();
  std::string zeros = "Data 0";
  for (int i = 1; i < 30; ++i) zeros += ",0";  // 64 characters: "Data " and 30 digits, 29 commas
  ExpectRun({At66("Dim Calc12LC1(0)", "'Formula1 level crossing array 1"),
             At66("Data ", "'Formula1 data for array 1"),
             At66("Dim Calc12LC2(1)", "'Formula1 level crossing array 2"),
             At66("Dim Calc26LC1(30)", "'Formula2 level crossing array 1"),
             At66(zeros, "'Formula2 data for array 1"),
             At66("Dim Calc26LC2(30)", "'Formula2 level crossing array 2"),
             At66(zeros, "'Formula2 data for array 2"),
             At66("Dim LCCalc1_2(2)", "'Formula1 source for level crossing"),
             At66("Dim LCCalc2_6(2)", "'Formula2 source for level crossing")});
  level.LevelVarOne[0] = 10;
  level.LevelVarTwo[0] = 10;
  Run();
  zeros.insert(5, "1");
  EXPECT_EQ(Count(zeros + " 'Formula2 data for array 1"), 1);
  EXPECT_EQ(Count(zeros + " 'Data for array 2"), 1);
}

TEST_F(CalcFieldsTest, ALongNameEndsTheSection) {
  Field(1, "First");
  Field(2, "A_name_that_is_far_too_long_for_a_statement_with_a_comment_behind_it");
  Field(3, "Third");
  ExpectFault(5, "Invalid procedure call or argument", "CalcVarConstants");
  Run();
  EXPECT_EQ(Count(At66("Dim First", "'Declare First as variable")), 1);
  EXPECT_EQ(Count(At66("Dim Third", "'Declare Third as variable")), 0);
  ExpectEnd();
}

}  // namespace
}  // namespace ostrand::testing
