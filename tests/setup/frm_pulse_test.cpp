// Pulse blocks, through the controls of their screens.
#include "setup/frm_pulse_block.h"
#include "setup/frm_pulse_setup.h"
#include "setup/screen_driver.h"
#include "text/number.h"

namespace ostrand {
namespace {

using testing::Check;
using testing::IsUsable;
using testing::Open;
using testing::Pick;
using testing::Shown;
using testing::Spin;
using testing::Type;

class PulseScreen : public testing::ScreenTest {
 protected:
  PulseBlockGroup& group() { return store->PulseBlock[0]; }
  PulseBlockData& block(int number) { return group()[number]; }

  PulseBlockData& give(int number, int reps, int opt) {
    block(number).Reps = static_cast<i16>(reps);
    block(number).Opt = static_cast<i16>(opt);
    if (opt == 0) block(number).Units = "Counts";
    group().BlockCount = static_cast<i16>(number);
    return block(number);
  }
  void inSetup(int number, const std::function<void(Screen&)>& actions) {
    frmPulseBlock list(context, hooks);
    edit(list, "frmPulseSetup", NumberText(number), actions);
  }

  SetupHooks hooks;
};

TEST_F(PulseScreen, SensorsThatAProjectHasTooManyAreLowered) {
  give(1, 2, 1);
  give(2, 2, 1);
  inSetup(2, [&](Screen& setup) {
    EXPECT_EQ(Shown(setup, "Reps"), "0");
    EXPECT_EQ(Shown(setup, "FreeHiLev"), "0 free");
  });
  EXPECT_EQ(block(1).Reps, 2);
  EXPECT_EQ(block(2).Reps, 0);
}

TEST_F(PulseScreen, BlanksStandForHighLevelAndFullResolution) {
  give(1, 1, 5).Meas = "";
  block(1).DataResolution = "";
  inSetup(1, [&](Screen& setup) {
    EXPECT_EQ(Shown(setup, "Meas"), "HiLev");
    EXPECT_EQ(Shown(setup, "DataType"), "IEEE4");
    Pick(setup, "Meas", "LoLev");
    Pick(setup, "DataType", "FP2");
  });
  EXPECT_EQ(block(1).Meas, "LoLev");
  EXPECT_EQ(block(1).DataResolution, "FP2");
}

TEST_F(PulseScreen, TheMovingAverageIsStoredAsTypedAndIsNoneOfATotal) {
  give(1, 1, 1);
  inSetup(1, [&](Screen& setup) {
    testing::Usable(setup, "Opt").TypeText("050");
    EXPECT_EQ(block(1).Opt, 50);
    Pick(setup, "Option", "Totl");
    EXPECT_EQ(block(1).Opt, 0);
    Pick(setup, "Option", "Totl");
    Pick(setup, "Option", "Freq");
    EXPECT_EQ(block(1).Opt, 50);
    Type(setup, "Opt", "60");
    Pick(setup, "Option", "Freq");
  });
  EXPECT_EQ(block(1).Opt, 60);
}

TEST_F(PulseScreen, AFrequencyIsNeverLeftWithoutAnAverage) {
  for (const std::string_view units : {"rpm", "Counts", ""}) {
    ORVUS_COMMON::SetPulseDefaults(*store, 0, 0);
    give(1, 1, 0).Units = units;
    block(1).Alias[1].AliasUnits = "Counts";
    inSetup(1, [&](Screen& setup) {
      Pick(setup, "Option", "Freq");
      EXPECT_EQ(Shown(setup, "Opt"), "1");
    });
    EXPECT_EQ(block(1).Opt, 1);
    EXPECT_EQ(block(1).Units, units == "rpm" ? "rpm" : "Hz");
    EXPECT_EQ(block(1).Alias[1].AliasUnits, units == "rpm" ? "Counts" : "Hz");
  }
}

TEST_F(PulseScreen, AveragesGiveWayToSamplesInTablesThatAreOffToo) {
  give(1, 1, 0);
  auto& selected = block(1).Output.OutputSelect;
  selected[3][kAverage] = 1;
  selected[5][kStdDev] = 1;
  selected[6][kMaximum] = 1;
  inSetup(1, [&](Screen& setup) {
    forms.ExpectBox("OUTPUT OPTIONS CHANGED",
                    "The 'Avg' and/or 'Std' outputs have been replaced with 'Smp'.");
    Pick(setup, "Option", "Freq");
    Pick(setup, "Option", "Freq");
  });
  for (int t = 1; t <= kTables; ++t) {
    EXPECT_EQ(selected[t][kSample], t == 3 || t == 5 ? 1 : 0) << t;
    EXPECT_EQ(selected[t][kAverage] + selected[t][kStdDev], 0) << t;
  }
  EXPECT_EQ(selected[6][kMaximum], 1);
}

TEST_F(PulseScreen, OpeningAFrequencyChangesNothing) {
  give(1, 1, 7).Units = "Counts";
  block(1).Output.OutputSelect[2][kAverage] = 1;
  block(1).DataResolution = "FP2";
  block(1).BlockTime = 100;
  store->Tables[2].TableOn = kTrue;
  const auto before = std::make_unique<PulseBlockData>(block(1));
  inSetup(1, [&](Screen& setup) {
    Pick(setup, "Table", "Table 2");
    EXPECT_EQ(Shown(setup, "Avg"), "on");
    EXPECT_FALSE(IsUsable(setup, "Avg"));
  });
  EXPECT_TRUE(block(1) == *before);
}

TEST_F(PulseScreen, CalculatorsAreAskedByResult) {
  std::vector<std::string> asked;
  hooks.Solve = [&](const SolveSource& source, DefaultScaling& scaling) {
    asked.emplace_back(source.kind);
    scaling.Mult = 60;
    return asked.size() < 2;
  };
  hooks.FieldNames = [&](const FieldNamesRequest& request) {
    asked.emplace_back(request.solveSource.kind);
  };
  give(1, 1, 1);
  inSetup(1, [&](Screen& setup) {
    testing::Press(setup, "Solve");
    Pick(setup, "Option", "Totl");
    ASSERT_TRUE(Open(setup, "frmSolveList"));
    ASSERT_TRUE(Open(setup, "frmFldName"));
  });
  EXPECT_EQ(asked, (std::vector<std::string>{"Pulse", "Totalize", "Totalize"}));
  EXPECT_EQ(block(1).DefaultMult, 60);
}

TEST_F(PulseScreen, CalibrationOnSiteIsStored) {
  give(1, 1, 1).DefaultMult = 60;
  inSetup(1, [&](Screen& setup) { Check(setup, "SiteCal", true); });
  EXPECT_EQ(block(1).CalOnSite, 1);
  EXPECT_EQ(block(1).Public, kTrue);
  EXPECT_EQ(block(1).DefaultMult, 1);
}

TEST_F(PulseScreen, UnitsOfSensorsFollowThoseOfTheBlock) {
  struct Case {
    std::string_view picks[2];
    std::string_view typed;
    std::string_view hertz;   // what becomes of a sensor's "Hz"
    std::string_view counts;  // and of its "Counts"
  };
  constexpr Case cases[] = {{{"Totl", "Totl"}, "", "Counts", "Counts"},
                            {{"Totl", "Totl"}, "turns", "turns", "Counts"},
                            {{"Totl", "Freq"}, "", "Hz", "Hz"},
                            {{"Totl", "Freq"}, "rpm", "rpm", "rpm"},
                            {{"Freq", "Freq"}, "rpm", "rpm", "Counts"}};
  for (const Case& row : cases) {
    SCOPED_TRACE(::testing::Message() << row.picks[0] << row.picks[1] << row.typed);
    ORVUS_COMMON::SetPulseDefaults(*store, 0, 0);
    give(1, 2, 1);
    block(1).Alias[1].AliasUnits = "Hz";
    block(1).Alias[2].AliasUnits = "Counts";
    inSetup(1, [&](Screen& setup) {
      for (const auto pick : row.picks) Pick(setup, "Option", pick);
      if (!row.typed.empty()) Type(setup, "Units", row.typed);
    });
    EXPECT_EQ(block(1).Alias[1].AliasUnits, row.hertz);
    EXPECT_EQ(block(1).Alias[2].AliasUnits, row.counts);
  }
}

TEST_F(PulseScreen, ScalingByHandIsAskedAboutAndCancelTakesAllBack) {
  give(1, 2, 1);
  block(1).Alias[1].AliasMult = "1";
  block(1).Alias[2].AliasMult = "1";
  block(1).Alias[2].AliasExcept = "6";
  inSetup(1, [&](Screen& setup) {
    Type(setup, "DefaultMult", "4");
    EXPECT_FALSE(IsUsable(setup, "FieldNames")) << "nobody shows them";
    forms.ExpectBoxWith("DEFAULT SCALING CHANGED", "EXAMINE SCALARS NOW?", platform::Answer::kNo);
  });
  EXPECT_EQ(block(1).Alias[1].AliasMult, "4");
  EXPECT_EQ(block(1).Alias[2].AliasMult, "1");
  inSetup(1, [&](Screen& setup) {
    Type(setup, "Reps", "1");
    Pick(setup, "Option", "Totl");
    setup.Cancel();
  });
  EXPECT_EQ(block(1).Reps, 2);
  EXPECT_EQ(block(1).Opt, 1);

  frmPulseBlock list(context);
  forms.ExpectBoxWith("CONFIRM BLOCK DELETION", "Continue?", platform::Answer::kYes);
  Spin(list, "BlockCount", false);
  EXPECT_EQ(block(1).Reps, 0);
  forms.ExpectBoxWith("MEASUREMENT BLOCKS", "Save changes", platform::Answer::kYes);
  list.Cancel();
  EXPECT_EQ(list.Result(), ModalResult::kDone);
  EXPECT_EQ(group().BlockCount, 0);
}

}  // namespace
}  // namespace ostrand
