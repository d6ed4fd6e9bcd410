// The screens of thermocouple, voltage and multiplexer blocks, through their controls.
#include "projectfile/genfile.h"
#include "setup/frm_temp_block.h"
#include "setup/frm_temp_setup.h"
#include "setup/frm_tk40m_block.h"
#include "setup/frm_tk40m_setup.h"
#include "setup/frm_volt_block.h"
#include "setup/screen_user.h"
#include "text/number.h"

namespace ostrand {
namespace {

using platform::Answer;

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

TEST_F(AnalogScreensTest, BlocksGoFromTheProjectAtDone) {
  fill(store->VoltBlock, {{1, "SE"}, {2, "SE"}, {0, "SE"}, {3, "SE"}});
  store->VoltBlock[2].Alias[1].AliasName = "Old";
  frmVoltBlock list(context());
  for (int block = 0; block < 2; ++block) {
    forms.ExpectBox("CONFIRM BLOCK DELETION",
                    "Measurements for this block will be Deleted, Continue?", Answer::kYes);
  }
  type(list, "BlockCount", "1");
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

TEST_F(AnalogScreensTest, ValuesOfTheProjectStandUntilTheyAreTyped) {
  fill(store->VoltBlock, {{2, "Diff"}});
  VoltBlockData& block = store->VoltBlock[1];
  block.Integration = 300;
  block.SettleTime = 55;
  block.DefaultMult = 0.123456789F;
  block.DataResolution = "Long";
  block.Alias[1].AliasMult = NumberText(block.DefaultMult) + "0";
  const float mult = block.DefaultMult;
  frmVoltBlock list(context());
  edit(list, "frmVoltSetup", "1", [](Screen& setup) {
    EXPECT_EQ(text(setup, "Integration"), "300");
    reach(setup, "Integration");
    reach(setup, "DefaultMult");
    EXPECT_EQ(text(setup, "DataResolution"), "");
    check(setup, "Public", true);
  });
  list.Done();
  EXPECT_EQ(block.Integration, 300);
  EXPECT_EQ(block.SettleTime, 55);
  EXPECT_EQ(block.DefaultMult, mult);
  EXPECT_EQ(block.DataResolution, "Long");
  EXPECT_EQ(block.Alias[1].AliasMult, NumberText(mult) + "0");
  EXPECT_EQ(block.Public, kTrue);
}

TEST_F(AnalogScreensTest, CalibrationOnSiteIsStoredAndLocksOnOpening) {
  fill(store->VoltBlock, {{1, "Diff"}});
  frmVoltBlock list(context());
  edit(list, "frmVoltSetup", "1", [](Screen& setup) { check(setup, "CalOnSite", true); });
  list.Done();
  EXPECT_EQ(store->VoltBlock[1].CalOnSite, 1);
  EXPECT_EQ(store->VoltBlock[1].Public, kTrue);
  frmVoltBlock again(context());
  edit(again, "frmVoltSetup", "1", [](Screen& setup) {
    EXPECT_FALSE(at(setup, "Public").Enabled);
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
  store->TK40MBlock[1].CalOnSite = 1;  // of volts only, and does not lock thermocouples
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
    EXPECT_TRUE(at(setup, "DefaultMult").Enabled && at(setup, "Public").Enabled);
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
