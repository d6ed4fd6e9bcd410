#include "model/orvus_data.h"

#include <gtest/gtest.h>

#include "model/defaults.h"
#include "model/new_store.h"

namespace ostrand {
namespace {

constexpr i32 kVK = kLoggerTypeVK7300;

std::unique_ptr<cOrvusData> dataOf(OrvusDataObjTypes type, i16 block = 1, i16 module = 0) {
  auto data = std::make_unique<cOrvusData>();
  data->SetMode(kVK, type, block, module);
  return data;
}

TEST(OrvusData, SetModeGivesTheDefaultsOfTheKind) {
  constexpr auto kNone = ORVUS_MEASURE_VOLT;
  const struct {
    OrvusDataObjTypes type;
    i16 block;
    const char *units, *name;
    const char* range;  // null for a kind without an analog part
    float mult, offset;
    OrvusAnalogTypes measureType;
    i32 varType;
  } cases[] = {
      {ORVUS_DOBJ_BLK_TEMP, 3, "Deg_F", "TBlk3", "50 mV", 1.8F, 32, ORVUS_MEASURE_TC, 16},
      {ORVUS_DOBJ_BLK_VOLT, 3, "mVolts", "VBlk3", "50 mV", 1, 0, ORVUS_MEASURE_VOLT, 32},
      {ORVUS_DOBJ_BLK_BRIDGE, 3, "Volts", "BBlk3", "200 mV", 1, 0, ORVUS_MEASURE_VOLT, 64},
      {ORVUS_DOBJ_BLK_HV, 3, "mVolts", "", "500 mV", 1, 0, ORVUS_MEASURE_VOLT, 256},
      {ORVUS_DOBJ_BLK_HCM, 3, "mVolts", "", "2 Volts", 1, 0, ORVUS_MEASURE_VOLT, 4096},
      {ORVUS_DOBJ_BLK_TK40M, 3, "Deg_F", "ABlk3", "50 mV", 1.8F, 32, ORVUS_MEASURE_TC, 65536},
      {ORVUS_DOBJ_SYS_BATT, 1, "", "BattVolt", nullptr, 1, 0, kNone, 0},
      {ORVUS_DOBJ_BLK_PULSE, 2, "Hz", "PBlk2", nullptr, 1, 0, kNone, 0},
      {ORVUS_DOBJ_BLK_FILT, 1, "mVolts", "", nullptr, 1, 0, kNone, 0},
      {ORVUS_DOBJ_BLK_TK40REF, 1, "", "TK40Ref", nullptr, 1, 0, kNone, 0},
      {ORVUS_DOBJ_BLK_QBCAN, 1, "", "", nullptr, 1, 0, kNone, 0},
      {ORVUS_DOBJ_PORT, 1, "", "WritPort", nullptr, 1, 0, kNone, 0},
      {ORVUS_DOBJ_PORT, 2, "", "ReadPort", nullptr, 1, 0, kNone, 0},
      {ORVUS_DOBJ_CALC, 1, "", "", nullptr, 1, 0, kNone, 0},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.type);
    const auto data = dataOf(c.type, c.block);
    data->Reps = 10;
    EXPECT_EQ(data->DefaultUnits, c.units);
    EXPECT_EQ(data->DefaultName(), c.name);
    const bool can = c.type == ORVUS_DOBJ_BLK_QBCAN;
    EXPECT_EQ(data->DataTypeString(), can ? "IEEE4" : "FP2");
    EXPECT_EQ(data->Can.has_value(), can);
    ASSERT_EQ(data->Analog() != nullptr, c.range != nullptr);
    if (c.range == nullptr) {
      EXPECT_EQ(data->MeasTime() + data->BlockTime(), 0);
      continue;
    }
    EXPECT_EQ(data->DefaultMult, c.mult);
    EXPECT_EQ(data->DefaultOffset, c.offset);
    EXPECT_EQ(data->StartChannel, 1);
    EXPECT_EQ(data->Analog()->InputRange, c.range);
    EXPECT_EQ(data->Analog()->MeasureType(), c.measureType);
    EXPECT_EQ(data->Analog()->VarType(), c.varType);
    EXPECT_EQ(data->Analog()->IntegTime(), 250);
    EXPECT_EQ(data->Analog()->SettleTime(), 200);
    EXPECT_EQ(data->Analog()->Bridge.has_value(), c.type == ORVUS_DOBJ_BLK_BRIDGE);
  }
}

TEST(OrvusData, OptionsSetInputTypeAndIntegrationOnly) {
  const MeasurementOptions options = {ORVUS_OUTDATA_IEEE4, ORVUS_MEAS_INTEG_60HZ, ORVUS_INPUT_SE};
  cOrvusData data(options);
  data.SetMode(kVK, ORVUS_DOBJ_BLK_VOLT, 1, 0);
  EXPECT_EQ(data.DataTypeString(), "FP2");
  EXPECT_EQ(data.Analog()->InputTypeString(), "SE");
  EXPECT_EQ(data.Analog()->IntegTime(), 16670);
  data.Analog()->IntegTime(300);
  EXPECT_EQ(data.Analog()->IntegTime(), 16670);
  data.SetMode(kVK, ORVUS_DOBJ_BLK_BRIDGE, 1, 0);
  EXPECT_EQ(data.Analog()->InputTypeString(), "Diff");
}

TEST(OrvusData, CalculatesTimesOfMeasurementAndBlock) {
  const struct {
    const char* input;
    bool reversed, openSensor;
    i32 integ, meas, block;
  } cases[] = {
      {"Diff", true, true, 250, 950, 3800},  {"Diff", false, false, 250, 450, 1800},
      {"SE", true, true, 250, 500, 2700},    {"SE", true, false, 250, 450, 2500},
      {"SE", true, false, 200, 400, 2200},   {"SE", false, true, 250, 500, 2000},
      {"SE", true, false, 1000, 1200, 6000},
  };
  for (const auto& c : cases) {
    const auto data = dataOf(ORVUS_DOBJ_BLK_VOLT);
    data->Reps = 4;
    data->Analog()->InputTypeString(c.input);
    data->Analog()->RevMeas = c.reversed;
    data->Analog()->OpenSens = c.openSensor;
    data->Analog()->IntegTime(c.integ);
    EXPECT_EQ(data->MeasTime(), c.meas) << c.input << c.integ;
    EXPECT_EQ(data->BlockTime(), c.block) << c.input << c.integ;
  }
}

TEST(OrvusData, CloneListensToItsOwnAnalogPart) {
  cAnalogConfig part;
  int calls = 0;
  part.MeasureTypeChange = [&](OrvusAnalogTypes) { ++calls; };
  part.Clone()->MeasureType(ORVUS_MEASURE_TC);
  EXPECT_EQ(calls, 0);
  auto original = dataOf(ORVUS_DOBJ_BLK_TEMP, 2);
  original->Reps = 5;
  original->DefaultName("Oven");
  original->Analog()->TCType = ORVUS_TCTYPE_K;
  const auto copy = original->Clone();
  copy->Analog()->TempScale(ORVUS_TEMPSCALE_C);
  EXPECT_EQ(copy->DefaultUnits, "Deg_C");
  EXPECT_EQ(original->DefaultUnits, "Deg_F");
  original.reset();  // the copy must not use it
  copy->Analog()->TempScale(ORVUS_TEMPSCALE_K);
  EXPECT_EQ(copy->DefaultOffset, 273.16F);
  EXPECT_EQ(copy->Reps, 5);
  EXPECT_EQ(copy->DefaultName(), "Oven");
  EXPECT_EQ(copy->Analog()->TCType, ORVUS_TCTYPE_K);
}

TEST(OrvusData, LongNameIsCutAndAutomaticNameIsNotKept) {
  const auto data = dataOf(ORVUS_DOBJ_BLK_VOLT, 1);
  data->DefaultName("VBlk1");
  data->Block(2);
  EXPECT_EQ(data->DefaultName(), "VBlk2");
  data->DefaultName("PressureInlet");
  EXPECT_EQ(data->DefaultName(), "PressureInle");
  data->DefaultName("");
  EXPECT_EQ(data->DefaultName(), "VBlk2");
}

TEST(OrvusData, MultiplierStepsToMultiplesOfTheStep) {
  const struct {
    float value, step, result;
  } cases[] = {{1, 1, 2},          {1.8F, 1, 3},        {1.8F, -1, 1},          {1.4F, 1, 2},
               {1.8F, 0.1F, 1.9F}, {0.3F, -0.1F, 0.2F}, {0, -0.25F, -0.25F},    {7, 0, 7},
               {-1.5F, 1, 0},      {3e38F, 1, 3e38F},   {1, 0.00001F, 1.00001F}};
  for (const auto& c : cases) {
    cOrvusData data;
    data.DefaultMult = data.DefaultOffset = c.value;
    data.MultIncDec(c.step);
    data.OffsetIncDec(c.step);
    EXPECT_EQ(data.DefaultMult, c.result) << c.value << " " << c.step;
    EXPECT_EQ(data.DefaultOffset, c.result) << c.value << " " << c.step;
  }
}

TEST(OrvusData, FirstTableUsedIgnoresTablesNotInUse) {
  const auto store = NewStore();
  ORVUS_COMMON::SetAllDefaults(*store);
  EXPECT_EQ(dataOf(ORVUS_DOBJ_BLK_VOLT)->FirstTableUsed(*store), 1);
  store->Tables[3].TableOn = store->Tables[5].TableOn = kTrue;
  const struct {
    OrvusDataObjTypes type;
    i16 block, module;
    OutputSet* output;
  } cases[] = {
      {ORVUS_DOBJ_SYS_BATT, 1, 0, &store->PowerOut.Output},
      {ORVUS_DOBJ_BLK_TEMP, 7, 0, &store->TempBlock[7].Output},
      {ORVUS_DOBJ_BLK_VOLT, 2, 0, &store->VoltBlock[2].Output},
      {ORVUS_DOBJ_BLK_BRIDGE, 2, 0, &store->BridgeBlock[2].Output},
      {ORVUS_DOBJ_BLK_PULSE, 2, 1, &store->PulseBlock[1][2].Output},
      {ORVUS_DOBJ_BLK_TK40M, 1, 0, &store->TK40MBlock[1].Output},
      {ORVUS_DOBJ_BLK_TK40REF, 1, 0, &store->TK40MRef.Output},
      {ORVUS_DOBJ_BLK_QBCAN, 128, 0, &store->Can.Item[128].Output},
      {ORVUS_DOBJ_PORT, 2, 0, &store->Ports.Slot[0].Output},
      {ORVUS_DOBJ_CALC, 50, 0, &store->CalcFields.Field[50].Output},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.type);
    const auto data = dataOf(c.type, c.block, c.module);
    EXPECT_EQ(data->FirstTableUsed(*store), 3);
    c.output->OutputSelect[4][kSample] = 1;  // a table not in use
    c.output->OutputSelect[5][kLevelCrossing] = 1;
    EXPECT_EQ(data->FirstTableUsed(*store), 5);
    // Without such a block the result is that of one without selections. Single values ignore the
    // number.
    const bool single = c.type == ORVUS_DOBJ_SYS_BATT || c.type == ORVUS_DOBJ_BLK_TK40REF;
    EXPECT_EQ(dataOf(c.type, 129, 2)->FirstTableUsed(*store), single ? 5 : 3);
  }
}

