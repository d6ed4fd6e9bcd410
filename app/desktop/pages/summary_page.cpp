#include "pages/summary_page.h"

#include <QScrollBar>
#include <QTextCursor>

#include "colors.h"
#include "contrast.h"
#include "documents/rich_text.h"
#include "fixed_font.h"
#include "texts.h"

namespace ostrand::desktop {

SummaryPage::SummaryPage(QWidget* parent) : QTextEdit(parent) {
  setReadOnly(true);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setLineWrapMode(QTextEdit::NoWrap);
  setAccessibleName(QStringLiteral("Summary"));
}

void SummaryPage::Show(const StyledText& text) {
  const std::string all = text.Text();
  const QColor back = palette().color(QPalette::Base);
  const QPoint scrolled(horizontalScrollBar()->value(), verticalScrollBar()->value());
  clear();
  QTextCursor cursor(document());
  std::size_t at = 0;
  for (const StyledText::Run& run : text.Runs()) {
    QTextCharFormat look;
    look.setFont(FixedFont());
    look.setForeground(Readable(ColorOf(run.look.colour, palette()), back));
    look.setFontUnderline(run.look.underline);
    QString part = FromProject(std::string_view(all).substr(at, run.length));
    cursor.insertText(part.remove(u'\r'), look);
    at += run.length;
  }
  moveCursor(QTextCursor::Start);
  horizontalScrollBar()->setValue(scrolled.x());
  verticalScrollBar()->setValue(scrolled.y());
}

}  // namespace ostrand::desktop
