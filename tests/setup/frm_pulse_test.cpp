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
    host.onShow = [&](Screen& screen) {
      actions(screen);
      if (screen.Result() == ModalResult::kNone) screen.Done();
      ASSERT_NE(screen.Result(), ModalResult::kNone);
    };
    ASSERT_TRUE(Open(list, "frmPulseSetup", NumberText(number)));
    list.Done();
    ASSERT_EQ(list.Result(), ModalResult::kDone);
  }

  SetupHooks hooks;
};

TEST_F(PulseScreen, AllBlocksDrawOnOnePoolOfChannels) {
  frmPulseBlock list(context);
  Spin(list, "BlockCount", true);
  host.onShow = [&](Screen& setup) {
    EXPECT_EQ(Shown(setup, "FreeLoLev"), "2 free");
    Spin(setup, "Reps", false);
    EXPECT_EQ(forms.beeps, 1);
    Type(setup, "Reps", "07");
    EXPECT_EQ(Shown(setup, "Reps"), "2") << "lowered to what there is";
    EXPECT_EQ(block(1).BlockTime, 200);
    EXPECT_EQ(Shown(setup, "Each"), "100 uSecs");
    EXPECT_EQ(Shown(setup, "Block"), "200 uSecs");
    EXPECT_EQ(Shown(setup, "FreeHiLev"), "0 free");
    Spin(setup, "Reps", true);
    EXPECT_EQ(Shown(setup, "Reps"), "2");
    EXPECT_EQ(forms.beeps, 2);
    EXPECT_EQ(Shown(list, "Reps1"), "2");
    setup.Done();
  };
  ASSERT_TRUE(Open(list, "frmPulseSetup", "1"));
  Spin(list, "BlockCount", true);
  EXPECT_EQ(forms.beeps, 3) << "no channel is free";
  Type(list, "BlockCount", "2");
  EXPECT_EQ(forms.beeps, 4);
  EXPECT_EQ(Shown(list, "BlockCount"), "1");
  EXPECT_EQ(Shown(list, "FreeSwtch"), "0");
  host.onShow = [&](Screen& setup) {
    Type(setup, "Reps", "");
    EXPECT_EQ(Shown(setup, "Reps"), "0");
    Type(setup, "Reps", "1");
    setup.Done();
  };
  ASSERT_TRUE(Open(list, "frmPulseSetup", "1"));
  Spin(list, "BlockCount", true);
  Spin(list, "BlockCount", true);
  EXPECT_EQ(forms.beeps, 5) << "two blocks are all";
  list.Done();
  EXPECT_EQ(group().BlockCount, 2);
}

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

TEST_F(PulseScreen, KindsOfInputAndRowsHaveTheirTexts) {
  give(1, 1, 5).Meas = "";
  block(1).DataResolution = "";
  block(1).DefaultMult = 0.05F;
  inSetup(1, [&](Screen& setup) {
    EXPECT_EQ(Shown(setup, "Meas"), "HiLev") << "what a blank stands for";
    EXPECT_EQ(Shown(setup, "DataType"), "IEEE4");
    Pick(setup, "Meas", "LoLev");
    Pick(setup, "DataType", "FP2");
  });
  EXPECT_EQ(block(1).Meas, "LoLev");
  EXPECT_EQ(block(1).DataResolution, "FP2");
  frmPulseBlock list(context);
  EXPECT_EQ(Shown(list, "Meas1"), "Low Lev");
  EXPECT_EQ(Shown(list, "Option1"), "Freq");
  EXPECT_EQ(Shown(list, "DefaultMult1"), "5.0e-2");
  EXPECT_EQ(Shown(list, "DefaultOffset1"), "0.0e0");
  EXPECT_FALSE(IsUsable(list, "Reps2"));
}

