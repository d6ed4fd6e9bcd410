#include "generator/generated.h"

namespace ostrand::testing {
namespace {

const std::string kTitle =
    "      '" + std::string(23, '_') + " Pulse/Freq Blocks" + std::string(23, '_');

class PulsesTest : public Generated {
 protected:
  void Block(int slot, int n, int reps, const char* meas) {
    store.PulseBlock[slot].BlockCount = static_cast<i16>(n);
    store.PulseBlock[slot][n].Reps = static_cast<i16>(reps);
    store.PulseBlock[slot][n].Meas = meas;
  }
};

// A block takes one channel, whatever its repetitions; block numbers begin anew in a group.
TEST_F(PulsesTest, ChannelsGoOnBlockNumbersBeginAnew) {
  Block(0, 1, 2, "HiLev");
  Block(0, 2, 1, "swtch");
  Block(1, 1, 0, "LoLev");
  Block(1, 2, 1, "LOLEV");
  store.PulseBlock[0][2].CalOnSite = 1;
  Run();
  ExpectRun({kTitle, "      PulseCount(PBlk1(),PREP1,1,PCONF1,POPT1,PMULT1,POSET1)",
             "      PulseCount(PBlk2(),PREP2,2,PCONF2,POPT2,MPBlk2(),OPBlk2())", kTitle,
             "      PulseCount(PBlk2(),PREP2,3,PCONF2,POPT2,PMULT2,POSET2)", ""});
}

TEST_F(PulsesTest, AnUnknownMeasurementTakesNoChannel) {
  Block(0, 1, 1, "Quad");
  Block(0, 2, 1, "LoLev");
  store.PulseBlock[0][2].Alias[1].AliasExcept = "5";
  Run();
  ExpectRun({kTitle, "      PulseCount(PBlk2(),PREP2,1,PCONF2,POPT2,MPBlk2(),OPBlk2())", ""});
}

}  // namespace
}  // namespace ostrand::testing
