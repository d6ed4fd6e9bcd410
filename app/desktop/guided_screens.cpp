#include "guided_screens.h"

#include <QPushButton>
#include <QTimer>

#include "places.h"
#include "screens/setup_screens.h"
#include "session/ostrand.h"
#include "session/user_action.h"
#include "text/strings.h"

namespace ostrand::desktop {

void GuidedScreens::Guide(ScreenPlace place, const std::function<void()>& open) {
  if (Top() != nullptr || place.steps.empty()) return;  // a screen is open already
  place_ = std::move(place);
  next_ = 0;
  Finally(open, [this] { place_ = {}; });
}

void GuidedScreens::ShowModal(Screen& screen) {
  const bool isOnTheWay =
      next_ < place_.steps.size() && SameText(screen.Name(), place_.steps[next_].screen);
  if (!isOnTheWay || !TakeStep(screen, place_.steps[next_])) place_ = {};
  ++next_;
  if (Top() == nullptr) blocks_.clear();
  ScreenWindows::ShowModal(screen);
  const QString block = BlockOf(screen);
  if (screen.Result() == ModalResult::kDone && !block.isEmpty()) blocks_.insert(block);
}

void GuidedScreens::run(ScreenWindow& window) {
  QTimer shown;  // when the window is there
  shown.setSingleShot(true);
  QObject::connect(&shown, &QTimer::timeout, &window, [this, &window] { goOn(window); });
  if (IsGuiding()) shown.start(0);
  ScreenWindows::run(window);
}

void GuidedScreens::goOn(ScreenWindow& window) {
  const Screen& screen = window.Shown();
  Control* control = nullptr;
  if (next_ < place_.steps.size()) {
    Opener* opener = OpenerOf(screen, place_.steps[next_]);
    const BoundControl* bound = opener == nullptr ? nullptr : window.Find(*opener);
    auto* button = bound == nullptr ? nullptr : qobject_cast<QPushButton*>(bound->Widget());
    if (button != nullptr && opener->Usable()) return button->click();
  } else {
    control = UsableControl(screen, place_.control);
  }
  place_ = {};
  const BoundControl* bound = control == nullptr ? nullptr : window.Find(*control);
  if (bound != nullptr && bound->Stop() != nullptr) bound->Stop()->setFocus(Qt::TabFocusReason);
}

void OpenFirstScreen(Ostrand& session, const ScreenPlace& place) {
  if (place.steps.empty()) return;
  const std::string_view screen = place.steps.front().screen;
  const int button = ButtonOfScreen(screen);
  if (button >= 0) return session.Click(button);
  for (const OptionScreen& row : kOptionScreens) {
    if (SameText(row.name, screen)) session.ShowOptions(row.option);
  }
}

}  // namespace ostrand::desktop
