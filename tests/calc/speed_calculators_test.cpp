#include <gtest/gtest.h>

#include <cmath>

#include "calc/flow.h"
#include "calc/more_speed.h"
#include "calc/rpm.h"
#include "calc/speed.h"
#include "model/defaults.h"
#include "text/number.h"

namespace ostrand {
namespace {

TEST(RpmCalculator, DividesByThePulsesOfATurn) {
  const struct {
    RpmCalcRecord record;
    const char* multiplier;
    const char* whatIf;
  } cases[] = {
      {{"100", "100"}, "0.6", "60.0"},
      {{"1", "2.5"}, "60.0", "150.0"},
      {{"60 teeth", ""}, "1.0", "0.0"},
      {{"7", "1000000"},
       "8.571429",
       "8571428.571"},  // the rate is that of the unrounded multiplier
      {{"0.5", "1"}, "120.0", "120.0"},
  };
  for (const auto& c : cases) {
    const auto answers = SolveRpm(c.record);
    ASSERT_TRUE(answers) << c.record.Pulses;
    EXPECT_EQ(answers->multiplier, c.multiplier);
    EXPECT_EQ(answers->whatIf, c.whatIf);
  }
  for (const char* pulses : {"0", "", "many", "1e999"}) {
    EXPECT_FALSE(SolveRpm({pulses, "100"})) << pulses;
  }
}

TEST(FlowCalculator, ConvertsCalibrationSystemAndTime) {
  const struct {
    FlowCalcRecord record;  // CalFactor, Pulses, OutSystem, OutUnits, WhatIf
    const char* multiplier;
    const char* whatIf;
    const char* units;
  } cases[] = {
      {{1, 100, 1, 100, "100"}, "0.01", "1.0", "Gal/Sec"},
      {{1, 100, 1, 1, "100"}, "0.01", "1.0", "Gal/Sec"},
      {{1, 100, 1, 2, "100"}, "0.6", "60.0", "Gal/Min"},
      {{1, 100, 1, 3, "100"}, "36.0", "3,600.0", "Gal/Hour"},
      {{1, 100, 2, 0, "100"}, "0.037854", "3.785", "L/Sec"},
      {{2, 100, 1, 3, "100"}, "9.510194", "951.019", "Gal/Hour"},
      {{2, 100, 2, 2, "100"}, "0.6", "60.0", "L/Min"},
      {{1, 0.5, 1, 3, "100"}, "7,200.0", "720,000.0", "Gal/Hour"},
      {{1, 0.001, 2, 3, ""}, "13,627,482.4224", "0.0", "L/Hour"},
      {{3, 100, 0, 2, "1"}, "0.6", "0.6", "Gal/Min"},
      {{2, 100, 0, 2, "1"}, "0.6", "0.6", "L/Min"},
  };
  for (const auto& c : cases) {
    const auto answers = SolveFlow(c.record);
    ASSERT_TRUE(answers) << c.multiplier;
    EXPECT_EQ(answers->multiplier, c.multiplier);
    EXPECT_EQ(answers->whatIf, c.whatIf) << c.multiplier;
    EXPECT_EQ(FlowUnits(c.record), c.units) << c.multiplier;
  }
  EXPECT_FALSE(SolveFlow({1, 0, 1, 1, "100"}));
  EXPECT_FALSE(SolveFlow({1, INFINITY, 1, 1, "100"}));
}

// The factors from pulses per second at one pulse in the input unit, to ten digits.
TEST(MoreSpeedCalculator, ConvertsEveryPairOfUnits) {
  const struct {
    i16 system, units, useMins;
  } outs[] = {{1, 1, 0}, {1, 2, 1}, {1, 3, 1}, {1, 2, 0}, {1, 3, 0},
              {2, 1, 0}, {2, 2, 1}, {2, 3, 1}, {2, 2, 0}, {2, 3, 0}};
  const struct {
    i16 system, units;
    double factors[10];
  } ins[] = {
      {1,
       1,
       {3600, 60000, 6000000, 1000, 100000, 2236.936292, 196850.3937, 2362204.724, 3280.839895,
        39370.07874}},
      {1,
       2,
       {3.6, 60, 6000, 1, 100, 2.236936292, 196.8503937, 2362.204724, 3.280839895, 39.37007874}},
      {1,
       3,
       {0.036, 0.6, 60, 0.01, 1, 0.02236936292, 1.968503937, 23.62204724, 0.03280839895,
        0.3937007874}},
      {2,
       1,
       {5793.6384, 96560.64, 9656064, 1609.344, 160934.4, 3600, 316800, 3801600, 5280, 63360}},
      {2, 2, {1.09728, 18.288, 1828.8, 0.3048, 30.48, 0.6818181818, 60, 720, 1, 12}},
      {2, 3, {0.09144, 1.524, 152.4, 0.0254, 2.54, 0.05681818182, 5, 60, 0.08333333333, 1}},
  };
  for (const auto& in : ins) {
    for (std::size_t out = 0; out < std::size(outs); ++out) {
      // A pulse in a thousand units shows three more digits of the factor.
      const auto answers = SolveMoreSpeed({in.system, in.units, outs[out].system, outs[out].units,
                                           outs[out].useMins, "0.001", "1"});
      ASSERT_TRUE(answers);
      const double factor = 1000 * in.factors[out];
      const double shown = Val(NumberHandedBack(answers->multiplier).value_or(""));
      EXPECT_NEAR(shown, factor, 6e-7 + factor * 3e-10) << in.system << in.units << " " << out;
    }
  }
}

TEST(MoreSpeedCalculator, ShowsMultiplierAndTryOut) {
  const struct {
    MoreSpeedCalcRecord record;
    const char* multiplier;
    const char* whatIf;
  } cases[] = {
      {{2, 1, 1, 1, 0, "8000", "100"}, "0.724205", "72.42"},
      {{2, 1, 1, 3, 1, "1 a mile", ""}, "9,656,064.0", "0.0"},
      {{1, 1, 1, 1, 1, "3600", "1234.5"}, "1.0", "1,234.5"},  // hours stay hours
  };
  for (const auto& c : cases) {
    const auto answers = SolveMoreSpeed(c.record);
    ASSERT_TRUE(answers) << c.multiplier;
    EXPECT_EQ(answers->multiplier, c.multiplier);
    EXPECT_EQ(answers->whatIf, c.whatIf) << c.multiplier;
  }
}

TEST(MoreSpeedCalculator, KeepsItsAnswers) {
  for (const auto& record : {MoreSpeedCalcRecord{1, 2, 1, 2, 0, "0", "100"},
                             MoreSpeedCalcRecord{1, 2, 1, 2, 0, "", "100"},
                             MoreSpeedCalcRecord{1, 2, 1, 2, 0, "1e999", "100"},
                             MoreSpeedCalcRecord{0, 2, 1, 2, 0, "50", "100"},
                             MoreSpeedCalcRecord{1, 4, 1, 2, 0, "50", "100"},
                             MoreSpeedCalcRecord{1, 2, 3, 2, 0, "50", "100"},
                             MoreSpeedCalcRecord{1, 2, 1, 0, 0, "50", "100"}}) {
    EXPECT_FALSE(SolveMoreSpeed(record)) << record.InSystem << record.InUnits << record.OutSystem
                                         << record.OutUnits << record.InPulses;
  }
}

TEST(MoreSpeedCalculator, NamesItsUnits) {
  const struct {
    i16 system, units, useMins;
    const char* name;
    const char* shortName;
    const char* handedBack;
  } outs[] = {
      {1, 1, 1, "KM/Hour", "kM/Hour", "KM/Hour"},
      {1, 2, -1, "Meter/Minute", "Meters/Min", "M/Min"},
      {1, 3, 1, "CM/Minute", "cM/Min", "KM/Hour"},
      {1, 2, 0, "Meter/Second", "Meters/Sec", "M/Sec"},
      {1, 3, 0, "CM/Second", "cM/Sec", "KM/Hour"},
      {2, 1, 0, "Miles/Hour", "Miles/Hour", "Mi/Hour"},
      {2, 2, 1, "Feet/Minute", "Feet/Min", "Ft/Min"},
      {2, 3, 1, "Inches/Minute", "Inches/Min", "Mi/Hour"},
      {2, 2, 0, "Feet/Second", "Feet/Sec", "Ft/Sec"},
      {2, 3, 0, "Inches/Second", "Inches/Sec", "Mi/Hour"},
      {3, 1, 0, "", "", ""},
  };
  for (const auto& c : outs) {
    const MoreSpeedCalcRecord record{1, 1, c.system, c.units, c.useMins, "1", "1"};
    EXPECT_EQ(MoreSpeedOutName(record), c.name);
    EXPECT_EQ(MoreSpeedOutShortName(record), c.shortName) << c.name;
    EXPECT_EQ(MoreSpeedUnits(record), c.handedBack) << c.name;
  }
  const char* ins[2][3] = {{"Pulses/kM", "Pulses/Meter", "Pulses/cM"},
                           {"Pulses/Mile", "Pulses/Foot", "Pulses/Inch"}};
  for (i16 system = 1; system <= 2; ++system) {
    for (i16 units = 1; units <= 3; ++units) {
      EXPECT_EQ(MoreSpeedInName({system, units, 1, 1, 0, "1", "1"}), ins[system - 1][units - 1]);
    }
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

TEST(SpeedCalculator, MeasuresTheWheelInThreeWays) {
  const struct {
    i16 option;
    const char* size;
    const char* length;
  } cases[] = {{1, "300", "0.5"}, {2, "30", "0.15708"}, {3, "15", "0.15708"}};
  for (const auto& c : cases) {
    SpeedCalcRecord record = defaultSpeed();
    record.SizeOption = c.option;
    record.WheelSize = c.size;
    const auto answers = SolveSpeed(record);
    ASSERT_TRUE(answers) << c.option;
    EXPECT_EQ(answers->lengthPerPulse, c.length) << c.option;
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

TEST(SpeedCalculator, SkipsTheDivisionByNoLength) {
  SpeedCalcRecord record = defaultSpeed();
  record.WheelSize = "";
  auto answers = SolveSpeed(record);
  ASSERT_TRUE(answers);
  EXPECT_EQ(answers->lengthPerPulse, "0.0");
  EXPECT_FALSE(answers->pulsesPerLength);
  record.WheelSize = "-30";
  answers = SolveSpeed(record);
  ASSERT_TRUE(answers);
  EXPECT_EQ(answers->lengthPerPulse, "-0.15708");
  EXPECT_FALSE(answers->pulsesPerLength);
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
