// The screens of thermocouple, voltage and multiplexer blocks, through their controls.
#include "projectfile/genfile.h"
#include "setup/frm_temp_block.h"
#include "setup/frm_temp_setup.h"
#include "setup/frm_tk40m_block.h"
#include "setup/frm_tk40m_setup.h"
#include "setup/frm_volt_block.h"
#include "setup/screen_user.h"

namespace ostrand {
namespace {

using platform::Answer;

constexpr std::string_view kDeletion = "CONFIRM BLOCK DELETION";
constexpr std::string_view kDeletionText = "Measurements for this block will be Deleted, Continue?";

class AnalogScreensTest : public testing::ScreenUserTest {
 protected:
  // Blocks in the store by sensors and type, with the section's count of channels.
  template <class Group>
  static void fill(Group& group, std::initializer_list<ChannelBlock> blocks) {
    group.BlockCount = 0;
    for (const ChannelBlock& block : blocks) {
      AnalogBlock& stored = group[++group.BlockCount];
      stored.Reps = static_cast<i16>(block.Reps);
      if (!block.MeasType.empty()) stored.MeasType = block.MeasType;
    }
    if constexpr (requires { group.SEChannelCount; }) {
      group.SEChannelCount = static_cast<i16>(LiveChannelCount(ChannelBlocksOf(group)));
    }
  }

  void expectDeletion(Answer answer) {
    forms.ExpectBox(std::string(kDeletion), std::string(kDeletionText), answer);
  }

