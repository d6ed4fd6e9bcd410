// Opens each screen on a large project, draws all of its controls and leaves it.
#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "controls/screen.h"
#include "machine.h"
#include "model/new_store.h"
#include "projects.h"
#include "row.h"
#include "screens/setup_screens.h"
#include "session/ostrand.h"

namespace ostrand::bench {
namespace {

// The way to a screen: the index of a main button or, after those, of an option screen; then of an
// opener in each screen.
struct Way {
  std::string screen;
  std::vector<std::size_t> steps;
};

std::size_t draw(const Screen& screen) {
  std::size_t letters = screen.Caption.size();
  for (const Control* control : screen.Controls()) {
    letters += control->Text().size() + control->Caption.size();
  }
  return letters;
}

// Finds a way to each screen, or follows one and leaves its last screen again.
class Walker : public ScreenHost {
 public:
  explicit Walker(Ostrand& control) : control_(control) {}

  std::vector<Way> FindAll() {
    for (std::size_t first = 0; first < kFirstSteps; ++first) {
      here_ = {first};
      start(first);
    }
    return std::move(found_);
  }

  // The median time of the last step in seconds.
  double TimeOf(const Way& way) {
    constexpr int kWalks = 15;
    std::vector<double> times;
    going_ = &way;
    for (int walk = 0; walk < kWalks; ++walk) {
      depth_ = 0;
      const auto first = [&] { start(way.steps.front()); };
      if (way.steps.size() == 1) {
        times.push_back(MedianTime(1, first));
      } else {
        first();
        times.push_back(last_);
      }
      Require(arrived_, way.screen);
      arrived_ = false;
    }
    going_ = nullptr;
    std::sort(times.begin(), times.end());
    return times[kWalks / 2];
  }

  void ShowModal(Screen& screen) override {
    if (going_ == nullptr) {
      look(screen);
    } else {
      go(screen);
    }
    screen.Cancel();
    screen.End(ModalResult::kCancel);
  }

 private:
  static constexpr std::size_t kButtons = kExciteButton - kConfigurationButton + 1;
  static constexpr std::size_t kFirstSteps = kButtons + kOptionScreens.size();

  void start(std::size_t first) {
    if (first >= kButtons) {
      control_.ShowOptions(kOptionScreens[first - kButtons].option);
      return;
    }
    const auto& show = control_.Screens()[kConfigurationButton + static_cast<int>(first)];
    if (show) show();
  }

  void look(const Screen& screen) {
    const bool known = std::any_of(found_.begin(), found_.end(),
                                   [&](const Way& way) { return way.screen == screen.Name(); });
    if (!known) found_.push_back({screen.Name(), here_});
    for (std::size_t at = 0; at < screen.Openers().size(); ++at) {
      Opener& opener = *screen.Openers()[at];
      const Opener::Which& which = opener.ForWhich();
      // What a block's screen shows depends on the kind of the block: two of them are enough.
      const bool isLater = !which.name.empty() && which.value != "1" && which.value != "2";
      if (isLater || !opener.Usable()) continue;
      here_.push_back(at);
      opener.Press();
      here_.pop_back();
    }
  }

  void go(Screen& screen) {
    const std::size_t depth = ++depth_;
    if (depth == going_->steps.size()) {
      arrived_ = screen.Name() == going_->screen;
      Use(draw(screen));
      return;
    }
    Opener& opener = *screen.Openers()[going_->steps[depth]];
    const double time = MedianTime(1, [&] { opener.Press(); });
    if (depth + 1 == going_->steps.size()) last_ = time;
  }

  Ostrand& control_;
  std::vector<Way> found_;
  std::vector<std::size_t> here_;
  const Way* going_ = nullptr;
  std::size_t depth_ = 0;
  double last_ = 0;
  bool arrived_ = false;
};

// Prints a line for each screen if `listed`.
Figure slowestScreen(void (*make)(ProjectStore& store), bool listed) {
  constexpr std::size_t kScreens = 41;
  constexpr double kMilli = 1e3;
  const auto store = NewStore();
  Machine machine;
  OstrandEvents nobodyListens;
  Ostrand control(*store, machine.Around(), nobodyListens);
  make(*store);
  MakeEveryScreenReachable(*store);
  Walker walker(control);
  ConnectSetupScreens(control, walker);
  const std::vector<Way> ways = walker.FindAll();
  Require(ways.size() == kScreens, fmt::format("{} screens", ways.size()));
  double slowest = 0;
  std::string name;
  for (const Way& way : ways) {
    const double time = walker.TimeOf(way) * kMilli;
    if (listed) fmt::print("{:>11} {:<52} {:>8} {:>9.3f}\n", "", way.screen, "", time);
    if (time > slowest) name = way.screen;
    slowest = std::max(slowest, time);
  }
  return {slowest, name};
}

}  // namespace

std::vector<Row> ScreenRows() {
  return {{"screens", "slowest of the screens above, ms", 1,
           [] { return slowestScreen(MakeWiredProject, true); }},
          {"full", "slowest screen with all that a project can hold, ms", 0,
           [] { return slowestScreen(MakeLargestProject, false); }}};
}

}  // namespace ostrand::bench
