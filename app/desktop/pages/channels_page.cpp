#include "pages/channels_page.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

#include "project_bytes.h"

namespace ostrand::desktop {

ChannelsView::ChannelsView(std::function<void(const ScreenPlace&)> open, QWidget* parent)
    : PictureView(nullptr, QStringLiteral("Channels"), parent),
      open_(std::move(open)),
      picture_(new ChannelsScene(this)) {
  setScene(picture_);
}

void ChannelsView::Show(const Wiring& wiring, const ProjectStore& store) {
  picture_->Show(wiring, store, palette());
  drawn();
  setAccessibleDescription(picture_->Words());
}

void ChannelsView::clicked(QGraphicsItem* item) {
  const ScreenPlace* place = picture_->PlaceOf(item);
  if (place != nullptr) open_(*place);
}

ChannelsPage::ChannelsPage(std::function<void(const ScreenPlace&)> open, QWidget* parent)
    : QWidget(parent), view_(new ChannelsView(std::move(open), this)) {
  auto* tools = new QHBoxLayout;
  view_->AddTools(tools);
  tools->addStretch();
  auto* column = new QVBoxLayout(this);
  column->addLayout(tools);
  column->addWidget(view_, 1);
  setFocusProxy(view_);
}

void ChannelsPage::Show(const Ostrand& session, const ProjectStore& store) {
  view_->Show(WiringOf(store, ProgramOf(session, store).channels), store);
}

}  // namespace ostrand::desktop
