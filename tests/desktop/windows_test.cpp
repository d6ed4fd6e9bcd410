// Windows of all screens: what is in them, and what a user can do wrong at them.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <cctype>
#include <set>

#include "desktop_session.h"
#include "script/screen_catalog.h"
#include "widget_user.h"

namespace ostrand {
namespace {

using desktop::BoundControl;
using desktop::ScreenWindow;

class Windows : public ::testing::Test {
 protected:
  // The window of each screen of the sample project, while it is open.
  void visit(const std::function<void(ScreenWindow&)>& look) {
    std::set<std::string> seen;
    MakeCatalogProject(*session_.store);
    VisitScreens(session_.control, [&](Screen& screen) {
      seen.insert(screen.Name());
      ScreenWindow window(screen, session_.windows, nullptr);
      window.show();
      ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
      ASSERT_TRUE(QTest::qWaitFor([&] { return window.IsComplete(); }));
      QApplication::processEvents();  // all of it is laid out
      SCOPED_TRACE(screen.Name());
      look(window);
    });
    EXPECT_EQ(seen.size(), 41U);
  }

  // The window of one of them.
  void at(const std::string& name, const std::function<void(ScreenWindow&)>& look) {
    bool seen = false;
    visit([&](ScreenWindow& window) {
      if (window.Shown().Name() != name || seen) return;
      seen = true;
      look(window);
    });
    EXPECT_TRUE(seen);
  }

