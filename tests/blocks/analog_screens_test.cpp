// The screens of thermocouple, voltage and multiplexer blocks, through their controls.
#include "blocks/frm_brdg_block.h"
#include "blocks/frm_pulse_block.h"
#include "blocks/frm_temp_block.h"
#include "blocks/frm_tk40m_block.h"
#include "blocks/frm_volt_block.h"
#include "logger/frm_config.h"
#include "projectfile/genfile.h"
#include "support/screen_driver.h"
#include "text/number.h"

namespace ostrand {
namespace {

using namespace testing;

class AnalogScreensTest : public ScreenTest {
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
};

TEST_F(AnalogScreensTest, BlockMadeOnScreensIsSaved) {
  frmVoltBlock list(context);
  Spin(list, "BlockCount", true);
  edit(list, "frmVoltSetup", "1", [](Screen& setup) {
    EXPECT_EQ(setup.Caption, "1 BLOCK  VOLTAGES");
    Type(setup, "Reps", "4");
    Pick(setup, "Range", "200 mV");
    Check(setup, "OpenSensDetect", false);
    Spin(setup, "Integration", true);
    Type(setup, "Units", "Bar");
    Type(setup, "DefaultMult", "2.5");
    Type(setup, "DefaultOffset", "-.25");
    Check(setup, "Public", true);
    Pick(setup, "DataResolution", "IEEE4");
    Pick(setup, "ZeroFlag", "3");
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
  const std::string file = ORVUS_GENFILE::ProjectFileText(*store, {2003, 3, 10, 14, 5, 0});
  EXPECT_NE(file.find(kBlock), std::string::npos) << file;
}

TEST_F(AnalogScreensTest, DoneWritesTheStartsOfAllBlocksOfAllKinds) {
  fill(store->TempBlock, {{3, "SE"}});
  fill(store->VoltBlock, {{2, "Diff"}, {1, "Diff"}, {0, "SE"}, {2, "SE"}});
  fill(store->BridgeBlock, {{1, "Diff"}, {1, "Diff"}});
  const auto expectStarts = [&]<class List>(bool written) {
    store->TempBlock[1].StartChan = 7;
    for (int b = 1; b <= 4; ++b) store->VoltBlock[b].StartChan = 9;
    for (int b = 1; b <= 2; ++b) store->BridgeBlock[b].StartChan = 9;
    List list(context);
    list.Done();
    SCOPED_TRACE(list.Name());
    EXPECT_EQ(store->TempBlock[1].StartChan, written ? 1 : 7);
    // The first block skips a channel, which the other blocks do not take into account.
    constexpr int volts[] = {3, 5, 11, 11};
    for (int b = 1; b <= 4; ++b) {
      EXPECT_EQ(store->VoltBlock[b].StartChan, written ? volts[b - 1] : 9) << b;
    }
    EXPECT_EQ(store->BridgeBlock[1].StartChan, written ? 7 : 9);
    EXPECT_EQ(store->BridgeBlock[2].StartChan, written ? 8 : 9);
  };
  for (const flag automatic : {kTrue, kFalse}) {
    store->Config.AutoChan = automatic;
    expectStarts.operator()<frmTempBlock>(automatic != kFalse);
    expectStarts.operator()<frmVoltBlock>(automatic != kFalse);
    expectStarts.operator()<frmTK40MBlock>(automatic != kFalse);
    expectStarts.operator()<frmBrdgBlock>(automatic != kFalse);
    expectStarts.operator()<frmPulseBlock>(automatic != kFalse);
  }
  store->Config.AutoChan = kTrue;

  // Done after a change to manual selection does too.
  for (const bool kept : {false, true}) {
    for (int b = 1; b <= 4; ++b) store->VoltBlock[b].StartChan = 9;
    frmConfig config(context);
    Pick(config, "AutoChan", "Manual Channel Selection");
    kept ? config.Done() : config.Cancel();
    EXPECT_EQ(store->VoltBlock[1].StartChan, kept ? 3 : 9);
    EXPECT_EQ(store->VoltBlock[4].StartChan, kept ? 11 : 9);
  }
  store->Config.AutoChan = kTrue;

  fill(store->VoltBlock, {{0, "Diff"}});
  store->VoltBlock[1].StartChan = -4;
  frmVoltBlock empty(context);
  empty.Done();
  EXPECT_EQ(store->VoltBlock[1].StartChan, 1);
}

TEST_F(AnalogScreensTest, ProjectValuesStayUntilEdited) {
  fill(store->VoltBlock, {{2, "Diff"}});
  VoltBlockData& block = store->VoltBlock[1];
  block.Integration = 300;
  block.SettleTime = 55;
  block.DefaultMult = 0.123456789F;
  block.DataResolution = "Long";
  block.Alias[1].AliasMult = NumberText(block.DefaultMult) + "0";
  const float mult = block.DefaultMult;
  frmVoltBlock list(context);
  edit(list, "frmVoltSetup", "1", [](Screen& setup) {
    EXPECT_EQ(Shown(setup, "Integration"), "300");
    Usable(setup, "Integration");
    Usable(setup, "DefaultMult");
    EXPECT_EQ(Shown(setup, "DataResolution"), "");
    Check(setup, "Public", true);
  });
  list.Done();
  EXPECT_EQ(block.Integration, 300);
  EXPECT_EQ(block.SettleTime, 55);
  EXPECT_EQ(block.DefaultMult, mult);
  EXPECT_EQ(block.DataResolution, "Long");
  EXPECT_EQ(block.Alias[1].AliasMult, NumberText(mult) + "0");
  EXPECT_EQ(block.Public, kTrue);
}

TEST_F(AnalogScreensTest, ReferenceIsMeasuredForThermocouplesOnly) {
  store->Config.TK40MQty = 1;
  fill(store->TK40MBlock, {{3, ""}});
  struct Case {
    std::string_view kind;
    std::string_view reps;
    int measured;
  };
  for (const Case& row : {Case{"Thermocouples", "3", 1},
                          {"Millivolts", "3", 0},
                          {"Thermocouples", "3", 1},
                          {"Thermocouples", "0", 0}}) {
    const auto change = [&](frmTK40MBlock& list) {
      edit(list, "frmTK40MSetup", "1", [&](Screen& setup) {
        if (Shown(setup, "TK40Volts") != row.kind) Pick(setup, "TK40Volts", row.kind);
        Type(setup, "Reps", row.reps);
      });
      EXPECT_EQ(store->Config.TcConfigOpts[1], row.measured) << row.kind << row.reps;
    };
    const i16 before = store->TK40MBlock[1].TK40Volts == 0 ? 1 : 0;
    store->Config.TcConfigOpts[1] = before == 0 ? 1 : 0;
    {
      frmTK40MBlock dropped(context);
      EXPECT_EQ(store->Config.TcConfigOpts[1], before) << "on opening";
      change(dropped);
      dropped.End(ModalResult::kCancel);
    }
    EXPECT_EQ(store->Config.TcConfigOpts[1], before) << "taken back";
    frmTK40MBlock list(context);
    change(list);
    list.Done();
  }
}

TEST_F(AnalogScreensTest, MultiplexerBlockDropsVoltSettings) {
  store->Config.TK40MQty = 1;
  fill(store->TK40MBlock, {{2, ""}});
  TK40MBlockData& block = store->TK40MBlock[1];
  block.CalOnSite = 1;  // applies to volts only, and does not lock thermocouples
  block.Alias[1] = {"Oil", "Deg_F", "1.8", "32", "0"};
  block.Alias[2] = {"", "Deg_F", "3", "32", "2"};
  frmTK40MBlock list(context);
  edit(list, "frmTK40MSetup", "1", [](Screen& setup) {
    EXPECT_TRUE(IsUsable(setup, "DefaultMult") && IsUsable(setup, "Public"));
    Pick(setup, "TK40Volts", "Millivolts");
    Pick(setup, "Range", "Auto");
    Check(setup, "CalOnSite", true);
    Pick(setup, "ZeroFlag", "2");
    Pick(setup, "TK40Volts", "Thermocouples");
    EXPECT_TRUE(IsUsable(setup, "Public"));
    Pick(setup, "TypeNo", "K");
  });
  list.Done();
  EXPECT_EQ(block.TK40Volts, 0);
  EXPECT_EQ(block.TypeNo, 2);
  EXPECT_EQ(block.Units, "Deg_F");
  EXPECT_EQ(block.MeasType, "");
  EXPECT_EQ(block.RangeNo, 30);
  EXPECT_EQ(block.ZeroFlag, 0);
  EXPECT_EQ(block.CalOnSite, 0);
  EXPECT_EQ(block.Alias[1].AliasName, "Oil");
  EXPECT_EQ(block.Alias[1].AliasUnits + block.Alias[1].AliasMult, "");
  EXPECT_EQ(block.Alias[2].AliasUnits + block.Alias[2].AliasMult, "3");
}

}  // namespace
}  // namespace ostrand
