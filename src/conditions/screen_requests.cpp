#include "conditions/screen_requests.h"

namespace ostrand {

bool SolveScaling(const ScreenContext& context, SolveRequest& request) {
  return OpenScreen(context, "frmSolveList", request) && request.answered;
}

}  // namespace ostrand
