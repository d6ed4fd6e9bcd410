// Bridge blocks, through the controls of their screens.
#include "setup/bridge_rules.h"
#include "setup/frm_brdg_block.h"
#include "setup/frm_brdg_setup.h"
#include "setup/screen_driver.h"
#include "text/number.h"

namespace ostrand {
namespace {

using testing::Check;
using testing::IsUsable;
using testing::Open;
using testing::Pick;
using testing::Press;
using testing::Shown;
using testing::Spin;
using testing::Type;

class BridgeScreen : public testing::ScreenTest {
 protected:
  BridgeBlockData& block(int number) { return store->BridgeBlock[number]; }

  // A block of the store, with its count raised to it.
  BridgeBlockData& give(int number, int style, int reps, int exciteReps) {
    BridgeBlockData& data = block(number);
    data.Style = static_cast<i16>(style);
    data.MeasType = kBridgeStyles[static_cast<std::size_t>(style)].measType;
    data.Reps = static_cast<i16>(reps);
    data.ExciteReps = static_cast<i16>(exciteReps);
    store->BridgeBlock.BlockCount = static_cast<i16>(number);
    return data;
  }

  // Opens the setup of a block and leaves both screens by Done.
  void inSetup(int number, const std::function<void(Screen&)>& actions) {
    frmBrdgBlock list(context, hooks);
    edit(list, "frmBrdgSetup", NumberText(number), actions);
  }