class Analog : public testing::Test {
 protected:
  Analog() { config.SetMode(kVK, ORVUS_DOBJ_BLK_VOLT); }
  cAnalogConfig config;
};

TEST_F(Analog, RangesHaveCodesAndIndices) {
  const struct {
    const char* range;
    i32 index, code, codeOpen;
  } cases[] = {{"Auto", 0, 5, 5},     {"5000 mV", 1, 0, 0}, {"1000 mV", 2, 1, 1},
               {"200 mV", 3, 2, 20},  {"50 mV", 4, 3, 30},  {"20 mV", 5, 4, 40},
               {"50 MV", -1, -1, -1}, {"", -1, -1, -1}};
  for (const auto& c : cases) {
    config.InputRange = c.range;
    config.OpenSens = false;
    EXPECT_EQ(config.RangeIndex(), c.index) << c.range;
    EXPECT_EQ(config.RangeCode(), c.code) << c.range;
    config.OpenSens = true;
    EXPECT_EQ(config.RangeCode(), c.codeOpen) << c.range;
    EXPECT_EQ(config.OpenSensIsValid(), c.code != c.codeOpen) << c.range;
    if (c.index < 0) continue;
    config.RangeIndex(0);
    config.RangeIndex(c.index);
    for (const i32 outside : {-1, 6}) config.RangeIndex(outside);
    EXPECT_EQ(config.InputRange, c.range);
  }
}

