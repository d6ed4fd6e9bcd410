// Controls that only show something.
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QResizeEvent>
#include <QTextDocument>

#include "bind_kinds.h"
#include "contrast.h"
#include "fixed_font.h"
#include "terminal_tile.h"
#include "texts.h"

namespace ostrand::desktop {
namespace {

// In letters; a longer text is broken into lines.
constexpr int kLongLabel = 44;
constexpr int kLongCell = 24;

class BoundLabel final : public BoundControl {
 public:
  BoundLabel(Control& control, ControlWindow& window) : BoundControl(control, window) {
    shownBy(label_);
    label_->setTextFormat(Qt::PlainText);
    label_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label_->setFocusPolicy(Qt::NoFocus);
  }
  [[nodiscard]] std::vector<QWidget*> Stops() const override { return {}; }

  void Flash(bool lit) override {
    const auto* label = dynamic_cast<const Label*>(&Of());
    const bool dark = label != nullptr && label->Flashes && !lit;
    label_->setForegroundRole(dark ? QPalette::Window : QPalette::WindowText);
  }

 protected:
  void readValue() override {
    // A doubled "&" is one, as in a caption.
    const QString text =
        FromProject(Of().Text()).replace(QStringLiteral("&&"), QStringLiteral("&"));
    if (label_->text() == text) return;
    label_->setText(text);
    const int width = Of().Row > 0 ? kLongCell : kLongLabel;
    const bool isLong = text.size() > width;
    label_->setWordWrap(isLong);
    if (isLong) SetMinimumLetters(*label_, width);
  }
  [[nodiscard]] QString spokenName() const override {
    const QString name = AccessibleName(Of());
    if (repeatsCaption()) return label_->text();
    return label_->text().isEmpty() ? name : name + QStringLiteral(": ") + label_->text();
  }
  // "Scan Time = 1 Secs" needs no "Scan time" before it.
  [[nodiscard]] bool repeatsCaption() const override {
    return label_->text().startsWith(AccessibleName(Of()), Qt::CaseInsensitive);
  }
  [[nodiscard]] bool isBlank() const override { return label_->text().isEmpty(); }

 private:
  QLabel* label_ = new QLabel;
};

// Light and text: a lamp is not read by its colour alone.
class BoundLamp final : public BoundControl {
 public:
  BoundLamp(Lamp& lamp, ControlWindow& window) : BoundControl(lamp, window), lamp_(lamp) {
    shownBy(label_);
  }
  [[nodiscard]] std::vector<QWidget*> Stops() const override { return {}; }
  [[nodiscard]] bool ShowsCaption() const override { return true; }

 protected:
  void readValue() override {
    const bool on = lamp_.IsOn();
    const QString text =
        (on ? QStringLiteral("● ") : QStringLiteral("○ ")) + PlainCaption(lamp_.Caption);
    if (label_->text() == text) return;
    label_->setText(text);
    QPalette palette;
    if (on) {
      palette.setColor(QPalette::WindowText,
                       Readable(Qt::darkGreen, palette.color(QPalette::Window)));
    }
    label_->setPalette(palette);
  }
  [[nodiscard]] QString spokenName() const override {
    return AccessibleName(Of()) + QStringLiteral(": ") + FromProject(Of().Text());
  }

 private:
  Lamp& lamp_;
  QLabel* label_ = new QLabel;
};

// A text of the program in as many lines as it needs at its width.
class CodeView final : public QPlainTextEdit {
 public:
  CodeView() {
    setReadOnly(true);
    setTabChangesFocus(true);
    setFont(FixedFont());
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    SetMinimumLetters(*this, kCodeWidth);
    fitHeight();
  }

  void Show(const QString& text) {
    if (toPlainText() == text) return;
    setPlainText(text);
    fitHeight();
  }

 protected:
  void resizeEvent(QResizeEvent* event) override {
    QPlainTextEdit::resizeEvent(event);
    if (event->size().width() != event->oldSize().width()) fitHeight();
  }

 private:
  void fitHeight() {
    const int lines = std::max(1, static_cast<int>(document()->size().height()));
    const int margin = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
    setFixedHeight(lines * fontMetrics().lineSpacing() + margin);
  }
};

class BoundCode final : public BoundControl {
 public:
  BoundCode(Control& control, ControlWindow& window) : BoundControl(control, window) {
    shownBy(view_);
  }

 protected:
  void readValue() override { view_->Show(FromProject(Of().Text())); }

 private:
  CodeView* view_ = new CodeView;
};

// In a table: one line, which scrolls, with the whole text as tool tip.
class BoundCodeCell final : public BoundControl {
 public:
  BoundCodeCell(Control& control, ControlWindow& window) : BoundControl(control, window) {
    shownBy(line_);
    line_->setReadOnly(true);
    line_->setFont(FixedFont());
    SetMinimumLetters(*line_, kCodeCellWidth);
  }

 protected:
  void readValue() override {
    const QString text = FromProject(Of().Text());
    if (line_->text() == text) return;
    line_->setText(text);
    line_->setCursorPosition(0);
  }

 private:
  QLineEdit* line_ = new QLineEdit;
};

class BoundTile final : public BoundControl {
 public:
  BoundTile(Control& control, ControlWindow& window) : BoundControl(control, window) {
    shownBy(tile_);
  }
  [[nodiscard]] std::vector<QWidget*> Stops() const override { return {}; }
  [[nodiscard]] bool ShowsCaption() const override { return true; }

 protected:
  void readValue() override { tile_->Show(Of().Row, FromProject(Of().Text())); }
  [[nodiscard]] QString spokenName() const override {
    return QStringLiteral("%1 %2: %3")
        .arg(FromProject(Of().Group))
        .arg(Of().Row)
        .arg(tile_->text());
  }

 private:
  TerminalTile* tile_ = new TerminalTile;
};

}  // namespace

std::unique_ptr<BoundControl> BindShown(Control& control, ControlWindow& window) {
  switch (control.Kind()) {
    case ControlKind::kCode:
      if (control.Row > 0) return std::make_unique<BoundCodeCell>(control, window);
      return std::make_unique<BoundCode>(control, window);
    case ControlKind::kLamp:
      return std::make_unique<BoundLamp>(dynamic_cast<Lamp&>(control), window);
    case ControlKind::kPicture:
      return std::make_unique<BoundTile>(control, window);
    default:
      return std::make_unique<BoundLabel>(control, window);
  }
}

}  // namespace ostrand::desktop
