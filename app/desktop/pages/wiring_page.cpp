#include "pages/wiring_page.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QVBoxLayout>
#include <cstdlib>

#include "drawings/wire_looks.h"
#include "project_bytes.h"

namespace ostrand::desktop {
namespace {

constexpr int kExplanationLines = 3;

}  // namespace

// ---- The picture --------------------------------------------------------------------------------

WiringView::WiringView(std::function<void(const TerminalItem&)> open,
                       std::function<void(const TerminalItem*)> point, QWidget* parent)
    : PictureView(nullptr, QStringLiteral("Wiring"), parent),
      open_(std::move(open)),
      point_(std::move(point)),
      picture_(new WiringScene(this)) {
  setScene(picture_);
}

void WiringView::Show(Wiring wiring, const ProjectStore& store) {
  const bool wasMarked = marked_ != nullptr;
  const int strip = wasMarked ? marked_->Strip() : 0;
  const int place = wasMarked ? marked_->Place() : 0;
  marked_ = nullptr;
  picture_->Show(std::move(wiring), store, palette());
  drawn();
  for (TerminalItem* item : picture_->Terminals()) {
    if (!wasMarked || item->Strip() != strip || item->Place() != place) continue;
    marked_ = item;
    item->Marked(true);
  }
}

void WiringView::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
      return go(0, -1);
    case Qt::Key_Down:
      return go(0, 1);
    case Qt::Key_Left:
      return go(-1, 0);
    case Qt::Key_Right:
      return go(1, 0);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (marked_ != nullptr) open_(*marked_);
      return;
    default:
      PictureView::keyPressEvent(event);
  }
}

void WiringView::mouseMoveEvent(QMouseEvent* event) {
  if (event->buttons() == Qt::NoButton) point_(dynamic_cast<TerminalItem*>(itemAt(event->pos())));
  PictureView::mouseMoveEvent(event);
}

void WiringView::clicked(QGraphicsItem* item) {
  auto* terminal = dynamic_cast<TerminalItem*>(item);
  if (terminal == nullptr) return;
  mark(terminal);
  open_(*terminal);
}

// To the nearest terminal in the strip so many strips on, and so many places on.
void WiringView::go(int strips, int places) {
  TerminalItem* nearest = nullptr;
  const int strip = marked_ == nullptr ? 0 : marked_->Strip() + strips;
  const int from = marked_ == nullptr ? 0 : marked_->Place();
  for (TerminalItem* item : picture_->Terminals()) {
    const bool isOnTheWay = (item->Place() - from) * places >= 0;
    if (item->Strip() != strip || item == marked_ || !isOnTheWay) continue;
    const auto distance = [from](const TerminalItem* one) { return std::abs(one->Place() - from); };
    if (nearest == nullptr || distance(item) < distance(nearest)) nearest = item;
  }
  if (nearest != nullptr) mark(nearest);
}

void WiringView::mark(TerminalItem* item) {
  if (marked_ != nullptr) marked_->Marked(false);
  marked_ = item;
  item->Marked(true);
  ensureVisible(item, 0, 0);
  point_(item);
  setAccessibleDescription(item->toolTip());
}

// ---- The page -----------------------------------------------------------------------------------

WiringPage::WiringPage(std::function<void(const ScreenPlace&)> open, QWidget* parent)
    : QWidget(parent), conflicts_(new QLabel(this)), explanation_(new QLabel(this)) {
  view_ = new WiringView(
      [open = std::move(open)](const TerminalItem& item) {
        const WireUses& users = item.Terminal().users;
        if (!users.empty()) open(PlaceOfUse(users.front()));
      },
      [this](const TerminalItem* item) {
        explanation_->setText(
            item == nullptr ? QString() : item->toolTip().replace(u'\n', QStringLiteral("; ")));
      },
      this);
  auto* tools = new QHBoxLayout;
  view_->AddTools(tools);
  conflicts_->setAccessibleName(QStringLiteral("Conflicts"));
  tools->addWidget(conflicts_, 1);
  explanation_->setTextFormat(Qt::PlainText);
  explanation_->setWordWrap(true);
  explanation_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  explanation_->setAccessibleName(QStringLiteral("Terminal"));
  explanation_->setFixedHeight(kExplanationLines * fontMetrics().lineSpacing());
  explanation_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
  auto* column = new QVBoxLayout(this);
  column->addLayout(tools);
  column->addWidget(view_, 1);
  column->addWidget(explanation_);
  setFocusProxy(view_);
}

void WiringPage::Show(const Ostrand& session, const ProjectStore& store) {
  explanation_->clear();
  view_->Show(WiringOf(store, ProgramOf(session, store).channels), store);
  const int conflicts = view_->Picture().Conflicts();
  conflicts_->setText(
      conflicts == 0 ? QString()
      : conflicts == 1
          ? QStringLiteral("Conflict: a terminal has several users.")
          : QStringLiteral("Conflict: %1 terminals have several users.").arg(conflicts));
}

}  // namespace ostrand::desktop