TEST_F(PulseScreen, TheMovingAverageOutlivesATotal) {
  give(1, 1, 1);
  inSetup(1, [&](Screen& setup) {
    Type(setup, "Opt", "99999");
    EXPECT_EQ(Shown(setup, "Opt"), "32767");
    Spin(setup, "Opt", true);
    EXPECT_EQ(Shown(setup, "Opt"), "32767");
    Type(setup, "Opt", "0");
    EXPECT_EQ(Shown(setup, "Opt"), "1");
    Spin(setup, "Opt", false);
    EXPECT_EQ(Shown(setup, "Opt"), "1");
    testing::Usable(setup, "Opt").TypeText("050");
    EXPECT_EQ(block(1).Opt, 50) << "as typed";
    Pick(setup, "DataType", "FP2");
    Pick(setup, "Option", "Totl");
    EXPECT_EQ(block(1).Opt, 0);
    EXPECT_EQ(Shown(setup, "Units"), "Counts");
    EXPECT_EQ(Shown(setup, "DataType"), "IEEE4");
    EXPECT_FALSE(IsUsable(setup, "Opt"));
    Pick(setup, "Option", "Totl");
    Pick(setup, "Option", "Freq");
    EXPECT_EQ(Shown(setup, "Opt"), "50");
    EXPECT_EQ(Shown(setup, "Units"), "Hz");
    Type(setup, "Opt", "60");
    Pick(setup, "Option", "Freq");
    EXPECT_EQ(Shown(setup, "Opt"), "60");
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

TEST_F(PulseScreen, AveragesGiveWayToSamplesOnce) {
  give(1, 1, 0);
  auto& selected = block(1).Output.OutputSelect;
  selected[3][kAverage] = 1;
  selected[5][kAverage] = 1;
  selected[5][kStdDev] = 1;
  selected[6][kMaximum] = 1;
  store->Tables[3].TableOn = kTrue;
  inSetup(1, [&](Screen& setup) {
    Pick(setup, "Table", "Table 3");
    EXPECT_TRUE(IsUsable(setup, "Avg"));
    forms.ExpectBox("OUTPUT OPTIONS CHANGED",
                    "The 'Avg' and/or 'Std' outputs have been replaced with 'Smp'.");
    Pick(setup, "Option", "Freq");
    EXPECT_EQ(Shown(setup, "Smp"), "on");
    EXPECT_EQ(Shown(setup, "Avg"), "off");
    EXPECT_FALSE(IsUsable(setup, "Avg"));
    EXPECT_FALSE(IsUsable(setup, "Std"));
    EXPECT_TRUE(IsUsable(setup, "Max"));
    Pick(setup, "Option", "Freq");
    Pick(setup, "Option", "Totl");
    EXPECT_TRUE(IsUsable(setup, "Avg"));
    Pick(setup, "Table", "Table 5");
    EXPECT_FALSE(IsUsable(setup, "Avg")) << "a table that is off";
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

TEST_F(PulseScreen, CalibrationOnSiteLocksScaling) {
  std::vector<std::string> asked;
  hooks.Solve = [&](const SolveSource& source, DefaultScaling& scaling) {
    asked.emplace_back(source.kind);
    scaling.Mult = 60;
    return asked.size() < 2;
  };
  give(1, 1, 1);
  inSetup(1, [&](Screen& setup) {
    Type(setup, "DefaultOffset", "2.5");
    Spin(setup, "DefaultOffset", true);
    EXPECT_EQ(Shown(setup, "DefaultOffset"), "3.5") << "plainly by one";
    testing::Press(setup, "Solve");
    EXPECT_EQ(Shown(setup, "DefaultMult"), "60");
    Pick(setup, "Option", "Totl");
    ASSERT_TRUE(Open(setup, "frmSolveList"));
    Check(setup, "SiteCal", true);
    for (const auto name : {"Public", "DefaultMult", "DefaultOffset", "Solve"}) {
      EXPECT_FALSE(IsUsable(setup, name)) << name;
    }
    EXPECT_EQ(block(1).CalOnSite, 1);
    EXPECT_EQ(block(1).Public, kTrue);
    Pick(setup, "Option", "Freq");
    EXPECT_FALSE(IsUsable(setup, "Solve"));
    Check(setup, "SiteCal", false);
    EXPECT_TRUE(IsUsable(setup, "Solve"));
    EXPECT_TRUE(IsUsable(setup, "DefaultMult"));
  });
  EXPECT_EQ(asked, (std::vector<std::string>{"Pulse", "Totalize"}));
  EXPECT_EQ(block(1).DefaultMult, 1);
  EXPECT_EQ(block(1).DefaultOffset, 0);
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
