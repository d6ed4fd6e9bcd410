#include <gtest/gtest.h>

#include <cmath>

#include "calc/flow.h"
#include "calc/more_speed.h"
#include "calc/rpm.h"
#include "calc/speed.h"
#include "model/defaults.h"
#include "model/new_store.h"
#include "text/number.h"

namespace ostrand {
namespace {

// Multiplier and try-out as shown; "kept" when there is nothing to compute.
std::string shown(const std::optional<RateAnswers>& answers) {
  return answers ? answers->multiplier + " " + answers->whatIf : "kept";
}

TEST(RpmCalculator, DividesByThePulsesOfATurn) {
  const std::pair<RpmCalcRecord, const char*> cases[] = {
      {{"100", "100"}, "0.6 60.0"},
      {{"1", "2.5"}, "60.0 150.0"},
      {{"60 teeth", ""}, "1.0 0.0"},
      {{"7", "1000000"}, "8.571429 8571428.571"},  // of the unrounded multiplier
      {{"0.5", "1"}, "120.0 120.0"},
      {{"0", "100"}, "kept"},
      {{"many", "100"}, "kept"},
      {{"1e999", "100"}, "kept"},
  };
  for (const auto& [record, text] : cases) EXPECT_EQ(shown(SolveRpm(record)), text);
}

TEST(FlowCalculator, ConvertsCalibrationSystemAndTime) {
  const std::pair<FlowCalcRecord, const char*> cases[] = {
      // CalFactor, Pulses, OutSystem, OutUnits, WhatIf
      {{1, 100, 1, 100, "100"}, "0.01 1.0 Gal/Sec"},
      {{1, 100, 1, 1, "100"}, "0.01 1.0 Gal/Sec"},
      {{1, 100, 1, 2, "100"}, "0.6 60.0 Gal/Min"},
      {{1, 100, 1, 3, "100"}, "36.0 3,600.0 Gal/Hour"},
      {{1, 100, 2, 0, "100"}, "0.037854 3.785 L/Sec"},
      {{2, 100, 1, 3, "100"}, "9.510194 951.019 Gal/Hour"},
      {{2, 100, 2, 2, "100"}, "0.6 60.0 L/Min"},
      {{1, 0.5, 1, 3, "100"}, "7,200.0 720,000.0 Gal/Hour"},
      {{1, 0.001, 2, 3, ""}, "13,627,482.4224 0.0 L/Hour"},
      {{3, 100, 0, 2, "1"}, "0.6 0.6 Gal/Min"},
      {{2, 100, 0, 2, "1"}, "0.6 0.6 L/Min"},
      {{1, 0, 1, 1, "100"}, "kept Gal/Sec"},
      {{1, INFINITY, 1, 1, "100"}, "kept Gal/Sec"},
  };
  for (const auto& [record, text] : cases) {
    EXPECT_EQ(shown(SolveFlow(record)).append(" ").append(FlowUnits(record)), text);
  }
}

struct SpeedOut {
  i16 system, units, useMins;
};
constexpr SpeedOut kSpeedOuts[] = {{1, 1, 0}, {1, 2, 1}, {1, 3, 1}, {1, 2, 0}, {1, 3, 0},
                                   {2, 1, 0}, {2, 2, 1}, {2, 3, 1}, {2, 2, 0}, {2, 3, 0}};

// The factors from pulses per second at one pulse in the input unit, to ten digits: a row for each
// input, kM to cM and mile to inch.
TEST(MoreSpeedCalculator, ConvertsEveryPairOfUnits) {
  constexpr double kFactors[6][std::size(kSpeedOuts)] = {
      {3600, 60000, 6000000, 1000, 100000, 2236.936292, 196850.3937, 2362204.724, 3280.839895,
       39370.07874},
      {3.6, 60, 6000, 1, 100, 2.236936292, 196.8503937, 2362.204724, 3.280839895, 39.37007874},
      {0.036, 0.6, 60, 0.01, 1, 0.02236936292, 1.968503937, 23.62204724, 0.03280839895,
       0.3937007874},
      {5793.6384, 96560.64, 9656064, 1609.344, 160934.4, 3600, 316800, 3801600, 5280, 63360},
      {1.09728, 18.288, 1828.8, 0.3048, 30.48, 0.6818181818, 60, 720, 1, 12},
      {0.09144, 1.524, 152.4, 0.0254, 2.54, 0.05681818182, 5, 60, 0.08333333333, 1}};
  for (i16 in = 0; in < 6; ++in) {
    for (std::size_t at = 0; at < std::size(kSpeedOuts); ++at) {
      const SpeedOut& out = kSpeedOuts[at];
      // A pulse in a thousand units shows three more digits of the factor.
      const auto answers =
          SolveMoreSpeed({static_cast<i16>(1 + in / 3), static_cast<i16>(1 + in % 3), out.system,
                          out.units, out.useMins, "0.001", "1"});
      ASSERT_TRUE(answers);
      const double factor = 1000 * kFactors[in][at];
      const double number = Val(NumberHandedBack(answers->multiplier).value_or(""));
      EXPECT_NEAR(number, factor, 6e-7 + factor * 3e-10) << in << " " << at;
    }
  }
}

TEST(MoreSpeedCalculator, ShowsMultiplierAndTryOut) {
  const std::pair<MoreSpeedCalcRecord, const char*> cases[] = {
      {{2, 1, 1, 1, 0, "8000", "100"}, "0.724205 72.42"},
      {{2, 1, 1, 3, 1, "1 a mile", ""}, "9,656,064.0 0.0"},
      {{1, 1, 1, 1, 1, "3600", "1234.5"}, "1.0 1,234.5"},  // hours stay hours
      {{1, 2, 1, 2, 0, "0", "100"}, "kept"},
      {{1, 2, 1, 2, 0, "", "100"}, "kept"},
      {{1, 2, 1, 2, 0, "1e999", "100"}, "kept"},
      {{0, 2, 1, 2, 0, "50", "100"}, "kept"},
      {{1, 4, 1, 2, 0, "50", "100"}, "kept"},
      {{1, 2, 3, 2, 0, "50", "100"}, "kept"},
      {{1, 2, 1, 0, 0, "50", "100"}, "kept"},
  };
  for (const auto& [record, text] : cases) EXPECT_EQ(shown(SolveMoreSpeed(record)), text);
}

TEST(MoreSpeedCalculator, NamesItsUnits) {
  struct Names {
    std::string_view full, brief, returned;
  };
  constexpr Names kOuts[] = {
      {"KM/Hour", "kM/Hour", "KM/Hour"},     {"Meter/Minute", "Meters/Min", "M/Min"},
      {"CM/Minute", "cM/Min", "KM/Hour"},    {"Meter/Second", "Meters/Sec", "M/Sec"},
      {"CM/Second", "cM/Sec", "KM/Hour"},    {"Miles/Hour", "Miles/Hour", "Mi/Hour"},
      {"Feet/Minute", "Feet/Min", "Ft/Min"}, {"Inches/Minute", "Inches/Min", "Mi/Hour"},
      {"Feet/Second", "Feet/Sec", "Ft/Sec"}, {"Inches/Second", "Inches/Sec", "Mi/Hour"}};
  const auto expectNames = [](const MoreSpeedCalcRecord& record, const Names& names) {
    EXPECT_EQ(MoreSpeedOutName(record), names.full);
    EXPECT_EQ(MoreSpeedOutShortName(record), names.brief);
    EXPECT_EQ(MoreSpeedUnits(record), names.returned);
  };
  for (std::size_t at = 0; at < std::size(kOuts); ++at) {
    const SpeedOut& out = kSpeedOuts[at];
    expectNames({1, 1, out.system, out.units, out.useMins, "1", "1"}, kOuts[at]);
  }
  expectNames({1, 1, 3, 1, 0, "1", "1"}, {});
  constexpr std::string_view kIns[] = {"Pulses/kM",   "Pulses/Meter", "Pulses/cM",
                                       "Pulses/Mile", "Pulses/Foot",  "Pulses/Inch"};
  for (i16 in = 0; in < 6; ++in) {
    const MoreSpeedCalcRecord record = {
        static_cast<i16>(1 + in / 3), static_cast<i16>(1 + in % 3), 1, 1, 0, "1", "1"};
    EXPECT_EQ(MoreSpeedInName(record), kIns[in]);
  }
  EXPECT_EQ(MoreSpeedInName({1, 4, 1, 1, 0, "1", "1"}), "");
}

// The defaults: 500 pulses a second at 50 RPM, a wheel of 30 inches across, no gear.
SpeedCalcRecord defaultSpeed() {
  const auto store = NewStore();
  ORVUS_COMMON::SetCalculatorDefaults(*store);
  return store->SpeedCalc;
}

// 200 pulses a second at 300 RPM, a wheel of 60 cm across, geared 3:1.
SpeedCalcRecord metricSpeed() {
  SpeedCalcRecord record = defaultSpeed();
  record.MKSSpd = -1;
  record.RevSpeed = "300";
  record.PulsesSec = "200";
  record.WheelSize = "60";
  record.GearRatio[1] = "3";
  return record;
}

// Circumference, diameter and radius; no result for a length that is not above 0.
TEST(SpeedCalculator, MeasuresTheWheelInThreeWays) {
  const struct {
    i16 option;
    const char* size;
    const char* length;
    bool divides;
  } cases[] = {{1, "300", "0.5", true},
               {2, "30", "0.15708", true},
               {3, "15", "0.15708", true},
               {2, "", "0.0", false},
               {2, "-30", "-0.15708", false}};
  for (const auto& c : cases) {
    SpeedCalcRecord record = defaultSpeed();
    record.SizeOption = c.option;
    record.WheelSize = c.size;
    const auto answers = SolveSpeed(record);
    ASSERT_TRUE(answers) << c.size;
    EXPECT_EQ(answers->lengthPerPulse, c.length) << c.option;
    EXPECT_EQ(answers->pulsesPerLength.has_value(), c.divides) << c.size;
  }
}

TEST(SpeedCalculator, GivesTheMultiplierOfTheSpeed) {
  const struct {
    SpeedCalcRecord record;
    i16 option, useMins;
    const char* multiplier;
    const char* units;
  } cases[] = {
      {defaultSpeed(), 1, 1, "0.008925", "Mi/Hour"}, {defaultSpeed(), 2, 1, "0.785398", "Ft/Min"},
      {defaultSpeed(), 2, 0, "0.01309", "Ft/Sec"},   {defaultSpeed(), 3, 1, "9.424778", "In/Min"},
      {defaultSpeed(), 3, 0, "0.15708", "In/Sec"},   {metricSpeed(), 1, 0, "0.056549", "KM/Hour"},
      {metricSpeed(), 2, 1, "0.942478", "M/Min"},    {metricSpeed(), 2, 0, "0.015708", "M/Sec"},
      {metricSpeed(), 3, 1, "94.24778", "CM/Min"},   {metricSpeed(), 3, 0, "1.570796", "CM/Sec"},
  };
  for (const auto& c : cases) {
    SpeedCalcRecord record = c.record;
    record.LengthOption = c.option;
    record.UseMins = c.useMins;
    const auto answers = SolveSpeed(record);
    ASSERT_TRUE(answers) << c.units;
    EXPECT_EQ(answers->multiplier, c.multiplier) << c.units;
    EXPECT_EQ(SpeedUnitsOf(record).multiplier, c.units);
  }
}

TEST(SpeedCalculator, KeepsItsAnswers) {
  SpeedCalcRecord records[8];
  for (auto& record : records) record = defaultSpeed();
  records[0].RevSpeed = "0";
  records[1].PulsesSec = "";
  records[2].GearRatio[1] = "none";
  records[3].GearRatio[1] = "1e999";
  records[4].RevSpeed = "1e999";
  records[5].SizeOption = 0;
  records[6].LengthOption = 4;
  records[7].RevSpeed = records[7].PulsesSec = "0";
  for (std::size_t at = 0; at < std::size(records); ++at)
    EXPECT_FALSE(SolveSpeed(records[at])) << at;
}

}  // namespace
}  // namespace ostrand
