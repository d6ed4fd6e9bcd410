// Whatever is done on the screens of bridge and pulse blocks, under automatic channels the project
// keeps within the panel, and no box comes that is not one of theirs.
#include "projectfile/genfile.h"
#include "setup/any_user.h"
#include "setup/bridge_rules.h"
#include "setup/frm_brdg_block.h"
#include "setup/frm_pulse_block.h"
#include "setup/screen_driver.h"

namespace ostrand {
namespace {

using testing::AnyAnswers;
using testing::AnyUser;

const std::set<std::string> kBlockTexts = {
    "Measurements for this block will be Deleted, Continue?",
    "Edits were made to the measurement configurations.  Save changes before exiting screen?",
    "\r\nIndividual multipliers and offsets are not all the same as the defaults."
    "\r\nWOULD YOU LIKE TO EXAMINE SCALARS NOW?"};

class AnyActions : public testing::ScreenTest {
 protected:
  // A list of blocks and the setups of its blocks under any actions, until Done.
  template <class List>
  void run(std::uint32_t seed, const std::function<void(List&)>& whileListed) {
    AnyAnswers answers(seed, texts);
    AnyUser user(seed);
    SetupHooks hooks;
    hooks.FieldNames = [&](const FieldNamesRequest& request) {
      for (RepAlias& alias : request.aliases) alias.AliasExcept = NumberText(user.Below(8));
    };
    const ScreenContext any{*store, answers, host, options, 0, kinds};
    List list(any, hooks);
    host.onShow = [&](Screen& screen) {
      if (!screen.Name().ends_with("Setup")) return screen.Cancel();  // of the panel, of outputs
      user.Act(screen, 60);
      if (user.Below(4) > 0) screen.Done();
      if (screen.Result() == ModalResult::kNone) screen.Cancel();
      whileListed(list);
    };
    user.Act(list, 60);
    if (!list.MoveFocus(nullptr)) static_cast<TextField*>(list.Focused())->Escape();
    if (user.Below(4) == 0) list.Cancel();
    if (list.Result() == ModalResult::kNone) list.Done();
    ASSERT_NE(list.Result(), ModalResult::kNone);
    readsBackTheSame();
  }

  void readsBackTheSame() {
    const platform::Moment now = {2003, 3, 10, 14, 5, 0};
    const std::string saved = ORVUS_GENFILE::ProjectFileText(*store, now);
    const auto again = NewStore();
    ORVUS_COMMON::SetAllDefaults(*again);
    ORVUS_GENFILE::ReadProjectText(*again, saved);
    ASSERT_EQ(ORVUS_GENFILE::ProjectFileText(*again, now), saved);
  }

  std::set<std::string> texts;  // of the boxes shown
};

TEST_F(AnyActions, BridgesKeepWithinChannelsAndExcitations) {
  int mostUsed = 0;
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    ORVUS_COMMON::SetAllDefaults(*store);
    store->VoltBlock.SEChannelCount = static_cast<i16>(seed % 5 * 7);
    store->Config.TK40MQty = static_cast<i16>(seed % 3);
    run<frmBrdgBlock>(seed, [&](frmBrdgBlock& list) {
      EXPECT_GE(list.FreeChannels(), 0);
      EXPECT_GE(list.FreeExcitations(), 0);
      mostUsed = std::max(mostUsed, PanelExcitePorts - list.FreeExcitations());
    });
    const auto bridges = ChannelBlocksOf(store->BridgeBlock);
    EXPECT_LE(bridges.size(), 4U);
    EXPECT_LE(ExciteSwitched(bridges), 4);
    EXPECT_EQ(LiveBridgeCount(bridges), store->BridgeBlock.SEChannelCount);
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
  std::set<std::string> known = kBlockTexts;
  known.insert("MeasPerEx has been Changed");
  known.insert(
      "The excitation repeat value (MeasPerEx) is too large for the number\r\n"
      "of available channels, and has been reduced.");
  EXPECT_EQ(texts, known) << "every box has come, and no other";
}

TEST_F(AnyActions, PulsesShareTheirTwoChannels) {
  int mostUsed = 0;
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    SCOPED_TRACE(seed);
    ORVUS_COMMON::SetAllDefaults(*store);
    for (OutputTable& table : store->Tables.Table) table.TableOn = kTrue;
    run<frmPulseBlock>(seed, [](frmPulseBlock& list) { EXPECT_GE(list.FreeChans(), 0); });
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
  std::set<std::string> known = kBlockTexts;
  known.insert("The 'Avg' and/or 'Std' outputs have been replaced with 'Smp'.");
  EXPECT_EQ(texts, known) << "every box has come, and no other";
}

}  // namespace
}  // namespace ostrand