  testing::DesktopSession session_;
};

TEST_F(Windows, HoldEachControlInOneWidget) {
  visit([](const ScreenWindow& window) {
    std::set<const QWidget*> widgets;
    for (const Control* control : window.Shown().Controls()) {
      const BoundControl* bound = window.Find(*control);
      ASSERT_NE(bound, nullptr) << control->Name();
      EXPECT_TRUE(widgets.insert(bound->Widget()).second) << control->Name();
      EXPECT_TRUE(window.isAncestorOf(bound->Widget())) << control->Name();
      EXPECT_EQ(bound->Widget()->isVisible(), control->Visible) << control->Name();
    }
    EXPECT_EQ(window.Controls().size(), widgets.size());
    testing::ExpectShown(window);
  });
}

// "OutIntUnits", but not "PC Card" or "TK40M".
bool isKey(const QString& name) {
  if (name == "MeasPerEx") return false;  // as the system calls it to the user
  for (qsizetype at = 1; at + 1 < name.size(); ++at) {
    if (name[at - 1].isLower() && name[at].isUpper() && name[at + 1].isLower()) return true;
  }
  return false;
}

TEST_F(Windows, HaveANameForEachControl) {
  visit([](const ScreenWindow& window) {
    for (const auto& control : window.Controls()) {
      if (!control->Of().Visible) continue;
      std::vector<QWidget*> parts = control->Stops();
      parts.push_back(control->Widget());
      for (QWidget* part : parts) {
        QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(part);
        ASSERT_NE(heard, nullptr);
        // Qt gives the text of a list as its name, and the caption by the relation to its label.
        const bool isList = qobject_cast<QComboBox*>(part) != nullptr;
        const QString name = isList ? part->accessibleName() : heard->text(QAccessible::Name);
        EXPECT_FALSE(name.trimmed().isEmpty()) << control->Of().Name();
        // Buttons of options are named as the items, which are the system's words.
        const bool isItem = control->Of().Kind() == ControlKind::kOptions && part != parts.back();
        const bool isText = qobject_cast<QLabel*>(part) != nullptr;
        EXPECT_TRUE(isItem || isText || !isKey(name)) << name.toStdString();
        EXPECT_FALSE(heard->text(QAccessible::Description).trimmed().isEmpty())
            << control->Of().Name();
      }
    }
  });
}

TEST_F(Windows, FitOnASmallScreenWithDoneAndCancelInSight) {
  visit([](const ScreenWindow& window) {
    EXPECT_LE(window.frameGeometry().width(), 1024);
    EXPECT_LE(window.frameGeometry().height(), 768);
    for (const QPushButton* button : {window.DoneButton(), window.CancelButton()}) {
      EXPECT_TRUE(
          window.rect().contains(QRect(button->mapTo(&window, QPoint(0, 0)), button->size())));
    }
    const auto* scroll = window.findChild<QScrollArea*>();
    EXPECT_LE(scroll->widget()->width(), scroll->viewport()->width()) << "cut off at the side";
    for (const auto& control : window.Controls()) {
      const QWidget* widget = control->Widget();
      if (!widget->isVisible() || control->Of().Kind() == ControlKind::kCode) continue;
      EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << control->Of().Name();
      EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << control->Of().Name();
    }
  });
}

TEST_F(Windows, ReachAllControlsInTheirOrderByTab) {
  visit([](ScreenWindow& window) {
    std::vector<const Control*> expected;
    for (const auto& control : window.Controls()) {
      if (control->Of().Usable() && control->Stop() != nullptr) expected.push_back(&control->Of());
    }
    std::vector<const Control*> met;
    while (!window.DoneButton()->hasFocus() && met.size() <= expected.size()) {
      met.push_back(window.Shown().Focused());
      QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(met, expected);
  });
}

void turnWheel(QWidget& over) {
  const QPoint center = over.rect().center();
  QWheelEvent event(center, over.mapToGlobal(center), {}, QPoint(0, -120), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&over, &event);
}

TEST_F(Windows, KeepTheirValuesUnderTheWheel) {
  visit([](ScreenWindow& window) {
    const auto values = [&] {
      std::vector<std::string> texts;
      for (const Control* control : window.Shown().Controls()) texts.push_back(control->Text());
      return texts;
    };
    window.DoneButton()->setFocus();
    const std::vector<std::string> before = values();
    for (const auto& control : window.Controls()) {
      if (control->Stop() != nullptr) turnWheel(*control->Stop());
      if (control->Line() != nullptr) turnWheel(*control->Line());
    }
    EXPECT_EQ(values(), before);
    EXPECT_TRUE(window.DoneButton()->hasFocus());
  });
}

TEST_F(Windows, TurnAValueByTheWheelInTheFieldWithTheFocus) {
  at("frmVoltBlock", [](ScreenWindow& window) {
    const BoundControl* count = window.Find(*window.Shown().Find("BlockCount"));
    count->Stop()->setFocus();
    ASSERT_EQ(count->Of().Text(), "1");
    QWheelEvent up(QPointF(1, 1), count->Stop()->mapToGlobal(QPointF(1, 1)), {}, QPoint(0, 120),
                   Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(count->Stop(), &up);
    EXPECT_EQ(count->Of().Text(), "2");
  });
}

TEST_F(Windows, EditAFieldAtTheCursor) {
  at("frmVoltSetup", [&](ScreenWindow& window) {
    Control& units = *window.Shown().Find("Units");
    const BoundControl* bound = window.Find(units);
    QLineEdit* line = bound->Line();
    line->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(line->selectedText(), "mVolts");
    const auto key = [&](Qt::Key code, const QString& text = {}, Qt::KeyboardModifiers with = {}) {
      QTest::sendKeyEvent(QTest::Click, line, code, text, with);
    };
    const auto expect = [&](const std::string& text, int cursor) {
      EXPECT_EQ(units.Text(), text);
      EXPECT_EQ(line->text().toStdString(), text);
      EXPECT_EQ(line->cursorPosition(), cursor);
    };
    key(Qt::Key_Home);
    key(Qt::Key_Right);
    key(Qt::Key_X, "x");
    expect("mxVolts", 2);
    session_.forms.StartAction();
    key(Qt::Key_Percent, "%");  // no letter of a unit
    expect("mxVolts", 2);
    EXPECT_TRUE(session_.forms.Beeped());
    key(Qt::Key_unknown, QString(QChar(0x0416)));  // that no project can hold
    expect("mxVolts", 2);
    key(Qt::Key_Backspace);
    key(Qt::Key_Delete);
    expect("molts", 1);
    key(Qt::Key_Z, {}, Qt::ControlModifier);
    EXPECT_NE(units.Text(), "molts");
    EXPECT_EQ(line->text().toStdString(), units.Text());
    key(Qt::Key_Y, "y");
    ASSERT_NE(units.Text(), "mVolts");
    key(Qt::Key_Escape);
    EXPECT_EQ(units.Text(), "mVolts");
    EXPECT_EQ(line->text(), "mVolts");
    EXPECT_EQ(window.Shown().Result(), ModalResult::kNone);
    key(Qt::Key_Escape);  // nothing is edited any more
    EXPECT_EQ(window.Shown().Result(), ModalResult::kCancel);
  });
}

TEST_F(Windows, KeepTheFocusInAFieldThatCannotTakeItsText) {
  at("frmVoltSetup", [](ScreenWindow& window) {
    const BoundControl* multiplier = window.Find(*window.Shown().Find("DefaultMult"));
    const BoundControl* outputs = window.Find(*window.Shown().Find("Public"));
    multiplier->Stop()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(multiplier->Stop(), Qt::Key_Minus);
    ASSERT_EQ(multiplier->Of().Text(), "-");
    const std::string before = outputs->Of().Text();
    QTest::mouseClick(outputs->Widget(), Qt::LeftButton, {}, QPoint(8, 8));
    EXPECT_EQ(outputs->Of().Text(), before);
    EXPECT_TRUE(multiplier->Stop()->hasFocus());
    testing::ExpectShown(window);
    QTest::mouseClick(window.DoneButton(), Qt::LeftButton);
    EXPECT_EQ(window.Shown().Result(), ModalResult::kNone);
    EXPECT_TRUE(multiplier->Stop()->hasFocus());
  });
}

// ---- Message boxes ------------------------------------------------------------------------------

struct BoxCase {
  platform::Buttons buttons;
  std::vector<std::string> captions;
  std::vector<platform::Answer> answers;  // of each
};

const BoxCase kBoxes[] = {
    {platform::Buttons::kOk, {"OK"}, {platform::Answer::kOk}},
    {platform::Buttons::kOkCancel,
     {"OK", "Cancel"},
     {platform::Answer::kOk, platform::Answer::kCancel}},
    {platform::Buttons::kYesNo, {"&Yes", "&No"}, {platform::Answer::kYes, platform::Answer::kNo}},
    {platform::Buttons::kYesNoCancel,
     {"&Yes", "&No", "Cancel"},
     {platform::Answer::kYes, platform::Answer::kNo, platform::Answer::kCancel}},
    {platform::Buttons::kOverwriteCancel,
     {"&Overwrite", "Cancel"},
     {platform::Answer::kOverwrite, platform::Answer::kCancel}},
};

// The answer that comes of what `act` does at the box.
platform::Answer answerOf(const platform::MessageBox& asked,
                          const std::function<void(QMessageBox&)>& act) {
  desktop::QtForms forms;
  QTimer::singleShot(0, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    act(*box);
  });
  return forms.ShowBox(asked);
}

QAbstractButton* buttonOf(const QMessageBox& box, const std::string& caption) {
  for (QAbstractButton* button : box.buttons()) {
    if (button->text().toStdString() == caption) return button;
  }
  return nullptr;
}

TEST(Boxes, GiveTheAnswerOfTheirButtons) {
  for (const BoxCase& row : kBoxes) {
    for (std::size_t at = 0; at < row.captions.size(); ++at) {
      const platform::Answer answer = answerOf(
          {.title = "TITLE", .text = "one\r\ntwo", .buttons = row.buttons}, [&](QMessageBox& box) {
            EXPECT_EQ(box.text(), "one\ntwo");
            EXPECT_EQ(static_cast<std::size_t>(box.buttons().size()), row.captions.size());
            QTest::mouseClick(buttonOf(box, row.captions[at]), Qt::LeftButton);
          });
      EXPECT_EQ(answer, row.answers[at]) << row.captions[at];
    }
    const auto byKey = [&](Qt::Key key, platform::Answer preselected) {
      return answerOf(
          {.title = "TITLE", .text = "?", .buttons = row.buttons, .preselected = preselected},
          [&](QMessageBox& box) { QTest::keyClick(&box, key); });
    };
    EXPECT_EQ(byKey(Qt::Key_Escape, platform::Answer::kOk), row.answers.back());
    EXPECT_EQ(byKey(Qt::Key_Return, platform::Answer::kOk), row.answers.front());
    EXPECT_EQ(byKey(Qt::Key_Return, row.answers.back()), row.answers.back());
  }
}

TEST(FileDialogs, ShowThePatternsOfTheirFilter) {
  EXPECT_EQ(desktop::FiltersOf("(*.VKG)|*.VKG|(All Files)|*.*"),
            QStringList({"*.VKG (*.VKG *.vkg)", "All Files (*)"}));
}

}  // namespace
}  // namespace ostrand
