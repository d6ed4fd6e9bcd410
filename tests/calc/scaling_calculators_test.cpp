#include <gtest/gtest.h>

#include "calc/answers.h"
#include "calc/mv_per_volt.h"
#include "calc/resistance.h"
#include "calc/source_kinds.h"
#include "calc/two_point.h"

namespace ostrand {
namespace {

constexpr auto kKeeps = std::nullopt;  // what is shown stays

LineCalcRecord points(const char* yMax, const char* yMin, const char* xMax, const char* xMin) {
  return {yMax, yMin, "", xMax, xMin, ""};
}

TEST(TwoPoint, SolvesTheLine) {
  const std::pair<LineCalcRecord, const char*> cases[] = {
      {points("100", "0", "100", "0"), "1.0 0.0"},
      {points("500", "0", "20", "4"), "31.25 -125.0"},
      {points("-40", "60", "10", "0"), "-10.0 60.0"},
      // Text after a number is ignored, a text without a number is 0.
      {points("100 kPa", "low", "2mV", ""), "50.0 0.0"},
      {points("1e2", ".5", "+10", "-10"), "4.975 50.25"},
      // Offsets use the shown multiplier: 0.33333 * 300 and 333.333 * 1.
      {points("1", "0", "303", "300"), "0.33333 -99.999"},
      {points("1000", "0", "4", "1"), "3.33333e2 -333.333"},
      // Nine characters, including point and sign, take the exponent.
      {points("1000", "0", "3", "0"), "3.33333e2 0.0"},
      {points("12345.67", "0", "1", "0"), "12345.67 0.0"},
      {points("12345.678", "0", "1", "0"), "1.23457e4 0.0"},
      {points("-1234.567", "0", "1", "0"), "-1.23457e3 0.0"},
      {points("1000000", "0", "1", "0"), "1.00000e6 0.0"},
      {points("1", "0", "2000", "1000"), "0.001 -1.0"},
      {points("10000000", "0", "2", "1"), "1.00000e7 -1.00000e7"},
      {points("0.000005", "0", "1", "0"), "0.00001 0.0"},
      {points("0.000004", "0", "1", "0"), "0.0 0.0"},
      // Without a span the shown answer stays.
      {points("100", "0", "5", "5"), "kept"},
      {points("100", "0", "", "0"), "kept"},
      {points("100", "0", "x", "y"), "kept"},
      {points("100", "0", "1e999", "0"), "kept"},
      {points("1e999", "0", "1", "0"), "kept"},
      {points("1e300", "-1e300", "1e-300", "0"), "kept"},
  };
  for (const auto& [record, text] : cases) {
    const auto line = SolveLine(record);
    EXPECT_EQ(line ? line->M + " " + line->B : "kept", text) << record.YMax << " " << record.XMax;
  }
}

TEST(TwoPoint, TriesTheLineShown) {
  const LineAnswers line = {"31.25", "-125.0"};
  EXPECT_EQ(LineXAt(line, "250"), "12.0");
  EXPECT_EQ(LineXAt(line, ""), "4.0");
  EXPECT_EQ(LineYAt(line, "12"), "250.0");
  EXPECT_EQ(LineYAt(line, "4 mA"), "0.0");
  EXPECT_EQ(LineYAt({"3.33333e2", "0.0"}, "3"), "999.999");
  EXPECT_EQ(LineXAt({"1.00000e6", "0.0"}, "1"), "0.0");
  EXPECT_EQ(LineYAt({"1.00000e6", "0.0"}, "2.5"), "2.50000e6");
  EXPECT_EQ(LineXAt({"0.0", "7.0"}, "7"), kKeeps);
  EXPECT_EQ(LineYAt({"0.0", "7.0"}, "3"), "7.0");
  EXPECT_EQ(LineXAt({"", ""}, "3"), kKeeps);
  EXPECT_EQ(LineYAt({"", ""}, "3"), kKeeps);
  EXPECT_EQ(LineYAt(line, "1e999"), kKeeps);
}

TEST(TwoPoint, ScrollsBetweenTheEnds) {
  LineCalcRecord record = points("300", "-100", "1", "0");
  const std::pair<int, const char*> steps[] = {
      {-1, "-100.0"}, {0, "-100.0"}, {250, "0.0"}, {1000, "300.0"}, {1001, "300.0"}};
  for (const auto& [step, yOut] : steps) EXPECT_EQ(LineYOutAt(record, step), yOut) << step;
  const struct {
    const char* yOut;
    int position;
  } cases[] = {{"-100", 0}, {"0", 250}, {"300", 1000}, {"-101", 0}, {"301", 1000}, {"x", 250}};
  for (const auto& c : cases) {
    record.YOut = c.yOut;
    EXPECT_EQ(LineScrollPosition(record), c.position) << c.yOut;
  }
  EXPECT_EQ(LineScrollPosition(points("5", "5", "1", "0")), 0);
  EXPECT_EQ(LineScrollPosition(points("1e999", "5", "1", "0")), 0);
  // An axis that falls scrolls from its YMin too.
  EXPECT_EQ(LineYOutAt(points("0", "10", "1", "0"), 100), "9.0");
}

TEST(MVPerVolt, ShowsTheMultiplierBySignificantDigits) {
  const struct {
    const char *mVPerV, *fullScale, *text;
  } cases[] = {
      {"50", "500", "10.000000"},
      {"2", "1000", "500.00000"},
      {"3", "1", "0.3333333"},
      {"1", "10", "10.000000"},
      {"1", "999999.5", "999999.5"},
      {"0.5", "1000000", "2000000.0"},
      {"2", "-1000", "-500.0000000"},
      {"2 mV/V", "100 kN", "50.000000"},
      {"2", "", "0.0000000"},
      {"0", "500", "ERROR"},
      {"", "0", "ERROR"},
      {"1e999", "500", "ERROR"},
      {"1e-300", "1e300", "ERROR"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(MVPerVoltMultiplier({c.mVPerV, c.fullScale, "", ""}), c.text) << c.fullScale;
  }
}

TEST(MVPerVolt, SolvesOneOfThree) {
  using enum MVPerVoltSolves;
  const struct {
    MVPerVoltSolves solves;
    const char* multiplier;
    MVPerVoltTryOut tryOut;
    const char* text;
  } cases[] = {
      {kUnits, "10.000000", {"", "100", "5000"}, "200.0"},
      {kMVOut, "10.000000", {"200", "", "5000"}, "100.0"},
      {kExcite, "10.000000", {"200", "100", ""}, "5000.0"},
      {kUnits, "1.0", {"", "1", "3000"}, "0.3333"},
      {kUnits, "1.0", {"", "100000", "3000"}, "33333.332"},  // limited to the digits of a single
      {kUnits, "10.000000", {"", "100", "0"}, "ERROR"},
      {kUnits, "10.000000", {"", "", ""}, "ERROR"},
      {kMVOut, "0.0000000", {"200", "", "5000"}, "ERROR"},
      {kExcite, "10.000000", {"0", "100", ""}, "ERROR"},
      {kUnits, "10.000000", {"", "100", "1e300"}, "ERROR"},
      {kUnits, "10.000000", {"", "1e38", "1"}, "ERROR"},
      {kUnits, "ERROR", {"", "100", "5000"}, "ERROR"},
      {kUnits, "", {"", "100", "5000"}, "ERROR"},
      {kExcite, "10.000000", {"200", "", ""}, "0.0"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(SolveMVPerVolt(c.solves, c.multiplier, c.tryOut), c.text)
        << c.multiplier << " " << c.tryOut.units << " " << c.tryOut.mVOut << " " << c.tryOut.excite;
  }
}

TEST(MVPerVolt, AsksAboveTheExcitationOfTheLogger) {
  for (const char* within : {"5000", "5000.0", "0", "", "-6000", "mV"}) {
    EXPECT_FALSE(ExcitationQuestion(within)) << within;
  }
  EXPECT_EQ(ExcitationQuestion("5001.0"),
            "Excitation voltage is 5001.0 mV which is greater than the 5000 mV limit of the "
            "logger.\r\nDo you want to go back and edit the values?");
  EXPECT_TRUE(ExcitationQuestion("5000.0001"));
  EXPECT_TRUE(ExcitationQuestion("1e999"));
}

TEST(Resistance, TakesTheResistorAsMultiplier) {
  const struct {
    RsCalcRecord record;
    std::optional<std::string> text;
  } cases[] = {
      {{"1000", "Ohms"}, "1000.0"},     {{"1000", "kOhms"}, "1.0"},
      {{"1000", ""}, "1000.0"},         {{"1000", "KOHMS"}, "1.0"},
      {{"350 ohm", "Ohms"}, "350.0"},   {{"1234.5678", "kOhms"}, "1.234568"},
      {{"0.125", "kOhms"}, "0.000125"}, {{"", "Ohms"}, "0.0"},
      {{"1e999", "Ohms"}, kKeeps},
  };
  for (const auto& c : cases) EXPECT_EQ(ResistanceMultiplier(c.record), c.text) << c.record.RsOhms;
  EXPECT_EQ(ResistanceHandedBack("1.234568"), "1.234568");
  EXPECT_EQ(ResistanceHandedBack("1000.0"), "1000.0");
  EXPECT_EQ(ResistanceHandedBack(""), kKeeps);
}

TEST(Answers, HandBackTheNumberShown) {
  EXPECT_EQ(NumberHandedBack("3,600.0"), "3600.0");
  EXPECT_EQ(NumberHandedBack("-1,234,567.5"), "-1234567.5");
  EXPECT_EQ(NumberHandedBack("1.00000e6"), "1.00000e6");
  EXPECT_EQ(NumberHandedBack("ERROR"), kKeeps);
  EXPECT_EQ(NumberHandedBack(""), kKeeps);
}

}  // namespace
}  // namespace ostrand
