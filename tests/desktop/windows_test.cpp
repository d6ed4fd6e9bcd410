// Windows of all screens: what is in them, and what a user can do wrong at them.
#include <gtest/gtest.h>

#include <QAccessible>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QProxyStyle>
#include <QPushButton>
#include <QScrollArea>
#include <QTest>
#include <QTreeWidget>
#include <set>

#include "controls/list_field.h"
#include "desktop_session.h"
#include "paste.h"
#include "screens/setup_screens.h"
#include "script/screen_catalog.h"
#include "terminal_tile.h"
#include "widget_user.h"

namespace ostrand {
namespace {

using desktop::BoundControl;
using desktop::ScreenWindow;
using platform::Answer;

class Windows : public testing::WindowsTest {
 protected:
  // The window of one of them.
  void at(const std::string& name, const std::function<void(ScreenWindow&)>& look) {
    MakeCatalogProject(*session_.store);
    EXPECT_EQ(visitAll(look, name), 1U);
  }
};

void expectEachControlInOneWidget(const ScreenWindow& window) {
  std::set<const QWidget*> widgets;
  for (const Control* control : window.Shown().Controls()) {
    const BoundControl* bound = window.Find(*control);
    ASSERT_NE(bound, nullptr) << control->Name();
    EXPECT_TRUE(widgets.insert(bound->Widget()).second) << control->Name();
    EXPECT_TRUE(window.isAncestorOf(bound->Widget())) << control->Name();
  }
  EXPECT_EQ(window.Controls().size(), widgets.size());
  testing::ExpectShown(window);
}

// "OutIntUnits", but not "PC Card" or "TK40M".
bool isKey(const QString& name) {
  if (name == "MeasPerEx") return false;  // as the system calls it to the user
  for (qsizetype at = 1; at + 1 < name.size(); ++at) {
    if (name[at - 1].isLower() && name[at].isUpper() && name[at + 1].isLower()) return true;
  }
  return false;
}

// What a screen reader calls the parts of a control.
QAccessible::Role roleOf(const BoundControl& control, const QWidget* part) {
  const bool isText = qobject_cast<const QLabel*>(part) != nullptr;
  switch (control.Of().Kind()) {
    case ControlKind::kLabel:
    case ControlKind::kLamp:
      return QAccessible::StaticText;
    case ControlKind::kPicture:
    case ControlKind::kFigure:
    case ControlKind::kCode:
      return isText ? QAccessible::StaticText : QAccessible::EditableText;
    case ControlKind::kText:
      return QAccessible::EditableText;
    case ControlKind::kNumber:
      return control.Line() == part ? QAccessible::EditableText : QAccessible::SpinBox;
    case ControlKind::kEditList:
    case ControlKind::kDropDown:
      return QAccessible::ComboBox;
    case ControlKind::kOptions:
      return part == control.Widget() ? QAccessible::Client : QAccessible::RadioButton;
    case ControlKind::kTable:
      return QAccessible::Tree;
    case ControlKind::kCheck:
      return QAccessible::CheckBox;
    case ControlKind::kButton:
      return QAccessible::Button;
  }
  return QAccessible::NoRole;
}

void expectHeardByScreenReaders(const ScreenWindow& window) {
  for (const auto& control : window.Controls()) {
    if (!control->Of().Visible) continue;
    std::vector<QWidget*> parts = control->Stops();
    parts.push_back(control->Widget());
    for (QWidget* part : parts) {
      QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(part);
      ASSERT_NE(heard, nullptr);
      EXPECT_EQ(heard->role(), roleOf(*control, part)) << control->Of().Name();
      // Qt gives the text of a list as its name, and the caption by the relation to its label.
      const bool isList = qobject_cast<QComboBox*>(part) != nullptr;
      const QString name = isList ? part->accessibleName() : heard->text(QAccessible::Name);
      EXPECT_FALSE(name.trimmed().isEmpty()) << control->Of().Name();
      // Buttons of options are named as the items, which are the system's words.
      const bool isItem = control->Of().Kind() == ControlKind::kOptions && part != parts.back();
      const bool isText = qobject_cast<const QLabel*>(part) != nullptr;
      EXPECT_TRUE(isItem || isText || !isKey(name)) << name.toStdString();
      EXPECT_FALSE(heard->text(QAccessible::Description).trimmed().isEmpty())
          << control->Of().Name();
    }
  }
}

// From the first field, whose text is selected, to Done.
void expectAllReachedByTab(ScreenWindow& window) {
  std::vector<const BoundControl*> expected;
  for (const auto& control : window.Controls()) {
    if (control->Of().Usable() && control->Stop() != nullptr) expected.push_back(control.get());
  }
  if (!expected.empty() && expected.front()->Line() != nullptr) {
    EXPECT_EQ(expected.front()->Line()->selectedText(), expected.front()->Line()->text());
  }
  std::vector<const BoundControl*> met;
  while (!window.DoneButton()->hasFocus() && met.size() <= expected.size()) {
    const Control* focused = window.Shown().Focused();
    met.push_back(focused == nullptr ? nullptr : window.Find(*focused));
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
  }
  EXPECT_EQ(met, expected);
}

void turnWheel(QWidget& over, int angle) {
  const QPoint center = over.rect().center();
  QWheelEvent event(center, over.mapToGlobal(center), {}, QPoint(0, angle), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&over, &event);
}

void expectValuesKeptUnderTheWheel(ScreenWindow& window) {
  const auto values = [&] {
    std::vector<std::string> texts;
    for (const Control* control : window.Shown().Controls()) texts.push_back(control->Text());
    return texts;
  };
  window.DoneButton()->setFocus();
  const std::vector<std::string> before = values();
  for (const auto& control : window.Controls()) {
    if (control->Stop() != nullptr) turnWheel(*control->Stop(), -120);
    if (control->Line() != nullptr) turnWheel(*control->Line(), -120);
  }
  EXPECT_EQ(values(), before);
  EXPECT_TRUE(window.DoneButton()->hasFocus());
}

// Counts the windows that appear.
class ShownWindows final : public QObject {
 public:
  ShownWindows() { qApp->installEventFilter(this); }
  int count = 0;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const auto* widget = qobject_cast<const QWidget*>(watched);
    if (event->type() == QEvent::Show && widget != nullptr && widget->isWindow()) ++count;
    return false;
  }
};

TEST_F(Windows, HoldNameAndReachEachControlAndAppearOnce) {
  const ShownWindows windows;
  MakeCatalogProject(*session_.store);
  const std::size_t screens = visitAll([](ScreenWindow& window) {
    expectEachControlInOneWidget(window);
    expectHeardByScreenReaders(window);
    expectAllReachedByTab(window);
    expectValuesKeptUnderTheWheel(window);
  });
  EXPECT_EQ(screens, 41U);
  EXPECT_EQ(windows.count, 41) << "no part is a window before it is laid out";
}

TEST_F(Windows, TurnAValueByTheWheelInTheFieldWithTheFocus) {
  at("frmVoltBlock", [](ScreenWindow& window) {
    const BoundControl* count = window.Find(*window.Shown().Find("BlockCount"));
    count->Stop()->setFocus();
    ASSERT_EQ(count->Of().Text(), "1");
    turnWheel(*count->Stop(), 120);
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

TEST_F(Windows, PutTheFocusOnTheFieldAtFault) {
  struct Case {
    const char* screen;
    std::vector<std::pair<const char*, std::string>> values;  // of controls
    const char* atFault;
  };
  const Case cases[] = {
      {"frmLevel", {{"NumDims", "Two Dimensions"}}, "LevelMeas"},
      {"frmLevel", {}, "LevelVarOne"},
      {"frmHistogram", {{"Bins", "1"}}, "Bins"},
      {"frmHistogram", {{"Bins", "4"}, {"LowerLimit", "9"}}, "UpperLimit"},
      {"frmRainHisto", {{"AmpBins", "1"}, {"MeanBins", "3"}}, "AmpBins"},
      {"frmTrigTable", {}, "StopMeasVar1"},
      {"frmExcite", {{"Include1", "on"}, {"DynamicStatic1", "Dynamic"}}, "Excite1MeasVar1"},
  };
  for (const Case& row : cases) {
    SCOPED_TRACE(row.screen);
    at(row.screen, [&](ScreenWindow& window) {
      for (const auto& [name, value] : row.values) {
        Control& control = *window.Shown().Find(name);
        window.Shown().MoveFocus(&control);
        if (auto* choice = dynamic_cast<Choice*>(&control)) {
          int at = 0;
          while (choice->Items[static_cast<std::size_t>(at)].Text != value) ++at;
          choice->ClickAt(at);
        } else if (auto* box = dynamic_cast<CheckBox*>(&control)) {
          box->Check(value == "on");
        } else {
          EXPECT_TRUE(dynamic_cast<TextField&>(control).Edit(value));
        }
      }
      QTest::mouseClick(window.DoneButton(), Qt::LeftButton);
      EXPECT_EQ(window.Shown().Result(), ModalResult::kNone);
      const BoundControl* fault = window.Find(*window.Shown().Find(row.atFault));
      EXPECT_EQ(window.Shown().Focused(), &fault->Of());
      EXPECT_EQ(window.focusWidget(), fault->Stop());
    });
  }
}

// ---- Tables -------------------------------------------------------------------------------------

TEST_F(Windows, PasteCellsOfASpreadsheetAndMoveByTheArrows) {
  at("frmFldName", [&](ScreenWindow& window) {
    const auto cell = [&](const char* name) { return window.Find(*window.Shown().Find(name)); };
    const auto paste = [&](const char* into, const QString& text) {
      cell(into)->Stop()->setFocus(Qt::TabFocusReason);
      QApplication::clipboard()->setText(text);
      session_.forms.StartAction();
      QTest::keyClick(cell(into)->Stop(), Qt::Key_V, Qt::ControlModifier);
      return window.findChild<QLabel*>("Help")->text().toStdString();
    };
    EXPECT_EQ(paste("AliasName1", "Oil\tDeg_C\t2\r\nWater\tDeg_F\t3\r\n"), "6 cells pasted.");
    EXPECT_FALSE(session_.forms.Beeped());
    EXPECT_EQ(cell("AliasName2")->Of().Text(), "Water");
    EXPECT_EQ(cell("AliasUnits1")->Of().Text(), "Deg_C");
    EXPECT_EQ(cell("AliasMult2")->Of().Text(), "3");
    EXPECT_TRUE(cell("AliasMult2")->Stop()->hasFocus());

    EXPECT_EQ(paste("AliasMult1", "5\nx\n"), "MULT, row 2: \"x\" is refused. 1 cell pasted.");
    EXPECT_TRUE(session_.forms.Beeped());
    EXPECT_EQ(cell("AliasMult1")->Of().Text(), "5");
    EXPECT_EQ(cell("AliasMult2")->Of().Text(), "3");
    EXPECT_TRUE(cell("AliasMult2")->Stop()->hasFocus());

    EXPECT_EQ(paste("AliasMult2", "6\n7\n"), "There is no cell for \"7\". 1 cell pasted.");
    EXPECT_EQ(paste("AliasOffset2", "-"), "");  // a single text is typed
    EXPECT_EQ(cell("AliasOffset2")->Of().Text(), "-");
    EXPECT_EQ(paste("AliasOffset2", "4\r\n"), "");
    EXPECT_EQ(cell("AliasOffset2")->Of().Text(), "-4");
    testing::ExpectShown(window);

    cell("AliasMult1")->Stop()->setFocus(Qt::TabFocusReason);
    for (const auto& [key, reached] : {std::pair(Qt::Key_Down, "AliasMult2"),
                                       std::pair(Qt::Key_Down, "AliasMult2"),  // the last row
                                       std::pair(Qt::Key_Up, "AliasMult1")}) {
      QTest::keyClick(window.focusWidget(), key);
      EXPECT_TRUE(cell(reached)->Stop()->hasFocus());
    }
  });
}

TEST_F(Windows, BindTheRowsOutOfSightAfterTheFirstPaint) {
  MakeCatalogProject(*session_.store);
  session_.store->TempBlock[1].Reps = 100;
  int seen = 0;
  VisitScreens(session_.control, [&](Screen& screen) {
    if (screen.Name() != "frmFldName" || screen.Find("AliasName100") == nullptr) return;
    ++seen;
    ScreenWindow window(screen, session_.windows, nullptr);
    window.show();
    EXPECT_LT(window.Controls().size(), screen.Controls().size() / 2);
    // The Tab key finds the next row however early it comes.
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    EXPECT_TRUE(window.IsComplete());
    ASSERT_EQ(window.Controls().size(), screen.Controls().size());
    QApplication::processEvents();
    testing::ExpectShown(window);
    const auto placeOf = [&](int row) {
      return window.Find(*screen.Find("AliasName" + std::to_string(row)))->Widget()->geometry();
    };
    for (int row = 2; row <= 100; ++row) {
      EXPECT_EQ(placeOf(row).left(), placeOf(1).left()) << row;
      EXPECT_GT(placeOf(row).top(), placeOf(row - 1).bottom()) << row;
    }
  });
  EXPECT_GT(seen, 0);
}

// ---- Focus --------------------------------------------------------------------------------------

// A screen over another one.
class TwoScreens : public desktop::ScreenWindows {
 public:
  using ScreenWindows::ScreenWindows;
  bool nested = false;

 protected:
  void run(ScreenWindow& window) override {
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    if (window.Shown().Name() == "frmVoltBlock") {
      below_ = &window;
      QWidget* button = window.Find(*window.Shown().Find("Block1"))->Stop();
      button->setFocus(Qt::TabFocusReason);
      QTest::keyClick(button, Qt::Key_Space);
      EXPECT_TRUE(window.DoneButton()->isEnabled());
      EXPECT_TRUE(QTest::qWaitFor([&] { return button->hasFocus(); }));
    } else {
      nested = true;
      EXPECT_TRUE(below_->isVisible());
      EXPECT_FALSE(below_->DoneButton()->isEnabled());
      below_->reject();
      EXPECT_EQ(below_->Shown().Result(), ModalResult::kNone);
    }
    QTest::keyClick(window.focusWidget(), Qt::Key_Escape);
    EXPECT_EQ(window.Shown().Result(), ModalResult::kCancel);
  }

 private:
  ScreenWindow* below_ = nullptr;
};

TEST_F(Windows, EditOnlyTheTopOneOfTwo) {
  MakeCatalogProject(*session_.store);
  TwoScreens host(session_.windows, nullptr);
  ConnectSetupScreens(session_.control, host);
  session_.control.Screens()[kVoltageButton]();
  EXPECT_TRUE(host.nested);
  EXPECT_EQ(host.Top(), nullptr);
}

// ---- What a control shows -----------------------------------------------------------------------

TEST_F(Windows, ShowAllOfTheGroupsThatAppearLater) {
  session_.OpenNew();
  const auto look = [](ScreenWindow& window) {
    const auto* scroll = window.findChild<QScrollArea*>();
    for (int n = 1; n <= 5; ++n) {
      QWidget* box =
          window.Find(*window.Shown().Find("MonitorPower" + std::to_string(n)))->Widget();
      QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(8, box->height() / 2));
    }
    EXPECT_TRUE(window.Find(*window.Shown().Find("PowerOffCode"))->Widget()->isVisible());
    QApplication::processEvents();
    EXPECT_LE(scroll->widget()->width(), scroll->viewport()->width());
    EXPECT_LE(window.width(), desktop::RoomFor(window).width());
  };
  EXPECT_EQ(visitAll(look, "frmConfig"), 1U);
}

TEST_F(Windows, HideAndDisableTheItemsOfAListAndSayWhyAControlIs) {
  at("frmVoltSetup", [](ScreenWindow& window) {
    EXPECT_EQ(window.Find(*window.Shown().Find("StartVoltChan"))->Widget()->toolTip(),
              "Channels are selected automatically (Configuration).");
    auto& range = dynamic_cast<Choice&>(*window.Shown().Find("Range"));
    auto* box = qobject_cast<QComboBox*>(window.Find(range)->Widget());
    range.Items[1].Visible = false;
    range.Items[2].Enabled = false;
    range.Items[3].ToolTip = "tip";
    window.DoneButton()->setFocus();
    window.Find(range)->Read();
    QTest::keyClick(box, Qt::Key_F4);
    EXPECT_EQ(box->findText(QString::fromStdString(range.Items[1].Text)), -1);
    const int row = box->findText(QString::fromStdString(range.Items[2].Text));
    EXPECT_FALSE(box->model()->flags(box->model()->index(row, 0)).testFlag(Qt::ItemIsEnabled));
    EXPECT_EQ(box->itemData(row + 1, Qt::ToolTipRole), "tip");
    EXPECT_EQ(box->currentText().toStdString(), range.Text());
    box->hidePopup();
  });
}

TEST_F(Windows, FillAListOnceAndDisableRowsOfATable) {
  at("frmTrigTable", [](ScreenWindow& window) {
    auto& value = dynamic_cast<ListField&>(*window.Shown().Find("StartTrigValue1"));
    auto* box = qobject_cast<QComboBox*>(window.Find(value)->Widget());
    value.Enabled = true;
    value.Items = {"True", "False"};
    window.Find(value)->Read();
    for (int time = 0; time < 2; ++time) {
      QTest::keyClick(box, Qt::Key_F4);
      EXPECT_EQ(box->count(), 2);
      box->hidePopup();
    }
  });
  at("frmCalculated", [](ScreenWindow& window) {
    const BoundControl* formulas = window.Find(*window.Shown().Find("Formulas"));
    auto& choice = dynamic_cast<Choice&>(formulas->Of());
    choice.SetItems({"A | Flag(1) | V", "B | Flag(2) | V"});
    choice.Items[1].Enabled = false;
    window.DoneButton()->setFocus();
    window.Find(choice)->Read();
    formulas->Stop()->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(choice.Index(), -1) << "the focus alone picks nothing";
    const auto* list = qobject_cast<QTreeWidget*>(formulas->Widget());
    EXPECT_FALSE(list->topLevelItem(0)->isDisabled());
    EXPECT_TRUE(list->topLevelItem(1)->isDisabled());
    EXPECT_EQ(list->topLevelItem(1)->text(1), "Flag(2)");
  });
}

// Flashing follows the desktop's wish for motion.
class Motion final : public QProxyStyle {
 public:
  explicit Motion(bool moves) : moves_(moves) {}
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* result) const override {
    if (hint == SH_Widget_Animation_Duration) return moves_ ? 200 : 0;
    return QProxyStyle::styleHint(hint, option, widget, result);
  }

 private:
  bool moves_;
};

TEST_F(Windows, FlashUnlessTheDesktopAsksForNoMotion) {
  for (const bool moves : {true, false}) {
    QApplication::setStyle(new Motion(moves));
    at("frmOutInt", [&](ScreenWindow& window) {
      auto* timer = window.findChild<QTimer*>("Flashing");
      ASSERT_NE(timer, nullptr);
      EXPECT_EQ(timer->isActive(), moves);
      EXPECT_EQ(timer->interval(), 500);
      const BoundControl* shown = window.Find(*window.Shown().Find("PerSec"));
      dynamic_cast<Label&>(shown->Of()).Flashes = true;
      if (!moves) return;
      EXPECT_TRUE(
          QTest::qWaitFor([&] { return shown->Widget()->foregroundRole() == QPalette::Window; }));
    });
  }
  QApplication::setStyle("Fusion");
  const int usual = QApplication::cursorFlashTime();
  QApplication::setCursorFlashTime(0);  // nothing may blink
  at("frmOutInt",
     [](ScreenWindow& window) { EXPECT_FALSE(window.findChild<QTimer*>("Flashing")->isActive()); });
  QApplication::setCursorFlashTime(usual);
}

TEST_F(Windows, DrawTheInputsInTheColoursOfTheirBlocks) {
  at("frmLogGraph", [](ScreenWindow& window) {
    const auto colorOf = [&](const char* name) {
      QWidget* tile = window.Find(*window.Shown().Find(name))->Widget();
      return tile->grab().toImage().pixelColor(3, 3);
    };
    const QPalette palette = window.palette();
    ASSERT_EQ(window.Shown().Find("SE1")->Text(), "TBlk1(1)");
    EXPECT_EQ(colorOf("SE1"), desktop::TileColor('T', palette));
    ASSERT_EQ(window.Shown().Find("SE40")->Text(), "TK40M 1");
    EXPECT_EQ(colorOf("SE40"), desktop::TileColor('M', palette));
    ASSERT_EQ(window.Shown().Find("SE30")->Text(), "free");
    EXPECT_NE(colorOf("SE30"), desktop::TileColor('M', palette));
    const auto text = [](const char* use) {
      const desktop::TileText lines = desktop::TileTextOf(use);
      return (lines.block + '/' + lines.sensor).toStdString();
    };
    EXPECT_EQ(text("TBlk12(100)"), "T12/100");
    EXPECT_EQ(text("TK40M 2"), "M2/");
    EXPECT_EQ(text("VBlk1(3), BBlk1(1)"), "V+/2×");
  });
}

// ---- Message boxes ------------------------------------------------------------------------------

struct BoxCase {
  platform::Buttons buttons;
  std::vector<std::pair<std::string, platform::Answer>> answers;  // by caption
};

const BoxCase kBoxes[] = {
    {platform::Buttons::kOk, {{"OK", Answer::kOk}}},
    {platform::Buttons::kOkCancel, {{"OK", Answer::kOk}, {"Cancel", Answer::kCancel}}},
    {platform::Buttons::kYesNo, {{"&Yes", Answer::kYes}, {"&No", Answer::kNo}}},
    {platform::Buttons::kYesNoCancel,
     {{"&Yes", Answer::kYes}, {"&No", Answer::kNo}, {"Cancel", Answer::kCancel}}},
    {platform::Buttons::kOverwriteCancel,
     {{"&Overwrite", Answer::kOverwrite}, {"Cancel", Answer::kCancel}}},
};

// The answer that comes of what `act` does at the box.
Answer answerOf(const platform::MessageBox& asked, const std::function<void(QMessageBox&)>& act) {
  desktop::QtForms forms;
  QTimer::singleShot(0, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    ASSERT_NE(box, nullptr);
    act(*box);
  });
  return forms.ShowBox(asked);
}

TEST(Boxes, GiveTheAnswerOfTheirButtons) {
  for (const BoxCase& row : kBoxes) {
    platform::MessageBox asked{.title = "TITLE", .text = "one\r\ntwo", .buttons = row.buttons};
    for (const auto& [caption, answer] : row.answers) {
      EXPECT_EQ(answerOf(asked,
                         [&](QMessageBox& box) {
                           EXPECT_EQ(box.text(), "one\ntwo");
                           EXPECT_EQ(box.buttons().size(), std::ssize(row.answers));
                           for (QAbstractButton* button : box.buttons()) {
                             if (button->text().toStdString() == caption) return button->click();
                           }
                         }),
                answer)
          << caption;
    }
    const auto byKey = [&](Qt::Key key, Answer preselected) {
      asked.preselected = preselected;
      return answerOf(asked, [&](QMessageBox& box) { QTest::keyClick(&box, key); });
    };
    EXPECT_EQ(byKey(Qt::Key_Escape, Answer::kOk), row.answers.back().second);
    EXPECT_EQ(byKey(Qt::Key_Return, Answer::kOk), row.answers.front().second);
    EXPECT_EQ(byKey(Qt::Key_Return, row.answers.back().second), row.answers.back().second);
  }
}

TEST(FileDialogs, ShowThePatternsOfTheirFilter) {
  EXPECT_EQ(desktop::FiltersOf("(*.VKG)|*.VKG|(All Files)|*.*"),
            QStringList({"*.VKG (*.VKG *.vkg)", "All Files (*)"}));
}

}  // namespace
}  // namespace ostrand
