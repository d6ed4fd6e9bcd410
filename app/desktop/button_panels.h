// The main row: the buttons of the screens and of a save, in three panels.
#pragma once

#include <QPushButton>
#include <QWidget>
#include <array>
#include <functional>
#include <span>
#include <vector>

#include "session/main_buttons.h"

class QGridLayout;
class QGroupBox;

namespace ostrand {
struct ProjectStore;
}

namespace ostrand::desktop {

struct ButtonFace {
  int button;
  std::size_t panel;
  const char* caption;
  const char* icon;
  const char* counted;  // what its badge counts, in the plural; empty for no badge
};

// All buttons that are shown, panel by panel; reserved ones are not.
std::span<const ButtonFace> ButtonFaces();
const char* CaptionOf(int button);  // with its access key; empty for a button that is not shown

// What a button's badge shows: how many of its blocks, items or tables are in use.
int InUse(const ProjectStore& store, int button);

// Why a button of an open project is disabled; empty for one that is not by itself.
const char* WhyDisabled(int button);

// A main button with a badge at its right end.
class MainButton final : public QPushButton {
 public:
  MainButton(const ButtonFace& face, std::function<void(int button)> rightClick, QWidget* parent);

  // Draws the icon from now on; its place is free before.
  void DrawIcon();
  // 0 shows no badge.
  void Count(int inUse);
  // The help line says why it cannot be used; empty for no reason.
  void State(bool enabled, const QString& whyNot);
  [[nodiscard]] const ButtonFace& Face() const { return face_; }
  [[nodiscard]] int Counted() const { return inUse_; }
  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  void takeFont();
  void describe();

  const ButtonFace& face_;
  std::function<void(int button)> rightClick_;
  bool drawsIcon_ = false;
  int inUse_ = 0;
  int badgeWidth_ = 0;  // with the space before it
  QString whyNot_;
};

// The panels from top to bottom, with their buttons in two columns if there is space.
class ButtonPanels final : public QWidget {
 public:
  ButtonPanels(const std::function<void(int button)>& click,
               const std::function<void(int button)>& rightClick, QWidget* parent);

  // Null for a button that is not shown.
  [[nodiscard]] MainButton* Button(int button) const {
    return buttons_[static_cast<std::size_t>(button)];
  }
  // To be called once. The first paint of the window does not wait for drawings to be read.
  void DrawIcons();
  // The width that so many columns need.
  [[nodiscard]] int WidthOf(int columns) const;
  // Puts the buttons into one or two columns; a resize does so by itself.
  void Arrange(int columns);

  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  std::array<MainButton*, kLastButton + 1> buttons_{};
  std::vector<QGridLayout*> panels_;
  int columns_ = 0;
};

}  // namespace ostrand::desktop
