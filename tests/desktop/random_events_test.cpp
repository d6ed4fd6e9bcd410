// A user who presses keys, clicks and turns the wheel at random, on random screens.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QClipboard>
#include <QPushButton>
#include <QTest>
#include <QWheelEvent>
#include <random>

#include "desktop_session.h"
#include "model/defaults.h"
#include "screens/setup_screens.h"
#include "support/project_random.h"
#include "support/random_user.h"
#include "support/temp_folder.h"

namespace ostrand {
namespace {

using desktop::BoundControl;
using desktop::ScreenWindow;

constexpr int kUsualEvents = 4000;
constexpr int kEventsOnAScreen = 60;

std::uint32_t numberFrom(const char* variable, std::uint32_t usual) {
  const QByteArray text = qgetenv(variable);
  return text.isEmpty() ? usual : text.toUInt();
}

const QKeyCombination kKeys[] = {
    Qt::Key_Tab,
    Qt::Key_Tab,
    Qt::SHIFT | Qt::Key_Backtab,
    Qt::Key_1,
    Qt::Key_9,
    Qt::Key_0,
    Qt::Key_Period,
    Qt::Key_Minus,
    Qt::Key_A,
    Qt::SHIFT | Qt::Key_Z,
    Qt::Key_Percent,
    Qt::Key_Space,
    Qt::Key_Return,
    Qt::Key_Escape,
    Qt::Key_Backspace,
    Qt::Key_Delete,
    Qt::Key_Up,
    Qt::Key_Down,
    Qt::Key_Home,
    Qt::Key_PageUp,
    Qt::Key_PageDown,
    Qt::Key_F4,
    Qt::CTRL | Qt::Key_A,
    Qt::CTRL | Qt::Key_C,
    Qt::CTRL | Qt::Key_X,
    Qt::CTRL | Qt::Key_V,
    Qt::CTRL | Qt::Key_Z,
    Qt::ALT | Qt::Key_S,
    Qt::ALT | Qt::Key_F,
    Qt::SHIFT | Qt::Key_Left,
};
const char* const kClips[] = {"12.5", "7\t8\r\n9\t10\r\n", "Oil\nWater\n", "\x01", "1e99", ""};

class RandomEvents : public desktop::ScreenWindows {
 public:
  RandomEvents(std::uint32_t seed, int events, desktop::QtForms& forms)
      : ScreenWindows(forms, nullptr), random_(seed), left_(events) {}

  [[nodiscard]] int Below(std::size_t limit) { return static_cast<int>(random_() % limit); }
  [[nodiscard]] bool IsTired() const { return left_ <= 0; }
  std::string fault;  // the first one

 protected:
  void run(ScreenWindow& window) override {
    window.show();
    if (!QTest::qWaitForWindowActive(&window)) return fail(window, "does not get active");
    for (int event = 0; event < kEventsOnAScreen && !IsTired() && isOpen(window); ++event) {
      act(window);
      check(window);
    }
    leave(window);
  }

 private:
  static bool isOpen(const ScreenWindow& window) {
    return window.Shown().Result() == ModalResult::kNone;
  }

  void fail(const ScreenWindow& window, const std::string& what) {
    if (fault.empty()) fault = window.Shown().Name() + " " + what;
    left_ = 0;
  }

  void act(ScreenWindow& window) {
    --left_;
    switch (Below(10)) {
      case 0:
        return turnWheel(window);
      case 1:
      case 2:
      case 3:
        return click(window);
      case 4:
        QApplication::clipboard()->setText(QString::fromUtf8(kClips[Below(std::size(kClips))]));
        [[fallthrough]];
      default:
        return press();
    }
  }

  void press() {
    QWidget* popup = QApplication::activePopupWidget();
    QWidget* to = popup != nullptr ? popup : QApplication::focusWidget();
    if (to == nullptr) return;
    const QKeyCombination keys = kKeys[Below(std::size(kKeys))];
    QTest::keyClick(to, keys.key(), keys.keyboardModifiers());
  }

