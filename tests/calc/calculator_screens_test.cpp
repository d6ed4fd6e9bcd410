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

}  // namespace
}  // namespace ostrand
