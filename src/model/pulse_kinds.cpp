#include "model/pulse_kinds.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "text/strings.h"

namespace ostrand {
namespace {

constexpr std::array<std::string_view, 3> kPulseKinds = {"HILEV", "LOLEV", "SWTCH"};

}  // namespace

bool HasPulseStatement(const PulseBlockData& block) {
  return block.Reps > 0 &&
         std::any_of(kPulseKinds.begin(), kPulseKinds.end(),
                     [&](std::string_view kind) { return SameText(block.Meas, kind); });
}

}  // namespace ostrand
