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
  // What the user does with a control: the focus goes there first, and if it does, `action` runs.
  // Afterwards all controls are read anew.
  virtual void Act(Control& control, const std::function<void()>& action) = 0;
};

class BoundControl {
 public:
  BoundControl(Control& control, ControlWindow& window) : control_(control), window_(window) {}
  virtual ~BoundControl() = default;
  BoundControl(const BoundControl&) = delete;
  BoundControl& operator=(const BoundControl&) = delete;

  [[nodiscard]] Control& Of() const { return control_; }
  // The widget that is laid out. Its parent owns it.
  [[nodiscard]] QWidget* Widget() const { return widget_; }
  // The widgets that the keyboard reaches, in their order; empty for one that only shows.
  [[nodiscard]] virtual std::vector<QWidget*> Stops() const { return {widget_}; }
  // Where the focus goes when it goes to the control.
  [[nodiscard]] virtual QWidget* Stop() const {
    return Stops().empty() ? nullptr : Stops().front();
  }
  // Where the text is typed; null for a control that is not typed into.
  [[nodiscard]] virtual QLineEdit* Line() const { return nullptr; }
  // Whether the widget itself shows the caption.
  [[nodiscard]] virtual bool ShowsCaption() const { return false; }

  // The caption beside it, which comes and goes with it.
  void Beside(QLabel* caption) { caption_ = caption; }
  // In a table, whose header has the caption.
  void InTable() { inTable_ = true; }
  // Shows the control as it is now.
  void Read();
  // A key is about to come to it.
  virtual void BeforeKey() {}
  // Labels that flash do so in step.
  virtual void Flash(bool /*lit*/) {}

 protected:
  void shownBy(QWidget* widget) { widget_ = widget; }
  virtual void readValue() = 0;
  void act(const std::function<void()>& action) const { window_.Act(control_, action); }
  [[nodiscard]] bool inTable() const { return inTable_; }

 private:
  Control& control_;
  ControlWindow& window_;
  QWidget* widget_ = nullptr;
  QPointer<QLabel> caption_;
  bool inTable_ = false;
};

// The widget has no parent yet.
std::unique_ptr<BoundControl> Bind(Control& control, ControlWindow& window);

// What a screen reader says of it: "Multiplier", in a table "MULT, row 3".
QString AccessibleName(const Control& control);

}  // namespace ostrand::desktop
