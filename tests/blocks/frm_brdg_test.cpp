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
