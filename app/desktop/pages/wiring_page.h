// The page with the picture of the wiring.
#pragma once

#include <QWidget>
#include <functional>

#include "drawings/picture_view.h"
#include "drawings/wiring_scene.h"
#include "places/key_places.h"
#include "session/ostrand.h"

class QLabel;

namespace ostrand::desktop {

// Arrow keys go from terminal to terminal, Enter opens one.
class WiringView final : public PictureView {
 public:
  // `open` is called for a click on a terminal and for the Enter key, `point` for the terminal
  // under the pointer or at the keyboard; null for none.
  WiringView(std::function<void(const TerminalItem&)> open,
             std::function<void(const TerminalItem*)> point, QWidget* parent);

  void Show(Wiring wiring, const ProjectStore& store);
  [[nodiscard]] const WiringScene& Picture() const { return *picture_; }

 protected:
  void clicked(QGraphicsItem* item) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;

 private:
  void go(int strips, int places);
  void mark(TerminalItem* item);

  std::function<void(const TerminalItem&)> open_;
  std::function<void(const TerminalItem*)> point_;
  WiringScene* picture_;
  TerminalItem* marked_ = nullptr;
};

class WiringPage final : public QWidget {
 public:
  // `open` is called with the screen of what the user has clicked.
  WiringPage(std::function<void(const ScreenPlace&)> open, QWidget* parent);
  void Show(const Ostrand& session, const ProjectStore& store);

  [[nodiscard]] WiringView* View() const { return view_; }
  [[nodiscard]] QLabel* Explanation() const { return explanation_; }
  [[nodiscard]] QLabel* Conflicts() const { return conflicts_; }

 private:
  WiringView* view_;
  QLabel* conflicts_;
  QLabel* explanation_;
};

}  // namespace ostrand::desktop
