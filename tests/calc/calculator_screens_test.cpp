// The screens of the calculators: answers while typing, results, and what they store in the
// project.
#include "calc/frm_calc_mult_off.h"
#include "calc/frm_calc_mv_per_volt.h"
#include "calc/frm_flow_calc.h"
#include "calc/frm_solve_list.h"
#include "calc/frm_spd_calc.h"
#include "support/screen_driver.h"

namespace ostrand {
namespace {

using namespace testing;

class CalculatorScreens : public ScreenTest {};

TEST_F(CalculatorScreens, RecordWithoutAnswerReturnsNothing) {
  store->MultOffCalc.XMin = "100";
  frmCalcMultOff screen(context, {"Input mV", "mVolts"});
  EXPECT_EQ(Shown(screen, "M") + Shown(screen, "B"), "");
  screen.Done();
  EXPECT_EQ(screen.Result(), ModalResult::kDone);
  EXPECT_FALSE(screen.Answer());
}

TEST_F(CalculatorScreens, FlowKeepsUneditedMembers) {
  store->FlowCalc.Pulses = 100.00000000001;
  frmFlowCalc screen(context);
  Pick(screen, "OutSystem", "Metric");
  screen.Done();
  EXPECT_EQ(store->FlowCalc.OutUnits, 100) << "nobody picked a time base";
  EXPECT_EQ(store->FlowCalc.Pulses, 100.00000000001) << "nor edited the calibration";
  ASSERT_TRUE(screen.Answer());
  EXPECT_FALSE(screen.Answer()->offset);
}

TEST_F(CalculatorScreens, EquivalentSwitchesStayUnchanged) {
  store->SpeedCalc.MKSSpd = -1;
  store->SpeedCalc.UseMins = -1;
  frmSpdCalc screen(context);
  EXPECT_EQ(Shown(screen, "MKSSpd") + Shown(screen, "UseMins"), "Metricon");
  Check(screen, "UseMins", false);
  Check(screen, "UseMins", true);
  screen.Done();
  EXPECT_EQ(store->SpeedCalc.MKSSpd, -1);
  EXPECT_EQ(store->SpeedCalc.UseMins, 1);
}

TEST_F(CalculatorScreens, CaptionsNameTheUnitOfTheInput) {
  const auto caption = [](const Screen& screen, std::string_view control) {
    return screen.Find(control)->Caption;
  };
  EXPECT_EQ(caption(frmCalcmVPerVolt(context, false), "mVOut"), "Output V (mV)");
  EXPECT_EQ(caption(frmCalcmVPerVolt(context, true), "mVOut"), "Output V (volts)");
  frmSpdCalc speed(context);
  Pick(speed, "MKSSpd", "Metric");
  EXPECT_EQ(caption(speed, "WheelSize"), "Wheel size (cm)");
  Pick(speed, "MKSSpd", "English");
  EXPECT_EQ(caption(speed, "WheelSize"), "Wheel size (inches)");
}

// Every calculator: Done stores all its inputs in the project, Cancel none.
TEST_F(CalculatorScreens, DoneKeepsTheInputsAndCancelDoesNot) {
  const auto inputs = [](const Screen& screen) {
    std::string texts;
    for (const Control* control : screen.Controls()) {
      const std::string& name = control->Name();
      const bool tryOut =
          name == "XOut" || name == "Scroll" || name == "Excite" || name == "TestUnits";
      if (control->Usable() && dynamic_cast<const Label*>(control) == nullptr && !tryOut) {
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
  for (const SolveSource& source :
       {SolveSource{"Pulse", ""}, {"Brdg", ""}, {"Brdg", "", false, false, true}}) {
    SolveRequest request{source, {}};
    std::vector<std::string> calculators;
    const frmSolveList list(context, request);
    for (const Opener* opener : list.Openers()) {
      if (opener->Usable()) calculators.push_back(opener->Opens());
    }
    EXPECT_EQ(calculators.size(), source.kind == "Pulse" ? 5U : source.inOhms ? 1U : 2U);
    for (const std::string& calculator : calculators) {
      const auto open = [&](const std::function<void(Screen&)>& act) {
        host.onShow = [&](Screen& screen) {
          if (screen.Name() != "frmSolveList") return act(screen);
          EXPECT_TRUE(Open(screen, calculator));
          if (screen.Result() == ModalResult::kNone) screen.Cancel();
        };
        request = {source, {}};
        return SolveScaling(context, request);
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