  // Any widget of the screen; Done and Cancel are among many.
  QWidget* anyWidget(const ScreenWindow& window) {
    const std::size_t count = window.Controls().size();
    const int at = Below(count + 2);
    if (static_cast<std::size_t>(at) < count) {
      const BoundControl& control = *window.Controls()[static_cast<std::size_t>(at)];
      const std::vector<QWidget*> stops = control.Stops();
      return stops.empty() ? control.Widget()
                           : stops[static_cast<std::size_t>(Below(stops.size()))];
    }
    return static_cast<std::size_t>(at) == count ? window.DoneButton() : window.CancelButton();
  }

  // Without a desktop nobody else returns to the window under a list that was closed.
  static void closePopup(ScreenWindow& window) {
    QWidget* popup = QApplication::activePopupWidget();
    if (popup == nullptr) return;
    popup->close();
    window.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
  }

  void click(ScreenWindow& window) {
    closePopup(window);
    QWidget* widget = anyWidget(window);
    if (!widget->isVisible() || widget->size().isEmpty()) return;  // an empty text has no width
    const QPoint place(Below(static_cast<std::size_t>(widget->width())),
                       Below(static_cast<std::size_t>(widget->height())));
    if (Below(5) == 0) {
      QTest::mouseDClick(widget, Qt::LeftButton, {}, place);
    } else {
      QTest::mouseClick(widget, Qt::LeftButton, {}, place);
    }
  }

  void turnWheel(const ScreenWindow& window) {
    QWidget* widget = anyWidget(window);
    if (!widget->isVisible()) return;
    const QPointF place(1, 1);
    QWheelEvent event(place, widget->mapToGlobal(place), {}, QPoint(0, Below(2) == 0 ? 120 : -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(widget, &event);
  }

  // The keyboard goes to the window, and to the control that has the focus of the screen.
  void check(ScreenWindow& window) {
    QApplication::processEvents();
    if (!isOpen(window) || QApplication::activePopupWidget() != nullptr) return;
    if (QApplication::activeWindow() == nullptr) window.activateWindow();
    const QWidget* focus = QApplication::focusWidget();
    if (focus == nullptr) return fail(window, "has lost the focus");
    if (!window.isAncestorOf(focus)) return fail(window, "is not where the focus is");
    const Control* focused = window.Shown().Focused();
    if (focused == nullptr) return;
    const std::vector<QWidget*> stops = window.Find(*focused)->Stops();
    if (std::find(stops.begin(), stops.end(), focus) == stops.end()) {
      fail(window, "has the focus in another control than " + focused->Name());
    }
  }

  void leave(ScreenWindow& window) {
    closePopup(window);
    constexpr int kAttempts = 200;  // boxes are answered at random
    for (int attempt = 0; attempt < kAttempts && isOpen(window); ++attempt) {
      if (QApplication::focusWidget() == nullptr) fail(window, "has lost the focus");
      if (attempt % 2 == 0 && QApplication::focusWidget() != nullptr) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
      } else {
        QTest::mouseClick(window.CancelButton(), Qt::LeftButton);
      }
    }
    if (isOpen(window)) fail(window, "cannot be left");
  }

  std::mt19937 random_;
  int left_;
};

std::unique_ptr<ProjectStore> freshStore() {
  auto store = NewStore();
  ORVUS_COMMON::SetLoggerConstants(*store);
  ORVUS_COMMON::SetAllDefaults(*store);
  return store;
}

using Session = testing::UserSession<testing::RandomUser>;  // answers boxes at random

void makeProject(ProjectStore& store, std::uint32_t seed) {
  switch (seed % 3) {
    case 0:
      store.Config.TK40MQty = 4;
      store.Config.CanBusQty = 1;
      return;
    case 1:
      return MakeCatalogProject(store);
    default:
      ORVUS_GENFILE::ReadProjectText(
          store, testing::ReadDisk(OSTRAND_SOURCE_DIR "/examples/vehicle-test.VKG"));
  }
}

// The project read from its file and written again; every line must be understood.
std::string reread(const std::string& bytes) {
  const auto store = freshStore();
  const ORVUS_GENFILE::ReadReport report = ORVUS_GENFILE::ReadProjectText(*store, bytes);
  EXPECT_EQ(report.skipped, 0);
  return ORVUS_GENFILE::ProjectFileText(*store, testing::FixedClock().Now());
}

TEST(RandomEvents, LeaveEveryWindowUsable) {
  const std::uint32_t seed = numberFrom("OSTRAND_RANDOM_SEED", std::random_device()());
  const int events = static_cast<int>(numberFrom("OSTRAND_RANDOM_EVENTS", kUsualEvents));
  std::printf("OSTRAND_RANDOM_SEED=%u OSTRAND_RANDOM_EVENTS=%d\n", seed, events);
  std::fflush(stdout);
  Session session(seed);
  ProjectStore& store = *session.store;
  Ostrand& control = session.control;
  desktop::QtForms forms;
  RandomEvents user(seed, events, forms);
  ConnectSetupScreens(control, user);
  for (std::uint32_t visit = 0; !user.IsTired(); ++visit) {
    if (visit % 20 == 0) {
      store = *freshStore();
      makeProject(store, seed + visit / 20);
    }
    const int screen = user.Below(kExciteButton + 1 + kOptionScreens.size());
    if (screen > kExciteButton) {
      control.ShowOptions(
          kOptionScreens[static_cast<std::size_t>(screen - kExciteButton - 1)].option);
    } else if (control.Screens()[screen]) {
      control.Screens()[screen]();
    }
    ASSERT_EQ(user.fault, "");
    ASSERT_EQ(session.forms.trouble, "");
    const std::string bytes = reread(session.Text());
    ASSERT_EQ(reread(bytes), bytes);
  }
}

// ---- Looking changes nothing --------------------------------------------------------------------

// Opens all that a screen opens and leaves it by Done, or by Cancel where that is refused.
class Looker : public desktop::ScreenWindows {
 public:
  explicit Looker(desktop::QtForms& forms) : ScreenWindows(forms, nullptr) {}
  int windows = 0;

