// One control of a screen as one widget, by the kind of the control.
#pragma once

#include <QLabel>
#include <QPointer>
#include <QWidget>
#include <functional>
#include <memory>
#include <vector>

#include "controls/control.h"

class QLineEdit;

namespace ostrand::desktop {

// The window around the widgets.
class ControlWindow {
 public:
  virtual ~ControlWindow() = default;
  // An action of the user on a control: moves the focus there and, if it may move, runs `action`.
  // Then all controls are read again.
  virtual void Act(Control& control, const std::function<void()>& action) = 0;
};

class BoundControl {
 public:
  BoundControl(Control& control, ControlWindow& window) : control_(control), window_(window) {}
  virtual ~BoundControl() = default;
  BoundControl(const BoundControl&) = delete;
  BoundControl& operator=(const BoundControl&) = delete;

  [[nodiscard]] Control& Of() const { return control_; }
  // The widget in the layout. Its parent owns it.
  [[nodiscard]] QWidget* Widget() const { return widget_; }
  // The widgets that can have the focus, in their order; empty for a control that only shows.
  [[nodiscard]] virtual std::vector<QWidget*> Stops() const { return {widget_}; }
  // The widget that gets the focus when it moves to the control; null for none.
  [[nodiscard]] virtual QWidget* Stop() const {
    return Stops().empty() ? nullptr : Stops().front();
  }
  // The line of text that is edited; null for a control that is not typed into.
  [[nodiscard]] virtual QLineEdit* Line() const { return nullptr; }
  // Whether the widget itself shows the caption.
  [[nodiscard]] virtual bool ShowsCaption() const { return false; }
  // The caption goes above the widget instead of beside it.
  [[nodiscard]] virtual bool CaptionAbove() const { return false; }

  // Sets the label that shows the caption; it is hidden and disabled with the control.
  void CaptionLabel(QLabel* caption);
  // Marks it as a cell of a table, whose header shows the caption.
  void InTable() { inTable_ = true; }
  // Shows the current state of the control.
  void Read();
  // Called before each key that it gets.
  virtual void BeforeKey() {}
  // Called at each beat of the flashing labels.
  virtual void Flash(bool /*lit*/) {}

 protected:
  void shownBy(QWidget* widget) { widget_ = widget; }
  virtual void readValue() = 0;
  // For assistive technology.
  [[nodiscard]] virtual QString spokenName() const;
  // Whether what the widget shows begins with the caption, which then stands nowhere else.
  [[nodiscard]] virtual bool repeatsCaption() const { return false; }
  // Whether there is nothing to show at present. The caption is dimmed then.
  [[nodiscard]] virtual bool isBlank() const { return false; }
  void act(const std::function<void()>& action) const { window_.Act(control_, action); }
  [[nodiscard]] bool inTable() const { return inTable_; }

 private:
  void readCaption();

  Control& control_;
  ControlWindow& window_;
  QWidget* widget_ = nullptr;
  QPointer<QLabel> caption_;
  bool inTable_ = false;
};

// The widget has no parent yet.
std::unique_ptr<BoundControl> Bind(Control& control, ControlWindow& window);

// "Multiplier"; for a cell of a table "MULT, row 3".
QString AccessibleName(const Control& control);
// The tool tip; while the control is disabled, the reason for that; else its limits, if any.
QString ToolTipOf(const Control& control);

}  // namespace ostrand::desktop
