#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class ExciteControlTest : public Generated {
 protected:
  const std::string title = Bars("      ", 23, " Excitation Control ");
  const std::string end = "|      " + std::string(16, '\'');
};

// The second test may grow up to the comment column and past it: one blank is always left.
TEST_F(ExciteControlTest, StaticAndSwitchedOutputs) {
  ExciteChannel& constant = store.ExciteOut.Slot[0][2];
  constant.Include = constant.DynamicStatic = constant.CurrentOut = constant.FastDelay = 1;
  constant.State1 = 2500;
  ExciteChannel& switched = store.ExciteOut.Slot[1][1];
  switched.Include = kTrue;
  switched.State1 = 100;
  switched.State2 = 5;
  switched.Excite1Expression = "a > 2";
  for (const std::size_t length : {46U, 47U, 90U}) {  // 64, 65 and more characters
    switched.Excite2Expression = std::string(length, 'x');
    Run();
    ExpectText(title + "|      ExciteCAO(CAO2,2500,False,True)~'Set excitation channel" + end +
               "|      If a > 2 Then~'Test State 1 expression|         Excite1 = 100~'Set value"
               "|      ElseIf " +
               switched.Excite2Expression +
               " Then 'Test State 2 expression"
               "|         Excite1 = 5~'Set value|      End If~'End test"
               "|      ExciteCAO(CAO1,Excite1,True,False)~'Set excitation channel" +
               end);
  }
}

TEST_F(ExciteControlTest, ALongFirstTestEndsTheSection) {
  store.ExciteOut.Slot[0][1].Include = kTrue;
  store.ExciteOut.Slot[0][1].Excite1Expression = std::string(60, 'x');
  ExpectFault(5, kBadCall, "ExciteControl");
  Run();
  ExpectText(title + "|||" + kNextScan);
}

}  // namespace
}  // namespace ostrand::testing
