// Bridge blocks, through the controls of their screens: project files that no screen produces, and
// effects that the screens do not show.
#include "blocks/bridge_rules.h"
#include "blocks/frm_brdg_block.h"
#include "support/screen_driver.h"
#include "text/number.h"

namespace ostrand {
namespace {

using namespace testing;

class BridgeScreen : public ScreenTest {
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
    frmBrdgBlock list(context);
    edit(list, "frmBrdgSetup", NumberText(number), actions);
    list.Done();
  }
};

TEST_F(BridgeScreen, KindSetsMembersOfItsStatement) {
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
    const float offset = style % 2 == 0 ? 5 : 0;
    data.DefaultOffset = offset;
    data.DataResolution = "FP2";
    data.Range = "50 mV ";
    data.Alias[90].AliasUnits = "kN";
    data.CalOnSite = 1;
    inSetup(1, [&](Screen& setup) {
      EXPECT_EQ(setup.Find("Range")->Text(), "50 mV");
      Pick(setup, "Style", row.caption);
      if (row.strain) Type(setup, "GageFactor", "2.05");
    });
    EXPECT_EQ(data.Style, style);
    EXPECT_EQ(data.Type, row.type);
    EXPECT_EQ(data.MeasType, row.measType);
    EXPECT_EQ(data.Units, row.units);
    EXPECT_EQ(data.GageCode, row.gageCode);
    EXPECT_EQ(data.DataResolution, "IEEE4");
    EXPECT_EQ(data.DefaultMult, row.mult);
    EXPECT_EQ(data.DefaultOffset, row.strain ? 2.05F : (style == 4 ? 0 : offset));
    EXPECT_EQ(data.GageFactor, row.strain ? 2.05F : 2.1F);
    EXPECT_EQ(data.CalOnSite, row.strain ? 0 : 1);
    EXPECT_EQ(data.Alias[1].AliasOffset, row.strain ? "0" : "");
    EXPECT_EQ(data.Alias[90].AliasUnits, "");
  }
}

TEST_F(BridgeScreen, CountsStopAtLastChannel) {
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

TEST_F(BridgeScreen, SensorsStayWhereAnEmptyBlockExceedsThePanel) {
  store->Config.AutoChan = kTrue;
  store->VoltBlock.SEChannelCount = 39;
  give(1, kHalfBridge, 1, 1);
  give(2, kQuarterStrain, 0, 1);  // aligned to a pair: channel 41
  inSetup(1, [](Screen&) {});
  EXPECT_EQ(block(1).Reps, 1);
}

TEST_F(BridgeScreen, RoundsIntegrationIfTheProjectHasNone) {
  struct Case {
    i32 typed;
    i32 taken;
  };
  constexpr Case cases[] = {{0, 100},    {100, 100},     {101, 200},     {200, 200},
                            {201, 250},  {250, 250},     {251, 750},     {750, 750},
                            {751, 1250}, {15700, 16250}, {15750, 15750}, {99999, 15750}};
  give(1, 0, 1, 1);
  for (const Case& row : cases) {
    block(1).Integration = 2;  // the mark of a project without a time
    inSetup(1, [&](Screen& setup) { Type(setup, "Integration", NumberText(row.typed)); });
    EXPECT_EQ(block(1).Integration, row.taken) << row.typed;
  }
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

TEST_F(BridgeScreen, DoneRemovesBlocksAfterTheFourth) {
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

}  // namespace
}  // namespace ostrand
