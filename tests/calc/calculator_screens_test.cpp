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

}  // namespace
}  // namespace ostrand
