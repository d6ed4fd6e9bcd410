// Whatever is done on the screens of blocks, the project keeps within the panel, its sensors in
// step with their blocks, and reads back the same; no box comes that is not one of theirs.
#include <random>
#include <set>

#include "blocks/bridge_rules.h"
#include "blocks/frm_brdg_block.h"
#include "blocks/frm_pulse_block.h"
#include "blocks/frm_temp_block.h"
#include "blocks/frm_tk40m_block.h"
#include "blocks/frm_volt_block.h"
#include "controls/choice.h"
#include "model/new_store.h"
#include "projectfile/genfile.h"
#include "support/project_invariants.h"
#include "support/screen_driver.h"
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
      Opener& opener = *openers[static_cast<std::size_t>(Below(openers.size()))];
      if (opener.Usable()) opener.Press();
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

// Makes all screens, but for field names: those give the sensors values at random.
class AnyFieldNames : public ScreenFactory {
 public:
  explicit AnyFieldNames(AnyUser& user) : user_(user) {}
  [[nodiscard]] std::unique_ptr<Screen> Make(const ScreenContext& context,
                                             ScreenRequest& request) const override {
    auto* names = dynamic_cast<RequestWith<FieldNamesRequest>*>(&request);
    if (names == nullptr) return AllScreens().Make(context, request);
    for (RepAlias& alias : names->Get().aliases) {
      const int byHand = user_.Below(8);
      alias = {alias.AliasName, "", "", "", NumberText(byHand)};
      if ((byHand & kUnitsByHand) != 0) alias.AliasUnits = "own";
      if ((byHand & kMultByHand) != 0) alias.AliasMult = "7";
      if ((byHand & kOffsetByHand) != 0) alias.AliasOffset = "-7";
    }
    return nullptr;
  }

 private:
  AnyUser& user_;
};

class AnyActions : public testing::ScreenTest {
 protected:
  // A list of blocks and the setups of its blocks under any actions.
  template <class List>
  void play(AnyUser& user) {
    const AnyFieldNames screens(user);
    {
      List list({*store, user, user, screens, options, 0, kinds});
      user.ShowModal(list);
    }
    seen.merge(user.texts);
    const auto again = NewStore();
    ORVUS_COMMON::SetAllDefaults(*again);
    ORVUS_GENFILE::ReadProjectText(*again, saved(*store));
    ASSERT_EQ(saved(*again), saved(*store));
    ASSERT_EQ(testing::BrokenInvariants(*store), "");
  }

  // Opens all blocks of the project, acts on their setups and leaves everything by Done.
  void visitBlocks(const std::function<void(Screen&)>& actions) {
    host.onShow = [&](Screen& setup) {
      actions(setup);
      setup.Done();
    };
    frmTempBlock temps(context);
    frmVoltBlock volts(context);
    frmTK40MBlock muxes(context);
    frmBrdgBlock bridges(context);
    frmPulseBlock pulses(context);
    for (Screen* list : std::initializer_list<Screen*>{&temps, &volts, &muxes, &bridges, &pulses}) {
      const std::string setup = list->Name().substr(0, list->Name().size() - 5) + "Setup";
      for (int b = 1; b <= kBlocks; ++b) testing::Open(*list, setup, NumberText(b));
      list->Cancel();  // no question: nothing was edited
      ASSERT_EQ(list->Result(), ModalResult::kCancel) << list->Name();
      list->Done();
    }
  }

