// The logger's own screens over projects made by chance, and under a person who acts by chance.
#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <memory>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "model/defaults.h"
#include "projectfile/genfile.h"
#include "setup/frm_config.h"
#include "setup/frm_excite.h"
#include "setup/frm_execute.h"
#include "setup/frm_flags.h"
#include "setup/frm_ports.h"
#include "support/project_random.h"

namespace ostrand {
namespace {

constexpr platform::Moment kMoment = {2003, 3, 10, 14, 5, 0};

// Answers every box by chance and keeps its title.
class ChanceForms : public platform::Forms {
 public:
  explicit ChanceForms(std::mt19937& chance) : chance_(chance) {}
  platform::Answer ShowBox(const platform::MessageBox& box) override {
    titles.insert(box.title);
    if (box.title == "TROUBLE") ADD_FAILURE() << box.text;
    const bool first = chance_() % 2 == 0;
    switch (box.buttons) {
      case platform::Buttons::kOkCancel:
        return first ? platform::Answer::kOk : platform::Answer::kCancel;
      case platform::Buttons::kOk:
        return platform::Answer::kOk;
      default:
        return first ? platform::Answer::kYes : platform::Answer::kNo;
    }
  }
  std::optional<std::string> AskOpen(const platform::FileDialog&) override { return {}; }
  std::optional<std::string> AskSave(const platform::FileDialog&) override { return {}; }
  void SetHelpLine(const std::string&) override {}
  void SetPointer(platform::Pointer) override {}
  void Beep() override {}
  void DoEvents() override {}

  std::set<std::string> titles;

 private:
  std::mt19937& chance_;
};

class ClosingHost : public ScreenHost {
 public:
  void ShowModal(Screen& screen) override { screen.Cancel(); }
};

// One thing that a person does with a control that he can use.
void actByChance(Screen& screen, std::mt19937& chance) {
  Control* control = screen.Controls()[chance() % screen.Controls().size()];
  if (!control->Usable()) return;
  if (!screen.MoveFocus(control)) {
    dynamic_cast<TextField&>(*screen.Focused()).Escape();
    return;
  }
  static constexpr std::array<std::string_view, 12> kTexts = {
      "0", "1", "5", "12", "-3", "1e9", "0.5", "99999", "True", "&HFF", "&B101", "x."};
  if (auto* choice = dynamic_cast<Choice*>(control)) {
    if (!choice->Items.empty()) choice->Pick(choice->Items[chance() % choice->Items.size()].Text);
  } else if (auto* field = dynamic_cast<TextField*>(control)) {
    if (chance() % 3 == 0) {
      field->Spin(chance() % 2 == 0);
    } else {
      field->TypeText(kTexts[chance() % kTexts.size()]);
    }
  } else if (control->Kind() == ControlKind::kCheck) {
    control->Check(chance() % 2 == 0);
  } else {
    control->Press();
  }
}

using MakeScreen = std::function<std::unique_ptr<Screen>(const ScreenContext&)>;
template <class T>
std::unique_ptr<Screen> make(const ScreenContext& context) {
  return std::make_unique<T>(context);
}
const std::vector<MakeScreen>& allScreens() {
  static const std::vector<MakeScreen> screens = {make<frmConfig>, make<frmExecute>, make<frmFlags>,
                                                  make<frmPorts>, make<frmExcite>};
  return screens;
}

// The project as it is saved, without what these screens work out anew at each Done.
std::string savedText(ProjectStore& store) {
  std::string text;
  std::string saved = ORVUS_GENFILE::ProjectFileText(store, kMoment);
  std::string_view rest = saved;
  while (!rest.empty()) {
    const std::size_t end = rest.find('\n');
    const std::string_view line = rest.substr(0, end);
    const bool renewed = line.starts_with("ScanBuffer=") || line.starts_with("PowerOffMins=") ||
                         line.starts_with("PowerOnMins=");
    if (!renewed) text.append(line).append("\n");
    rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
  }
  return text;
}

class ConfigScreensByChance : public ::testing::TestWithParam<std::uint32_t> {
 protected:
  std::mt19937 chance{GetParam()};
  ChanceForms forms{chance};
  ClosingHost host;
  OptionValues options;
  std::vector<i32> kinds;
  std::unique_ptr<ProjectStore> store = NewStore();
  ScreenContext context{*store, forms, host, options, -1, kinds};
};

TEST_P(ConfigScreensByChance, AProjectThatIsOnlyLookedAtStays) {
  testing::MakeRandomProject(*store, GetParam());
  if (store->Config.DefaultBattVolt != kFalse) store->Config.BattTripVolts = 11.5F;
  const std::string before = savedText(*store);
  for (const MakeScreen& makeScreen : allScreens()) {
    const std::unique_ptr<Screen> screen = makeScreen(context);
    forms.titles.clear();
    screen->Done();
    if (!forms.titles.empty()) {  // outputs that lack an expression were asked about
      EXPECT_EQ(*forms.titles.begin(), "Port Configurations Incomplete");
      continue;
    }
    ASSERT_EQ(screen->Result(), ModalResult::kDone) << screen->Name();
    ASSERT_EQ(savedText(*store), before) << screen->Name();
  }
}

TEST_P(ConfigScreensByChance, NoRowOfActionsBreaksAScreenAndCancelLosesNothing) {
  testing::MakeRandomProject(*store, GetParam());
  for (const MakeScreen& makeScreen : allScreens()) {
    const std::string before = savedText(*store);
    {
      const std::unique_ptr<Screen> screen = makeScreen(context);
      for (int action = 0; action < 300; ++action) actByChance(*screen, chance);
      ASSERT_GT(store->Scan.ExecutionTime, 0);
      ASSERT_LE(store->Config.StatusMonCount, kStatusRows);
      screen->Cancel();
    }
    ASSERT_EQ(savedText(*store), before);
  }
  static const std::set<std::string> kTitles = {"Change of Port Use",
                                                "NOT ENOUGH ANALOG CHANNELS",
                                                "MEASURE COUNT TOO HIGH",
                                                "WARNING",
                                                "SCAN INTERVAL",
                                                "FLAG INFORMATION",
                                                "ZERO SUBROUTINE WARNING",
                                                "VIEW CODE",
                                                "FLAG SET CODE",
                                                "READIO CODE",
                                                "WRITEIO CODE",
                                                "PORTSET CODE",
                                                "EXCITATION CODE"};
  for (const std::string& title : forms.titles) EXPECT_TRUE(kTitles.contains(title)) << title;
}

INSTANTIATE_TEST_SUITE_P(Seeds, ConfigScreensByChance, ::testing::Range(1U, 21U));

}  // namespace
}  // namespace ostrand
