#include "widget_user.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "controls/choice.h"
#include "controls/list_field.h"
#include "screens/setup_screens.h"
#include "text/number.h"
#include "text/strings.h"
#include "texts.h"

namespace ostrand::testing {
namespace {

using desktop::BoundControl;
using desktop::FromProject;
using desktop::ScreenWindow;

// A click at the left, where a check box has its box.
void click(QWidget& widget) {
  QTest::mouseClick(&widget, Qt::LeftButton, {}, QPoint(8, widget.height() / 2));
}

// `row` is found when the list is filled.
void pickInPopup(QComboBox& box, const std::function<int()>& row) {
  QTest::keyClick(&box, Qt::Key_F4);
  QAbstractItemView* list = box.view();
  list->setCurrentIndex(box.model()->index(row(), 0));
  QTest::keyClick(list, Qt::Key_Return);
}

// The item of that text that can be picked; in a table also by the number of its row.
int indexOf(const Choice& choice, std::string_view item) {
  const auto canBe = [&](std::size_t at) {
    return choice.Items[at].Enabled && choice.Items[at].Visible;
  };
  for (std::size_t at = 0; at < choice.Items.size(); ++at) {
    if (canBe(at) && SameText(Trim(choice.Items[at].Text), Trim(item))) return static_cast<int>(at);
  }
  if (choice.Kind() != ControlKind::kTable) return -1;
  for (std::size_t at = 0; at < choice.Items.size(); ++at) {
    const std::string_view name = Before(choice.Items[at].Text, " | ");
    if (canBe(at) && SameText(Trim(name), Trim(item))) return static_cast<int>(at);
  }
  return static_cast<int>(ToInt16(item).value_or(0)) - 1;
}

}  // namespace

WidgetUser::WidgetUser(Ostrand& control, ScreenScript& script, desktop::QtForms& forms)
    : ScreenWindows(forms, nullptr), script_(script) {
  script.By(*this);
  ConnectSetupScreens(control, *this);
}

void WidgetUser::run(ScreenWindow& window) {
  QTimer::singleShot(0, &window, [&] {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    ASSERT_TRUE(QTest::qWaitFor([&] { return window.IsComplete(); }));
    script_.ShowModal(window.Shown());
    EXPECT_NE(window.Shown().Result(), ModalResult::kNone);
    if (window.isVisible()) window.done(QDialog::Rejected);  // the script failed
  });
  ScreenWindows::run(window);
}

BoundControl& WidgetUser::bound(const Control& control) const {
  QApplication::processEvents();  // what has just come is laid out
  ExpectShown(*Top());
  return *Top()->Find(control);
}

bool WidgetUser::MoveFocus(Screen& screen, Control* to) {
  // Without a desktop nobody else returns to the window under one that was closed.
  Top()->activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(Top()));
  QWidget* stop = to == nullptr ? Top()->DoneButton() : bound(*to).Stop();
  if (stop == nullptr) return screen.MoveFocus(to);  // only shown
  stop->setFocus(Qt::TabFocusReason);
  return screen.Focused() == to;
}

bool WidgetUser::Type(Control& control, std::string_view text) {
  const BoundControl& at = bound(control);
  if (at.Line() == nullptr) return false;
  QTest::keyClick(at.Stop(), Qt::Key_A, Qt::ControlModifier);
  if (text.empty()) QTest::keyClick(at.Stop(), Qt::Key_Delete);
  for (const QChar letter : FromProject(text)) {
    QTest::sendKeyEvent(QTest::Click, at.Stop(), Qt::Key_unknown, QString(letter), {});
  }
  return true;
}

void WidgetUser::Enter(TextField& field) { QTest::keyClick(bound(field).Stop(), Qt::Key_Return); }

// Where nothing was edited, Escape is Cancel.
void WidgetUser::Escape(TextField& field) {
  if (field.IsEdited()) QTest::keyClick(bound(field).Stop(), Qt::Key_Escape);
}

bool WidgetUser::Pick(Control& control, std::string_view item) {
  const BoundControl& at = bound(control);
  if (const auto* list = dynamic_cast<const ListField*>(&control)) {
    for (std::size_t row = 0; row < list->Items.size(); ++row) {
      if (!SameText(list->Items[row], Trim(item))) continue;
      pickInPopup(dynamic_cast<QComboBox&>(*at.Widget()), [&] { return static_cast<int>(row); });
      return true;
    }
    return false;
  }
  const auto* choice = dynamic_cast<const Choice*>(&control);
  const int index = choice == nullptr ? -1 : indexOf(*choice, item);
  if (index < 0) return false;
  if (auto* box = qobject_cast<QComboBox*>(at.Widget())) {
    pickInPopup(*box, [&] { return box->findData(index); });
  } else if (auto* list = qobject_cast<QTreeWidget*>(at.Widget())) {
    QTreeWidgetItem* row = list->topLevelItem(index);
    list->scrollToItem(row);
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(row).center());
  } else {
    click(*at.Stops()[static_cast<std::size_t>(index)]);
  }
  return true;
}

bool WidgetUser::Check(Control& control, bool on) {
  auto* box = qobject_cast<QCheckBox*>(bound(control).Widget());
  if (box == nullptr) return false;
  if (box->isChecked() != on) click(*box);
  return true;
}

bool WidgetUser::Spin(Control& control, bool up) {
  const auto* field = dynamic_cast<const TextField*>(&control);
  if (field == nullptr || !field->OnSpin) return false;
  QTest::keyClick(bound(control).Stop(), up ? Qt::Key_Up : Qt::Key_Down);
  return true;
}

bool WidgetUser::Press(Control& control) {
  auto* button = qobject_cast<QPushButton*>(bound(control).Widget());
  if (button != nullptr) click(*button);
  return button != nullptr;
}

void WidgetUser::Done(Screen&) { click(*Top()->DoneButton()); }

void WidgetUser::Cancel(Screen&) { click(*Top()->CancelButton()); }

void ExpectShown(const ScreenWindow& window) {
  for (const auto& bound : window.Controls()) {
    const Control& control = bound->Of();
    const std::string name = window.Shown().Name() + "." + control.Name();
    QWidget* widget = bound->Widget();
    EXPECT_EQ(widget->isHidden(), !control.Visible) << name;
    EXPECT_EQ(widget->isEnabled(), control.Enabled) << name;
    const QString text = FromProject(control.Text());
    if (bound->Line() != nullptr) {
      EXPECT_EQ(bound->Line()->text(), text) << name;
    } else if (const auto* box = qobject_cast<QComboBox*>(widget)) {
      EXPECT_EQ(box->currentIndex() < 0 ? box->placeholderText() : box->currentText(), text)
          << name;
    } else if (const auto* check = qobject_cast<QCheckBox*>(widget)) {
      EXPECT_EQ(check->isChecked(), control.Text() == "on") << name;
    } else if (qobject_cast<QLabel*>(widget) != nullptr && control.Kind() != ControlKind::kLamp) {
      EXPECT_EQ(qobject_cast<QLabel*>(widget)->text(), QString(text).replace("&&", "&")) << name;
    } else if (control.Kind() == ControlKind::kOptions) {
      const int index = dynamic_cast<const Choice&>(control).Index();
      for (std::size_t at = 0; at < bound->Stops().size(); ++at) {
        const auto* button = qobject_cast<QAbstractButton*>(bound->Stops()[at]);
        EXPECT_EQ(button->isChecked(), static_cast<int>(at) == index) << name;
      }
    }
  }
}

}  // namespace ostrand::testing