 protected:
  void run(ScreenWindow& window) override {
    ++windows;
    window.show();
    QApplication::processEvents();
    for (Opener* opener : window.Shown().Openers()) {
      const BoundControl* button = window.Find(*opener);
      if (button == nullptr || !opener->Usable()) continue;
      if (!opener->ForWhich().name.empty() && opener->ForWhich().value > "2") continue;
      qobject_cast<QAbstractButton*>(button->Widget())->click();
    }
    // A calculator's Done is an edit.
    const bool solves = window.Shown().Name().find("Calc") != std::string::npos ||
                        window.Shown().Name() == "frmMoreSpeed";
    if (!solves) window.DoneButton()->click();
    if (window.Shown().Result() == ModalResult::kNone) window.CancelButton()->click();
    EXPECT_NE(window.Shown().Result(), ModalResult::kNone) << window.Shown().Name();
  }
};

TEST(Looking, ChangesNoProject) {
  for (std::uint32_t seed = 1; seed <= 2; ++seed) {
    Session session(seed);
    session.forms.mood = testing::RandomUser::Mood::kLooks;  // refuses all questions
    testing::MakeRandomProject(*session.store, seed);
    desktop::QtForms forms;
    Looker user(forms);
    ConnectSetupScreens(session.control, user);
    const auto lookAtAll = [&] {
      for (int button = kConfigurationButton; button <= kExciteButton; ++button) {
        if (session.control.Screens()[button]) session.control.Screens()[button]();
      }
      return session.Text();
    };
    // The first look normalizes what a file can hold but no screen would write.
    const std::string before = lookAtAll();
    EXPECT_EQ(lookAtAll(), before) << seed;
    EXPECT_GT(user.windows, 40);
  }
}

}  // namespace
}  // namespace ostrand
