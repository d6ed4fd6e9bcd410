// Whatever is done on the screens of analog blocks, under automatic channels the project keeps
// within the panel, and no box comes that is not one of theirs.
#include <array>
#include <fstream>
#include <iterator>
#include <random>
#include <set>

#include "projectfile/genfile.h"
#include "setup/controls/choice.h"
#include "setup/frm_temp_block.h"
#include "setup/frm_tk40m_block.h"
#include "setup/frm_volt_block.h"
#include "setup/screen_user.h"

namespace ostrand {
namespace {

using platform::Answer;

// Answers each box by chance and keeps the titles.
class ChanceForms : public testing::ScriptedForms {
 public:
  explicit ChanceForms(std::mt19937& chance) : chance_(chance) {}
  Answer ShowBox(const platform::MessageBox& box) override {
    titles.insert(box.title);
    constexpr Answer all[] = {Answer::kYes, Answer::kNo, Answer::kCancel};
    switch (box.buttons) {
      case platform::Buttons::kYesNo:
        return all[chance_() % 2];
      case platform::Buttons::kYesNoCancel:
        return all[chance_() % 3];
      default:
        return Answer::kOk;
    }
  }
  std::set<std::string> titles;

 private:
  std::mt19937& chance_;
};

class ChanceUser : public ScreenHost {
 public:
  explicit ChanceUser(std::mt19937& chance) : chance_(chance) {}

  void ShowModal(Screen& screen) override {
    ++depth_;
    for (int n = pick(60); n > 0; --n) act(screen);
    for (int n = 0; screen.Result() == ModalResult::kNone; ++n) {
      // A field that can't be left gets a number; nobody is kept for ever.
      if (screen.Focused() != nullptr) screen.Focused()->TypeText("1");
      pick(4) == 0 ? screen.Cancel() : screen.Done();
      ASSERT_LT(n, 1000) << screen.Name();
    }
    --depth_;
  }

 private:
  int pick(std::size_t count) { return static_cast<int>(chance_() % count); }

  void act(Screen& screen) {
    if (depth_ < 2 && pick(2) == 0) {
      const auto& openers = screen.Openers();
      if (openers.empty()) return;
      openers[static_cast<std::size_t>(pick(openers.size()))].open(std::to_string(pick(9)));
      return;
    }
    Control& control = *screen.Controls()[static_cast<std::size_t>(pick(screen.Controls().size()))];
    if (!control.Usable() || !screen.MoveFocus(&control)) return;
    constexpr std::string_view kKeys[] = {"0",  "1",   "3",   "7",    "12",  "21",  "40",
                                          "99", "-5",  "1e9", "250",  "300", ".5e", "",
                                          "4",  "2.5", "-",   "mBar", "9 x", "800", "16001"};
    switch (pick(3)) {
      case 0:
        // The project file doesn't keep that units are blank.
        if (control.Name().ends_with("Units")) return void(control.TypeText("mBar"));
        control.TypeText(kKeys[pick(std::size(kKeys))]);
        break;
      case 1:
        control.Spin(pick(3) != 0);
        break;
      default:
        control.Check(pick(2) == 0);
        control.Press();
        if (auto* choice = dynamic_cast<Choice*>(&control)) {
          choice->Pick(choice->Items[static_cast<std::size_t>(pick(choice->Items.size()))].Text);
        }
    }
  }

