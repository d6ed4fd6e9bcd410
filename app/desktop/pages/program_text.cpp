#include "pages/program_text.h"

#include <QApplication>
#include <QHelpEvent>
#include <QPainter>
#include <QScrollBar>
#include <QSyntaxHighlighter>
#include <QTextBlock>
#include <QToolTip>
#include <algorithm>
#include <array>

#include "fixed_font.h"
#include "programcheck/statement.h"
#include "programcheck/words.h"
#include "text/line_diff.h"

namespace ostrand::desktop {
namespace {

enum Look { kWord, kNumber, kText, kComment, kTitle, kAddedMark, kChangedMark, kRemovedMark };

// Each can be read on the background of its theme.
struct LookColor {
  QRgb light;
  QRgb dark;
};
constexpr std::array<LookColor, 8> kLooks = {{
    {0xff0b4f9e, 0xff8ab8ff},
    {0xff9a3412, 0xffffb38a},
    {0xff7a4d00, 0xffffd27f},
    {0xff4a6b2a, 0xff9ccf7a},
    {0xff6a2c91, 0xffd7a8f5},
    {0xff1a7f37, 0xff5fd07f},
    {0xff0b4f9e, 0xff8ab8ff},
    {0xffb3261e, 0xffff8f87},
}};

// Words that begin a declaration; they belong to the language, but not to its instructions.
constexpr std::array<std::string_view, 7> kDeclarations = {"ALIAS",  "CONST", "DATA", "DIM",
                                                           "PUBLIC", "SUB",   "UNITS"};

bool isWord(const Token& token) {
  if (!token.IsName()) return false;
  const bool declares =
      std::find(kDeclarations.begin(), kDeclarations.end(), token.upper) != kDeclarations.end();
  return declares || IsLanguageWord(token.upper);
}

bool isDark(const QPalette& palette) { return palette.color(QPalette::Base).lightness() < 128; }

QColor colorOf(Look look, const QPalette& palette) {
  const LookColor& row = kLooks[look];
  return QColor(isDark(palette) ? row.dark : row.light);
}

class Colors final : public QSyntaxHighlighter {
 public:
  explicit Colors(ProgramText* text) : QSyntaxHighlighter(text->document()), text_(text) {}

 protected:
  void highlightBlock(const QString& line) override {
    const QByteArray bytes = line.toLatin1();  // a byte for each letter
    const std::string_view view(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    const std::vector<Token> tokens = TokensOf(view);
    std::size_t end = 0;
    for (const Token& token : tokens) {
      const auto at = static_cast<std::size_t>(token.text.data() - view.data());
      end = at + token.text.size();
      if (isWord(token)) {
        set(at, token.text.size(), kWord);
      } else if (token.kind == Token::Kind::kNumber) {
        set(at, token.text.size(), kNumber);
      } else if (token.kind == Token::Kind::kText) {
        set(at, token.text.size(), kText);
      }
    }
    const std::size_t comment = view.find('\'', end);
    if (comment == std::string_view::npos) return;
    const bool isTitle = view.find("\\\\\\", comment) != std::string_view::npos ||
                         view.find("___", comment) != std::string_view::npos;
    set(comment, view.size() - comment, isTitle ? kTitle : kComment);
  }

 private:
  void set(std::size_t at, std::size_t count, Look look) {
    setFormat(static_cast<int>(at), static_cast<int>(count), colorOf(look, text_->palette()));
  }

  ProgramText* text_;
};

class Margin final : public QWidget {
 public:
  explicit Margin(ProgramText* text) : QWidget(text), text_(text) {}
  [[nodiscard]] QSize sizeHint() const override { return {text_->MarginWidth(), 0}; }

 protected:
  void paintEvent(QPaintEvent* event) override { text_->PaintMargin(event); }

