#include "help_window.h"

#include <QApplication>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>
#include <QVBoxLayout>
#include <algorithm>

#include "screen_window.h"

namespace ostrand::desktop {

HelpWindow::HelpWindow(QWidget* parent)
    : QDialog(parent), browser_(new QTextBrowser(this)), sought_(new QLineEdit(this)) {
  setWindowTitle(QStringLiteral("User guide"));
  QString guide;
  for (const char* chapter : {"desktop", "user-guide"}) {
    QFile file(QStringLiteral(":/help/%1.md").arg(QLatin1String(chapter)));
    if (file.open(QIODevice::ReadOnly)) guide += QString::fromUtf8(file.readAll()) + u'\n';
  }
  browser_->setSearchPaths({QStringLiteral(":/help")});  // of the pictures
  browser_->setMarkdown(guide);
  browser_->setOpenLinks(false);
  browser_->setAccessibleName(windowTitle());
  sought_->setPlaceholderText(QStringLiteral("Find in the guide"));
  sought_->setAccessibleName(QStringLiteral("Find in the guide"));
  sought_->setClearButtonEnabled(true);
  QObject::connect(sought_, &QLineEdit::returnPressed, this, [this] { find(); });
  auto* column = new QVBoxLayout(this);
  column->addWidget(sought_);
  column->addWidget(browser_, 1);
  const QFontMetrics letters = fontMetrics();
  resize(
      QSize(90 * letters.averageCharWidth(), 40 * letters.lineSpacing()).boundedTo(RoomFor(*this)));
}

void HelpWindow::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  fitPictures();
}

// Pictures that are wider than the window are shown smaller.
void HelpWindow::fitPictures() {
  QTextDocument* guide = browser_->document();
  const QMargins edges = layout()->contentsMargins();
  const int room = width() - edges.left() - edges.right() - 2 * browser_->frameWidth() -
                   browser_->verticalScrollBar()->sizeHint().width() -
                   2 * static_cast<int>(guide->documentMargin());
  QTextCursor cursor(guide);
  for (QTextBlock block = guide->begin(); block.isValid(); block = block.next()) {
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      QTextImageFormat picture = at.fragment().charFormat().toImageFormat();
      if (!picture.isValid()) continue;
      const QImage image(QStringLiteral(":/help/") + picture.name());
      picture.setWidth(std::min(image.width(), room));
      cursor.setPosition(at.fragment().position());
      cursor.setPosition(at.fragment().position() + at.fragment().length(),
                         QTextCursor::KeepAnchor);
      cursor.setCharFormat(picture);
      break;  // a picture is alone in its block, which has just changed
    }
  }
}

// The next place; from the start again after the last one.
void HelpWindow::find() {
  if (browser_->find(sought_->text())) return;
  browser_->moveCursor(QTextCursor::Start);
  if (!browser_->find(sought_->text())) QApplication::beep();
}

}  // namespace ostrand::desktop
