#include "tables/output_parameters.h"

#include "controls/screen_factory.h"

namespace ostrand {

std::string_view ParameterScreenOf(OutputCode code) {
  if (code == kHistogram) return "frmHistogram";
  return code == kRainFlow ? "frmRainHisto" : "frmLevel";
}

bool AskOutputParameters(const ScreenContext& context, OutputCode code, const HistoTarget& target) {
  HistoTarget asked = target;
  return OpenScreen(context, ParameterScreenOf(code), asked);
}

}  // namespace ostrand
