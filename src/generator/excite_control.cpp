// Outputs of the continuous analog channels.
#include "generator/savedld.h"

namespace ostrand {

void SAVEDLD::ExciteControl() {
  const ostrand::ExciteControl& outputs = store_.ExciteOut;
  bool titled = false;
  for (int a = 0; a <= 1; ++a) {
    for (int k = 1; k <= 2; ++k) {
      if (outputs.Slot[a][k].Include == 0) continue;
      if (!titled) putBarTitle("      ", 23, " Excitation Control ");
      titled = true;
      exciteOutput(outputs.Slot[a][k], k);
    }
  }
}

// A static output has one value, the others switch between two by their tests.
void SAVEDLD::exciteOutput(const ExciteChannel& channel, int k) {
  const bool isStatic = channel.DynamicStatic != 0;
  if (!isStatic) {
    Put({"      If ", channel.Excite1Expression, " Then"}, {"'Test State 1 expression"});
    Put({"         Excite", k, " = ", channel.State1}, {"'Set value"});
    Put({"      ElseIf ", channel.Excite2Expression, " Then"}, {"'Test State 2 expression"},
        Pad::kGuarded);
    Put({"         Excite", k, " = ", channel.State2}, {"'Set value"});
    Put({"      End If"}, {"'End test"});
  }
  const std::string value = isStatic ? Joined({channel.State1}) : Joined({"Excite", k});
  Put({"      ExciteCAO(CAO", k, ",", value, channel.CurrentOut == 0 ? ",True" : ",False",
       channel.FastDelay != 0 ? ",True)" : ",False)"},
      {"'Set excitation channel"});
  Put({"      ", Fill{'\'', 16}});
}

}  // namespace ostrand
