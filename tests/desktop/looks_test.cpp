// What is seen of the windows: nothing cut off, nothing on top of another, on a small laptop and
// with text of twice the size.
#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QStyleOption>

#include "desktop_session.h"
#include "support/project_random.h"
#include "support/temp_folder.h"
#include "terminal_tile.h"
#include "texts.h"

namespace ostrand {
namespace {

using desktop::ScreenWindow;

struct Look {
  const char* project;  // of the examples, "new" or "largest"
  int scale;            // of the text
};

class Looks : public testing::WindowsTest, public ::testing::WithParamInterface<Look> {
 protected:
  Looks() {
    QFont font = usual_;
    font.setPointSizeF(usual_.pointSizeF() * GetParam().scale);
    QApplication::setFont(font);
    const std::string project = GetParam().project;
    if (project == "largest") {
      testing::MakeLargestProject(*session_.store);
    } else if (project != "new") {
      ORVUS_GENFILE::ReadProjectText(
          *session_.store, testing::ReadDisk(OSTRAND_SOURCE_DIR "/examples/" + project + ".VKG"));
    }
  }
  ~Looks() override { QApplication::setFont(usual_); }

 private:
  QFont usual_ = QApplication::font();
};

int widthOfLine(const QWidget& widget, const QString& text) {
  int width = 0;
  for (const QString& line : text.split('\n')) {
    const QSize size = widget.fontMetrics().size(Qt::TextShowMnemonic, line);
    width = std::max(width, size.width());
  }
  return width;
}

// The text of the widget that does not fit into it; empty if all fits.
QString cutText(const QWidget& widget) {
  if (dynamic_cast<const desktop::TerminalTile*>(&widget) != nullptr) {
    const bool cut =
        widget.width() < widget.sizeHint().width() || widget.height() < widget.sizeHint().height();
    return cut ? QStringLiteral("a tile") : QString();
  }
  if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
    const QString text = label->text();
    const int height =
        label->wordWrap() ? label->heightForWidth(label->width()) : label->sizeHint().height();
    const bool wide = !label->wordWrap() && widthOfLine(*label, text) > label->width();
    return wide || height > label->height() ? text : QString();
  }
  if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
    const QSize wanted = button->sizeHint();
    const bool cut = wanted.width() > button->width() || wanted.height() > button->height();
    return cut ? button->text() + '.' : QString();
  }
  if (const auto* box = qobject_cast<const QComboBox*>(&widget)) {
    QStyleOptionComboBox option;
    option.initFrom(box);
    option.editable = box->isEditable();
    const QRect text = box->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                    QStyle::SC_ComboBoxEditField, box);
    return widthOfLine(*box, box->currentText()) > text.width() ? box->currentText() : QString();
  }
  if (const auto* line = qobject_cast<const QLineEdit*>(&widget)) {
    const bool cut = line->height() < line->fontMetrics().height();
    return cut ? line->text() + '.' : QString();
  }
  if (const auto* group = qobject_cast<const QGroupBox*>(&widget)) {
    return widthOfLine(*group, group->title()) > group->width() ? group->title() : QString();
  }
  return {};
}

void expectNothingCovered(const ScreenWindow& window) {
  const QWidget* page = window.findChild<QScrollArea*>()->widget();
  std::vector<std::pair<std::string, QRect>> places;
  for (const auto& control : window.Controls()) {
    const QWidget* widget = control->Widget();
    if (!widget->isVisible()) continue;
    const QRect place(widget->mapTo(page, QPoint(0, 0)), widget->size());
    EXPECT_TRUE(page->rect().contains(place)) << control->Of().Name();
    for (const auto& [name, other] : places) {
      if (place.intersects(other)) ADD_FAILURE() << control->Of().Name() << " and " << name;
    }
    places.emplace_back(control->Of().Name(), place);
  }
}

// A text has its caption beside it only if it does not begin with the same words; the caption of no
// text is dimmed.
void expectCaptionsThatSayMore(const ScreenWindow& window) {
  for (const auto& control : window.Controls()) {
    const Control& of = control->Of();
    const auto* text = qobject_cast<const QLabel*>(control->Widget());
    if (of.Kind() != ControlKind::kLabel || of.Row > 0 || !text->isVisible()) continue;
    const QString caption = QString::fromStdString(of.Caption);
    for (const QLabel* other : text->parentWidget()->findChildren<QLabel*>()) {
      if (other == text || other->text() != caption) continue;
      EXPECT_FALSE(text->text().startsWith(caption, Qt::CaseInsensitive)) << of.Caption;
      EXPECT_TRUE(!text->text().isEmpty() || !other->isEnabled()) << of.Caption;
    }
  }
}

int line(const QWidget& widget) { return widget.fontMetrics().lineSpacing(); }

TEST_P(Looks, NothingIsCutOffOrCovered) {
  const std::size_t screens = visitAll([](const ScreenWindow& window) {
    EXPECT_LE(window.frameGeometry().width(), 1024);
    EXPECT_LE(window.frameGeometry().height(), 768);
    for (const QPushButton* button : {window.DoneButton(), window.CancelButton()}) {
      EXPECT_TRUE(
          window.rect().contains(QRect(button->mapTo(&window, QPoint(0, 0)), button->size())));
    }
    const auto* scroll = window.findChild<QScrollArea*>();
    EXPECT_LE(scroll->widget()->width(), scroll->viewport()->width()) << "cut off at the side";
    const int seen = scroll->viewport()->height();
    const int over = scroll->widget()->height() - seen;
    EXPECT_LE(seen - scroll->widget()->sizeHint().height(), line(window))
        << window.Shown().Name() << " has free space at its end";
    if (GetParam().scale == 1) {
      EXPECT_TRUE(over <= 0 || over > seen / 8)
          << window.Shown().Name() << " scrolls by only " << over;
    }
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
      if (!widget->isVisible()) continue;
      EXPECT_EQ(cutText(*widget).toStdString(), "")
          << widget->metaObject()->className() << ' ' << widget->width() << 'x' << widget->height()
          << ' ' << widget->sizeHint().width() << 'x' << widget->sizeHint().height();
    }
    expectNothingCovered(window);
    expectCaptionsThatSayMore(window);
  });
  EXPECT_GE(screens, 15U);
}

INSTANTIATE_TEST_SUITE_P(All, Looks,
                         ::testing::Values(Look{"new", 1}, Look{"vehicle-test", 1},
                                           Look{"largest", 1}, Look{"new", 2},
                                           Look{"vehicle-test", 2}, Look{"largest", 2}),
                         [](const auto& look) {
                           std::string name = look.param.project;
                           name = name.substr(0, name.find('-'));
                           return name + (look.param.scale == 1 ? "" : "AtTwiceTheSize");
                         });

}  // namespace
}  // namespace ostrand