 private:
  ProgramText* text_;
};

struct MarkLook {
  QChar letter;
  Look look;
};
MarkLook lookOf(LineMark mark) {
  if (mark == LineMark::kAdded) return {u'+', kAddedMark};
  if (mark == LineMark::kChanged) return {u'~', kChangedMark};
  return {u'-', kRemovedMark};
}

}  // namespace

ProgramText::ProgramText(QWidget* parent)
    : QPlainTextEdit(parent), margin_(new Margin(this)), colors_(new Colors(this)) {
  setReadOnly(true);
  setUndoRedoEnabled(false);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setLineWrapMode(QPlainTextEdit::NoWrap);
  setFont(FixedFont());
  QObject::connect(this, &QPlainTextEdit::blockCountChanged, this, [this] { layOutMargin(); });
  QObject::connect(this, &QPlainTextEdit::updateRequest, this, [this](const QRect& area, int down) {
    if (down != 0) {
      margin_->scroll(0, down);
    } else {
      margin_->update(0, area.y(), margin_->width(), area.height());
    }
  });
  layOutMargin();
}

void ProgramText::Program(std::string_view text) {
  const std::string before = std::exchange(text_, std::string(text));
  const std::vector<std::string_view> lines = LinesOf(text_);
  int top = verticalScrollBar()->value();  // the line that is seen at the top
  const auto joined = [&lines](int from, int count) {
    QString piece;
    for (int at = from; at < from + count; ++at) {
      const std::string_view line = lines[static_cast<std::size_t>(at)];
      piece += QString::fromUtf8(line.data(), static_cast<qsizetype>(line.size())) + u'\n';
    }
    return piece;
  };
  const std::vector<LineChange> changes = LineChanges(LinesOf(before), lines);
  QTextCursor cursor(document());
  cursor.beginEditBlock();
  for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
    cursor.setPosition(document()->findBlockByNumber(change->before).position());
    const QTextBlock end = document()->findBlockByNumber(change->before + change->beforeCount);
    cursor.setPosition(end.position(), QTextCursor::KeepAnchor);
    cursor.insertText(joined(change->after, change->afterCount));
    if (change->before < top) top += change->afterCount - change->beforeCount;
  }
  cursor.endEditBlock();
  verticalScrollBar()->setValue(top);
}

void ProgramText::Numbers(std::vector<int> numbers) {
  numbers_ = std::move(numbers);
  margin_->update();
}

void ProgramText::Marks(std::map<int, LineMark> marks) {
  marks_ = std::move(marks);
  margin_->update();
}

LineMark ProgramText::MarkOf(int line) const {
  const auto found = marks_.find(line);
  return found == marks_.end() ? LineMark::kNone : found->second;
}

void ProgramText::Faults(std::vector<Fault> faults) {
  faults_ = std::move(faults);
  showSelections();
  margin_->update();
}

void ProgramText::Highlighted(std::vector<int> lines) {
  highlighted_ = std::move(lines);
  showSelections();
}

void ProgramText::showSelections() {
  QList<QTextEdit::ExtraSelection> selections;
  for (const int line : highlighted_) {
    QTextEdit::ExtraSelection selection;
    QColor back = palette().color(QPalette::Highlight);
    back.setAlpha(isDark(palette()) ? 80 : 50);
    selection.format.setBackground(back);
    selection.format.setProperty(QTextFormat::FullWidthSelection, true);
    selection.cursor = QTextCursor(document()->findBlockByNumber(line - 1));
    selections.push_back(selection);
  }
  for (const Fault& fault : faults_) {
    const QTextBlock block = document()->findBlockByNumber(fault.line - 1);
    if (!block.isValid()) continue;
    const qsizetype at =
        fault.name.isEmpty() ? -1 : block.text().indexOf(fault.name, 0, Qt::CaseInsensitive);
    QTextEdit::ExtraSelection selection;
    selection.format.setUnderlineStyle(QTextCharFormat::WaveUnderline);
    selection.format.setUnderlineColor(colorOf(kRemovedMark, palette()));
    selection.cursor = QTextCursor(block);
    if (at < 0) {
      selection.cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    } else {
      selection.cursor.setPosition(block.position() + static_cast<int>(at));
      selection.cursor.setPosition(block.position() + static_cast<int>(at + fault.name.size()),
                                   QTextCursor::KeepAnchor);
    }
    selections.push_back(selection);
  }
  setExtraSelections(selections);
}

int ProgramText::Line() const { return textCursor().blockNumber() + 1; }

void ProgramText::GoTo(int line) {
  const QTextBlock block = document()->findBlockByNumber(line - 1);
  if (!block.isValid()) return;
  setTextCursor(QTextCursor(block));
  centerCursor();
}

bool ProgramText::Find(const QString& text, bool backward) {
  if (text.isEmpty()) return false;
  const QTextDocument::FindFlags flags =
      backward ? QTextDocument::FindBackward : QTextDocument::FindFlags();
  if (find(text, flags)) return true;
  const QTextCursor before = textCursor();
  moveCursor(backward ? QTextCursor::End : QTextCursor::Start);
  if (find(text, flags)) return true;
  setTextCursor(before);
  return false;
}

// ---- The margin ---------------------------------------------------------------------------------

int ProgramText::MarginWidth() const {
  const int digits = static_cast<int>(QString::number(std::max(blockCount(), 100)).size());
  const int letter = fontMetrics().horizontalAdvance(u'9');
  return letter * (digits + 3);  // a mark, and blanks beside it
}

void ProgramText::layOutMargin() {
  setViewportMargins(MarginWidth(), 0, 0, 0);
  const QRect area = contentsRect();
  margin_->setGeometry(area.left(), area.top(), MarginWidth(), area.height());
}

void ProgramText::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  layOutMargin();
}

