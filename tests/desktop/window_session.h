// The main window on files in memory, and a user who answers what comes up meanwhile.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QAction>
#include <QMessageBox>
#include <QTimer>
#include <functional>
#include <memory>

#include "main_window.h"
#include "model/new_store.h"
#include "support/fixed_clock.h"
#include "support/memory_filesystem.h"
#include "support/test_surroundings.h"

namespace ostrand::testing {

class WindowTest : public ::testing::Test {
 protected:
  WindowTest() { window_.Complete(); }

  MemoryFileSystem files_;
  FixedClock clock_;
  desktop::QtForms forms_;
  TestSurroundings around_{files_, clock_, forms_, "/tmp/"};
  std::unique_ptr<ProjectStore> store_ = NewStore();
  desktop::MainWindow window_{*store_, around_.all, forms_};
};

// Acts in each turn of the event loop, also of a box or of a screen.
class EachTurn : public QTimer {
 public:
  explicit EachTurn(std::function<void()> act) {
    callOnTimeout(std::move(act));
    start(0);
  }
};

// Answers the boxes that come, in their order, and keeps their texts. A box without an answer is
// left by Escape and fails the test, and so does an answer without a box.
class Answers {
 public:
  explicit Answers(QStringList of = {}) : captions(std::move(of)) {}
  ~Answers() { EXPECT_TRUE(captions.empty()) << captions.front().toStdString(); }
  Answers(const Answers&) = delete;
  Answers& operator=(const Answers&) = delete;

  QStringList captions;
  QString otherwise;  // the answer when there are no more
  QStringList titles;
  QString text;  // of the last box

 private:
  void answer() {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    titles.append(box->windowTitle());
    text = box->text();
    const QString caption = captions.empty() ? otherwise : captions.takeFirst();
    for (QAbstractButton* button : box->buttons()) {
      if (button->text().remove('&') == caption) return button->click();
    }
    ADD_FAILURE() << "no answer to " << box->windowTitle().toStdString() << ": "
                  << box->text().toStdString();
    box->reject();
  }

  EachTurn turns_{[this] { answer(); }};
};

// Gives a command of the menus; fails the test if it is not offered.
inline void Trigger(const desktop::MainWindow& window, const QString& text) {
  for (QAction* action : window.findChildren<QAction*>()) {
    if (action->text().remove('&') == text && action->isEnabled()) return action->trigger();
  }
  ADD_FAILURE() << "no command " << text.toStdString();
}

}  // namespace ostrand::testing
