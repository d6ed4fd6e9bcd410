#include "screen_window.h"

#include <QApplication>
#include <QClipboard>
#include <QEventLoop>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

#include "controls/text_field.h"
#include "paste.h"
#include "qt_forms.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

constexpr int kFlashInterval = 500;  // milliseconds

// Of the frame of a window and the edge of the desktop, in lines of text.
constexpr int kFrameLines = 3;

// A row of a table is higher than this number of lines of text with the space around it.
constexpr int kRowLines = 2;
constexpr std::size_t kRowsAtATime = 8;

// A page that is too high for the desktop by at most this part of it is made lower.
constexpr int kSlightly = 8;

// Halves the space above and below everything on a page.
void tighten(const QWidget& page) {
  const QList<QLayout*> layouts = page.findChildren<QLayout*>();
  for (QLayout* layout : layouts) {
    const QMargins margins = layout->contentsMargins();
    layout->setContentsMargins(margins.left(), margins.top() / 2, margins.right(),
                               margins.bottom() / 2);
    if (auto* grid = qobject_cast<QGridLayout*>(layout)) {
      grid->setVerticalSpacing(grid->verticalSpacing() / 2);
    } else if (qobject_cast<QVBoxLayout*>(layout) != nullptr) {
      layout->setSpacing(layout->spacing() / 2);
    }
  }
  // Inner ones first, so that the page knows its new size now.
  std::for_each(layouts.rbegin(), layouts.rend(), [](QLayout* layout) {
    layout->invalidate();
    layout->parentWidget()->updateGeometry();
  });
}

bool isReachable(const QWidget* widget) {
  return widget != nullptr && widget->isEnabled() && !widget->isHidden();
}

// Flashing labels stay lit where the desktop asks for no motion: by its style, or by a cursor of
// texts that does not blink, which is all that some desktops report.
bool mayFlash(const QWidget& window) {
  return QApplication::cursorFlashTime() > 0 &&
         window.style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, &window) > 0;
}

}  // namespace

QSize RoomFor(const QWidget& window) {
  const QSize all = window.screen()->availableSize();
  const int line = window.fontMetrics().lineSpacing();
  return {all.width() - line, all.height() - kFrameLines * line};
}

