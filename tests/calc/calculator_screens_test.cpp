// The screens of the calculators: what they show as it is typed, what they hand back, and what they
// leave in the project.
#include "calc/frm_calc_mult_off.h"
#include "calc/frm_calc_mv_per_volt.h"
#include "calc/frm_flow_calc.h"
#include "calc/frm_solve_list.h"
#include "calc/frm_spd_calc.h"
#include "setup/screen_driver.h"

namespace ostrand {
namespace {

using namespace testing;

class CalculatorScreens : public ScreenTest {
 protected:
  // What is typed or picked in a control, "on" or "off", or what it shows.
  struct Text {
    std::string_view control;
    std::string_view text;
  };

  static void edit(Screen& screen, const std::vector<Text>& edits) {
    for (const Text& step : edits) {
      const Control* control = screen.Find(step.control);
      ASSERT_NE(control, nullptr) << step.control;
      if (control->Kind() == ControlKind::kChoice) {
        Pick(screen, step.control, step.text);
      } else if (control->Kind() == ControlKind::kCheck) {
        Check(screen, step.control, step.text == "on");
      } else {
        Type(screen, step.control, step.text);
      }
    }
  }

  static void expect(const Screen& screen, const std::vector<Text>& shows) {
    for (const Text& row : shows) {
      EXPECT_EQ(Shown(screen, row.control), row.text) << row.control;
    }
  }
};

constexpr InputAxis kMillivolts = {"Input mV", "mVolts"};

TEST_F(CalculatorScreens, ARecordWithoutAnAnswerHandsNothingBack) {
  store->MultOffCalc.XMin = "100";
  frmCalcMultOff screen(context, kMillivolts);
  expect(screen, {{"M", ""}, {"B", ""}});
  screen.Done();
  EXPECT_EQ(screen.Result(), ModalResult::kDone);
  EXPECT_FALSE(screen.Answer());
}

TEST_F(CalculatorScreens, FlowKeepsWhatNobodyEditedAndHandsBackWithoutSeparators) {
  store->FlowCalc.Pulses = 100.00000000001;
  {
    frmFlowCalc screen(context);
    edit(screen, {{"OutSystem", "Metric"}});
    screen.Done();
    EXPECT_EQ(store->FlowCalc.OutUnits, 100) << "nobody picked a time base";
    EXPECT_EQ(store->FlowCalc.Pulses, 100.00000000001) << "nor edited the calibration";
  }
  frmFlowCalc screen(context);
  edit(screen, {{"OutUnits", "Hour"}, {"OutSystem", "English"}, {"Pulses", "1"}});
  expect(screen, {{"Multiplier", "3,600.0"}, {"Flow", "360,000.0"}});
  edit(screen, {{"Pulses", "0"}, {"OutUnits", "Minute"}});
  expect(screen, {{"Multiplier", "3,600.0"}, {"Units", "Gal/Hour"}});
  screen.Done();
  ASSERT_TRUE(screen.Answer());
  EXPECT_EQ(screen.Answer()->multiplier + screen.Answer()->units, "3600.0Gal/Hour");
  EXPECT_FALSE(screen.Answer()->offset);
}

TEST_F(CalculatorScreens, SwitchesOfTheProjectThatMeanTheSameStay) {
  store->SpeedCalc.MKSSpd = -1;
  store->SpeedCalc.UseMins = -1;
  frmSpdCalc screen(context);
  expect(screen, {{"MKSSpd", "Metric"}, {"UseMins", "on"}});
  Check(screen, "UseMins", false);
  Check(screen, "UseMins", true);
  screen.Done();
  EXPECT_EQ(store->SpeedCalc.MKSSpd, -1);
  EXPECT_EQ(store->SpeedCalc.UseMins, 1);
}

// Every calculator: Done keeps all its inputs in the project, Cancel none.
TEST_F(CalculatorScreens, DoneKeepsTheInputsAndCancelDoesNot) {
  const auto inputs = [](const Screen& screen) {
    std::string texts;
    for (const Control* control : screen.Controls()) {
      const std::string& name = control->Name();
      const bool tryOut =
          name == "XOut" || name == "Scroll" || name == "Excite" || name == "TestUnits";
      if (control->Usable() && control->Kind() != ControlKind::kLabel && !tryOut) {
        texts += name + '=' + control->Text() + ';';
      }
    }
    return texts;
  };
  const auto editAll = [](Screen& screen) {
    for (Control* control : screen.Controls()) {
      if (!control->Usable() || !screen.MoveFocus(control)) continue;
      control->TypeText(control->Name() == "Units" ? "kN" : "37");
      control->Check(control->Text() == "off");
      if (const auto* choice = dynamic_cast<const Choice*>(control)) {
        control->Pick(choice->Items.back().Text);
      }
    }
  };
  for (const CalculatorSource& source :
       {CalculatorSource{"Pulse"}, {"Brdg"}, {"Brdg", "", false, false, true}}) {
    const std::size_t calculators = frmSolveList(context, source).Openers().size();
    for (std::size_t nth = 0; nth < calculators; ++nth) {
      const auto open = [&](const std::function<void(Screen&)>& act) {
        host.onShow = [&](Screen& screen) {
          if (screen.Name() != "frmSolveList") return act(screen);
          EXPECT_TRUE(screen.Openers()[nth].open(""));
          if (screen.Result() == ModalResult::kNone) screen.Cancel();
        };
        return SolveScaling(context, source).has_value();
      };
      std::string before, edited;
      EXPECT_FALSE(open([&](Screen& screen) {
        before = inputs(screen);
        editAll(screen);
        edited = inputs(screen);
        EXPECT_NE(edited, before);
        screen.Cancel();
      }));
      EXPECT_TRUE(open([&](Screen& screen) {
        EXPECT_EQ(inputs(screen), before) << screen.Name();
        editAll(screen);
        screen.Done();
      }));
      open([&](Screen& screen) {
        EXPECT_EQ(inputs(screen), edited) << screen.Name();
        screen.Cancel();
      });
    }
  }
}

}  // namespace
}  // namespace ostrand
