#include "generator/generated.h"

namespace ostrand::testing {
namespace {

using PulsesTest = Generated;

// A block takes one channel, whatever its repetitions; block numbers begin anew in a group. A block
// without repetitions or of an unknown kind takes none.
TEST_F(PulsesTest, ChannelsGoOnBlockNumbersBeginAnew) {
  const char* kinds[2][2] = {{"HiLev", "swtch"}, {"Quad", "LOLEV"}};
  for (int slot = 0; slot <= 1; ++slot) {
    store.PulseBlock[slot].BlockCount = 2;
    for (int n = 1; n <= 2; ++n) {
      store.PulseBlock[slot][n].Meas = kinds[slot][n - 1];
      store.PulseBlock[slot][n].Reps = 2;
    }
  }
  store.PulseBlock[0][2].CalOnSite = 1;
  const std::string title = Bars("      ", 23, " Pulse/Freq Blocks");
  Run();
  ExpectText(title +
             "|      PulseCount(PBlk1(),PREP1,1,PCONF1,POPT1,PMULT1,POSET1)"
             "|      PulseCount(PBlk2(),PREP2,2,PCONF2,POPT2,MPBlk2(),OPBlk2())|" +
             title + "|      PulseCount(PBlk2(),PREP2,3,PCONF2,POPT2,PMULT2,POSET2)|");
}

}  // namespace
}  // namespace ostrand::testing