void ProgramText::changeEvent(QEvent* event) {
  QPlainTextEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) {
    colors_->rehighlight();
    showSelections();
  } else if (event->type() == QEvent::FontChange) {
    layOutMargin();
  }
}

bool ProgramText::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip) {
    const auto* help = static_cast<QHelpEvent*>(event);
    const int line = cursorForPosition(viewport()->mapFrom(this, help->pos())).blockNumber() + 1;
    const auto fault = std::find_if(faults_.begin(), faults_.end(),
                                    [line](const Fault& row) { return row.line == line; });
    if (fault == faults_.end()) {
      QToolTip::hideText();
    } else {
      QToolTip::showText(help->globalPos(), fault->text, this);
    }
    return true;
  }
  return QPlainTextEdit::event(event);
}

void ProgramText::PaintMargin(QPaintEvent* event) {
  QPainter painter(margin_);
  painter.setFont(font());
  painter.fillRect(event->rect(), palette().color(QPalette::AlternateBase));
  const int letter = fontMetrics().horizontalAdvance(u'9');
  const int numbersEnd = margin_->width() - 2 * letter;
  const QColor usual = palette().color(QPalette::PlaceholderText);
  QTextBlock block = firstVisibleBlock();
  while (block.isValid()) {
    const QRectF area = blockBoundingGeometry(block).translated(contentOffset());
    if (area.top() > event->rect().bottom()) break;
    const int line = block.blockNumber() + 1;
    const auto top = static_cast<int>(area.top());
    const auto height = static_cast<int>(area.height());
    const bool isFault = std::any_of(faults_.begin(), faults_.end(),
                                     [line](const Fault& fault) { return fault.line == line; });
    painter.setPen(isFault ? colorOf(kRemovedMark, palette()) : usual);
    const auto at = static_cast<std::size_t>(line - 1);
    const int number = at < numbers_.size() ? numbers_[at] : line;
    if (number != 0) {
      painter.drawText(0, top, numbersEnd, height, Qt::AlignRight, QString::number(number));
    }
    const LineMark mark = MarkOf(line);
    if (mark != LineMark::kNone) {
      const MarkLook look = lookOf(mark);
      painter.setPen(colorOf(look.look, palette()));
      painter.drawText(numbersEnd, top, letter * 2, height, Qt::AlignHCenter, look.letter);
      painter.fillRect(margin_->width() - 3, top, 3, height, colorOf(look.look, palette()));
    }
    block = block.next();
  }
}

}  // namespace ostrand::desktop
