#include "controls/screen_factory.h"

namespace ostrand {

std::unique_ptr<Screen> MakeScreen(const ScreenContext& context, std::string_view screen) {
  ScreenRequest request(screen);
  return context.screens.Make(context, request);
}

bool OpenScreen(const ScreenContext& context, const std::unique_ptr<Screen>& screen) {
  if (!screen) return false;
  context.host.ShowModal(*screen);
  return screen->Result() == ModalResult::kDone;
}

}  // namespace ostrand