  SetupHooks hooks;
};

TEST_F(BridgeScreen, KindsBringWhatTheirStatementTakes) {
  struct Case {
    std::string_view caption;
    std::string_view type;
    std::string_view measType;
    std::string_view units;
    i16 gageCode;
    float mult;
    bool strain;
  };
  constexpr Case cases[] = {
      {"4 Wire Full Bridge (Vx)", "BrFull", "Diff", "mVoltPVolt", 9, 7, false},
      {"6 Wire Full Bridge (Vx)", "BrFull6W", "Diff", "mVoltPVolt", 9, 7, false},
      {"Half Bridge (Vx)", "BrHalf", "SE", "VoltsPVolt", 9, 7, false},
      {"3 Wire Half Bridge (Vx)", "BrHalf3W", "SE", "VoltsPVolt", 9, 7, false},
      {"Resistance Bridge (Vx)", "BrHalf3W", "SE", "Ohms", 9, 10000, false},
      {"1/4 Bridge Strain (Vx)", "BrFull", "Diff", "uStrain", 1, 1, true},
      {"1/2 Bridge Strain (Vx)", "BrFull", "Diff", "uStrain", 3, 1, true},
      {"Full Bridge Strain (Vx)", "BrFull", "Diff", "uStrain", 4, 1, true},
  };
  for (int style = 0; style < 8; ++style) {
    const Case& row = cases[style];
    SCOPED_TRACE(row.caption);
    ORVUS_COMMON::SetBridgeDefaults(*store, 0);
    BridgeBlockData& data = give(1, style == 0 ? 1 : 0, 3, 1);
    data.GageCode = 9;
    data.GageFactor = 2.1F;
    data.DefaultMult = 7;
    data.DefaultOffset = 5;
    data.DataResolution = "FP2";
    data.Alias[90].AliasUnits = "kN";
    inSetup(1, [&](Screen& setup) { Pick(setup, "Style", row.caption); });
    EXPECT_EQ(data.Style, style);
    EXPECT_EQ(data.Type, row.type);
    EXPECT_EQ(data.MeasType, row.measType);
    EXPECT_EQ(data.Units, row.units);
    EXPECT_EQ(data.GageCode, row.gageCode);
    EXPECT_EQ(data.DataResolution, "IEEE4");
    EXPECT_EQ(data.DefaultMult, row.mult);
    EXPECT_EQ(data.DefaultOffset, row.strain ? 2.1F : (style == 4 ? 0 : 5));
    EXPECT_EQ(data.Alias[1].AliasOffset, row.strain ? "0" : "");
    EXPECT_EQ(data.Alias[90].AliasUnits, "");
  }
}

TEST_F(BridgeScreen, TheSameKindAgainKeepsAliasesAndSetsOneSensor) {
  BridgeBlockData& data = give(1, 0, 6, 2);
  data.Alias[3].AliasUnits = "kN";
  data.Units = "bar";
  inSetup(1, [&](Screen& setup) {
    EXPECT_EQ(Shown(setup, "Reps"), "6") << "opening is no pick";
    forms.ExpectBoxWith("TROUBLE", "(MeasPerEx) is too large for the number\r\nof available");
    Pick(setup, "Style", "  4 Wire Full Bridge (Vx)");
  });
  EXPECT_EQ(data.Reps, 1);
  EXPECT_EQ(data.ExciteReps, 1);
  EXPECT_EQ(data.Alias[3].AliasUnits, "kN");
  EXPECT_EQ(data.Units, "bar");
}

TEST_F(BridgeScreen, AGaugeFactorStandsInForTheOffsetAndLeavesWithItsKind) {
  BridgeBlockData& data = give(1, 0, 1, 1);
  data.CalOnSite = 1;
  inSetup(1, [&](Screen& setup) {
    Pick(setup, "Style", "1/4 Bridge Strain (Vx)");
    Type(setup, "GageFactor", "2.05");
    EXPECT_EQ(data.DefaultOffset, 2.05F);
  });
  EXPECT_EQ(data.CalOnSite, 0);
  EXPECT_EQ(data.GageFactor, 2.05F);
  EXPECT_EQ(data.DefaultOffset, 2.05F);
  inSetup(1, [&](Screen& setup) { Pick(setup, "Style", "Half Bridge (Vx)"); });
  EXPECT_EQ(data.DefaultOffset, 0);
}

TEST_F(BridgeScreen, SensorsShareTheExcitationsThatOthersLeave) {
  struct Case {
    int othersReps;  // of a block with one sensor to an excitation
    std::string_view reps;
    std::string_view measPerEx;
    std::string_view reps2;
    std::string_view measPerEx2;
    bool corrected;
  };
  constexpr Case cases[] = {
      {3, "12", "1", "12", "12", true}, {0, "12", "3", "12", "3", false},
      {0, "12", "", "12", "3", true},   {0, "4", "0", "4", "1", false},
      {2, "9", "4", "9", "5", true},    {2, "9", "5", "9", "5", false},
      {4, "1", "1", "0", "1", false},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.reps);
    ORVUS_COMMON::SetBridgeDefaults(*store, 0);
    give(1, 2, row.othersReps, 1);
    give(2, 2, 0, 1);
    inSetup(2, [&](Screen& setup) {
      Type(setup, "ExciteReps", row.measPerEx);
      if (row.corrected) forms.ExpectBox("CORRECTION", "MeasPerEx has been Changed");
      Type(setup, "Reps", row.reps);
      EXPECT_EQ(Shown(setup, "Reps"), row.reps2);
      EXPECT_EQ(Shown(setup, "ExciteReps"), row.measPerEx2);
      if (row.reps2 == "0") {
        EXPECT_EQ(forms.helpLines.back(), "WARNING - Sensor count has been set to zero.");
      }
    });
  }
}

TEST_F(BridgeScreen, CountsStopWhereTheChannelsEnd) {
  struct Case {
    int style;
    int voltChannels;
    bool autoChan;
    int start;
    std::string_view typed;
    std::string_view taken;
  };
  constexpr Case cases[] = {
      {0, 0, true, 1, "21", "20"},    {1, 0, true, 1, "11", "10"}, {2, 37, true, 1, "9", "3"},
      {3, 37, true, 1, "9", "1"},     {4, 30, true, 1, "50", "5"}, {0, 37, true, 1, "2", "1"},
      {0, 40, true, 1, "2", "0"},     {0, 0, false, 15, "9", "6"}, {1, 0, false, 15, "9", "6"},
      {2, 40, false, 15, "99", "26"}, {2, 0, false, 1, "-3", "0"}, {2, 0, false, 1, "2.9", "2"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(::testing::Message() << row.style << " " << row.typed);
    ORVUS_COMMON::SetBridgeDefaults(*store, 0);
    store->Config.AutoChan = row.autoChan ? kTrue : kFalse;
    store->VoltBlock.SEChannelCount = static_cast<i16>(row.voltChannels);
    BridgeBlockData& data = give(1, row.style, 0, 1);
    data.ExciteReps = 1;
    data.StartChan = static_cast<i16>(row.start);
    forms.CollectBoxes();
    inSetup(1, [&](Screen& setup) {
      Type(setup, "Reps", row.typed);
      EXPECT_EQ(Shown(setup, "Reps"), row.taken);
      Type(setup, "Reps", "");
      EXPECT_EQ(NumberText(int{data.Reps}), row.taken) << "a blank is left alone";
    });
    EXPECT_EQ(NumberText(int{data.Reps}), row.taken);
  }
  for (const auto& box : forms.shown) {
    EXPECT_TRUE(box.title == "CORRECTION" || box.title == "TROUBLE") << box.title;
  }
}

TEST_F(BridgeScreen, StartsLeaveRoomForTheSensors) {
  store->Config.AutoChan = kFalse;
  struct Case {
    int style;
    int reps;
    std::string_view typed;
    std::string_view taken;
  };
  constexpr Case cases[] = {{0, 10, "15", "11"}, {0, 10, "0", "1"},   {2, 10, "40", "31"},
                            {0, 0, "99", "20"},  {2, 0, "200", "40"}, {0, 1, "20", "20"}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.typed);
    BridgeBlockData& data = give(1, row.style, row.reps, 10);
    data.StartChan = 1;
    forms.CollectBoxes();
    inSetup(1, [&](Screen& setup) {
      Type(setup, "StartBrdgChan", row.typed);
      EXPECT_EQ(Shown(setup, "StartBrdgChan"), row.taken);
    });
    EXPECT_EQ(NumberText(int{data.StartChan}), row.taken);
  }
}

TEST_F(BridgeScreen, UnderAutomaticChannelsTheStartsComeFromTheChart) {
  store->VoltBlock.BlockCount = 1;
  store->VoltBlock[1].MeasType = "SE";
  store->VoltBlock[1].Reps = 3;
  store->VoltBlock.SEChannelCount = 3;
  give(1, 2, 2, 1);
  give(2, 0, 2, 1);
  give(3, 1, 0, 1).StartChan = 17;
  inSetup(1, [&](Screen& setup) {
    EXPECT_FALSE(IsUsable(setup, "StartBrdgChan"));
    EXPECT_EQ(Shown(setup, "StartBrdgChan"), "4");
    Pick(setup, "Style", "Half Bridge (Vx)");
    EXPECT_EQ(Shown(setup, "StartBrdgChan"), "3") << "a pick takes every kind for differential";
  });
  EXPECT_EQ(block(1).StartChan, 4);
  EXPECT_EQ(block(2).StartChan, 3);
  EXPECT_EQ(block(3).StartChan, 5);
}

TEST_F(BridgeScreen, IntegrationStepsAndRoundsByTheBridgesOwnRules) {
  struct Spun {
    i32 from;
    i32 up;
    i32 down;
  };
  constexpr Spun spins[] = {
      {0, 100, 0},           {50, 100, 100},        {100, 200, 100},       {200, 250, 100},
      {249, 250, 200},       {250, 750, 200},       {251, 750, 250},       {750, 1250, 250},
      {800, 1250, 300},      {1250, 1750, 750},     {15250, 15750, 14750}, {15499, 15750, 14999},
      {15500, 16250, 15000}, {15749, 16250, 15249}, {15750, 15750, 15250}, {16000, 15750, 15750},
  };
  give(1, 0, 1, 1);
  inSetup(1, [&](Screen& setup) {
    for (const Spun& row : spins) {
      SCOPED_TRACE(row.from);
      for (const bool up : {true, false}) {
        Type(setup, "Integration", NumberText(row.from));
        EXPECT_EQ(Shown(setup, "Integration"), NumberText(row.from)) << "typed times stand";
        Spin(setup, "Integration", up);
        EXPECT_EQ(Shown(setup, "Integration"), NumberText(up ? row.up : row.down));
      }
    }
  });
  struct Rounded {
    i32 typed;
    i32 taken;
  };
  constexpr Rounded rounded[] = {{0, 100},       {99, 100},     {101, 200},  {201, 250},
                                 {251, 750},     {750, 750},    {751, 1250}, {15700, 16250},
                                 {15750, 15750}, {99999, 15750}};
  for (const Rounded& row : rounded) {
    SCOPED_TRACE(row.typed);
    block(1).Integration = 2;  // the mark of a project without a time
    inSetup(1, [&](Screen& setup) { Type(setup, "Integration", NumberText(row.typed)); });
    EXPECT_EQ(block(1).Integration, row.taken);
  }
}

TEST_F(BridgeScreen, DoneLimitsASettlingThatWasSpunTooLow) {
  give(1, 0, 1, 1);
  inSetup(1, [&](Screen& setup) {
    for (int click = 0; click < 12; ++click) Spin(setup, "SettleTime", false);
    EXPECT_EQ(Shown(setup, "SettleTime"), "100") << "the spin does not look at the integration";
  });
  EXPECT_EQ(block(1).SettleTime, 200) << "but Done does";
}

TEST_F(BridgeScreen, RangesHaveTheirCodesAndOfferTheOpenInputTest) {
  struct Case {
    std::string_view range;
    i16 code;
    bool offered;
  };
  constexpr Case cases[] = {{"Auto", 5, false},   {"5000 mV", 0, false}, {"1000 mV", 1, false},
                            {"200 mV", 20, true}, {"50 mV", 30, true},   {"20 mV", 40, true}};
  BridgeBlockData& data = give(1, 0, 1, 1);
  ASSERT_EQ(data.RangeNo, 50);
  inSetup(1, [&](Screen& setup) {
    EXPECT_EQ(data.RangeNo, 2) << "the code of the range that is shown";
    Check(setup, "OpenSensDetect", true);
    EXPECT_EQ(data.RangeNo, 20);
    for (const Case& row : cases) {
      Pick(setup, "Range", row.range);
      EXPECT_EQ(data.RangeNo, row.code) << row.range;
      EXPECT_EQ(IsUsable(setup, "OpenSensDetect"), row.offered) << row.range;
    }
    Check(setup, "OpenSensDetect", false);
    EXPECT_EQ(data.RangeNo, 4);
  });
}

TEST_F(BridgeScreen, TimesAddUpWhatIsMeasuredTwice) {
  struct Case {
    int style;
    bool reverse;
    bool reverseExcitation;
    bool openInput;
    std::string_view range;
    std::string_view integration;
    std::string_view each;
    std::string_view block;
  };
  constexpr Case cases[] = {
      {0, false, false, false, "200 mV", "", "450 uSecs", "1,350 uSecs"},
      {0, true, false, false, "200 mV", "", "900 uSecs", "2,700 uSecs"},
      {1, true, true, true, "200 mV", "", "3,650 uSecs", "10,950 uSecs"},
      {2, false, true, false, "200 mV", "", "900 uSecs", "2,700 uSecs"},
      {3, false, false, true, "20 mV", "", "950 uSecs", "2,850 uSecs"},
      {4, false, false, false, "Auto", "", "900 uSecs", "2,700 uSecs"},
      {5, false, false, true, "Auto", "", "500 uSecs", "1,500 uSecs"},
      {0, false, false, true, "1000 mV", "", "450 uSecs", "1,350 uSecs"},
      {0, false, false, true, "1000 mV", "50 Hz", "20,250 uSecs", "60,750 uSecs"},
      {0, false, false, true, "200 mV", "60 Hz", "16,920 uSecs", "50,760 uSecs"},
      {0, false, false, true, "200 mV", "mSecs", "450 uSecs", "1,350 uSecs"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(::testing::Message() << row.range << " " << row.integration);
    ORVUS_COMMON::SetBridgeDefaults(*store, 0);
    BridgeBlockData& data = give(1, row.style, 3, 1);
    inSetup(1, [&](Screen& setup) {
      if (data.Style < 2 || data.Style > 4) Check(setup, "ReverseMes", row.reverse);
      Check(setup, "RevExcite", row.reverseExcitation);
      Check(setup, "OpenSensDetect", row.openInput);
      Pick(setup, "Range", row.range);
      if (!row.integration.empty()) Pick(setup, "IntegrationRange", row.integration);
      EXPECT_EQ(Shown(setup, "Each"), row.each);
      EXPECT_EQ(Shown(setup, "Block"), row.block);
      Type(setup, "Reps", "0");
      EXPECT_EQ(Shown(setup, "Each"), "0 uSecs");
      EXPECT_EQ(Shown(setup, "Block"), "0 uSecs");
    });
    EXPECT_EQ(data.BlockTime, 0);
  }
}

TEST_F(BridgeScreen, CalibrationOnSiteMakesPublicAndSetsScaling) {
  BridgeBlockData& data = give(1, 0, 1, 1);
  data.DefaultMult = 7;
  data.DefaultOffset = 9;
  inSetup(1, [&](Screen& setup) { Check(setup, "CalOnSite", true); });
  EXPECT_EQ(data.CalOnSite, 1);
  EXPECT_EQ(data.Public, kTrue);
  EXPECT_EQ(data.DefaultMult, 1);
  EXPECT_EQ(data.DefaultOffset, 0);
}

TEST_F(BridgeScreen, ZeroFlagsThatOthersUseAreToldOrNotOffered) {
  store->Tables[2].FlagMark = 3;
  store->Flags[4].FlagInclude = kTrue;
  give(1, 0, 1, 1);
  inSetup(1, [&](Screen& setup) {
    Press(setup, "ZeroPanel");
    EXPECT_FALSE(setup.Find("ZeroFlag")->Pick("3")) << "a table has it";
    forms.ExpectBoxWith("FLAG INFORMATION", "the state of Flag(4");
    Pick(setup, "ZeroFlag", "4");
  });
  EXPECT_EQ(block(1).ZeroFlag, 4);
  inSetup(1, [](Screen& setup) { EXPECT_EQ(Shown(setup, "ZeroFlagShown"), "4"); });
}

TEST_F(BridgeScreen, ScalingByHandIsAskedAboutAndTheRestFollows) {
  int asked = 0;
  hooks.FieldNames = [&](const FieldNamesRequest& request) {
    ++asked;
    EXPECT_EQ(request.name, "BBlk1");
    EXPECT_EQ(request.defaults, (DefaultScaling{"bar", 4, 3}));
    EXPECT_EQ(request.aliases.size(), 2U);
  };
  BridgeBlockData& data = give(1, 0, 2, 1);
  data.Alias[1].AliasOffset = "0";
  data.Alias[2].AliasMult = "1";
  data.Alias[2].AliasExcept = "2";
  inSetup(1, [](Screen&) {});  // nothing changed, nothing asked
  inSetup(1, [&](Screen& setup) {
    Type(setup, "Units", "bar");
    Type(setup, "DefaultMult", "4");
    Type(setup, "DefaultOffset", "3");
    forms.ExpectBoxWith("DEFAULT SCALING CHANGED", "NOW?", platform::Answer::kCancel);
    setup.Done();
    EXPECT_EQ(setup.Result(), ModalResult::kNone);
    forms.ExpectBoxWith("DEFAULT SCALING CHANGED", "NOW?", platform::Answer::kYes);
  });
  EXPECT_EQ(asked, 1);
  EXPECT_EQ(data.Units, "bar");
  EXPECT_EQ(data.Alias[1].AliasOffset, "3");
  EXPECT_EQ(data.Alias[2].AliasMult, "1");
}

TEST_F(BridgeScreen, CalculatorsAreAskedByKindAndCancelTakesAllBack) {
  BridgeBlockData& data = give(1, 3, 2, 1);
  data.Integration = 100;
  const auto before = std::make_unique<BridgeBlockData>(data);
  std::vector<SolveSource> asked;
  hooks.Solve = [&](const SolveSource& source, DefaultScaling& scaling) {
    asked.push_back(source);
    scaling = {"kN", 12.5F, -1};
    return true;
  };
  inSetup(1, [&](Screen& setup) {
    ASSERT_TRUE(Open(setup, "frmSolveList"));
    EXPECT_EQ(Shown(setup, "DefaultMult"), "12.5");
    EXPECT_EQ(Shown(setup, "DefaultOffset"), "-1");
    EXPECT_EQ(Shown(setup, "Units"), "kN");
    Pick(setup, "Style", "Resistance Bridge (Vx)");
    Press(setup, "Solve");
    setup.Cancel();
  });
  ASSERT_EQ(asked.size(), 2U);
  EXPECT_EQ(asked[0].kind, "Brdg");
  EXPECT_TRUE(asked[0].inVolts && !asked[0].inOhms);
  EXPECT_TRUE(asked[1].inOhms && !asked[1].inVolts);
  EXPECT_TRUE(data == *before);
}

TEST_F(BridgeScreen, OnlyAutomaticSelectionWantsRoomForABlock) {
  give(1, 0, 4, 1);
  frmBrdgBlock list(context);
  EXPECT_EQ(Shown(list, "FreeExcite"), "0");
  Spin(list, "BlockCount", true);
  EXPECT_EQ(forms.beeps, 1);
  store->Config.AutoChan = kFalse;
  Spin(list, "BlockCount", true);
  list.Done();
  EXPECT_EQ(store->BridgeBlock.BlockCount, 2);
  EXPECT_EQ(store->BridgeBlock.SEChannelCount, 8);
  EXPECT_EQ(store->BridgeBlock.ExciteSwitched, 4);
}

TEST_F(BridgeScreen, BlocksWithSensorsGoOnlyWhenTheUserAgrees) {
  give(1, 0, 2, 1);
  give(2, 0, 0, 1);
  give(3, 5, 1, 1).Excite = 1000;
  frmBrdgBlock list(context);
  forms.ExpectBoxWith("CONFIRM BLOCK DELETION", "Continue?", platform::Answer::kYes);
  forms.ExpectBoxWith("CONFIRM BLOCK DELETION", "Continue?", platform::Answer::kNo);
  Type(list, "BlockCount", "0");
  EXPECT_EQ(Shown(list, "BlockCount"), "1");
  EXPECT_EQ(block(3).Reps, 0);
  EXPECT_EQ(block(3).Excite, 5000);
  forms.ExpectBoxWith("MEASUREMENT BLOCKS", "Save changes", platform::Answer::kNo);
  list.Cancel();
  EXPECT_EQ(list.Result(), ModalResult::kCancel);
  EXPECT_EQ(store->BridgeBlock.BlockCount, 3);
  EXPECT_EQ(block(3).Excite, 1000);
}

TEST_F(BridgeScreen, BlocksAboveTheFourthGoAtDone) {
  for (int b = 1; b <= 7; ++b) give(b, 2, 1, 1);
  {
    frmBrdgBlock list(context);
    EXPECT_EQ(Shown(list, "BlockCount"), "4");
    list.Cancel();
    EXPECT_EQ(list.Result(), ModalResult::kCancel) << "nothing was edited";
    EXPECT_EQ(store->BridgeBlock.BlockCount, 7);
    EXPECT_EQ(block(7).Reps, 1);
  }
  frmBrdgBlock list(context);
  list.Done();
  EXPECT_EQ(store->BridgeBlock.BlockCount, 4);
  EXPECT_EQ(block(5).Reps, 0);
}

TEST_F(BridgeScreen, OutputsAreThoseOfTheBlock) {
  store->Tables[2].TableOn = kTrue;
  give(1, 0, 1, 1).Output.OutputSelect[2][kMaximum] = 1;
  inSetup(1, [&](Screen& setup) {
    EXPECT_EQ(Shown(setup, "Max"), "on");
    Check(setup, "Avg", true);
  });
  EXPECT_EQ(block(1).Output.OutputSelect[2][kAverage], 1);
}

}  // namespace
}  // namespace ostrand
