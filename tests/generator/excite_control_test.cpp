#include "generator/generated.h"

namespace ostrand::testing {
namespace {

class ExciteControlTest : public Generated {};

TEST_F(ExciteControlTest, StaticAndSwitchedOutputs) {
  ExciteChannel& constant = store.ExciteOut.Slot[0][2];
  constant.Include = kTrue;
  constant.DynamicStatic = 1;
  constant.State1 = 2500;
  constant.CurrentOut = 1;
  constant.FastDelay = 1;
  ExciteChannel& switched = store.ExciteOut.Slot[1][1];
  switched.Include = kTrue;
  switched.State1 = 100;
  switched.State2 = 5;
  switched.Excite1Expression = "VBlk1(1) > 2";
  switched.Excite2Expression = std::string(48, 'x');  // 64 characters with the words around it
  const std::string title =
      "      '" + std::string(23, '_') + " Excitation Control " + std::string(23, '_');
  const std::string end = "      " + std::string(16, '\'');
  Lines expected = {title,
                    At66("      ExciteCAO(CAO2,2500,False,True)", "'Set excitation channel"),
                    end,
                    At66("      If VBlk1(1) > 2 Then", "'Test State 1 expression"),
                    At66("         Excite1 = 100", "'Set value"),
                    "      ElseIf " + std::string(47, 'x') + " Then '",
                    At66("         Excite1 = 5", "'Set value"),
                    At66("      End If", "'End test"),
                    At66("      ExciteCAO(CAO1,Excite1,True,False)", "'Set excitation channel"),
                    end};
  // The second test may grow to the comment column and past it: one blank is always left.
  for (const int length : {46, 47, 48, 90}) {
    switched.Excite2Expression = std::string(static_cast<std::size_t>(length), 'x');
    expected[5] = "      ElseIf " + switched.Excite2Expression + " Then";
    if (length == 46) expected[5] += " ";  // the last that leaves a blank of its own
    expected[5] += length == 46 ? "" : " ";
    expected[5] += "'Test State 2 expression";
    Run();
    ExpectRun(expected);
  }
}

TEST_F(ExciteControlTest, ALongFirstTestEndsTheSection) {
  store.ExciteOut.Slot[0][1].Include = kTrue;
  store.ExciteOut.Slot[0][1].Excite1Expression = std::string(60, 'x');
  ExpectFault(5, "Invalid procedure call or argument", "ExciteControl");
  Run();
  ExpectRun({"      '" + std::string(23, '_') + " Excitation Control " + std::string(23, '_'), "",
             "", At66("   Next Scan", "'Loop up for the next scan")});
}

}  // namespace
}  // namespace ostrand::testing
