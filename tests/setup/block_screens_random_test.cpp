// Whatever is done on the screens of blocks, under automatic channels the project keeps within the
// panel and reads back the same, and no box comes that is not one of theirs.
#include <random>
#include <set>

#include "projectfile/genfile.h"
#include "setup/bridge_rules.h"
#include "setup/controls/choice.h"
#include "setup/frm_brdg_block.h"
#include "setup/frm_pulse_block.h"
#include "setup/frm_temp_block.h"
#include "setup/frm_tk40m_block.h"
#include "setup/frm_volt_block.h"
#include "setup/screen_driver.h"
#include "support/temp_folder.h"
#include "text/number.h"

namespace ostrand {
namespace {

using platform::Answer;

// A user who does anything at all, answers all boxes by chance and keeps their texts.
class AnyUser : public testing::ScriptedForms, public ScreenHost {
 public:
  explicit AnyUser(std::uint32_t seed) : random_(seed) {}

  int Below(std::size_t limit) { return static_cast<int>(random_() % limit); }

  Answer ShowBox(const platform::MessageBox& box) override {
    texts.insert(box.text.substr(0, box.text.find("Flag(")));  // then a flag and its users
    constexpr Answer kAnswers[] = {Answer::kYes, Answer::kNo, Answer::kCancel};
    if (box.buttons == platform::Buttons::kOk) return Answer::kOk;
    return kAnswers[Below(box.buttons == platform::Buttons::kYesNo ? 2 : 3)];
  }

  void ShowModal(Screen& screen) override {
    if (!screen.Name().ends_with("Block") && !screen.Name().ends_with("Setup")) {
      return screen.Cancel();  // the panel, the output parameters
    }
    for (int n = 60; n > 0 && screen.Result() == ModalResult::kNone; --n) act(screen);
    for (int n = 0; screen.Result() == ModalResult::kNone; ++n) {
      leaveField(screen, nullptr);
      Below(4) == 0 ? screen.Cancel() : screen.Done();
      ASSERT_LT(n, 1000) << screen.Name() << " keeps its user";
    }
  }

  std::set<std::string> texts;  // of the boxes shown

 private:
  // A field that can't be left is as it was before.
  static void leaveField(Screen& screen, Control* next) {
    if (!screen.MoveFocus(next)) static_cast<TextField*>(screen.Focused())->Escape();
  }

  void act(Screen& screen) {
    if (Below(3) == 0) {
      const auto& openers = screen.Openers();
      if (!openers.empty()) {
        openers[static_cast<std::size_t>(Below(openers.size()))].open(NumberText(Below(9)));
      }
      return;
    }
    Control& control =
        *screen.Controls()[static_cast<std::size_t>(Below(screen.Controls().size()))];
    if (!control.Usable()) return;
    leaveField(screen, &control);
    if (auto* choice = dynamic_cast<Choice*>(&control)) {
      if (choice->Items.empty()) return;
      choice->Pick(choice->Items[static_cast<std::size_t>(Below(choice->Items.size()))].Text);
    } else if (control.Kind() == ControlKind::kCheck) {
      control.Check(Below(2) == 0);
    } else if (control.Kind() == ControlKind::kButton) {
      control.Press();
    } else if (Below(2) == 0) {
      control.Spin(Below(3) != 0);
    } else {
      constexpr std::string_view kTexts[] = {"0",   "1",   "2",   "3",   "4",   "7",      "12",
                                             "19",  "21",  "40",  "",    "-5",  "1e9",    "2.5",
                                             "Hz",  "-",   "99",  "e",   "250", "100000", "16001",
                                             "9 x", ".5e", "300", "800", "mBar"};
      // The project file does not keep that units are blank.
      const bool units = control.Name().ends_with("Units");
      control.TypeText(units ? "Counts" : kTexts[Below(std::size(kTexts))]);
    }
  }

  std::mt19937 random_;
};

class AnyActions : public testing::ScreenTest {
 protected:
  // A list of blocks and the setups of its blocks under any actions.
  template <class List>
  void play(AnyUser& user) {
    SetupHooks hooks;
    hooks.FieldNames = [&](const FieldNamesRequest& request) {
      for (RepAlias& alias : request.aliases) alias.AliasExcept = NumberText(user.Below(8));
    };
    List list({*store, user, user, options, 0, kinds}, hooks);
    user.ShowModal(list);
    seen.merge(user.texts);
    const auto again = NewStore();
    ORVUS_COMMON::SetAllDefaults(*again);
    ORVUS_GENFILE::ReadProjectText(*again, saved(*store));
    ASSERT_EQ(saved(*again), saved(*store));
  }