  // Opening blocks and picking what is picked changes nothing and asks nothing.
  void expectVisitsKeepTheProject() {
    const std::string before = saved(*store);
    visitBlocks([](Screen&) {});
    ASSERT_EQ(saved(*store), before);
    visitBlocks([](Screen& setup) {
      for (Control* control : setup.Controls()) {
        auto* choice = dynamic_cast<Choice*>(control);
        if (choice == nullptr || choice->Name() == "Style" || !choice->Usable()) continue;
        setup.MoveFocus(choice);
        choice->Pick(choice->Text());
      }
    });
    ASSERT_EQ(saved(*store), before);
    ASSERT_EQ(testing::BrokenInvariants(*store), "");
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
      for (int b = 1; b <= store->VoltBlock.BlockCount; ++b) {
        const VoltBlockData& block = store->VoltBlock[b];
        ASSERT_GE(block.SettleTime, 100);
        ASSERT_LE(block.SettleTime, 50000);
        ASSERT_GE(block.Integration, 100);
        ASSERT_LE(block.Integration, 20000);
        ASSERT_TRUE(block.MeasType == "Diff" || block.MeasType == "SE");
      }
    }
    visitBlocks([](Screen&) {});  // what only a setup puts right
    expectVisitsKeepTheProject();
    if (HasFatalFailure()) return;
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
    const auto volts = static_cast<i16>(seed % 5 * 7);
    store->VoltBlock.BlockCount = 1;
    store->VoltBlock[1].MeasType = "SE";
    store->VoltBlock[1].Reps = store->VoltBlock.SEChannelCount = volts;
    store->Config.TK40MQty = static_cast<i16>(seed % 3);
    for (int round = 0; round < 3; ++round) play<frmBrdgBlock>(user);
    if (HasFatalFailure()) return;
    const auto bridges = ChannelBlocksOf(store->BridgeBlock);
    const int used = ExciteSwitched(bridges);
    mostUsed = std::max(mostUsed, used);
    for (const BridgeBlockData& block : store->BridgeBlock.Blocks) {
      EXPECT_GE(block.StartChan, 1);
      EXPECT_GE(block.ExciteReps, 1);
      EXPECT_EQ(block.BlockTime, BridgeBlockTime(block));
    }
    forms.CollectBoxes();  // of a multiplier that a resistance bridge does not keep
    visitBlocks([](Screen&) {});
    forms.shown.clear();
    expectVisitsKeepTheProject();
    ASSERT_TRUE(forms.shown.empty()) << forms.shown.front().text;
  }
  EXPECT_EQ(mostUsed, PanelExcitePorts) << "the walk has filled the panel";
  expectBoxes({"MeasPerEx has been Changed",
               "JUST LETTING YOU KNOW.\r\nDuring program execution, the state of ",
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
    for (int b = 1; b <= kPulseBlocks; ++b) {
      const PulseBlockData& block = group[b];
      EXPECT_EQ(block.BlockTime, block.Reps * 100);
      EXPECT_GE(block.Opt, 0);
      EXPECT_TRUE(block.Meas == "HiLev" || block.Meas == "LoLev" || block.Meas == "Swtch");
      for (const auto& selected : block.Output.OutputSelect) {
        if (block.Opt > 0) {
          EXPECT_EQ(selected[kAverage] + selected[kStdDev], 0) << "of a frequency";
        }
      }
    }
    visitBlocks([](Screen&) {});
    expectVisitsKeepTheProject();
    if (HasFatalFailure()) return;
  }
  EXPECT_EQ(mostUsed, PanelPulseChans) << "the walk has used all channels";
  expectBoxes({"The 'Avg' and/or 'Std' outputs have been replaced with 'Smp'."});
}

// Projects from elsewhere. Bridges and pulses put times and gauge factors right at the first visit,
// the other blocks nothing.
TEST_F(AnyActions, DoneWithoutEditsKeepsTheProject) {
  for (const std::string_view name : {"building-climate", "engine-test-cell", "thermal-survey",
                                      "vehicle-test", "weather-mast", "bridge-monitoring"}) {
    SCOPED_TRACE(name);
    const std::string path = OSTRAND_SOURCE_DIR "/examples/" + std::string(name) + ".VKG";
    ORVUS_COMMON::SetAllDefaults(*store);
    ORVUS_GENFILE::ReadProjectText(*store, testing::ReadDisk(path));
    // A single-ended thermocouple loses its test for an open sensor on its setup.
    for (TempBlockData& block : store->TempBlock.Blocks) {
      if (block.MeasType == "SE" && block.OpenSensDetect != kFalse) visitBlocks([](Screen&) {});
    }
    const std::string before = saved(*store);
    const auto bridges = std::make_unique<BridgeBlockGroup>(store->BridgeBlock);
    const auto pulses = std::make_unique<PulseBlockGroup>(store->PulseBlock[0]);
    visitBlocks([](Screen&) {});
    std::swap(store->BridgeBlock, *bridges);
    std::swap(store->PulseBlock[0], *pulses);
    EXPECT_EQ(saved(*store), before);
    std::swap(store->BridgeBlock, *bridges);
    std::swap(store->PulseBlock[0], *pulses);
    expectVisitsKeepTheProject();
    EXPECT_GT(host.shown, 0);
  }
}

}  // namespace
}  // namespace ostrand