  std::string section(std::string_view header) {
    const std::string file = ORVUS_GENFILE::ProjectFileText(*store, {2003, 3, 10, 14, 5, 0});
    const std::size_t start = file.find("[" + std::string(header) + "]\r\n");
    if (start == std::string::npos) return "";
    return file.substr(start, file.find("\r\n[", start) - start);
  }
};

TEST_F(AnalogScreensTest, ABlockMadeOnTheScreensStandsInTheProjectFile) {
  frmVoltBlock list(context());
  spin(list, "BlockCount", true);
  edit(list, "frmVoltSetup", "1", [](Screen& setup) {
    EXPECT_EQ(setup.Caption, "1 BLOCK  VOLTAGES");
    EXPECT_EQ(text(setup, "Each"), "950 uSecs");
    type(setup, "Reps", "4");
    EXPECT_EQ(text(setup, "Block"), "3,800 uSecs");
    pick(setup, "Range", "200 mV");
    check(setup, "OpenSensDetect", false);
    spin(setup, "Integration", true);
    EXPECT_EQ(text(setup, "Integration"), "500");
    EXPECT_EQ(text(setup, "Each"), "1,400 uSecs");
    type(setup, "Units", "Bar");
    type(setup, "DefaultMult", "2.5");
    type(setup, "DefaultOffset", "-.25");
    check(setup, "Public", true);
    pick(setup, "DataResolution", "IEEE4");
    pick(setup, "ZeroFlag", "3");
  });
  list.Done();
  EXPECT_EQ(list.Result(), ModalResult::kDone);
  constexpr std::string_view kBlock =
      "[VOLTAGE BLOCKS]\r\nBlockCount= 1\r\nSEChannelCount= 8\r\nPublic(1)=-1\r\n"
      "Reps(1)= 4\r\nMeasType(1)=Diff\r\nDefaultMult(1)= 2.5\r\nDefaultOffset(1)=-0.25\r\n"
      "Range(1)=200 mV\r\nRangeNo(1)= 2\r\nIntegration(1)= 500\r\nDataResolution(1)=IEEE4\r\n"
      "IntegrationRange(1)= 2\r\nCalOnSite(1)= 0\r\nUnits(1)=Bar\r\nReverseMes(1)=-1\r\n"
      "SettleTime(1)= 200\r\nBlockTime(1)=5600\r\nZeroFlag(1)= 3\r\nOpenSensDetect(1)= 0\r\n"
      "StartVoltChan(1)= 1\r\n";
  EXPECT_EQ(section("VOLTAGE BLOCKS").substr(0, kBlock.size()), kBlock);
}

TEST_F(AnalogScreensTest, BlocksComeOneByOneWhileThereIsRoom) {
  frmVoltBlock list(context());
  EXPECT_EQ(text(list, "FreeSE"), "40");
  EXPECT_EQ(text(list, "FreeDiff"), "20");
  for (int n = 1; n <= 9; ++n) spin(list, "BlockCount", true);
  EXPECT_EQ(text(list, "BlockCount"), "7");
  EXPECT_EQ(forms.beeps, 2);
  EXPECT_EQ(text(list, "MeasType7"), "Diff");
  type(list, "BlockCount", "3");
  EXPECT_FALSE(at(list, "Reps4").Visible);
  type(list, "BlockCount", "8");  // no such key
  type(list, "BlockCount", "-");
  EXPECT_EQ(forms.beeps, 4);
  EXPECT_EQ(text(list, "BlockCount"), "3");
  reach(list, "BlockCount").TypeText("");
  EXPECT_FALSE(list.MoveFocus(nullptr)) << "an empty field is no number";
  type(list, "BlockCount", "3");
  for (int n = 1; n <= 4; ++n) spin(list, "BlockCount", false);
  EXPECT_EQ(text(list, "BlockCount"), "0");
  EXPECT_EQ(forms.beeps, 6);
}

TEST_F(AnalogScreensTest, FreeChannelsDecideOnAnotherBlock) {
  struct Case {
    bool autoChan;
    OrvusAnalogInputTypes newType;
    int singleEnded;  // in use by another section
    std::string_view freeSE, freeDiff;
    bool spins, types;
  };
  constexpr Case cases[] = {
      {true, ORVUS_INPUT_DIFF, 40, "0", "0", false, false},
      {true, ORVUS_INPUT_DIFF, 39, "1", "0", false, false},
      {true, ORVUS_INPUT_DIFF, 38, "2", "1", false, false},
      {true, ORVUS_INPUT_DIFF, 37, "3", "1", true, true},
      {true, ORVUS_INPUT_SE, 39, "1", "0", true, true},
      {true, ORVUS_INPUT_SE, 40, "0", "0", false, false},
      {true, ORVUS_INPUT_SE, 42, "-2", "-1", true, false},  // overdrawn
      {false, ORVUS_INPUT_SE, 0, "?", "?", true, false},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.singleEnded);
    store->Config.AutoChan = row.autoChan ? kTrue : kFalse;
    options.Measurement.DefaultInputType = row.newType;
    store->TempBlock.SEChannelCount = static_cast<i16>(row.singleEnded);
    frmVoltBlock list(context());
    EXPECT_EQ(text(list, "FreeSE"), row.freeSE);
    EXPECT_EQ(text(list, "FreeDiff"), row.freeDiff);
    forms.beeps = 0;
    type(list, "BlockCount", "1");
    EXPECT_EQ(text(list, "BlockCount"), row.types ? "1" : "0");
    EXPECT_EQ(forms.beeps, row.types ? 0 : 1);
    if (row.types) continue;
    spin(list, "BlockCount", true);
    EXPECT_EQ(text(list, "BlockCount"), row.spins ? "1" : "0");
  }
}

TEST_F(AnalogScreensTest, ABlockWithSensorsGoesOnlyAfterAQuestion) {
  fill(store->VoltBlock, {{1, "SE"}, {2, "SE"}, {0, "SE"}, {3, "SE"}});
  store->VoltBlock[2].Alias[1].AliasName = "Old";
  frmVoltBlock list(context());
  expectDeletion(Answer::kNo);
  spin(list, "BlockCount", false);
  EXPECT_EQ(text(list, "BlockCount"), "4");
  expectDeletion(Answer::kYes);
  expectDeletion(Answer::kNo);
  type(list, "BlockCount", "0");
  EXPECT_EQ(text(list, "BlockCount"), "2") << "what the user keeps ends it";
  expectDeletion(Answer::kYes);
  spin(list, "BlockCount", false);
  EXPECT_EQ(store->VoltBlock.BlockCount, 4) << "nothing is lost before Done";
  EXPECT_EQ(store->VoltBlock[2].Reps, 2);
  spin(list, "BlockCount", true);
  list.Done();
  EXPECT_EQ(store->VoltBlock.BlockCount, 2);
  EXPECT_EQ(store->VoltBlock.SEChannelCount, 2) << "the new block starts on a whole pair";
  EXPECT_EQ(store->VoltBlock[2].Reps, 0);
  EXPECT_EQ(store->VoltBlock[2].Alias[1].AliasName, "") << "a new block in an old one's place";
  EXPECT_EQ(store->VoltBlock[4].Reps, 0);
}

TEST_F(AnalogScreensTest, ClosingWithEditsAsks) {
  fill(store->VoltBlock, {{2, "SE"}});
  const auto reps = [&](std::string_view keys) {
    return [this, keys](Screen& list) {
      edit(list, "frmVoltSetup", "1", [&](Screen& setup) { type(setup, "Reps", keys); });
    };
  };
  const auto ask = [&](Answer answer) {
    forms.ExpectBox(
        "MEASUREMENT BLOCKS",
        "Edits were made to the measurement configurations.  Save changes before exiting screen?",
        answer);
  };
  frmVoltBlock untouched(context());
  reps("2")(untouched);
  untouched.Cancel();
  EXPECT_EQ(untouched.Result(), ModalResult::kCancel);

  frmVoltBlock list(context());
  reps("5")(list);
  ask(Answer::kCancel);
  list.Cancel();
  EXPECT_EQ(list.Result(), ModalResult::kNone);
  ask(Answer::kNo);
  list.Cancel();
  EXPECT_EQ(list.Result(), ModalResult::kCancel);
  EXPECT_EQ(store->VoltBlock[1].Reps, 2);

  frmVoltBlock saved(context());
  reps("5")(saved);
  ask(Answer::kYes);
  saved.Cancel();
  EXPECT_EQ(saved.Result(), ModalResult::kDone) << "the project has changed";
  EXPECT_EQ(store->VoltBlock[1].Reps, 5);
}

TEST_F(AnalogScreensTest, CancelOfASetupUndoesItAll) {
  fill(store->TempBlock, {{2, "Diff"}});
  store->TempBlock[1].Alias[1] = {"Oil", "", "", "", "0"};
  frmTempBlock list(context());
  open(list, "frmTempSetup", "1", [](Screen& setup) {
    type(setup, "Reps", "7");
    pick(setup, "Units", "Deg_C");
    pick(setup, "TypeNo", "K");
    setup.Cancel();
  });
  EXPECT_EQ(text(list, "Reps1"), "2");
  EXPECT_EQ(text(list, "FreeSE"), "36");
  list.Done();
  EXPECT_EQ(store->TempBlock[1].Units, "Deg_F");
  EXPECT_EQ(store->TempBlock[1].TypeNo, 0);
  EXPECT_EQ(store->TempBlock[1].Alias[1].AliasUnits, "");
}

TEST_F(AnalogScreensTest, SensorsGoDownUntilThereIsRoom) {
  struct Case {
    bool autoChan;
    int othersUse;
    std::string_view measType;
    int start;
    std::string_view typed, taken;
    std::string_view startShown;
  };
  constexpr Case cases[] = {
      {true, 0, "Diff", 1, "20", "20", "1"},
      {true, 0, "Diff", 1, "21", "20", "1"},
      {true, 0, "Diff", 1, "99", "20", "1"},
      {true, 3, "Diff", 7, "99", "18", "3"},  // the pair of channel 3 is left out
      {true, 3, "SE", 7, "99", "37", "4"},
      {true, 38, "SE", 1, "3", "2", "39"},
      {true, 40, "SE", 1, "3", "0", "1"},
      {true, 0, "SE", 1, "-5", "0", "1"},
      {false, 40, "Diff", 15, "99", "6", "15"},
      {false, 40, "SE", 40, "2", "1", "40"},
      {false, 40, "SE", 31, "10", "10", "31"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(std::string(row.typed) + " at " + std::to_string(row.start));
    ORVUS_COMMON::SetAllDefaults(*store);
    store->Config.AutoChan = row.autoChan ? kTrue : kFalse;
    fill(store->TempBlock, {{row.othersUse, "SE"}});
    fill(store->VoltBlock, {{1, row.measType}});
    store->VoltBlock[1].StartChan = static_cast<i16>(row.start);
    frmVoltBlock list(context());
    edit(list, "frmVoltSetup", "1", [&](Screen& setup) {
      type(setup, "Reps", row.typed);
      EXPECT_EQ(text(setup, "Reps"), row.taken);
      EXPECT_EQ(at(setup, "StartVoltChan").Enabled, !row.autoChan);
      EXPECT_EQ(text(setup, "StartVoltChan"), row.startShown);
    });
    EXPECT_EQ(text(list, "Reps1"), row.taken);
  }
}

TEST_F(AnalogScreensTest, TheInputTypeMovesStartAndCount) {
  store->Config.AutoChan = kFalse;
  fill(store->VoltBlock, {{5, "SE"}});
  store->VoltBlock[1].StartChan = 35;
  frmVoltBlock list(context());
  edit(list, "frmVoltSetup", "1", [](Screen& setup) {
    EXPECT_EQ(at(setup, "ReverseMes").Caption, "&Off Mes");
    EXPECT_FALSE(at(setup, "OpenSensDetect").Visible);
    pick(setup, "MeasType", "Diff");
    EXPECT_EQ(text(setup, "StartVoltChan"), "20");
    EXPECT_EQ(text(setup, "Reps"), "1") << "the start is limited before the sensors";
    EXPECT_EQ(at(setup, "ReverseMes").Caption, "Re&v Mes");
    EXPECT_TRUE(at(setup, "OpenSensDetect").Visible);
    type(setup, "StartVoltChan", "0");
    EXPECT_EQ(text(setup, "StartVoltChan"), "1");
    type(setup, "Reps", "15");
    type(setup, "StartVoltChan", "33");
    EXPECT_EQ(text(setup, "StartVoltChan"), "20");
    EXPECT_EQ(text(setup, "Reps"), "1");
  });
  list.Done();
  EXPECT_EQ(store->VoltBlock[1].StartChan, 20);
  EXPECT_EQ(store->VoltBlock[1].MeasType, "Diff");
}

TEST_F(AnalogScreensTest, DoneWritesTheStartsOfAllBlocks) {
  fill(store->TempBlock, {{3, "SE"}});
  fill(store->VoltBlock, {{2, "Diff"}, {1, "Diff"}, {0, "SE"}, {2, "SE"}});
  for (int b = 1; b <= 4; ++b) store->VoltBlock[b].StartChan = 9;
  frmVoltBlock list(context());
  list.Done();
  // The first block skips a channel that the others don't know of.
  constexpr int starts[] = {3, 5, 11, 11};
  for (int b = 1; b <= 4; ++b) EXPECT_EQ(store->VoltBlock[b].StartChan, starts[b - 1]) << b;

  fill(store->VoltBlock, {{0, "Diff"}});
  store->VoltBlock[1].StartChan = -4;
  frmVoltBlock empty(context());
  empty.Done();
  EXPECT_EQ(store->VoltBlock[1].StartChan, 1);
}

TEST_F(AnalogScreensTest, IntegrationAndSettlingKeepTheirSteps) {
  struct Case {
    std::string_view field, action;  // "up", "down", or what is typed
    std::string_view integration, settling;
  };
  // Each row goes on from the one before.
  constexpr Case cases[] = {
      {"Integration", "up", "500", "200"},
      {"Integration", "down", "200", "200"},
      {"Integration", "down", "200", "200"},
      {"Integration", "300", "750", "200"},
      {"Integration", "800", "500", "200"},
      {"Integration", "99999", "16000", "200"},
      {"Integration", "up", "16000", "200"},
      {"Integration", "1750", "1500", "200"},
      {"Integration", "down", "1000", "200"},
      {"SettleTime", "105", "1000", "200"},
      {"SettleTime", "1234.7", "1000", "1230"},
      {"SettleTime", "up", "1000", "1240"},
      {"SettleTime", "60000", "1000", "50000"},
      {"SettleTime", "down", "1000", "49990"},
      {"Integration", "100", "100", "49990"},
      {"SettleTime", "105", "100", "100"},
      {"SettleTime", "down", "100", "100"},
      {"Range", "20 mV", "100", "200"},
      {"SettleTime", "105", "100", "200"},
      {"Range", "50 mV", "100", "200"},
      {"SettleTime", "100", "100", "100"},
      {"Integration", "250", "250", "200"},
      {"IntegrationRange", "50 Hz", "20000", "3000"},
      {"IntegrationRange", "60 Hz", "16670", "3000"},
      {"IntegrationRange", "uSecs", "16000", "200"},
      {"Integration", "200", "200", "200"},
      {"IntegrationRange", "uSecs", "200", "100"},
  };
  fill(store->VoltBlock, {{1, "Diff"}});
  frmVoltBlock list(context());
  edit(list, "frmVoltSetup", "1", [&](Screen& setup) {
    for (const Case& row : cases) {
      SCOPED_TRACE(std::string(row.field) + " " + std::string(row.action));
      if (row.action == "up" || row.action == "down") {
        spin(setup, row.field, row.action == "up");
      } else if (at(setup, row.field).Kind() == ControlKind::kChoice) {
        pick(setup, row.field, row.action);
      } else {
        type(setup, row.field, row.action);
      }
      EXPECT_EQ(text(setup, "Integration"), row.integration);
      EXPECT_EQ(text(setup, "SettleTime"), row.settling);
      EXPECT_EQ(at(setup, "Integration").Enabled, text(setup, "IntegrationRange") == "uSecs");
    }
  });
}

TEST_F(AnalogScreensTest, ValuesOfTheProjectStandUntilTheyAreTyped) {
  fill(store->VoltBlock, {{2, "Diff"}});
  VoltBlockData& block = store->VoltBlock[1];
  block.Integration = 300;
  block.SettleTime = 55;
  block.DefaultMult = 0.123456789F;
  const float mult = block.DefaultMult;
  frmVoltBlock list(context());
  edit(list, "frmVoltSetup", "1", [](Screen& setup) {
    EXPECT_EQ(text(setup, "Integration"), "300");
    reach(setup, "Integration");
    reach(setup, "DefaultMult");
    check(setup, "Public", true);
  });
  list.Done();
  EXPECT_EQ(block.Integration, 300);
  EXPECT_EQ(block.SettleTime, 55);
  EXPECT_EQ(block.DefaultMult, mult);
  EXPECT_EQ(block.Public, kTrue);
}

TEST_F(AnalogScreensTest, TheRangeShowsTheTestForAnOpenSensor) {
  struct Case {
    std::string_view range;
    bool offered;
    int code;
  };
  constexpr Case cases[] = {{"Auto", false, 5},   {"5000 mV", false, 0}, {"1000 mV", false, 1},
                            {"200 mV", true, 20}, {"50 mV", true, 30},   {"20 mV", true, 40}};
  for (const Case& row : cases) {
    SCOPED_TRACE(row.range);
    ORVUS_COMMON::SetAllDefaults(*store);
    fill(store->VoltBlock, {{1, "Diff"}});
    frmVoltBlock list(context());
    edit(list, "frmVoltSetup", "1", [&](Screen& setup) {
      pick(setup, "Range", row.range);
      EXPECT_EQ(at(setup, "OpenSensDetect").Visible, row.offered);
      EXPECT_EQ(text(setup, "Each"), "950 uSecs") << "its time counts on any range";
    });
    list.Done();
    EXPECT_EQ(store->VoltBlock[1].RangeNo, row.code);
  }
}

TEST_F(AnalogScreensTest, SingleEndedOffsetsAreMeasuredOnceABlock) {
  fill(store->VoltBlock, {{4, "Diff"}});
  frmVoltBlock list(context());
  edit(list, "frmVoltSetup", "1", [](Screen& setup) {
    check(setup, "OpenSensDetect", false);
    pick(setup, "MeasType", "SE");
    EXPECT_EQ(text(setup, "Each"), "450 uSecs");
    EXPECT_EQ(text(setup, "Block"), "2,500 uSecs");
    check(setup, "ReverseMes", false);
    EXPECT_EQ(text(setup, "Block"), "1,800 uSecs");
  });
}

TEST_F(AnalogScreensTest, CalibrationOnSiteLocksTheScaling) {
  fill(store->VoltBlock, {{1, "Diff"}});
  store->VoltBlock[1].DefaultMult = 4;
  SetupHooks hooks;
  hooks.Solve = [](const SolveSource& source, DefaultScaling& scaling) {
    EXPECT_EQ(source.kind, "Volts");
    scaling = {"Bar", 0.5F, 7};
    return true;
  };
  frmVoltBlock list(context(), hooks);
  edit(list, "frmVoltSetup", "1", [](Screen& setup) {
    press(setup, "Solve");
    EXPECT_EQ(text(setup, "Units"), "Bar");
    EXPECT_EQ(text(setup, "DefaultMult"), "0.5");
    spin(setup, "DefaultMult", true);
    EXPECT_EQ(text(setup, "DefaultMult"), "2");
    spin(setup, "DefaultOffset", false);
    EXPECT_EQ(text(setup, "DefaultOffset"), "6");
    check(setup, "CalOnSite", true);
    for (const std::string_view name : {"DefaultMult", "DefaultOffset", "Solve", "Public"}) {
      EXPECT_FALSE(at(setup, name).Enabled) << name;
    }
    EXPECT_EQ(text(setup, "Public"), "on");
    EXPECT_EQ(text(setup, "DefaultMult") + text(setup, "DefaultOffset"), "10");
    check(setup, "CalOnSite", false);
    EXPECT_TRUE(at(setup, "Solve").Enabled);
    EXPECT_EQ(text(setup, "Public"), "on");
    check(setup, "CalOnSite", true);
  });
  list.Done();
  EXPECT_EQ(store->VoltBlock[1].CalOnSite, 1);
  EXPECT_EQ(store->VoltBlock[1].Public, kTrue);

  frmVoltBlock bare(context());
  edit(bare, "frmVoltSetup", "1", [](Screen& setup) {
    EXPECT_FALSE(at(setup, "Public").Enabled) << "locked on opening";
    check(setup, "CalOnSite", false);
    EXPECT_FALSE(at(setup, "Solve").Enabled) << "there is no calculator";
  });
}

TEST_F(AnalogScreensTest, ANewDefaultReachesTheSensorsThatFollow) {
  fill(store->VoltBlock, {{3, "SE"}});
  auto& alias = store->VoltBlock[1].Alias;
  alias[1] = {"", "mVolts", "1.0", "0", "0"};
  alias[2] = {"", "mVolts", "1", "0", "2"};
  SetupHooks hooks;
  int opened = 0;
  hooks.FieldNames = [&](const FieldNamesRequest& request) {
    ++opened;
    EXPECT_EQ(request.name, "VBlk1");
    EXPECT_EQ(request.defaults.Units, "Bar");
    ASSERT_EQ(request.aliases.size(), 3U);
    request.aliases[2].AliasName = "Named";
  };
  frmVoltBlock list(context(), hooks);
  open(list, "frmVoltSetup", "1", [&](Screen& setup) {
    type(setup, "Units", "Bar");
    type(setup, "DefaultMult", "2");
    forms.ExpectBoxWith("DEFAULT SCALING CHANGED", "EXAMINE SCALARS", Answer::kCancel);
    setup.Done();
    EXPECT_EQ(setup.Result(), ModalResult::kNone);
    EXPECT_EQ(opened, 0);
    forms.ExpectBoxWith("DEFAULT SCALING CHANGED", "EXAMINE SCALARS", Answer::kYes);
    setup.Done();
    EXPECT_EQ(setup.Result(), ModalResult::kDone);
    EXPECT_EQ(opened, 1);
  });
  list.Done();
  EXPECT_EQ(alias[1].AliasUnits, "Bar");
  EXPECT_EQ(alias[1].AliasMult, "2");
  EXPECT_EQ(alias[2].AliasUnits, "Bar");
  EXPECT_EQ(alias[2].AliasMult, "1");
  EXPECT_EQ(alias[3].AliasUnits, "");
  EXPECT_EQ(alias[3].AliasName, "Named");
}

TEST_F(AnalogScreensTest, ThermocoupleTypesSettleTheRange) {
  struct Case {
    std::string_view type, scale;
    std::string_view ranges;  // texts of both, empty when the panel of information is shown
    std::string_view info;
    std::string_view range;
  };
  // Each row goes on from the one before; the block begins with type K on "200 mV".
  constexpr Case cases[] = {
      {"K", "Deg_C",
       "> 1230\xB0"
       "C< 1230\xB0"
       "C",
       "", "200 mV"},
      {"K", "Deg_F",
       "> 2250\xB0"
       "F< 2250\xB0"
       "F",
       "", "200 mV"},
      {"K", "Kelvin", "> 1505 K< 1505 K", "", "200 mV"},
      {"K", "Rankine", "> 2710 R< 2710 R", "", "200 mV"},
      {"N", "Rankine", "", "", "200 mV"},
      {"E", "Rankine", "> 1680 R< 1680 R", "", "200 mV"},
      {"E", "Deg_C",
       "> 660\xB0"
       "C< 660\xB0"
       "C",
       "", "200 mV"},
      {"B", "Deg_C", "", "TYPE B INFO: Not useful below\r\n50\xB0 C.", "50 mV"},
      {"B", "Rankine", "", "TYPE B INFO: Not useful below\r\n581 Rankine.", "50 mV"},
      {"B", "Deg_F", "", "TYPE B INFO: Not useful below\r\n122\xB0 F.", "50 mV"},
      {"T", "Kelvin", "", "", "50 mV"},
      {"E", "Kelvin", "> 933 K< 933 K", "", "50 mV"},
      {"E", "Deg_F",
       "> 1220\xB0"
       "F< 1220\xB0"
       "F",
       "", "50 mV"},
  };
  fill(store->TempBlock, {{1, "Diff"}});
  store->TempBlock[1].TypeNo = 2;
  store->TempBlock[1].Range = "200 mV";
  frmTempBlock list(context());
  edit(list, "frmTempSetup", "1", [&](Screen& screen) {
    EXPECT_EQ(screen.Caption, "1 BLOCK  THERMOCOUPLES");
    auto& setup = dynamic_cast<frmTempSetup&>(screen);
    const auto& range = setup.Thermocouples.Range;
    const auto& info = setup.Thermocouples.TypeInfo;
    for (const Case& row : cases) {
      SCOPED_TRACE(std::string(row.type) + " " + std::string(row.scale));
      pick(setup, "TypeNo", row.type);
      pick(setup, "Units", row.scale);
      EXPECT_EQ(range.Visible, !row.ranges.empty());
      EXPECT_EQ(info.Visible, row.ranges.empty());
      EXPECT_EQ(range.Visible ? range.Items[0].Text + range.Items[1].Text : "", row.ranges);
      EXPECT_EQ(info.Text().empty() ? "" : info.Caption + ": " + info.Text(), row.info);
      EXPECT_EQ(setup.Analog().InputRange, row.range);
    }
    pick(setup, "Range", range.Items[0].Text);
    EXPECT_EQ(setup.Analog().InputRange, "200 mV");
    EXPECT_EQ(setup.Thermocouples.TypeNo.Items[7].ToolTip,
              "N (NiCrSi-NiSi).  Range is -270 to 1372 C, -454 to 2500 F");
  });
}

TEST_F(AnalogScreensTest, TheScaleRewritesTheSensors) {
  struct Case {
    std::string_view scale, mult, offset;
  };
  constexpr Case cases[] = {{"Deg_C", "1", "0"},
                            {"Kelvin", "1", "273.16"},
                            {"Rankine", "1.8", "491.72"},
                            {"Deg_F", "1.8", "32"}};
  fill(store->TempBlock, {{2, "Diff"}});
  store->TempBlock[1].Alias[2] = {"", "C", "5", "", "3"};
  frmTempBlock list(context());
  edit(list, "frmTempSetup", "1", [&](Screen& screen) {
    const auto aliases = dynamic_cast<frmTempSetup&>(screen).Aliases();
    EXPECT_EQ(aliases[0].AliasUnits, "") << "opening rewrites nothing";
    for (const Case& row : cases) {
      pick(screen, "Units", row.scale);
      EXPECT_EQ(aliases[0].AliasUnits, row.scale);
      EXPECT_EQ(aliases[0].AliasMult, row.mult);
      EXPECT_EQ(aliases[0].AliasOffset, row.offset);
      EXPECT_EQ(aliases[1].AliasUnits + aliases[1].AliasMult, "C5");
      EXPECT_EQ(aliases[1].AliasOffset, row.offset);
    }
    // Back at the scale that it had: no default changed, no question.
  });
  list.Done();
  EXPECT_EQ(store->TempBlock[1].DefaultMult, 1.8F);
  EXPECT_EQ(store->TempBlock[1].Alias[3].AliasUnits, "") << "beyond the sensors";
}

TEST_F(AnalogScreensTest, SingleEndedThermocouplesAreNotRecommended) {
  fill(store->TempBlock, {{1, "Diff"}});
  frmTempBlock list(context());
  edit(list, "frmTempSetup", "1", [&](Screen& setup) {
    EXPECT_TRUE(at(setup, "OpenSensDetect").Enabled);
    forms.ExpectBox("Measurement Type Not Recommended",
                    "Single-ended Thermocouple Measurements are not recommended.");
    pick(setup, "MeasType", "SE");
    EXPECT_FALSE(at(setup, "OpenSensDetect").Enabled);
    EXPECT_TRUE(at(setup, "OpenSensDetect").Visible);
    EXPECT_EQ(text(setup, "OpenSensDetect"), "off");
  });
  list.Done();
  EXPECT_EQ(store->TempBlock[1].RangeNo, 3);
  frmTempBlock again(context());  // opening it warns no more
  edit(again, "frmTempSetup", "1", [&](Screen& setup) {
    EXPECT_EQ(text(setup, "OpenSensDetect"), "off");
    pick(setup, "MeasType", "Diff");
    EXPECT_EQ(text(setup, "OpenSensDetect"), "on");
  });
}

TEST_F(AnalogScreensTest, MultiplexerInputsLimitBlocksAndSensors) {
  store->Config.AutoChan = kFalse;  // makes no difference here
  store->Config.TK40MQty = 2;
  frmTK40MBlock list(context());
  EXPECT_EQ(list.Caption, "TK40M BLOCK");
  EXPECT_EQ(text(list, "TK40MCount"), "TK40M Count = 2");
  EXPECT_EQ(at(list, "FreeChannels").Caption, "FREE CHANNELS");
  type(list, "BlockCount", "2");
  EXPECT_EQ(text(list, "MeasType2"), "Diff");
  edit(list, "frmTK40MSetup", "1", [](Screen& setup) { type(setup, "Reps", "30"); });
  edit(list, "frmTK40MSetup", "2", [](Screen& setup) {
    type(setup, "Reps", "21");
    EXPECT_EQ(text(setup, "Reps"), "20");
    EXPECT_EQ(setup.Find("MeasType"), nullptr);
  });
  EXPECT_EQ(forms.beeps, 1);
  EXPECT_EQ(text(list, "FreeChannels"), "0");
  spin(list, "BlockCount", true);
  type(list, "BlockCount", "3");
  EXPECT_EQ(text(list, "BlockCount"), "2");
  EXPECT_EQ(forms.beeps, 3);
  open(list, "frmTK40Graph", "", [](Screen& graph) {
    EXPECT_EQ(text(graph, "Block1"), "1-1 to 2-5");
    EXPECT_EQ(text(graph, "Block2"), "2-6 to 2-25");
  });
}

TEST_F(AnalogScreensTest, TheReferenceIsMeasuredForThermocouplesOnly) {
  store->Config.TK40MQty = 1;
  fill(store->TK40MBlock, {{3, ""}});
  int outputs = 0;
  SetupHooks hooks;
  hooks.ReferenceOutput = [&] { ++outputs; };
  const auto expect = [&](Screen& list, bool on) {
    EXPECT_EQ(at(list, "ReferenceTemp").Enabled, on);
    list.Done();
    EXPECT_EQ(store->Config.TcConfigOpts[1], on ? 1 : 0);
  };
  frmTK40MBlock opened(context(), hooks);
  press(opened, "ReferenceTemp");
  EXPECT_EQ(outputs, 1);
  expect(opened, true);
  frmTK40MBlock volts(context(), hooks);
  edit(volts, "frmTK40MSetup", "1", [](Screen& setup) { pick(setup, "TK40Volts", "Millivolts"); });
  expect(volts, false);
  frmTK40MBlock back(context(), hooks);
  edit(back, "frmTK40MSetup", "1",
       [](Screen& setup) { pick(setup, "TK40Volts", "Thermocouples"); });
  expect(back, true);
  frmTK40MBlock emptied(context(), hooks);
  edit(emptied, "frmTK40MSetup", "1", [](Screen& setup) { type(setup, "Reps", "0"); });
  expect(emptied, false);
}

TEST_F(AnalogScreensTest, AMultiplexerBlockChangesItsKind) {
  store->Config.TK40MQty = 1;
  fill(store->TK40MBlock, {{2, ""}});
  store->TK40MBlock[1].Alias[1] = {"Oil", "Deg_F", "1.8", "32", "0"};
  store->TK40MBlock[1].Alias[2] = {"", "Deg_F", "3", "32", "2"};
  frmTK40MBlock list(context());
  const auto seen = [](Screen& setup, std::initializer_list<std::string_view> names, bool visible) {
    for (const std::string_view name : names) {
      EXPECT_EQ(at(setup, name).Visible, visible) << name;
    }
  };
  edit(list, "frmTK40MSetup", "1", [&](Screen& screen) {
    auto& setup = dynamic_cast<frmTK40MSetup&>(screen);
    seen(setup, {"TempScale", "TypeNo"}, true);
    seen(setup, {"LongUnits", "Range", "CalOnSite", "ZeroFlag"}, false);
    EXPECT_EQ(text(setup, "DefaultMult") + "/" + text(setup, "DefaultOffset"), "1.8/32");
    pick(setup, "TK40Volts", "Millivolts");
    seen(setup, {"TempScale", "TypeNo", "TCRange", "TypeInfo"}, false);
    seen(setup, {"LongUnits", "Range", "OpenSensDetect"}, true);
    EXPECT_EQ(text(setup, "LongUnits"), "mVolts");
    EXPECT_EQ(text(setup, "DefaultMult") + "/" + text(setup, "DefaultOffset"), "1/0");
    EXPECT_EQ(setup.Aliases()[0].AliasUnits + setup.Aliases()[0].AliasMult, "");
    EXPECT_EQ(setup.Aliases()[0].AliasName, "Oil");
    EXPECT_EQ(setup.Aliases()[1].AliasUnits + setup.Aliases()[1].AliasMult, "3");
    pick(setup, "Range", "Auto");
    EXPECT_FALSE(at(setup, "OpenSensDetect").Visible);
    check(setup, "CalOnSite", true);
    pick(setup, "ZeroFlag", "2");
    pick(setup, "TK40Volts", "Thermocouples");
    EXPECT_EQ(setup.Analog().InputRange, "50 mV");
    EXPECT_TRUE(at(setup, "Public").Enabled);
    EXPECT_EQ(text(setup, "DefaultMult") + "/" + text(setup, "DefaultOffset"), "1.8/32");
    pick(setup, "TypeNo", "K");
    seen(setup, {"TCRange"}, true);
  });
  list.Done();
  const TK40MBlockData& block = store->TK40MBlock[1];
  EXPECT_EQ(block.TK40Volts, 0);
  EXPECT_EQ(block.TypeNo, 2);
  EXPECT_EQ(block.Units, "Deg_F");
  EXPECT_EQ(block.MeasType, "");
  EXPECT_EQ(block.RangeNo, 30);
  EXPECT_EQ(block.ZeroFlag, 0);
  EXPECT_EQ(block.CalOnSite, 0);
}

TEST_F(AnalogScreensTest, NewBlocksStartWithTheUsersOptions) {
  options.Measurement.DefaultInputType = ORVUS_INPUT_SE;
  options.Measurement.DefaultIntegrationCode = ORVUS_MEAS_INTEG_60HZ;
  store->Config.TK40MQty = 1;
  frmVoltBlock volts(context());
  spin(volts, "BlockCount", true);
  volts.Done();
  EXPECT_EQ(store->VoltBlock[1].MeasType, "SE");
  EXPECT_EQ(store->VoltBlock[1].IntegrationRange, 1);
  EXPECT_EQ(store->VoltBlock[1].Integration, 16670);
  frmTK40MBlock mux(context());
  spin(mux, "BlockCount", true);
  mux.Done();
  EXPECT_EQ(store->TK40MBlock[1].Integration, 16670);
  EXPECT_EQ(store->TK40MBlock[1].Units, "Deg_F");
}

TEST_F(AnalogScreensTest, OnlyBlocksThatAreThereOpen) {
  fill(store->VoltBlock, {{1, "SE"}, {1, "SE"}});
  frmVoltBlock list(context());
  for (const std::string_view argument : {"0", "3", "-1", "", "x", "99999"}) {
    EXPECT_FALSE(list.Openers().front().open(argument)) << argument;
  }
  EXPECT_EQ(host.shown, 0);
}

}  // namespace
}  // namespace ostrand
