// Screens that open one after the other on the way to a control.
#pragma once

#include <QString>
#include <functional>
#include <set>

#include "places/key_places.h"
#include "screen_window.h"

namespace ostrand {
class Ostrand;
}

namespace ostrand::desktop {

class GuidedScreens : public ScreenWindows {
 public:
  using ScreenWindows::ScreenWindows;

  // Calls `open`, which opens the first screen of the place, and goes on from there by itself: it
  // picks the table or the item, presses the buttons of the next screens, and moves the focus to
  // the control. Where the way ends earlier, because a button is disabled, that button's list has
  // the focus. Returns when the screens have been left.
  void Guide(ScreenPlace place, const std::function<void()>& open);

  // Whether the end of the way has not been reached yet.
  [[nodiscard]] bool IsGuiding() const { return !place_.steps.empty(); }

  // The one block whose setup was left by Done since the last first screen opened: "Voltage block
  // 2"; empty for none or several.
  [[nodiscard]] QString Block() const { return blocks_.size() == 1 ? *blocks_.begin() : QString(); }

  void ShowModal(Screen& screen) override;

 protected:
  void run(ScreenWindow& window) override;

 private:
  void goOn(ScreenWindow& window);

  ScreenPlace place_;
  std::size_t next_ = 0;  // the step whose screen opens next
  std::set<QString> blocks_;
};

// Opens the first screen of a place: by its main button, or as an option of the user.
void OpenFirstScreen(Ostrand& session, const ScreenPlace& place);

}  // namespace ostrand::desktop