ScreenWindow::ScreenWindow(Screen& screen, QtForms& forms, QWidget* parent)
    : QDialog(parent),
      screen_(screen),
      forms_(forms),
      scroll_(new QScrollArea(this)),
      help_(new QLabel(this)),
      done_(new QPushButton(QStringLiteral("&Done"), this)),
      cancel_(new QPushButton(QStringLiteral("Cancel"), this)),
      flashing_(this) {
  setWindowTitle(PlainCaption(screen.Caption));
  layOut();
  scroll_->setWidgetResizable(true);
  scroll_->setFrameShape(QFrame::NoFrame);
  scroll_->setFocusPolicy(Qt::NoFocus);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(help_, 1);
  buttons->addWidget(done_);
  buttons->addWidget(cancel_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(scroll_, 1);
  layout->addLayout(buttons);

  buildButtons();
  help_->setObjectName(QStringLiteral("Help"));
  help_->setTextFormat(Qt::PlainText);
  help_->setWordWrap(true);
  forms_.AddHelpLine(help_);
  watchStops();
  fitToScreen();

  flashing_.setObjectName(QStringLiteral("Flashing"));
  flashing_.setInterval(kFlashInterval);
  if (mayFlash(*this)) {
    QObject::connect(&flashing_, &QTimer::timeout, this, [this] {
      lit_ = !lit_;
      for (const auto& control : controls_) control->Flash(lit_);
    });
    flashing_.start();
  }
}

ScreenWindow::~ScreenWindow() {
  forms_.RemoveHelpLine(help_);
  acting_ = true;  // widgets that are deleted report changes
  delete scroll_->takeWidget();
}

// Binds all controls but the rows of a long table that are out of sight at first.
void ScreenWindow::layOut() {
  const QSize room = RoomFor(*this);
  const int lastRow = room.height() / (kRowLines * fontMetrics().lineSpacing());
  const std::vector<Control*>& all = screen_.Controls();
  const auto inLastTable = std::find_if(all.rbegin(), all.rend(), [](const Control* control) {
    return control->Row > 0 && control->Kind() != ControlKind::kPicture;
  });
  std::map<int, std::vector<Control*>> later;
  std::vector<BoundControl*> first;
  for (Control* control : all) {
    if (control->Row > lastRow && control->Kind() != ControlKind::kPicture &&
        control->Group == (*inLastTable)->Group) {
      later[control->Row].push_back(control);
      continue;
    }
    controls_.push_back(Bind(*control, *this));
    bound_[control] = controls_.back().get();
    first.push_back(controls_.back().get());
  }
  for (auto& [row, cells] : later) waiting_.push_back(std::move(cells));
  const int line = fontMetrics().lineSpacing();
  const int beside = 5 * line;  // margins and scroll bar
  const int below = 4 * line;   // the buttons and the help line
  Laid laid = LayOut(first, room.width() - beside, room.height() - below);
  parts_ = std::move(laid.parts);
  addRow_ = std::move(laid.addRow);
  scroll_->setWidget(laid.page);
  QObject::connect(&adding_, &QTimer::timeout, this, [this] { addRows(kRowsAtATime); });
}

void ScreenWindow::addRows(std::size_t count) {
  if (waiting_.empty()) return;
  reading_ = true;
  for (; count > 0 && !waiting_.empty(); --count) {
    std::vector<BoundControl*> cells;
    for (Control* control : waiting_.front()) {
      controls_.push_back(Bind(*control, *this));
      bound_[control] = controls_.back().get();
      cells.push_back(controls_.back().get());
      cells.back()->InTable();
      cells.back()->Widget()->setParent(scroll_->widget());
      cells.back()->Read();
    }
    waiting_.pop_front();
    addRow_(cells);
  }
  reading_ = false;
  if (!waiting_.empty()) return;
  adding_.stop();
  std::unordered_map<const Control*, std::size_t> places;
  for (const Control* control : screen_.Controls()) places.emplace(control, places.size());
  std::sort(controls_.begin(), controls_.end(), [&](const auto& one, const auto& other) {
    return places[&one->Of()] < places[&other->Of()];
  });
  watchStops();
}

void ScreenWindow::buildButtons() {
  for (QPushButton* button : {done_, cancel_}) {
    button->setAutoDefault(false);
    button->installEventFilter(this);
  }
  // A click on Cancel takes nothing that was typed.
  cancel_->setFocusPolicy(Qt::TabFocus);
  QObject::connect(done_, &QPushButton::clicked, this, [this] { end(&Screen::Done); });
  QObject::connect(cancel_, &QPushButton::clicked, this, [this] { end(&Screen::Cancel); });
}

// The Tab key moves through the controls in their order.
void ScreenWindow::watchStops() {
  stops_.clear();
  QWidget* before = nullptr;
  const auto follow = [&](QWidget* stop) {
    if (before != nullptr) setTabOrder(before, stop);
    before = stop;
  };
  for (const auto& control : controls_) {
    for (QWidget* stop : control->Stops()) {
      stops_[stop] = control.get();
      stop->removeEventFilter(this);
      stop->installEventFilter(this);
      follow(stop);
    }
  }
  follow(done_);
  follow(cancel_);
}

// The size of the window that shows the whole page, with a scroll bar at its side.
QSize ScreenWindow::sizeOfAll() const {
  const QSize page = scroll_->widget()->sizeHint().expandedTo(scroll_->widget()->minimumSizeHint());
  const int bar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, scroll_);
  const QMargins margins = layout()->contentsMargins();
  const int below = layout()->spacing() + layout()->itemAt(1)->sizeHint().height();
  return {page.width() + bar + margins.left() + margins.right(),
          page.height() + below + margins.top() + margins.bottom()};
}

// A page that does not fit on the desktop scrolls, unless less space between its rows is enough.
void ScreenWindow::fitToScreen() {
  const QSize room = RoomFor(*this);
  QSize wanted = sizeOfAll();
  const int over = wanted.height() - room.height();
  if (over > 0 && over <= room.height() / kSlightly) {
    tighten(*scroll_->widget());
    wanted = sizeOfAll();
  }
  scroll_->setHorizontalScrollBarPolicy(wanted.width() > room.width() ? Qt::ScrollBarAsNeeded
                                                                      : Qt::ScrollBarAlwaysOff);
  resize(wanted.boundedTo(room));
}

