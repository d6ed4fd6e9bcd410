#include "button_panels.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QPainter>
#include <QResizeEvent>
#include <QStyleOptionButton>
#include <QVBoxLayout>

#include "icons.h"
#include "model/store.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

constexpr std::array<const char*, 3> kPanels = {"Logger", "Measurements", "Outputs and files"};

constexpr std::array<ButtonFace, 15> kFaces = {{
    {kConfigurationButton, 0, "&Configuration", "configuration", ""},
    {kExecutionButton, 0, "E&xecution intervals", "execution", ""},
    {kPortsButton, 0, "&Ports", "ports", "ports"},
    {kFlagsButton, 0, "Fla&gs", "flags", "flags"},
    {kExciteButton, 0, "&Analog outputs", "excite", "outputs"},
    {kThermocoupleButton, 1, "Ther&mocouples", "thermocouple", "blocks"},
    {kVoltageButton, 1, "&Voltages", "voltage", "blocks"},
    {kBridgeButton, 1, "&Bridges", "bridge", "blocks"},
    {kPulseButton, 1, "P&ulse inputs", "pulse", "blocks"},
    {kTK40MButton, 1, "Multiplexers (TK&40M)", "multiplexer", "blocks"},
    {kCanButton, 1, "CA&N items", "can", "items"},
    {kCalcFieldsButton, 1, "Ca&lculated fields", "calculated", "fields"},
    {kTablesButton, 2, "Output &tables", "tables", "tables"},
    {kSaveAndSendButton, 2, kSaveAndSendCaption.data(), "send", ""},
    {kSaveButton, 2, "&Save", "save", ""},
}};

// Room for three digits, in average letters: no glyph of a digit is loaded before one is drawn.
constexpr int kBadgeLetters = 4;

int portsIn(const PortSetup& setup) {
  int count = 0;
  for (const PortSlot& slot : setup.Slot) {
    for (const Port& port : slot.Ports) count += port.Include != 0 ? 1 : 0;
  }
  return count;
}

int outputsIn(const ExciteControl& excite) {
  int count = 0;
  for (const auto& slot : excite.Slot) {
    for (const ExciteChannel& channel : slot) count += channel.Include != 0 ? 1 : 0;
  }
  return count;
}

}  // namespace

std::span<const ButtonFace> ButtonFaces() { return kFaces; }

const char* CaptionOf(int button) {
  for (const ButtonFace& face : kFaces) {
    if (face.button == button) return face.caption;
  }
  return "";
}

int InUse(const ProjectStore& store, int button) {
  int count = 0;
  switch (button) {
    case kPortsButton:
      return portsIn(store.Ports);
    case kFlagsButton:
      for (const FlagControl& control : store.Flags) count += control.FlagInclude != 0 ? 1 : 0;
      return count;
    case kExciteButton:
      return outputsIn(store.ExciteOut);
    case kThermocoupleButton:
      return store.TempBlock.BlockCount;
    case kVoltageButton:
      return store.VoltBlock.BlockCount;
    case kBridgeButton:
      return store.BridgeBlock.BlockCount;
    case kPulseButton:
      return store.PulseBlock[0].BlockCount;
    case kTK40MButton:
      return store.TK40MBlock.BlockCount;
    case kCanButton:
      return store.Can.CanCount;
    case kCalcFieldsButton:
      return store.CalcFields.CalcFieldCount;
    case kTablesButton:
      for (const OutputTable& table : store.Tables.Table) count += table.TableOn != 0 ? 1 : 0;
      return count;
    default:
      return 0;
  }
}

const char* WhyDisabled(int button) {
  switch (button) {
    case kTK40MButton:
      return "Set the number of multiplexers in Configuration first.";
    case kCanButton:
      return "Set the number of CAN modules in Configuration first.";
    case kSaveAndSendButton:
      return "Set the address of the logger server in the menu Options first.";
    default:
      return "";
  }
}

// ---- A button -----------------------------------------------------------------------------------

namespace {

// The window has menus with access keys; on the row only the system's own caption has one.
QString captionOf(const ButtonFace& face) {
  return face.button == kSaveAndSendButton ? QString::fromLatin1(face.caption)
                                           : PlainCaption(face.caption);
}

}  // namespace

MainButton::MainButton(const ButtonFace& face, std::function<void(int button)> rightClick,
                       QWidget* parent)
    : QPushButton(captionOf(face), parent), face_(face), rightClick_(std::move(rightClick)) {
  setIcon(SystemIcon(face.icon));
  takeFont();
  describe();
}

void MainButton::takeFont() {
  const QFontMetrics metrics = fontMetrics();
  const int line = metrics.height();
  setIconSize({line, line});
  badgeWidth_ = *face_.counted == '\0' ? 0 : kBadgeLetters * metrics.averageCharWidth() + line / 2;
}

void MainButton::changeEvent(QEvent* event) {
  QPushButton::changeEvent(event);
  if (event->type() == QEvent::FontChange) takeFont();
}

void MainButton::contextMenuEvent(QContextMenuEvent*) { rightClick_(face_.button); }

QSize MainButton::sizeHint() const {
  const QSize usual = QPushButton::sizeHint();
  return {usual.width() + badgeWidth_, usual.height()};
}

