// Pulse blocks, through the controls of their screens: project files that no screen produces, and
// effects that the screens do not show.
#include "blocks/frm_pulse_block.h"
#include "support/screen_driver.h"
#include "text/number.h"

namespace ostrand {
namespace {

using namespace testing;

class PulseScreen : public ScreenTest {
 protected:
  PulseBlockData& give(int number, int reps, int opt) {
    PulseBlockGroup& group = store->PulseBlock[0];
    PulseBlockData& data = group[number];
    data.Reps = static_cast<i16>(reps);
    data.Opt = static_cast<i16>(opt);
    if (opt == 0) data.Units = "Counts";
    group.BlockCount = static_cast<i16>(number);
    return data;
  }
  void inSetup(int number, const std::function<void(Screen&)>& actions) {
    frmPulseBlock list(context);
    edit(list, "frmPulseSetup", NumberText(number), actions);
    list.Done();
  }
};

TEST_F(PulseScreen, ExcessSensorsAreRemoved) {
  const PulseBlockData& first = give(1, 2, 1);
  const PulseBlockData& second = give(2, 2, 1);
  inSetup(2, [](Screen& setup) { EXPECT_EQ(Shown(setup, "FreeHiLev"), "0 free"); });
  EXPECT_EQ(first.Reps, 2);
  EXPECT_EQ(second.Reps, 0);
}

TEST_F(PulseScreen, BlanksMeanHighLevelAndFullResolution) {
  PulseBlockData& data = give(1, 1, 5);
  data.Meas = "";
  data.DataResolution = "";
  inSetup(1, [](Screen& setup) {
    EXPECT_EQ(Shown(setup, "Meas"), "HiLev");
    EXPECT_EQ(Shown(setup, "DataType"), "IEEE4");
    Pick(setup, "Meas", "LoLev");
    Pick(setup, "DataType", "FP2");
  });
  EXPECT_EQ(data.Meas, "LoLev");
  EXPECT_EQ(data.DataResolution, "FP2");
}

TEST_F(PulseScreen, UnitsOfSensorsFollowThoseOfTheBlock) {
  struct Case {
    int opt;
    std::string_view picks[2];
    std::string_view typed;
    std::string_view block;   // the units at the end
    std::string_view hertz;   // result for a sensor with "Hz"
    std::string_view counts;  // and for one with "Counts"
  };
  constexpr Case cases[] = {{1, {"Totl", "Totl"}, "", "Counts", "Counts", "Counts"},
                            {1, {"Totl", "Totl"}, "turns", "turns", "turns", "Counts"},
                            {1, {"Totl", "Freq"}, "", "Hz", "Hz", "Hz"},
                            {1, {"Totl", "Freq"}, "rpm", "rpm", "rpm", "rpm"},
                            {1, {"Freq", "Freq"}, "rpm", "rpm", "rpm", "Counts"},
                            {0, {"Freq", "Freq"}, "", "Hz", "Hz", "Hz"}};
  for (const Case& row : cases) {
    SCOPED_TRACE(::testing::Message() << row.picks[0] << row.picks[1] << row.typed);
    ORVUS_COMMON::SetPulseDefaults(*store, 0, 0);
    PulseBlockData& data = give(1, 2, row.opt);
    data.Alias[1].AliasUnits = "Hz";
    data.Alias[2].AliasUnits = "Counts";
    inSetup(1, [&](Screen& setup) {
      for (const auto pick : row.picks) Pick(setup, "Option", pick);
      if (!row.typed.empty()) Type(setup, "Units", row.typed);
    });
    EXPECT_EQ(data.Units, row.block);
    EXPECT_EQ(data.Alias[1].AliasUnits, row.hertz);
    EXPECT_EQ(data.Alias[2].AliasUnits, row.counts);
  }
}

}  // namespace
}  // namespace ostrand