// Makes room for a page that has become higher: by groups that have appeared, or by texts that know
// their width only when they are shown.
void ScreenWindow::heighten() {
  QWidget& page = *scroll_->widget();
  for (const LaidPart& part : parts_) {
    if (part.widget->layout() != nullptr) part.widget->layout()->activate();
  }
  page.layout()->activate();
  const int before = std::exchange(pageHeight_, page.minimumSizeHint().height());
  const int missing = pageHeight_ - scroll_->viewport()->height();
  const int room = RoomFor(*this).height();
  if (pageHeight_ <= before || missing <= 0 || height() >= room) return;
  resize(width(), std::min(height() + missing, room));
}

// Groups that have appeared may be wider than those before.
void ScreenWindow::widen() {
  const int missing = scroll_->widget()->minimumSizeHint().width() - scroll_->viewport()->width();
  if (!opened_ || missing <= 0) return;
  const int room = RoomFor(*this).width();
  if (width() + missing > room) scroll_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
  resize(std::min(width() + missing, std::max(width(), room)), height());
}

BoundControl* ScreenWindow::Find(const Control& control) const {
  const auto at = bound_.find(&control);
  return at == bound_.end() ? nullptr : at->second;
}

// ---- What the user does -------------------------------------------------------------------------

void ScreenWindow::Act(Control& control, const std::function<void()>& action) {
  if (acting_) return;
  acting_ = true;
  help_->clear();
  if (screen_.MoveFocus(&control) && control.Usable()) action();
  acting_ = false;
  afterAction();
}

void ScreenWindow::end(void (Screen::*way)()) {
  if (acting_ || screen_.Result() != ModalResult::kNone) return;
  acting_ = true;
  help_->clear();
  (screen_.*way)();
  acting_ = false;
  afterAction();
}

void ScreenWindow::Cover(bool covered) {
  covered_ = covered;
  for (QWidget* part :
       {scroll_->widget(), static_cast<QWidget*>(done_), static_cast<QWidget*>(cancel_)}) {
    part->setEnabled(!covered);
  }
}

void ScreenWindow::reject() {
  if (covered_) return;
  if (screen_.Result() == ModalResult::kNone) return end(&Screen::Cancel);
  QDialog::reject();
}

void ScreenWindow::afterAction() {
  if (screen_.Result() != ModalResult::kNone) {
    return done(screen_.Result() == ModalResult::kDone ? Accepted : Rejected);
  }
  read();
  followFocus();
}

void ScreenWindow::read() {
  reading_ = true;
  std::size_t stops = 0;
  for (const auto& control : controls_) {
    control->Read();
    stops += control->Stops().size();
  }
  const bool changed = ShowParts(parts_);
  widen();
  if (opened_ && changed) heighten();
  if (stops != stops_.size()) watchStops();
  reading_ = false;
}

// ---- The focus ----------------------------------------------------------------------------------

void ScreenWindow::focusCame(BoundControl* control) {
  if (acting_ || reading_ || screen_.Result() != ModalResult::kNone) return;
  Control* to = control == nullptr ? nullptr : &control->Of();
  if (to == screen_.Focused()) return;
  acting_ = true;
  screen_.MoveFocus(to);
  acting_ = false;
  afterAction();
}

void ScreenWindow::giveFocus(const BoundControl& control) {
  control.Stop()->setFocus(Qt::TabFocusReason);
  // A window that is not active yet gets the focus later, which selects nothing.
  if (QLineEdit* line = control.Line()) line->selectAll();
}

void ScreenWindow::followFocus() {
  if (Control* focused = screen_.Focused()) {
    const BoundControl* bound = Find(*focused);
    if (bound == nullptr) return;
    const std::vector<QWidget*> stops = bound->Stops();
    if (std::find(stops.begin(), stops.end(), focusWidget()) != stops.end()) return;
    if (isReachable(bound->Stop())) return giveFocus(*bound);
  }
  // A control that was disabled has lost the focus to the next one.
  if (focusWidget() == nullptr) done_->setFocus(Qt::OtherFocusReason);
  const auto at = stops_.find(focusWidget());
  screen_.MoveFocus(at == stops_.end() ? nullptr : &at->second->Of());
}

void ScreenWindow::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (opened_) return;
  opened_ = true;
  heighten();
  if (!waiting_.empty()) adding_.start();
  for (const auto& control : controls_) {
    if (!control->Of().Usable() || !isReachable(control->Stop())) continue;
    giveFocus(*control);
    focusCame(control.get());
    return;
  }
  done_->setFocus(Qt::TabFocusReason);
}

