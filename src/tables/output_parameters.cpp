#include "tables/output_parameters.h"

#include "tables/frm_histogram.h"
#include "tables/frm_level.h"
#include "tables/frm_rain_histo.h"

namespace ostrand {
namespace {

bool ask(const ScreenContext& context, HistoScreen& screen) {
  context.host.ShowModal(screen);
  return !screen.UserCancelled;
}

}  // namespace

bool AskOutputParameters(const ScreenContext& context, OutputCode code, const HistoTarget& target,
                         std::string_view stem) {
  if (code == kHistogram) {
    frmHistogram screen(context, target);
    return ask(context, screen);
  }
  if (code == kRainFlow) {
    frmRainHisto screen(context, target);
    return ask(context, screen);
  }
  frmLevel screen(context, target, stem);
  return ask(context, screen);
}

}  // namespace ostrand