void MainButton::DrawIcon() {
  drawsIcon_ = true;
  update();
}

void MainButton::Count(int inUse) {
  if (inUse_ == inUse) return;
  inUse_ = inUse;
  describe();
  update();
}

void MainButton::State(bool enabled, const QString& whyNot) {
  setEnabled(enabled);
  whyNot_ = enabled ? QString() : whyNot;
  describe();
}

void MainButton::describe() {
  QString name = PlainCaption(face_.caption);
  if (inUse_ > 0) {
    name += QStringLiteral(", %1 %2").arg(inUse_).arg(QString::fromLatin1(face_.counted));
  }
  setAccessibleName(name);
  QString help = FromProject(MainButtonHelp(face_.button));
  if (!whyNot_.isEmpty()) help += QStringLiteral("\n") + whyNot_;
  setAccessibleDescription(help);
  setToolTip(help);
}

// As the style draws a button, but with icon and text from the left, so that they are in columns.
void MainButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const QString text = option.text;
  option.text.clear();
  option.icon = QIcon();
  style()->drawControl(QStyle::CE_PushButton, &option, &painter, this);

  const int margin = fontMetrics().height() / 2;
  QRect inside = rect().adjusted(margin, 0, -margin, 0);
  QRect place(inside.left(), 0, iconSize().width(), iconSize().height());
  place.moveCenter({place.center().x(), rect().center().y()});
  if (drawsIcon_) {
    icon().paint(&painter, style()->visualRect(layoutDirection(), rect(), place), Qt::AlignCenter,
                 isEnabled() ? QIcon::Normal : QIcon::Disabled);
  }
  inside.setLeft(place.right() + margin);
  int flags = Qt::AlignVCenter | Qt::AlignLeft | Qt::TextShowMnemonic;
  if (style()->styleHint(QStyle::SH_UnderlineShortcut, &option, this) == 0) {
    flags |= Qt::TextHideMnemonic;
  }
  style()->drawItemText(&painter, inside, flags, palette(), isEnabled(), text,
                        QPalette::ButtonText);
  if (inUse_ == 0) return;
  const QString number = QString::number(inUse_);
  const int height = fontMetrics().height();
  const int width = std::max(height, fontMetrics().horizontalAdvance(number) + height / 2);
  QRect badge(inside.right() - width + 1, 0, width, height);
  badge.moveCenter({badge.center().x(), rect().center().y()});
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(Qt::NoPen);
  painter.setBrush(palette().color(QPalette::Highlight));
  painter.drawRoundedRect(badge, height / 2.0, height / 2.0);
  painter.setPen(palette().color(QPalette::HighlightedText));
  painter.drawText(badge, Qt::AlignCenter, number);
}

// ---- The panels ---------------------------------------------------------------------------------

ButtonPanels::ButtonPanels(const std::function<void(int button)>& click,
                           const std::function<void(int button)>& rightClick, QWidget* parent)
    : QWidget(parent) {
  auto* column = new QVBoxLayout(this);
  for (std::size_t panel = 0; panel < kPanels.size(); ++panel) {
    auto* box = new QGroupBox(QString::fromLatin1(kPanels[panel]), this);
    panels_.push_back(new QGridLayout(box));
    panels_.back()->setSpacing(column->spacing() / 2);
    column->addWidget(box);
  }
  column->addStretch();
  for (const ButtonFace& face : kFaces) {
    auto* button = new MainButton(face, rightClick, panels_[face.panel]->parentWidget());
    buttons_[static_cast<std::size_t>(face.button)] = button;
    QObject::connect(button, &QPushButton::clicked, this,
                     [click, number = face.button] { click(number); });
  }
  Arrange(1);
}

void ButtonPanels::DrawIcons() {
  for (const ButtonFace& face : kFaces) Button(face.button)->DrawIcon();
}

int ButtonPanels::WidthOf(int columns) const {
  int widest = 0;
  for (const MainButton* button : buttons_) {
    if (button != nullptr) widest = std::max(widest, button->sizeHint().width());
  }
  const QMargins outer = layout()->contentsMargins();
  const QMargins inner = panels_.front()->contentsMargins();
  return columns * widest + (columns - 1) * panels_.front()->horizontalSpacing() + outer.left() +
         outer.right() + inner.left() + inner.right() + 2 * fontMetrics().averageCharWidth();
}

QSize ButtonPanels::minimumSizeHint() const {
  return {WidthOf(1), layout()->minimumSize().height()};
}

void ButtonPanels::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Arrange(event->size().width() >= WidthOf(2) ? 2 : 1);
}

void ButtonPanels::Arrange(int columns) {
  if (columns == columns_) return;
  columns_ = columns;
  std::array<int, kPanels.size()> placed{};
  for (const ButtonFace& face : kFaces) {
    const int at = placed[face.panel]++;
    panels_[face.panel]->addWidget(Button(face.button), at / columns, at % columns);
  }
  for (QGridLayout* panel : panels_) {
    for (int at = 0; at < 2; ++at) panel->setColumnStretch(at, at < columns ? 1 : 0);
    // Hidden widgets do not report a new size by themselves.
    panel->invalidate();
    panel->parentWidget()->updateGeometry();
  }
  updateGeometry();
}

}  // namespace ostrand::desktop