  std::mt19937& chance_;
  int depth_ = 0;
};

TEST(AnalogRandomTest, NoActionsBreakALimitOrShowAStrangeBox) {
  const std::set<std::string> known = {"CONFIRM BLOCK DELETION", "MEASUREMENT BLOCKS",
                                       "DEFAULT SCALING CHANGED",
                                       "Measurement Type Not Recommended", "FLAG INFORMATION"};
  std::set<std::string> seen;
  int mostUsed = 0;
  for (std::uint32_t seed = 1; seed <= 30; ++seed) {
    SCOPED_TRACE(seed);
    std::mt19937 chance(seed);
    ChanceForms forms(chance);
    ChanceUser user(chance);
    OptionValues options;
    options.Measurement.DefaultInputType = static_cast<OrvusAnalogInputTypes>(seed % 2);
    const std::vector<i32> kinds;
    const auto store = NewStore();
    ORVUS_COMMON::SetLoggerConstants(*store);
    ORVUS_COMMON::SetAllDefaults(*store);
    store->Config.TK40MQty = static_cast<i16>(seed % 5);
    for (FlagControl& control : store->Flags) control.FlagInclude = kTrue;
    const ScreenContext context = {*store, forms, user, options, 0, kinds};
    SetupHooks hooks;
    hooks.FieldNames = [&](const FieldNamesRequest& request) {
      for (RepAlias& alias : request.aliases) alias.AliasExcept = std::to_string(chance() % 8);
    };
    for (int round = 0; round < 12; ++round) {
      switch (chance() % 3) {
        case 0: {
          frmVoltBlock list(context, hooks);
          user.ShowModal(list);
          break;
        }
        case 1: {
          frmTempBlock list(context, hooks);
          user.ShowModal(list);
          break;
        }
        default: {
          frmTK40MBlock list(context, hooks);
          user.ShowModal(list);
        }
      }
      const auto temps = ChannelBlocksOf(store->TempBlock);
      const auto volts = ChannelBlocksOf(store->VoltBlock);
      const int temp = LiveChannelCount(temps);
      const int volt = LiveChannelCount(volts);
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
    // What the screens leave is a project that reads back the same.
    const platform::Moment now = {2003, 3, 10, 14, 5, 0};
    const std::string saved = ORVUS_GENFILE::ProjectFileText(*store, now);
    const auto again = NewStore();
    ORVUS_COMMON::SetAllDefaults(*again);
    ORVUS_GENFILE::ReadProjectText(*again, saved);
    ASSERT_EQ(ORVUS_GENFILE::ProjectFileText(*again, now), saved);
    seen.insert(forms.titles.begin(), forms.titles.end());
  }
  EXPECT_EQ(seen, known) << "every box has come, and no other";
  EXPECT_EQ(mostUsed, PanelSEChans) << "the walk has filled the panel";
}

// Opening the lists and closing them with Done keeps a project that was made on them.
TEST(AnalogRandomTest, DoneWithoutEditsKeepsTheProject) {
  for (const std::string_view name : {"building-climate", "engine-test-cell", "thermal-survey",
                                      "vehicle-test", "weather-mast", "bridge-monitoring"}) {
    SCOPED_TRACE(name);
    const std::string path = OSTRAND_SOURCE_DIR "/examples/" + std::string(name) + ".VKG";
    std::ifstream file(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    ASSERT_FALSE(bytes.empty());
    const auto store = NewStore();
    ORVUS_COMMON::SetLoggerConstants(*store);
    ORVUS_COMMON::SetAllDefaults(*store);
    ORVUS_GENFILE::ReadProjectText(*store, bytes);
    const platform::Moment now = {2003, 3, 10, 14, 5, 0};
    const std::string before = ORVUS_GENFILE::ProjectFileText(*store, now);
    testing::ScriptedForms forms;
    testing::UserHost host;
    const OptionValues options;
    const std::vector<i32> kinds;
    const ScreenContext context = {*store, forms, host, options, 0, kinds};
    frmTempBlock temps(context);
    frmVoltBlock volts(context);
    frmTK40MBlock muxes(context);
    for (AnalogList* list : {static_cast<AnalogList*>(&temps), static_cast<AnalogList*>(&volts),
                             static_cast<AnalogList*>(&muxes)}) {
      for (int b = 1; b <= list->Blocks.Count(); ++b) {
        // A single-ended thermocouple loses its test for an open sensor on the setup screen.
        if (list == &temps && list->Data(b).Analog()->InputType == ORVUS_INPUT_SE) continue;
        host.next = [](Screen& setup) { setup.Done(); };
        EXPECT_TRUE(list->ShowSetup(b));
      }
      list->Cancel();  // no question: nothing was edited
      EXPECT_EQ(list->Result(), ModalResult::kCancel);
      list->Done();
    }
    EXPECT_EQ(ORVUS_GENFILE::ProjectFileText(*store, now), before);
  }
}

}  // namespace
}  // namespace ostrand