  static std::string saved(ProjectStore& project) {
    return ORVUS_GENFILE::ProjectFileText(project, {2003, 3, 10, 14, 5, 0});
  }

  // Each box has come that the screens can show, and no other.
  void expectBoxes(std::set<std::string> known) {
    known.merge(std::set<std::string>{
        "Measurements for this block will be Deleted, Continue?",
        "Edits were made to the measurement configurations.  Save changes before exiting screen?",
        "\r\nIndividual multipliers and offsets are not all the same as the defaults."
        "\r\nWOULD YOU LIKE TO EXAMINE SCALARS NOW?"});
    EXPECT_EQ(seen, known);
  }

  std::set<std::string> seen;  // texts of boxes
};

TEST_F(AnyActions, AnalogBlocksKeepWithinThePanelAndTheMultiplexers) {
  int mostUsed = 0;
  for (std::uint32_t seed = 1; seed <= 30; ++seed) {
    SCOPED_TRACE(seed);
    AnyUser user(seed);
    ORVUS_COMMON::SetAllDefaults(*store);
    options.Measurement.DefaultInputType = static_cast<OrvusAnalogInputTypes>(seed % 2);
    store->Config.TK40MQty = static_cast<i16>(seed % 5);
    for (FlagControl& control : store->Flags) control.FlagInclude = kTrue;
    for (int round = 0; round < 12; ++round) {
      switch (user.Below(3)) {
        case 0:
          play<frmVoltBlock>(user);
          break;
        case 1:
          play<frmTempBlock>(user);
          break;
        default:
          play<frmTK40MBlock>(user);
      }
      if (HasFatalFailure()) return;
      const int temp = LiveChannelCount(ChannelBlocksOf(store->TempBlock));
      const int volt = LiveChannelCount(ChannelBlocksOf(store->VoltBlock));
      mostUsed = std::max(mostUsed, temp + volt);
      ASSERT_GE(PanelFreeChans(temp, volt, 0, store->Config.TK40MQty), 0);
      ASSERT_EQ(store->TempBlock.SEChannelCount, temp);
      ASSERT_EQ(store->VoltBlock.SEChannelCount, volt);
      ASSERT_GE(FreeTK40MInputs(store->Config.TK40MQty, ChannelBlocksOf(store->TK40MBlock)), 0);
      for (int b = 1; b <= store->VoltBlock.BlockCount; ++b) {
        const VoltBlockData& block = store->VoltBlock[b];
        ASSERT_GE(block.Reps, 0);
        ASSERT_GE(block.StartChan, 1);
        ASSERT_GE(block.SettleTime, 100);
        ASSERT_LE(block.SettleTime, 50000);
        ASSERT_GE(block.Integration, 100);
        ASSERT_LE(block.Integration, 20000);
        ASSERT_TRUE(block.MeasType == "Diff" || block.MeasType == "SE");
      }
    }
  }
  EXPECT_EQ(mostUsed, PanelSEChans) << "the walk has filled the panel";
  expectBoxes({"Single-ended Thermocouple Measurements are not recommended.",
               "JUST LETTING YOU KNOW.\r\nDuring program execution, the state of "});
}

TEST_F(AnyActions, BridgesKeepWithinChannelsAndExcitations) {
  int mostUsed = 0;
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    AnyUser user(seed);
    ORVUS_COMMON::SetAllDefaults(*store);
    store->VoltBlock.SEChannelCount = static_cast<i16>(seed % 5 * 7);
    store->Config.TK40MQty = static_cast<i16>(seed % 3);
    for (int round = 0; round < 3; ++round) play<frmBrdgBlock>(user);
    if (HasFatalFailure()) return;
    const auto bridges = ChannelBlocksOf(store->BridgeBlock);
    const int used = ExciteSwitched(bridges);
    mostUsed = std::max(mostUsed, used);
    EXPECT_LE(bridges.size(), 4U);
    EXPECT_LE(used, PanelExcitePorts);
    EXPECT_EQ(store->BridgeBlock.ExciteSwitched, used);
    EXPECT_EQ(store->BridgeBlock.SEChannelCount, LiveBridgeCount(bridges));
    EXPECT_GE(PanelFreeChans(0, store->VoltBlock.SEChannelCount, LiveBridgeCount(bridges),
                             store->Config.TK40MQty),
              0);
    for (const BridgeBlockData& block : store->BridgeBlock.Blocks) {
      EXPECT_GE(block.StartChan, 1);
      EXPECT_GE(block.ExciteReps, 1);
      EXPECT_EQ(block.BlockTime, BridgeBlockTime(block));
    }
  }
  EXPECT_EQ(mostUsed, PanelExcitePorts) << "the walk has filled the panel";
  expectBoxes({"MeasPerEx has been Changed",
               "The excitation repeat value (MeasPerEx) is too large for the number\r\n"
               "of available channels, and has been reduced."});
}

TEST_F(AnyActions, PulsesShareTheirTwoChannels) {
  int mostUsed = 0;
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    AnyUser user(seed);
    ORVUS_COMMON::SetAllDefaults(*store);
    for (OutputTable& table : store->Tables.Table) table.TableOn = kTrue;
    for (int round = 0; round < 3; ++round) play<frmPulseBlock>(user);
    if (HasFatalFailure()) return;
    const PulseBlockGroup& group = store->PulseBlock[0];
    const auto pulses = ChannelBlocksOf(group);
    mostUsed = std::max(mostUsed, PanelPulseChans - FreePulseChans(pulses));
    EXPECT_LE(pulses.size(), 2U);
    EXPECT_GE(FreePulseChans(pulses), 0);
    for (int b = 1; b <= kPulseBlocks; ++b) {
      const PulseBlockData& block = group[b];
      EXPECT_GE(block.Reps, 0);
      EXPECT_EQ(block.BlockTime, block.Reps * 100);
      EXPECT_GE(block.Opt, 0);
      EXPECT_TRUE(block.Meas == "HiLev" || block.Meas == "LoLev" || block.Meas == "Swtch");
      for (const auto& selected : block.Output.OutputSelect) {
        if (block.Opt > 0) {
          EXPECT_EQ(selected[kAverage] + selected[kStdDev], 0) << "of a frequency";
        }
      }
    }
  }
  EXPECT_EQ(mostUsed, PanelPulseChans) << "the walk has used all channels";
  expectBoxes({"The 'Avg' and/or 'Std' outputs have been replaced with 'Smp'."});
}

