#include "bind.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

#include "bind_kinds.h"
#include "controls/numeric_field.h"
#include "text/number.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

class BoundCheck final : public BoundControl {
 public:
  BoundCheck(CheckBox& check, ControlWindow& window) : BoundControl(check, window), check_(check) {
    shownBy(box_);
    QObject::connect(box_, &QCheckBox::clicked, box_,
                     [this](bool on) { act([&] { check_.Check(on); }); });
  }
  [[nodiscard]] bool ShowsCaption() const override { return !inTable(); }

 protected:
  void readValue() override {
    const QString text = inTable() ? QString() : FromProject(check_.Caption);
    if (box_->text() != text) box_->setText(text);
    box_->setChecked(check_.Checked());
  }

 private:
  CheckBox& check_;
  QCheckBox* box_ = new QCheckBox;
};

class BoundButton final : public BoundControl {
 public:
  BoundButton(Control& button, ControlWindow& window) : BoundControl(button, window) {
    shownBy(button_);
    button_->setAutoDefault(false);
    QObject::connect(button_, &QPushButton::clicked, button_,
                     [this] { act([&] { Of().Press(); }); });
  }
  [[nodiscard]] bool ShowsCaption() const override { return true; }

 protected:
  void readValue() override {
    const QString text = FromProject(Of().Caption);
    if (button_->text() != text) button_->setText(text);
  }

 private:
  QPushButton* button_ = new QPushButton;
};

// "From 0 to 7." or one of its ends; empty for a control without limits.
QString limitsOf(const Control& control) {
  const auto* number = dynamic_cast<const NumericField*>(&control);
  if (number == nullptr || (!number->HasMin() && !number->HasMax())) return {};
  const QString from = QString::fromStdString(NumberText(number->Min()));
  const QString to = QString::fromStdString(NumberText(number->Max()));
  if (!number->HasMax()) return QStringLiteral("At least %1.").arg(from);
  if (!number->HasMin()) return QStringLiteral("At most %1.").arg(to);
  return QStringLiteral("From %1 to %2.").arg(from, to);
}

}  // namespace

void SetMinimumLetters(QWidget& widget, int letters) {
  constexpr int kFrame = 2;
  widget.setMinimumWidth(widget.fontMetrics().averageCharWidth() * (letters + kFrame));
}

QString BoundControl::spokenName() const { return AccessibleName(control_); }

void BoundControl::Read() {
  readValue();
  const QString tip = ToolTipOf(control_);
  const QString name = spokenName();
  const QString described = tip.isEmpty() ? FromProject(control_.Group) : tip;
  if (widget_->isEnabledTo(widget_->parentWidget()) != control_.Enabled) {
    widget_->setEnabled(control_.Enabled);
  }
  if (widget_->isHidden() == control_.Visible) widget_->setVisible(control_.Visible);
  if (widget_->toolTip() != tip) widget_->setToolTip(tip);
  for (QWidget* spoken : {widget_, static_cast<QWidget*>(Line())}) {
    if (spoken == nullptr) continue;
    if (spoken->accessibleName() != name) spoken->setAccessibleName(name);
    if (spoken->accessibleDescription() != described) spoken->setAccessibleDescription(described);
  }
  readCaption();
}

void BoundControl::CaptionLabel(QLabel* caption) {
  caption_ = caption;
  readCaption();
}

void BoundControl::readCaption() {
  if (caption_ == nullptr) return;
  const QString text = repeatsCaption() ? QString() : FromProject(control_.Caption);
  if (caption_->text() != text) caption_->setText(text);
  if (caption_->isHidden() == control_.Visible) caption_->setVisible(control_.Visible);
  caption_->setEnabled(control_.Enabled && !isBlank());
}

std::unique_ptr<BoundControl> Bind(Control& control, ControlWindow& window) {
  switch (control.Kind()) {
    case ControlKind::kLabel:
    case ControlKind::kFigure:
    case ControlKind::kPicture:
    case ControlKind::kCode:
    case ControlKind::kLamp:
      return BindShown(control, window);
    case ControlKind::kText:
    case ControlKind::kNumber:
    case ControlKind::kEditList:
      return BindField(dynamic_cast<TextField&>(control), window);
    case ControlKind::kDropDown:
    case ControlKind::kOptions:
    case ControlKind::kTable:
      return BindChoice(dynamic_cast<Choice&>(control), window);
    case ControlKind::kCheck:
      return std::make_unique<BoundCheck>(dynamic_cast<CheckBox&>(control), window);
    case ControlKind::kButton:
      return std::make_unique<BoundButton>(control, window);
  }
  return nullptr;
}

QString AccessibleName(const Control& control) {
  QString caption = PlainCaption(control.Caption);
  if (caption.endsWith(u':')) caption.chop(1);
  return control.Row > 0 ? caption + QStringLiteral(", row %1").arg(control.Row) : caption;
}

QString ToolTipOf(const Control& control) {
  if (!control.Enabled && !control.WhyDisabled.empty()) return FromProject(control.WhyDisabled);
  if (!control.ToolTip.empty()) return FromProject(control.ToolTip);
  return limitsOf(control);
}

}  // namespace ostrand::desktop
