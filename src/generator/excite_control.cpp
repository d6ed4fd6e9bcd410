// Outputs of the continuous analog channels.
#include "generator/savedld.h"

namespace ostrand {
namespace {

// A static output has one value; a dynamic one has two, selected by conditions.
void exciteOutput(ProgramRun& run, const ExciteChannel& channel, int k) {
  const bool isStatic = channel.DynamicStatic != 0;
  if (!isStatic) {
    run.Put({"      If ", channel.Excite1Expression, " Then"}, {"'Test State 1 expression"});
    run.Put({"         Excite", k, " = ", channel.State1}, {"'Set value"});
    run.Put({"      ElseIf ", channel.Excite2Expression, " Then"}, {"'Test State 2 expression"},
            Pad::kGuarded);
    run.Put({"         Excite", k, " = ", channel.State2}, {"'Set value"});
    run.Put({"      End If"}, {"'End test"});
  }
  const std::string value = isStatic ? Joined({channel.State1}) : Joined({"Excite", k});
  run.Put({"      ExciteCAO(CAO", k, ",", value, channel.CurrentOut == 0 ? ",True" : ",False",
           channel.FastDelay != 0 ? ",True)" : ",False)"},
          {"'Set excitation channel"});
  run.Put({"      ", Fill{'\'', 16}});
}

}  // namespace

void SAVEDLD::ExciteControl() {
  const ostrand::ExciteControl& outputs = run_.store.ExciteOut;
  bool titled = false;
  for (int a = 0; a <= 1; ++a) {
    for (int k = 1; k <= 2; ++k) {
      if (outputs.Slot[a][k].Include == 0) continue;
      if (!titled) run_.PutBarTitle("      ", 23, " Excitation Control ");
      titled = true;
      exciteOutput(run_, outputs.Slot[a][k], k);
    }
  }
}

}  // namespace ostrand