// Opening all analog screens and leaving them with Done keeps a project that was made on them.
TEST_F(AnyActions, DoneWithoutEditsKeepsTheProject) {
  host.onShow = [](Screen& setup) { setup.Done(); };
  for (const std::string_view name : {"building-climate", "engine-test-cell", "thermal-survey",
                                      "vehicle-test", "weather-mast", "bridge-monitoring"}) {
    SCOPED_TRACE(name);
    const std::string path = OSTRAND_SOURCE_DIR "/examples/" + std::string(name) + ".VKG";
    ORVUS_COMMON::SetAllDefaults(*store);
    ORVUS_GENFILE::ReadProjectText(*store, testing::ReadDisk(path));
    const std::string before = saved(*store);
    frmTempBlock temps(context);
    frmVoltBlock volts(context);
    frmTK40MBlock muxes(context);
    for (Screen* list : std::initializer_list<Screen*>{&temps, &volts, &muxes}) {
      const std::string setup = list->Name().substr(0, list->Name().size() - 5) + "Setup";
      for (int b = 1; b <= 8; ++b) {
        // A single-ended thermocouple loses its test for an open sensor on the setup screen.
        const bool temp = list == &temps && b <= store->TempBlock.BlockCount;
        if (temp && store->TempBlock[b].MeasType == "SE") continue;
        testing::Open(*list, setup, NumberText(b));
      }
      list->Cancel();  // no question: nothing was edited
      EXPECT_EQ(list->Result(), ModalResult::kCancel);
      list->Done();
    }
    EXPECT_GT(host.shown, 0);
    EXPECT_EQ(saved(*store), before);
  }
}

}  // namespace
}  // namespace ostrand
