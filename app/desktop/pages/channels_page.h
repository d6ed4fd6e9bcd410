// The page with the use of the channels and of the scan.
#pragma once

#include <QWidget>
#include <functional>

#include "drawings/channels_scene.h"
#include "drawings/picture_view.h"
#include "session/ostrand.h"

namespace ostrand::desktop {

class ChannelsView final : public PictureView {
 public:
  ChannelsView(std::function<void(const ScreenPlace&)> open, QWidget* parent);

  void Show(const Wiring& wiring, const ProjectStore& store);
  [[nodiscard]] const ChannelsScene& Picture() const { return *picture_; }

 protected:
  void clicked(QGraphicsItem* item) override;

 private:
  std::function<void(const ScreenPlace&)> open_;
  ChannelsScene* picture_;
};

class ChannelsPage final : public QWidget {
 public:
  // `open` is called with the screen of what the user has clicked.
  ChannelsPage(std::function<void(const ScreenPlace&)> open, QWidget* parent);
  void Show(const Ostrand& session, const ProjectStore& store);

  [[nodiscard]] ChannelsView* View() const { return view_; }

 private:
  ChannelsView* view_;
};

}  // namespace ostrand::desktop