TEST_F(Analog, LimitsUnknownTextsAndCodes) {
  config.IntegCode(3);
  EXPECT_EQ(config.IntegCode(), ORVUS_MEAS_INTEG_USECS);
  config.InputTypeString("se");
  EXPECT_EQ(config.InputType, ORVUS_INPUT_DIFF);
  config.InputType = static_cast<OrvusAnalogInputTypes>(2);
  EXPECT_EQ(config.InputTypeString(), "??");
  config.TempScaleUnits("Celsius");
  EXPECT_EQ(config.TempScale(), ORVUS_TEMPSCALE_NONE);
}

TEST(AnalogConfig, LargerFamilyHasSeparateTimes) {
  const struct {
    OrvusDataObjTypes type;
    i32 integ, typed47, up, leastSettle;
  } cases[] = {{ORVUS_DOBJ_BLK_TK40M, 70, 40, 100, 20},
               {ORVUS_DOBJ_BLK_VOLT, 40, 40, 100, 20},
               {ORVUS_DOBJ_BLK_HV, 40, 40, 100, 30},
               {ORVUS_DOBJ_BLK_HCM, 40, 47, 47, 0}};
  for (const auto& c : cases) {
    SCOPED_TRACE(c.type);
    cAnalogConfig config;
    config.SetMode(kLoggerTypeLarge, c.type);
    EXPECT_EQ(config.IntegTime(), c.integ);
    EXPECT_EQ(config.SettleTime(), 30);
    config.IntegTime(47);
    EXPECT_EQ(config.IntegTime(), c.typed47);
    EXPECT_EQ(config.IntegIncDec(true), c.up);
    config.SettleTime(5);
    EXPECT_EQ(config.SettleTime(), c.leastSettle);
    EXPECT_EQ(config.RangeIndex(), -1);
  }
  cAnalogConfig config;  // without a logger times are kept as given
  config.SettleTime(7);
  EXPECT_EQ(config.SettleTime(), 7);
  for (const i32 typed : {33, -1}) {
    config.IntegTime(typed);
    EXPECT_EQ(config.IntegTime(), 33);
  }
  EXPECT_EQ(config.RangeCode(), -1);
}

}  // namespace
}  // namespace ostrand
