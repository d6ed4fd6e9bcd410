// Screens as windows.
#pragma once

#include <QDialog>
#include <QTimer>
#include <deque>
#include <map>
#include <memory>
#include <unordered_map>

#include "bind.h"
#include "controls/screen.h"
#include "layout.h"

class QKeyEvent;
class QLabel;
class QPushButton;
class QScrollArea;

namespace ostrand {
class TextField;
}

namespace ostrand::desktop {

class QtForms;

// The size that a window may have to fit on the desktop with its frame.
QSize RoomFor(const QWidget& window);

// The window of a screen while it is open. Each action of the user goes to its control; then all
// controls are read again.
class ScreenWindow final : public QDialog, private ControlWindow {
 public:
  // Screen and forms must outlive it.
  ScreenWindow(Screen& screen, QtForms& forms, QWidget* parent);
  ~ScreenWindow() override;

  [[nodiscard]] Screen& Shown() const { return screen_; }
  // Those bound so far: the later rows of a long table follow soon after the window is shown.
  [[nodiscard]] const std::vector<std::unique_ptr<BoundControl>>& Controls() const {
    return controls_;
  }
  [[nodiscard]] bool IsComplete() const { return waiting_.empty(); }
  [[nodiscard]] BoundControl* Find(const Control& control) const;
  [[nodiscard]] QPushButton* DoneButton() const { return done_; }
  [[nodiscard]] QPushButton* CancelButton() const { return cancel_; }

  // Escape and the close button of the window.
  void reject() override;

  // While another screen is open over it, it can only be looked at.
  void Cover(bool covered);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void Act(Control& control, const std::function<void()>& action) override;
  void buildButtons();
  void layOut();
  void addRows(std::size_t count);
  void watchStops();
  // Something was done: the window ends with its screen, or shows what is now.
  void afterAction();
  void read();
  void focusCame(BoundControl* control);
  // Moves the keyboard to where the screen has the focus.
  void followFocus();
  static void giveFocus(const BoundControl& control);
  bool keyPressed(BoundControl& control, const QKeyEvent& event);
  bool moveInColumn(const Control& from, int rows);
  bool paste(TextField& field);
  void end(void (Screen::*way)());
  [[nodiscard]] QSize sizeOfAll() const;
  void fitToScreen();
  void heighten();
  void widen();

  Screen& screen_;
  QtForms& forms_;
  std::vector<std::unique_ptr<BoundControl>> controls_;
  std::unordered_map<const Control*, BoundControl*> bound_;
  std::map<const QObject*, BoundControl*> stops_;
  std::deque<std::vector<Control*>> waiting_;  // rows of a table that are not bound yet
  std::function<void(const std::vector<BoundControl*>& cells)> addRow_;
  std::vector<LaidPart> parts_;
  QScrollArea* scroll_;
  QLabel* help_;
  QPushButton* done_;
  QPushButton* cancel_;
  QTimer flashing_;
  QTimer adding_;  // of waiting rows
  bool lit_ = true;
  bool reading_ = false;
  bool acting_ = false;
  bool opened_ = false;
  int pageHeight_ = 0;  // that the window had room for
  bool covered_ = false;
};

// Shows each screen in a window over the last one. Only the top one can be edited. The main window
// stays open to be looked at, scrolled and copied from, and disables its commands by `OnOpen`.
class ScreenWindows : public ScreenHost {
 public:
  ScreenWindows(QtForms& forms, QWidget* main) : forms_(forms), main_(main) {}
  // With true when the first screen opens, with false when the last one has ended.
  std::function<void(bool open)> OnOpen;
  // The window that can be edited; null when no screen is open.
  [[nodiscard]] ScreenWindow* Top() const { return open_.empty() ? nullptr : open_.back(); }
  void ShowModal(Screen& screen) override;

 protected:
  // Until the user has ended it.
  virtual void run(ScreenWindow& window);

 private:
  QtForms& forms_;
  QWidget* main_;
  std::vector<ScreenWindow*> open_;  // one over the other
};

}  // namespace ostrand::desktop