bool ScreenWindow::eventFilter(QObject* watched, QEvent* event) {
  const auto at = stops_.find(watched);
  BoundControl* control = at == stops_.end() ? nullptr : at->second;
  auto* widget = qobject_cast<QWidget*>(watched);
  switch (event->type()) {
    case QEvent::FocusIn: {
      focusCame(control);
      if (control != nullptr) scroll_->ensureWidgetVisible(widget);
      break;
    }
    case QEvent::Wheel:
      if (control == nullptr || widget->hasFocus()) break;
      event->ignore();  // so that the page scrolls
      return true;
    case QEvent::KeyPress: {
      const auto* press = static_cast<QKeyEvent*>(event);
      const int key = press->key();
      if (key == Qt::Key_Tab || key == Qt::Key_Backtab) addRows(waiting_.size());
      if (control != nullptr) {
        control->BeforeKey();
        if (keyPressed(*control, *press)) return true;
        break;
      }
      if (key != Qt::Key_Return && key != Qt::Key_Enter) break;
      qobject_cast<QPushButton*>(widget)->click();
      return true;
    }
    default:
      break;
  }
  return QDialog::eventFilter(watched, event);
}

// Enter takes what was typed, Escape restores the text before; true for a key that is used up.
bool ScreenWindow::keyPressed(BoundControl& control, const QKeyEvent& event) {
  auto* field = dynamic_cast<TextField*>(&control.Of());
  if (field != nullptr && event.matches(QKeySequence::Paste)) return paste(*field);
  const int key = event.key();
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (field != nullptr) {
        Act(*field, [&] { static_cast<void>(field->Leave()); });
        if (screen_.Result() == ModalResult::kNone) control.Line()->selectAll();
      } else if (auto* button = qobject_cast<QPushButton*>(control.Widget())) {
        button->click();
      }
      return true;
    case Qt::Key_Escape:
      if (field == nullptr || !field->IsEdited()) return false;
      Act(*field, [&] { field->Escape(); });
      control.Line()->selectAll();
      return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
      return field != nullptr && !field->OnSpin && moveInColumn(*field, key == Qt::Key_Up ? -1 : 1);
    default:
      return false;
  }
}

bool ScreenWindow::moveInColumn(const Control& from, int rows) {
  if (from.Row == 0 || from.Kind() == ControlKind::kEditList) return false;
  for (const auto& control : controls_) {
    const Control& to = control->Of();
    if (to.Row != from.Row + rows || to.Group != from.Group || to.Caption != from.Caption) continue;
    if (to.Usable() && isReachable(control->Stop())) giveFocus(*control);
    return true;
  }
  return false;
}

// A line goes into the field as if typed, several cells of a spreadsheet into the cells from here.
bool ScreenWindow::paste(TextField& field) {
  const CellBlock cells = CellsOf(QApplication::clipboard()->text());
  if (cells.empty()) return true;
  if (cells.size() == 1 && cells.front().size() == 1) {
    Find(field)->Line()->insert(cells.front().front());
    return true;
  }
  acting_ = true;
  help_->clear();
  const QString report = PasteCells(screen_, field, cells, [this] { return help_->text(); });
  acting_ = false;
  afterAction();
  if (screen_.Focused() != nullptr) giveFocus(*Find(*screen_.Focused()));
  help_->setText(report);
  return true;
}

// ---- The host -----------------------------------------------------------------------------------

void ScreenWindows::ShowModal(Screen& screen) {
  ScreenWindow* below = Top();
  QWidget* parent = below == nullptr ? main_ : below;
  const QPointer<QWidget> before = QApplication::focusWidget();
  ScreenWindow window(screen, forms_, parent);
  open_.push_back(&window);
  if (below != nullptr) {
    below->Cover(true);
  } else if (OnOpen) {
    OnOpen(true);
  }
  forms_.Main(&window);
  forms_.SetPointer(platform::Pointer::kNormal);  // the program waits for the user
  run(window);
  if (screen.Result() == ModalResult::kNone) screen.End(ModalResult::kCancel);  // shut down
  forms_.Main(parent);
  open_.pop_back();
  if (below != nullptr) {
    below->Cover(false);
  } else if (OnOpen) {
    OnOpen(false);
  }
  if (parent != nullptr) parent->activateWindow();
  if (before != nullptr) before->setFocus(Qt::OtherFocusReason);
}

void ScreenWindows::run(ScreenWindow& window) {
  QEventLoop loop;
  QObject::connect(&window, &QDialog::finished, &loop, &QEventLoop::quit);
  window.show();
  loop.exec();
}

}  // namespace ostrand::desktop
